#include "today/Families.h"

#include "convert/Encodings.h"
#include "convert/HtmlTree.h"
#include "post/PageForm.h"

#include "server/Text.h"

#include <gtest/gtest.h>

#include <algorithm>

// What the sample server asks of one who posts.

namespace {

constexpr const char* kHost = "news.today.example";
constexpr const char* kKey = "1772755200";
constexpr const char* kAgent = "Monazilla/1.00 Itamori/0.1.0";
constexpr time_t kNow = 1800000000;

std::string Encoded(const std::string& text) {
    std::string encoded;
    for (const unsigned char c : text) {
        char part[8];
        snprintf(part, sizeof(part), "%%%02X", c);
        encoded += part;
    }
    return encoded;
}

std::string Form(const today::Fields& fields) {
    std::string form;
    for (const auto& [name, value] : fields)
        form += (form.empty() ? "" : "&") + name + "=" + Encoded(value);
    return form;
}

class Posting : public testing::Test {
protected:
    Posting() {
        std::string error;
        EXPECT_TRUE(fWorld.boards.Load(TODAY_BOARDS, &error)) << error;
    }
    today::Answer Post(const today::Fields& fields, const char* host = kHost) {
        fQuestion.method = "POST";
        fQuestion.host = host;
        fQuestion.body = Form(fields);
        return today::answerTo(fWorld, fQuestion, kNow);
    }
    today::Answer PostFirst() {
        fQuestion.path = "/test/bbs.cgi";
        fQuestion.query.clear();
        fQuestion.referer = std::string("https://") + kHost + "/living/";
        fQuestion.userAgent = kAgent;
        return Post({{"FROM", ""},
                     {"mail", "sage"},
                     {"MESSAGE", "&#128512; \"<b>\"\r\ntwo"},
                     {"bbs", "living"},
                     {"key", kKey},
                     {"time", std::to_string(kNow - 60)},
                     {"submit", toCp932("書き込む")},
                     {"oekaki_thread1", ""}});
    }
    // As a web browser reads the page.
    static today::Fields HiddenFields(const std::string& page) {
        const gate::HtmlTree tree(gate::ToUtf8(page, gate::Charset::kCp932));
        today::Fields fields;
        for (const gate::PageForm& form : gate::ParseForms(tree)) {
            for (const auto& field : form.fields)
                if (field.kind == gate::PageForm::Kind::kHidden)
                    fields.emplace_back(field.name, toCp932(field.value));
        }
        return fields;
    }
    today::Answer Accept(today::Fields fields) {
        fields.emplace_back("submit", toCp932("上記全てを承諾して書き込む"));
        fQuestion.query = "guid=ON";
        fQuestion.referer = std::string("https://") + kHost + "/test/bbs.cgi";
        return Post(fields);
    }
    int Count() { return fWorld.Find("living", kKey)->posts; }
    static std::string Cookies(const today::Answer& answer) {
        std::string cookies;
        for (const auto& [name, value] : answer.headers)
            if (name == "Set-Cookie")
                cookies += (cookies.empty() ? "" : "; ") + value.substr(0, value.find(';'));
        return cookies;
    }
    static std::string Code(const today::Answer& answer) {
        for (const auto& [name, value] : answer.headers)
            if (name == "X-Chx-Error")
                return value;
        return {};
    }

    today::World fWorld;
    today::Question fQuestion;
};

TEST_F(Posting, OnlyTheAcceptedPageWritesAndGivesCookies) {
    const int before = Count();
    const today::Answer page = PostFirst();
    EXPECT_EQ(Code(page), "0000 Confirmation");
    EXPECT_EQ(Cookies(page), "");
    EXPECT_EQ(Count(), before);
    const today::Fields fields = HiddenFields(page.body);
    const today::Answer done = Accept(fields);
    EXPECT_NE(done.body.find(toCp932("書きこみました。")), std::string::npos) << done.body;
    EXPECT_EQ(Count(), before + 1);
    EXPECT_EQ(Code(Accept(fields)), "E3100"); // once
    fQuestion.cookie = Cookies(done);
    EXPECT_EQ(Code(PostFirst()), "");
    EXPECT_EQ(Count(), before + 2);
    fWorld.tickets.overdue.merge(fWorld.tickets.good);
    fWorld.tickets.good.clear();
    EXPECT_EQ(Code(PostFirst()), "E3000");
    EXPECT_EQ(Count(), before + 2);
}

TEST_F(Posting, AChangedConfirmationIsRefused) {
    const int before = Count();
    const today::Fields fields = HiddenFields(PostFirst().body);
    ASSERT_EQ(fields.size(), 8u);
    today::Fields changed = fields;
    changed[2].second += "x";
    EXPECT_EQ(Code(Accept(changed)), "E4000");
    changed = fields;
    std::iter_swap(changed.begin(), changed.begin() + 1);
    EXPECT_EQ(Code(Accept(changed)), "E4000");
    EXPECT_EQ(Count(), before);
}

TEST_F(Posting, EachFamilyTakesItsOwnFormInItsOwnCharset) {
    const struct {
        const char *host, *path, *folder, *board, *key, *charset;
    } kCases[] = {{"rooms.example", "/bbs/write.cgi/room/101/1772770000/", "room", "101",
                   "1772770000", "EUC-JP"},
                  {"town.example", "/bbs/write.cgi", "", "town", "1772780000", "CP932"}};
    for (const auto& one : kCases) {
        fQuestion.path = one.path;
        fQuestion.referer = std::string("https://") + one.host + "/";
        const std::string text = today::convert("日本語", "UTF-8", one.charset);
        const today::Answer answer = Post({{"DIR", one.folder},
                                           {"BBS", one.board},
                                           {"KEY", one.key},
                                           {"TIME", "1"},
                                           {"NAME", ""},
                                           {"MAIL", ""},
                                           {"MESSAGE", text}},
                                          one.host);
        EXPECT_NE(answer.body.find(today::convert("書きこみました。", "UTF-8", one.charset)),
                  std::string::npos);
        const std::string board = std::string(one.folder) + (*one.folder ? "/" : "") + one.board;
        EXPECT_NE(fWorld.Find(board, one.key)->dat.find(toCp932(" 日本語 <>")), std::string::npos);
    }
}

} // namespace
