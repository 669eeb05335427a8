#include "post/Answer.h"

#include "post/PostAnswer.h"

#include <gtest/gtest.h>

using gate::Charset;
using Outcome = gate::PostAnswer::Outcome;

namespace {

std::string Sjis(std::string_view utf8) {
    return gate::ToCp932(utf8, Charset::kUtf8);
}

// As the program reads a page: line by line.
::PostAnswer Read(std::string_view page) {
    ::PostAnswer answer;
    while (!page.empty()) {
        const size_t end = page.find('\n');
        EXPECT_NE(end, page.npos) << "the last line has no end";
        answer.AddLine(page.data(), static_cast<int32>(end + 1));
        page.remove_prefix(end + 1);
    }
    return answer;
}

const std::string kConfirmation =
    "<html><head><title>■ 書き込み確認 ■</title></head><body><!-- _X:cookie -->書き込み確認<br>"
    "<form method=POST action=\"../test/bbs.cgi?guid=ON\"><input type=hidden name=FROM value>"
    "<input type=submit value=\"上記全てを承諾して書き込む\" name=submit></form></body></html>";
const std::string kPosted = "<html><head><title>書きこみました。</title>"
                            "<meta content=\"1;URL=/b/\" http-equiv=\"refresh\"></head></html>";
const std::string kRefused =
    "<html><head><title>ERROR!!</title></head><body><font size=+1 color=#FF0000><b>"
    "ERROR: 修行が足りません(Lv=1)。</b></font><br>しばらく<br>お待ちください</body></html>";

} // namespace

TEST(Answer, ItsSignsTellTheOutcome) {
    struct Case {
        const char* what;
        int status;
        std::string body, code, number;
        Outcome outcome;
    };
    const Case kCases[] = {
        {"quoted refresh", 200, kPosted, "", "", Outcome::kPosted},
        {"a number alone", 200, "<html></html>", "", "12", Outcome::kPosted},
        {"a comment", 200, "<html><!-- 2ch_X:true --></html>", "", "", Outcome::kPosted},
        {"only a refresh, in capitals", 200,
         "<html><META HTTP-EQUIV=Refresh CONTENT=0><title>ok</title></html>", "", "",
         Outcome::kPosted},
        {"another family's title", 200, "<html><title>書きこみました</title>", "", "",
         Outcome::kPosted},
        {"confirmation", 200, kConfirmation, "0000 Confirmation", "", Outcome::kConfirmation},
        {"by its title alone", 200, kConfirmation, "", "", Outcome::kConfirmation},
        {"by its comment", 200, "<html><title>x</title><!-- 2ch_X:cookie --></html>", "", "",
         Outcome::kConfirmation},
        {"and a second answer", 200, kConfirmation + "HTTP/1.1 200 OK\r\n\r\n" + kPosted, "", "",
         Outcome::kConfirmation},
        {"error", 200, kRefused, "", "", Outcome::kRefused},
        {"error comment", 200, "<html><title>x</title><!-- 2ch_X:error -->y", "", "",
         Outcome::kRefused},
        {"error code", 200, "<html>x</html>", "9801 wait", "", Outcome::kRefused},
        {"a challenge that reloads", 503,
         "<html><title>Just a moment...</title><meta http-equiv=refresh content=5></html>", "", "",
         Outcome::kRefused},
        {"letters of a picture", 200,
         "<html><title>認証</title><form method=post><input type=text name=c></form></html>", "",
         "", Outcome::kProof},
        {"a riddle", 403, "<html><title>ERROR</title><div class='x g-recaptcha'></div></html>", "",
         "", Outcome::kProof},
        {"nothing", 200, "", "", "", Outcome::kUnclear},
        {"something else", 200, "<html><title>Welcome</title>Sign in</html>", "", "",
         Outcome::kUnclear},
    };
    for (const Case& item : kCases) {
        for (const std::string& body : {item.body, Sjis(item.body)}) {
            const auto answer = gate::JudgeAnswer({item.status, body, item.code, item.number});
            EXPECT_EQ(answer.outcome, item.outcome) << item.what;
        }
    }
}

