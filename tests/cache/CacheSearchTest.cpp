#include "cache/CacheSearch.h"

#include "support/ScratchFolder.h"
#include "text/cp932.h"

#include <gtest/gtest.h>

namespace {

std::string Sjis(const std::string& text) {
    std::string bytes(text.size(), '\0');
    int32 from = static_cast<int32>(text.size());
    int32 to = 0;
    utf8_conv_to_cp932(text.data(), &from, bytes.data(), &to);
    return bytes.substr(0, static_cast<size_t>(to));
}

class CacheSearchTest : public testing::Test {
protected:
    void SetUp() override {
        fFolder.Write("h.example/news/1.dat",
                      Sjis("名無し<>sage<>2026/11/22<> 最初の投稿 <>ﾆｭｰｽ速報 &amp; 雑談\n"
                           "名無し<><>2026/11/22<> 二行の<br>投稿だよ &gt;&gt;1 <>\n"));
        fFolder.Write("h.example/news/2.dat", Sjis("a<>b<>c<> 本文 <>別のスレ\n"));
        fFolder.Write("rooms.example/game/12/3.cgi", "a<>b<>c<> ハングル 한글 <>部屋のニュース\n");
        fFolder.Write("h.example/news/.arriving/1.dat", Sjis("a<>b<>c<>d<>ニュース\n"));
        fFolder.Write("h.example/news/4.dat", "\xFF\xFE<>\n\n<><><><>\n");
        fFolder.Write("h.example/news/5.dat", "");
        fFolder.Write("h.example/news/6.dat",
                      "a<>b<>c<>" + std::string(20000, 'x') + "<>faraway\n");
    }
    std::string Find(const std::string& wanted, bool posts) {
        CacheSearch search(fFolder.Path(), wanted);
        std::string text;
        const auto found = [&text](const CacheMatch& match) {
            text += match.host + "/" + match.board + "/" + match.dat +
                    (match.number > 0 ? "#" + std::to_string(match.number) + ":" + match.line
                                      : "=" + match.title) +
                    ";";
            return true;
        };
        const auto goesOn = [](int32) { return true; };
        EXPECT_TRUE(posts ? search.SearchPosts(found, goesOn) : search.SearchTitles(found, goesOn));
        return text;
    }
    ScratchFolder fFolder;
};

TEST_F(CacheSearchTest, TitlesAndPostsAreFoundHoweverTheyAreWritten) {
    struct Case {
        const char* wanted;
        bool posts;
        const char* found;
    };
    const Case kCases[] = {
        {"にゅーす", false,
         "h.example/news/1.dat=ﾆｭｰｽ速報 & 雑談;rooms.example/game/12/3.cgi=部屋のニュース;"},
        {"速報 &", false, "h.example/news/1.dat=ﾆｭｰｽ速報 & 雑談;"},
        {"FARAWAY", false, "h.example/news/6.dat=faraway;"},
        {"無い", false, ""},
        {"", false, ""},
        {"投稿", true, "h.example/news/1.dat#1:最初の投稿 ;h.example/news/1.dat#2:投稿だよ >>1 ;"},
        {">>1", true, "h.example/news/1.dat#2:投稿だよ >>1 ;"},
        {"한글", true, "rooms.example/game/12/3.cgi#1:ハングル 한글 ;"},
        {"ニュース", true, ""},
    };
    for (const Case& row : kCases)
        EXPECT_EQ(Find(row.wanted, row.posts), row.found) << row.wanted;
}

TEST_F(CacheSearchTest, EndsWhenItIsTold) {
    CacheSearch search(fFolder.Path(), "投稿");
    int found = 0;
    EXPECT_FALSE(search.SearchPosts([&found](const CacheMatch&) { return ++found < 1; },
                                    [](int32) { return true; }));
    EXPECT_EQ(found, 1);
    EXPECT_FALSE(search.SearchTitles([](const CacheMatch&) { return true; },
                                     [](int32 files) { return files < 2; }));
    EXPECT_TRUE(
        CacheSearch(fFolder / "none", "x")
            .SearchTitles([](const CacheMatch&) { return true; }, [](int32) { return true; }));
}

} // namespace
