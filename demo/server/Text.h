#pragma once

#include <ctime>
#include <map>
#include <string>

// Text on its way to and from the servers' form: cp932 with HTML's escapes. What comes from a
// browser is cp932 already; "<", ">", "&" and line ends are single bytes there too.

// Characters that cp932 lacks become "?".
std::string toCp932(const std::string& utf8);

// "<" and ">" are escaped, and "&" where no entity follows: people type entities on purpose.
std::string escapeHtml(const std::string& text);

// A post's body as a dat holds it: escaped, lines joined by " <br> ", and ">>12" a link to post 12
// below `threadUrl` ("../test/read.cgi/board/key/").
std::string datBody(const std::string& body, const std::string& threadUrl);

// The fields of a form body or a query, percent-decoded; the last of several with one name counts.
std::map<std::string, std::string> parseForm(const std::string& body);

// "Wed, 23 Jan 2002 03:34:00 GMT", whatever the locale.
std::string httpDate(time_t moment);

// The date line of a new post: "2002/01/23(水) 12:34", Japanese time.
std::string postDate(time_t moment);