TEST(Answer, AConfirmationIsShownByteForByteUpToItsFirstEnd) {
    const std::string page = Sjis(kConfirmation);
    const std::string body = page + "\r\n\r\n" + Sjis(kPosted);
    const gate::PostAnswer answer = gate::JudgeAnswer({200, body, "0000 Confirmation", ""});
    EXPECT_EQ(answer.page, page);
    EXPECT_EQ(answer.charset, Charset::kCp932);
    ASSERT_TRUE(answer.form);
    EXPECT_EQ(answer.form->action, "../test/bbs.cgi?guid=ON");
    EXPECT_EQ(gate::JudgeAnswer({200, kConfirmation, "", ""}).charset, Charset::kUtf8);
}

TEST(Answer, TheServersWordsAndItsCodesMeaningAreTold) {
    gate::AnswerMarks marks;
    marks.codes = {{"E3000", "チケットが無効です。", "ticket"}, {"1930", "枯れています。", "tree"}};
    const gate::PostAnswer answer =
        gate::JudgeAnswer({200, kRefused, "E3000 [Broken other]", ""}, marks);
    EXPECT_EQ(answer.words, "ERROR: 修行が足りません(Lv=1)。\nしばらく\nお待ちください\n"
                            "(E3000: チケットが無効です。)\n");
    EXPECT_EQ(answer.brokenCookies, (std::vector<std::string>{"ticket", "other"}));
    EXPECT_EQ(gate::JudgeAnswer({200, "", "1930", ""}, marks).brokenCookies,
              std::vector<std::string>{"tree"});
    EXPECT_EQ(gate::JudgeAnswer({200, "", "1930", ""}).outcome, Outcome::kRefused);
    EXPECT_EQ(gate::JudgeAnswer({200, "<p>x", "7777 new", ""}).words, "x\n(7777 new)\n");
    const auto confirmation =
        gate::JudgeAnswer({200, kConfirmation, "0000 Confirmation [Broken MonaTicket]", ""});
    EXPECT_EQ(confirmation.brokenCookies, std::vector<std::string>{"MonaTicket"});
    // No code says anything that isn't the server's own word for a cookie.
    EXPECT_TRUE(gate::JudgeAnswer({200, kRefused, "9990 banned", ""}).brokenCookies.empty());
}

TEST(AnswerPage, TheProgramTakesASuccessForOne) {
    const std::string page = gate::MakePostedPage("http://a.example/test/read.cgi/b/1712000000/");
    EXPECT_TRUE(Read(page).IsSuccess());
    EXPECT_LT(page.size(), 1000u);
}

TEST(AnswerPage, TheProgramShowsARefusalsWords) {
    const struct {
        std::string text, shown;
    } kCases[] = {
        {"ERROR: だめ\n理由\n", "ERROR: だめ\n理由\n"},
        {"\n a \r\n\n\tb", " a \n b\n"},
        {"<b>x</b> &lt; &#65;", "＜b＞x＜/b＞ ＆lt; ＆#65;\n"},
        {"😀é", "〓〓\n"},
        {"http-equiv=refresh", "http-equiv＝refresh\n"},
        {"</title><meta http-equiv=refresh>", "＜/title＞＜meta http-equiv＝refresh＞\n"},
        {"", "サーバーは理由を書いていません。\n"},
    };
    for (const auto& item : kCases) {
        const ::PostAnswer answer = Read(gate::MakeRefusalPage(item.text));
        EXPECT_EQ(answer.ErrorText(), item.shown) << item.text;
        EXPECT_FALSE(answer.IsSuccess()) << item.text;
    }
}

TEST(AnswerPage, ALongRefusalFitsAndKeepsItsStart) {
    std::string lines;
    for (int i = 0; i < 500; i++)
        lines += "行 " + std::to_string(i) + "\n";
    std::string line = "始め";
    for (int i = 0; i < 3000; i++)
        line += "ｱ¢漢";
    for (const std::string& text : {lines, line, line + "\n" + lines}) {
        const std::string page = gate::MakeRefusalPage(text);
        const std::string utf8 = gate::ToUtf8(page, Charset::kCp932);
        EXPECT_LE(utf8.size(), 4095u);
        EXPECT_TRUE(page.ends_with("</html>\n"));
        const std::string shown = Read(page).ErrorText();
        EXPECT_GT(shown.size(), 2500u);
        EXPECT_TRUE(shown.starts_with(text.substr(0, 5))) << shown;
    }
}
