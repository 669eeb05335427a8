#pragma once

#include "convert/HtmlTree.h"
#include "settings/Marks.h"

#include <string>
#include <string_view>

namespace gate {

// Parts of a page as the fields of a dat hold them: references for what would be a tag, replies as
// links that the program knows, other links as their text, pictures of boards as "sssp:" addresses.
// All of it UTF-8.

// A post's text; its lines are ended by " <br> ". Without the posts that a tag left open holds as
// well: elements of the marks' classes, and of definition lists.
std::string BodyOf(HtmlNode* message, const PageMarks& marks = {});
// A poster's name: what isn't bold (a sign of identity) stands in "</b>" and "<b>".
std::string NameFieldOf(HtmlNode* name);
// The address behind a name, without "mailto:".
std::string MailOf(HtmlNode* name);
// A date with what stands behind it; the writer's account as "BE:n-RANK(points)". Elements of the
// classes in `without` are left out.
std::string DateOf(HtmlNode* date, const std::vector<std::string>& without = {});
// Of one account's element or link.
std::string AccountOf(HtmlNode* account);

// The same for fields that come as pieces of HTML.
std::string CleanBody(std::string_view html);
std::string CleanName(std::string_view html);

// "&", "<" and ">" as references; without line feeds, tabs and the like.
std::string Escaped(std::string_view text);

} // namespace gate
