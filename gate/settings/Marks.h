#pragma once

#include "convert/Encodings.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace gate {

// What servers' pages and forms look like today. All of it is data of the settings, with the
// shipped file's values as defaults; UTF-8.

// By what the parts of a thread's page are known: classes, whatever tags carry them.
struct PageMarks {
    std::vector<std::string> post{"post"};
    std::vector<std::string> number{"number", "postid"};
    std::vector<std::string> name{"name", "postusername"};
    std::vector<std::string> date{"date"};
    std::vector<std::string> user{"uid"};
    std::vector<std::string> be{"be"};
    std::vector<std::string> message{"message", "post-content", "thread_in"};
    std::vector<std::string> title{"title", "threadtitle", "thread-title"};
    // Addresses of boards' own small pictures from "//" on, "*" for anything.
    std::vector<std::string> pictures{"//img*/ico/*", "//img*/premium/*", "//img*/emoji/*",
                                      "//o.*"};
    // What ends a whole page, in any case; empty: a page is whole without.
    std::string end = "</html>";

    bool operator==(const PageMarks&) const = default;
};

// What tells a board from a menu's other links.
struct MenuMarks {
    // How the names of hosts begin that have pages below folders, but no boards.
    std::vector<std::string> otherHosts{"www.", "info.", "menu.", "find."};

    bool operator==(const MenuMarks&) const = default;
};

// What a code in the server's head means, and which cookie the server calls broken by it.
struct AnswerCode {
    std::string code, meaning, brokenCookie;

    bool operator==(const AnswerCode&) const = default;
};

// By what the answers to a post are known.
struct AnswerMarks {
    std::vector<std::string> postedTitles{"書きこみました", "書き込みました"};
    std::vector<std::string> errorTitles{"ERROR", "エラー"};
    std::vector<std::string> confirmationTitles{"書き込み確認", "投稿確認"};
    // In comments, behind the mark.
    std::string commentMark = "_X:";
    std::string postedWord = "true", confirmationWord = "cookie", errorWord = "error";
    // Headers, in lower case: a code with words behind it, and the number of the new post.
    std::string codeHeader = "x-chx-error", numberHeader = "x-resnum";
    std::string confirmationCode = "0000";
    std::string brokenMark = "[Broken "; // behind a code, before a cookie's name and "]"
    // What a page says that a reader must prove to be human on, or log in: elements' classes.
    std::vector<std::string> proofs{"g-recaptcha", "h-captcha", "cf-turnstile", "captcha"};
    std::vector<AnswerCode> codes; // the shipped file's alone

    bool operator==(const AnswerMarks&) const = default;
};

// The form in which a server takes a post first, as a browser would send its pages' own.
struct FormShape {
    // Where it goes, and the page that a browser would send it from. {board} and {key} are the
    // thread's; of a board "FOLDER/NAME", {folder} is "/FOLDER" and {name} the rest.
    std::string path, page;
    // In the browser's order. A value is a text, or one of "$name", "$mail", "$message", "$time",
    // "$key", "$bbs" (the board's own name) and "$dir" (the folder that it stands in).
    std::vector<std::pair<std::string, std::string>> fields;
    Charset charset = Charset::kCp932;
    long secondsBefore = 30; // servers look for a form that was shown some time ago

    bool operator==(const FormShape&) const = default;
};

// How families take posts.
enum class PostKind {
    kBbs,     // bbs.cgi, Shift_JIS
    kUtf8,    // bbs.cgi, UTF-8
    kRawmode, // write.cgi, EUC-JP, boards in folders
    kOfflaw   // write.cgi, Shift_JIS
};
FormShape DefaultShape(PostKind kind);
std::map<PostKind, FormShape> DefaultShapes();

} // namespace gate
