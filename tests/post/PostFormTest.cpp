#include "post/PostForm.h"

#include <gtest/gtest.h>

namespace {

constexpr PostFamily kBbsCgi = PostFamily::kBbsCgi;
constexpr PostFamily kWriteCgi = PostFamily::kWriteCgi;
constexpr time_t kNow = 1011789296;
const std::string kSubmit = "&submit=%8F%91%82%AB%8D%9E%82%DE";

std::string BodyOf(const PostTarget& target, const WrittenPost& text) {
    PostForm form;
    EXPECT_EQ(MakePostForm(target, text, kNow, &form), PostCheck::kGood);
    return form.body;
}

} // namespace

TEST(PostForm, EachFamilyHasItsFields) {
    const WrittenPost text{"名無し", "sage", "あ\n<b> 1+1"};
    const std::string encoded = "%82%A0%0A%3Cb%3E+1%2B1";
    EXPECT_EQ(BodyOf({kBbsCgi, "h", "news", "123"}, text),
              "FROM=%96%BC%96%B3%82%B5&mail=sage&MESSAGE=" + encoded +
                  "&bbs=news&key=123&time=1011789296" + kSubmit);
    for (const char* board : {"abc/xyz", "bbs/xyz", "xyz"})
        EXPECT_EQ(BodyOf({kWriteCgi, "h", board, "123"}, text),
                  "NAME=%96%BC%96%B3%82%B5&MAIL=sage&MESSAGE=" + encoded +
                      "&BBS=xyz&KEY=123&TIME=1011789296" + kSubmit);
    EXPECT_EQ(BodyOf({kBbsCgi, "h", "news", "1"}, {"", "", "\r"}),
              "FROM=&mail=&MESSAGE=%0D&bbs=news&key=1&time=1011789296" + kSubmit);
    const std::string longText(100 * 1024, 'x');
    EXPECT_NE(BodyOf({kBbsCgi, "h", "news", "1"}, {"", "", longText}).find(longText),
              std::string::npos);
}

TEST(PostForm, NothingIsSentOfWhatCantBeSaid) {
    const struct {
        WrittenPost text;
        PostCheck expected;
    } cases[] = {
        {{"name", "mail", ""}, PostCheck::kNoMessage},
        {{"", "", "\U0001F600"}, PostCheck::kNotEncodable},
        {{"〜", "", "text"}, PostCheck::kNotEncodable},
        {{"", "〜", "text"}, PostCheck::kNotEncodable},
        {{"", "", "cut \xE3\x81"}, PostCheck::kNotEncodable},
        {{"", "", std::string("a\0b", 3)}, PostCheck::kNotEncodable},
        // Single bytes of cp932 that would eat what follows them
        {{"é", "", "text"}, PostCheck::kNotEncodable},
        {{"", "ö", "text"}, PostCheck::kNotEncodable},
        {{"", "", "no\u00A0break"}, PostCheck::kNotEncodable},
        {{"", "", "\u0080"}, PostCheck::kNotEncodable},
        {{"", "", "あ\u00E0"}, PostCheck::kNotEncodable},
        {{"", "", "\u00FF"}, PostCheck::kNotEncodable},
        {{"", "", "overlong \xE0\x83\xA9"}, PostCheck::kNotEncodable},
        {{"÷", "×", "\u00B1°§¨´¶ﾊﾝｶｸ"}, PostCheck::kGood},
    };
    for (const auto& test : cases) {
        PostForm form;
        EXPECT_EQ(MakePostForm({}, test.text, kNow, &form), test.expected) << test.text.message;
    }
}

TEST(PostTarget, IsTakenFromTheAddressOnShow) {
    const struct {
        const char* address;
        PostFamily family;
        const char* board; // null: refused
        const char* cgi;
        const char* url;
        const char* dat;
    } cases[] = {
        {"http://h.jp/test/read.cgi?bbs=news&key=12", kBbsCgi, "news", "/test/bbs.cgi",
         "http://h.jp/news/index.html", "12.dat"},
        {"http://h.jp/bbs/read.cgi?BBS=xyz&KEY=12", kWriteCgi, "bbs/xyz", "/bbs/write.cgi",
         "http://h.jp/xyz/index.html", "12.cgi"},
        {"http://h.jp/abc/bbs/read.cgi?BBS=xyz&KEY=12", kWriteCgi, "abc/xyz", "/abc/bbs/write.cgi",
         "http://h.jp/abc/xyz/index.html", "12.cgi"},
        {"", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http://h.jp/news/", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http:///test/read.cgi?bbs=news&key=12", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http://h.jp/test/read.cgi?bbs=&key=12", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http://h.jp/test/read.cgi?bbs=news", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http://h.jp/test/read.cgi?bbs=../..&key=1", kBbsCgi, nullptr, nullptr, nullptr, nullptr},
        {"http://h\rX: y/test/read.cgi?bbs=news&key=12", kBbsCgi, nullptr, nullptr, nullptr,
         nullptr},
    };
    for (const auto& test : cases) {
        const std::optional<PostTarget> target = ParsePostTarget(test.address, test.family);
        ASSERT_EQ(target.has_value(), test.board != nullptr) << test.address;
        if (!target)
            continue;
        EXPECT_EQ(target->host, "h.jp");
        EXPECT_EQ(target->board, test.board);
        EXPECT_EQ(target->CgiPath(), test.cgi);
        EXPECT_EQ(target->BoardUrl(), test.url);
        EXPECT_EQ(target->DatName(), test.dat);
        EXPECT_EQ(target->Referer(), std::string("http://h.jp/") + test.board + "/index.html");
    }
    const std::string longBoard(64, 'x');
    EXPECT_FALSE(ParsePostTarget("http://h/test/read.cgi?bbs=" + longBoard + "&key=1", kBbsCgi));
}
