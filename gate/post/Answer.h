#pragma once

#include "convert/Encodings.h"
#include "post/PageForm.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// What a code in the server's head means, and which cookie the server calls broken by it.
struct AnswerCode {
    std::string code, meaning, brokenCookie;
};

// By what a family's answers to a post are known; it may stand in the settings. All of it UTF-8.
struct AnswerMarks {
    std::vector<std::string> postedTitles{"書きこみました", "書き込みました"};
    std::vector<std::string> errorTitles{"ERROR", "エラー"};
    std::vector<std::string> confirmationTitles{"書き込み確認", "投稿確認"};
    // In comments, behind "X:".
    std::string postedWord = "true", confirmationWord = "cookie", errorWord = "error";
    std::string confirmationCode = "0000";
    // What a page says that a reader must prove to be human on, or log in: elements' classes.
    std::vector<std::string> proofs{"g-recaptcha", "h-captcha", "cf-turnstile", "captcha"};
    std::vector<AnswerCode> codes{
        {"1930", "どんぐり(acorn)が枯れています。", "acorn"},
        {"1931", "どんぐり(acorn)を植えたところです。数分待ってください。", ""},
        {"1932", "どんぐり(acorn)が枯れています。", "acorn"},
        {"1941", "どんぐりのレベルが足りません。", ""},
        {"8853", "プロキシ経由の書き込みと見られています。", ""},
        {"9801", "書き込みの間隔が短すぎます。", ""},
        {"9990", "書き込みが規制されています。", ""},
        {"E3000", "チケット(MonaTicket)が無効です。", "MonaTicket"},
        {"E3100", "チケット(MonaTicket)が無効です。", "MonaTicket"},
        {"E4000", "チケット(MonaTicket)が無効です。", "MonaTicket"},
    };
};

// What came back: the parts of the head that speak of the post, and the body as it came.
struct PostReply {
    int status = 200;
    std::string_view body;
    std::string_view code;   // X-Chx-Error, "1930 words"
    std::string_view number; // X-Resnum
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
