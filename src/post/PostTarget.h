#pragma once

#include <SupportDefs.h>

#include <optional>
#include <string>

// The two kinds of posting CGI: "/test/bbs.cgi" with lower-case field names, for threads that are
// read as dat files, and "[/PREFIX]/bbs/write.cgi" with upper-case ones, for those read through
// read.cgi.
enum class PostFamily { kBbsCgi, kWriteCgi };

// The thread that a post goes to. All texts are UTF-8 and fit the servers' formats: they may stand
// in a request, and in a path.
struct PostTarget {
    PostFamily family = PostFamily::kBbsCgi;
    std::string host;
    std::string board; // a folder, or a prefix, "/" and a folder
    std::string key;   // the dat name up to its "."

    // What reading and posting address apart: "bbs" and "news" of "bbs/news". Without a "/" the
    // prefix is empty and the folder is all of it.
    std::string Prefix() const;
    std::string Folder() const;

    // The page that a browser would post from.
    std::string Referer() const;
    std::string CgiPath() const;
    // What selects the thread for reading: the board's URL and the dat name.
    std::string BoardUrl() const;
    std::string DatName() const;
};

// From the address that the article pane shows; nothing when it is no thread's address or a part
// does not fit.
std::optional<PostTarget> ParsePostTarget(const std::string& address, PostFamily family);
