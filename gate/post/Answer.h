#pragma once

#include "convert/Encodings.h"
#include "post/PageForm.h"
#include "settings/Marks.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// What came back: the parts of the head that speak of the post, and the body as it came.
struct PostReply {
    int status = 200;
    std::string_view body;
    std::string_view code;   // "1930 words"
    std::string_view number; // of the new post
};

struct PostAnswer {
    enum class Outcome {
        kPosted,
        kConfirmation, // to be shown to the user, with `form` if the page has one
        kRefused,
        kProof,  // asks for a picture's letters or a login: the user's web browser's business
        kUnclear // nothing tells whether the post was taken
    };
    Outcome outcome = Outcome::kUnclear;
    std::string page;                       // the bytes up to the first "</html>"
    Charset charset = Charset::kCp932;      // of the page
    std::string words;                      // UTF-8: what the page says, and what its code means
    std::vector<std::string> brokenCookies; // that the server itself calls broken
    std::optional<PageForm> form;           // of a confirmation
};

// A server may send a second answer behind the first page's end: the first one counts.
PostAnswer JudgeAnswer(const PostReply& reply, const AnswerMarks& marks = {});

// The two pages that the program knows, in cp932. The first sends the reader back to the thread.
std::string MakePostedPage(std::string_view threadAddress);
// The text is UTF-8, its lines ended by line feeds; what doesn't fit is left out at its end.
std::string MakeRefusalPage(std::string_view text);

} // namespace gate
