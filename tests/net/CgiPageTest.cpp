#include "net/CgiPage.h"

#include "net/lines.h"

#include <String.h>

#include <gtest/gtest.h>

namespace {

std::string DatLine(const std::string& block) {
    BString text(block.c_str());
    const int32 length = TagToDat(&text);
    EXPECT_EQ(length, text.Length());
    return text.String();
}

std::vector<std::string> LinesOf(const std::string& page) {
    CgiPage reader;
    std::vector<std::string> lines;
    for (size_t start = 0; start < page.size() && !reader.HasEnded();) {
        const size_t end = page.find('\n', start) + 1;
        if (reader.TakeLine(page.substr(start, end - start)))
            lines.push_back(reader.TakeDatLine());
        start = end;
    }
    return lines;
}

} // namespace

TEST(TagToDat, TurnsThePartsOfAPostIntoFields) {
    const struct {
        const char* block;
        const char* line;
    } cases[] = {
        {"<dt>1 名前：<a href=\"mailto:sage\"><b> 太郎 </b></a> 投稿日： 02/01/23 12:34<br>"
         "<dd>本文<br>二行目 <br><br>\n",
         "太郎<>sage<>02/01/23 12:34<> 本文<br>二行目 <>"},
        {"<dt>1000 名前：<A HREF=\"mailto:a@b\"><B> n </B></A> 投稿日： d<BR><DD>m <br><br>\n",
         "n<>a@b<>d<> m <>"},
        {"<dt>2 名前：<font color=forestgreen><b> 名無し </b></font> 投稿日： 今日 "
         "<font size=1>[ID:abc]</font><br><dd>m <br><br>\n",
         "名無し<><>今日 [ID:abc]<> m <>"},
        {"<dt>2 名前：<b> n </b> 投稿日： d<font size=1>[[x]]<br><dd>m <br><br>\n",
         "n<><>d[[x]]<> m <>"},
        {"<dt>2 名前：<b> n </b> 投稿日： d<br><dd>  ＡＡ   <br><br>\n", "n<><>d<>  ＡＡ  <>"},
        // The first link of a body is no mail.
        {"<dt>2 名前：<b> n </b> 投稿日： d<br><dd><a href=\"http://h/\">h</a> <br><br>\n",
         "n<><>d<> <a href=\"http://h/\">h</a> <>"},
        // What is missing stays empty, and the search goes on from where it stood.
        {"", "<><><>  <>"},
        {"<dt>1 no marks at all\n", "<><><>  <>"},
        {"<dt>1 <a href=\"mailto:x\n", "<><><>  <>"},
        {"<dt>1 <b> n <br><dd>m <br><br>\n", "<><><> m <>"},
        {"<dt>1 <b>x</b> <br><dd>m <br><br>\n", "<><><> m <>"},
        {"<dt>1 <b> n </b> 投稿日： d<font size=1>[ID<br><dd>m <br><br>\n", "n<><>d<> m <>"},
        {"<dt>1 <b> n </b> 投稿日： d<br><dd>m\n", "n<><>d<>  <>"},
        {"<dt>1 <b> n </b> 投稿日： d<br><dd>m <br><br>", "n<><>d<>  <>"},
        {"<dt>1 <b> n </b> 投稿日： d<br><dd>\n", "n<><>d<>  <>"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(DatLine(test.block), test.line) << test.block;
}

TEST(CgiPage, FindsTheTitleAndThePostsOfTheList) {
    const std::string head = "<html>\n<b>no <br> post</b>\n<DL>\n<font>題名</font>\n";
    const std::string first = "<dt>1 <b> a </b> 投稿日： d<br><dd>one <br><br>\n";
    // A name line without a line break goes on in the next.
    const std::string second =
        "<dt>2 <b> b </b> 投稿日： d\n<font size=1>[x]<br><dd>two <br><br>\n";
    const std::vector<std::string> expected = {"a<><>d<> one <>題名\n", "b<><>d[x]<> two <>\n"};
    EXPECT_EQ(LinesOf(head + first + second + "<TABLE>\n" + first), expected);
    EXPECT_EQ(LinesOf(head + first + second), expected);
    EXPECT_TRUE(LinesOf("<html>\n" + first + second).empty());
    EXPECT_TRUE(LinesOf("<dl>\n<table>\n<table>\n").empty());
}

// What comes behind it in the cache is counted by lines.
TEST(CgiPage, APostIsOneLineWhateverIsMissing) {
    const std::string post = "<dt>1 <b> a </b> 投稿日： d<br><dd>one <br><br>\n";
    const struct {
        const char* titleLine;
        const char* title;
    } cases[] = {
        {"<font>題名\n", ""},    {"題名</font>\n", ""}, {"題名\n", ""}, {"\n", ""}, {"", ""},
        {"<font>題名<", "題名"},
    };
    for (const auto& test : cases) {
        CgiPage page;
        for (const std::string& line : {std::string("<dl>\n"), std::string(test.titleLine)})
            EXPECT_FALSE(page.TakeLine(line));
        EXPECT_TRUE(page.TakeLine(post));
        EXPECT_EQ(page.TakeDatLine(), std::string("a<><>d<> one <>") + test.title + "\n");
    }
    CgiPage page;
    for (const char* line : {"<dl>\n", "<b>t</b>\n", "<dt>1 <b> a </b> 投稿日： あ"})
        EXPECT_FALSE(page.TakeLine(line));
    EXPECT_TRUE(page.TakeLine("<br><dd>one <br><br>\n"));
    EXPECT_EQ(page.TakeDatLine(), "a<><>あ<> one <>t\n");
}

TEST(CgiPage, ALineTooLongForTheCacheIsCutInItsMessage) {
    std::string text;
    while (text.size() < 9000)
        text += "あ";
    const std::string page =
        "<dl>\n<b>題名</b>\n<dt>1 <b> a </b> 投稿日： d<br><dd>" + text + " <br><br>\n";
    const std::vector<std::string> lines = LinesOf(page);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_LE(lines[0].size(), 8191u);
    EXPECT_GT(lines[0].size(), 8187u);
    _ArticleOut article = {};
    EXPECT_EQ(parseArticle(lines[0].c_str(), &article, false), 0);
    EXPECT_STREQ(article.title, "題名");
    EXPECT_EQ(std::string(article.message).size() % 3, 1u); // a space and whole characters
    EXPECT_TRUE(std::string(article.message).ends_with("あ…（以下略） "));
    ReleaseArticle(&article);
}
