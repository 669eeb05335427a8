#include "net/ThreadAddress.h"

#include "net/SearchAddress.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int32 kBufferSize = 64;

// The three parts divided by spaces; "-" for an address that is no thread's.
std::string PartsOf(const std::string& url) {
    char host[kBufferSize] = "?";
    char board[kBufferSize] = "?";
    char key[kBufferSize] = "?";
    if (!Is2ch(url.c_str(), host, board, key, kBufferSize)) {
        EXPECT_EQ(std::string(host) + board + key, "???") << url;
        return "-";
    }
    return std::string(host) + " " + board + " " + key;
}

std::string Long(size_t length) {
    return std::string(length, 'a');
}

} // namespace

TEST(Is2ch, FindsTheThreadInEitherForm) {
    const struct {
        std::string url;
        std::string parts;
    } kCases[] = {
        {"http://h.example/test/read.cgi/news/123/", "h.example news 123"},
        {"http://h.example/test/read.cgi/news/123", "h.example news 123"},
        {"http://h.example/test/read.cgi/news/123/l50", "h.example news 123"},
        {"//h/read.cgi/news/123", "h news 123"},
        {"http://h/test/read.cgi?bbs=news&key=123", "h news 123"},
        {"http://h/bbs/read.cgi?BBS=news&KEY=123&START=1", "h news 123"},
        {"http://h/test/read.cgi/?key=123&bbs=news&ls=50", "h news 123"},
        {"http://h/test/read.cgi?bbs=a/b&key=123", "h a/b 123"},
        {"http://h:8080/test/read.cgi/news/123/", "h:8080 news 123"},
        {"http://h/test/read.cgi/" + Long(63) + "/" + Long(63) + "/",
         "h " + Long(63) + " " + Long(63)},
        {"http://" + Long(63) + "/read.cgi/b/k", Long(63) + " b k"},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(PartsOf(item.url), item.parts) << item.url;
}

TEST(Is2ch, RefusesWhatIsNoThread) {
    const std::string start = "http://h/test/read.cgi";
    const std::string kCases[] = {
        "",
        "http:",
        "http://h",
        "http://read.cgi",
        "http://h/news/index.html",
        "http://h/test/READ.CGI/news/123/",
        start,
        start + "/",
        start + "/news",
        start + "/news/",
        start + "//123/",
        start + "/../123/",
        start + "/news/../",
        start + "/./123",
        start + "?",
        start + "?bbs=news",
        start + "?key=123",
        start + "?bbs=&key=123",
        start + "?bbs=news&key=",
        start + "?bbs=../..&key=1",
        start + "?bbs=news&key=a/b",
        start + "/news/123/?ls=50",
        start + "/ne\x01ws/123/",
        start + "/" + Long(64) + "/123/",
        start + "/news/" + Long(64),
        start + "?bbs=" + Long(64) + "&key=1",
        start + "?bbs=b&key=" + Long(100000),
        "http://" + Long(64) + "/read.cgi/b/k",
        "http:///test/read.cgi/b/k",
        "http://../test/read.cgi/b/k",
    };
    for (const std::string& url : kCases)
        EXPECT_EQ(PartsOf(url), "-") << url.substr(0, 200);
}

TEST(MakeSearchAddress, AsksInJapaneseOrEverywhere) {
    const std::string page = "http://search.example/search?q=%s";
    EXPECT_EQ(MakeSearchAddress(page, "%82%A0+b", true),
              "http://search.example/search?q=%82%A0+b&hl=ja&lr=lang_ja&btnG=Google+%8C%9F%8D%F5");
    EXPECT_EQ(MakeSearchAddress(page, "", false),
              "http://search.example/search?q=&hl=ja&lr=on&btnG=Google+%8C%9F%8D%F5");
}
