#include "net/lines.h"
#include "net/NPUrl.h"
#include "net/ThreadAddress.h"
#include "text/cp932.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Sjis(const std::string& utf8) {
    std::string bytes(utf8.size() + 1, '\0');
    int32 length = static_cast<int32>(utf8.size());
    int32 written = 0;
    EXPECT_EQ(utf8_conv_to_cp932(utf8.data(), &length, bytes.data(), &written), 0);
    bytes.resize(written);
    return bytes;
}

const char* OrNull(const char* text) {
    return text != nullptr ? text : "(null)";
}

} // namespace

TEST(Lines, SubjectLinesOfBothForms) {
    const struct {
        std::string line;
        int result;
        const char* dat;
        const char* title;
        const char* count;
    } kCases[] = {
        {"1012345678.dat<>スレタイ (123)\n", 0, "1012345678.dat", "スレタイ ", "123"},
        {"1012345678.dat,スレタイ(123)\n", 0, "1012345678.dat", "スレタイ", "123"},
        {"1012345678.dat,スレタイ（123）\n", 0, "1012345678.dat", "スレタイ",
         "\xBC\x88"
         "123"},
        {"1.dat<>前(笑) (5)\n", 0, "1.dat", "前(笑) ", "5"},
        {"1.dat<>題<7>\n", 0, "1.dat", "題", "7"},
        {"1.cgi<>題 (7)\n", 0, "1.cgi", "題 ", "7"},
        {"1.dat<>題だけ\n", -1, "1.dat", "", ""},
        {"<>題 (5)\n", -1, "", "", ""},
        {"何もない\n", -1, "", "", ""},
        {"12345678901.dat<>題 (5)\n", 0, "12345678901.dat", "題 ", "5"},
        {"123456789012.dat<>題 (5)\n", -1, "", "", ""},
        {"1.dat<>題 (1234567)\n", 0, "1.dat", "題 ", "1234567"},
        {"1.dat<>題 (12345678)\n", -1, "1.dat", "題 ", ""},
        {"", -1, "", "", ""},
        {"\n", -1, "", "", ""},
    };
    for (const auto& item : kCases) {
        _SubjectOut out = {};
        EXPECT_EQ(parseSubject(Sjis(item.line).c_str(), &out), item.result) << item.line;
        EXPECT_STREQ(out.dat, item.dat) << item.line;
        EXPECT_STREQ(out.title, item.title) << item.line;
        EXPECT_STREQ(out.count, item.count) << item.line;
    }
}

TEST(Lines, ASubjectThatDoesNotConvertIsRefused) {
    _SubjectOut out = {};
    EXPECT_EQ(parseSubject("1.dat<>\x80 (5)\n", &out), -1);
}

TEST(Lines, ACodeWithoutACharacterIsDroppedFromATitle) {
    _SubjectOut out = {};
    EXPECT_EQ(parseSubject("1.dat<>a\xF0\x40"
                           "b (5)\n",
                           &out),
              0);
    EXPECT_STREQ(out.title, "ab ");
}

TEST(Lines, ALongTitleIsCutAtACharacter) {
    std::string title;
    for (int i = 0; i < 2000; i++)
        title += "あ";
    _SubjectOut out = {};
    EXPECT_EQ(parseSubject(("1.dat<>" + Sjis(title) + "(5)\n").c_str(), &out), 0);
    EXPECT_EQ(std::string(out.title), title.substr(0, 4095));
    EXPECT_STREQ(out.count, "5");
    EXPECT_EQ(parseSubject(("1.dat<>a" + Sjis(title) + "(5)\n").c_str(), &out), 0);
    EXPECT_EQ(strlen(out.title), 4093u);
}

TEST(Lines, DatLinesOfBothForms) {
    const struct {
        std::string line;
        int result;
        const char* name;
        const char* mail;
        const char* date;
        const char* message;
        const char* title;
    } kCases[] = {
        {"名無し<>sage<>02/01/23 ID:abc<> 本文 <br> 続き <>スレタイ\n", 0, "名無し", "sage",
         "02/01/23 ID:abc", "本文 <br> 続き ", "スレタイ"},
        {"n<><>d<>m<>\n", 0, "n", "(null)", "d", "m", "(null)"},
        {"n,m,d,b,t\n", 0, "n", "m", "d", "b", "t"},
        {"あぼーん<>あぼーん<>あぼーん<>あぼーん<>あぼーん\n", 0, "あぼーん", "あぼーん",
         "あぼーん", "あぼーん", "(null)"},
        {"n<>m<>d<>b<>t", 0, "n", "m", "d", "b", "(null)"},
        {"<>m<>d<>b<>t\n", -1, "(null)", "(null)", "(null)", "(null)", "(null)"},
        {"n<>m<>d<>a<>b<>t\n", -1, "(null)", "(null)", "(null)", "(null)", "(null)"},
        {"n<>m,x<>d,y<>a<>b,z<>t,u\n", 0, "n<>m", "x<>d", "y<>a<>b", "z<>t", "u"},
        {"n<>m<>d\n", -1, "(null)", "(null)", "(null)", "(null)", "(null)"},
        {"n,m\n", -1, "n", "(null)", "(null)", "(null)", "(null)"},
        {"n<><><><>\n", 0, "n", "(null)", "", "", "(null)"},
        {"", -1, "(null)", "(null)", "(null)", "(null)", "(null)"},
    };
    for (const auto& item : kCases) {
        _ArticleOut out = {};
        EXPECT_EQ(parseArticle(Sjis(item.line).c_str(), &out, true), item.result) << item.line;
        EXPECT_STREQ(OrNull(out.name), item.name) << item.line;
        EXPECT_STREQ(OrNull(out.mail), item.mail) << item.line;
        EXPECT_STREQ(OrNull(out.date), item.date) << item.line;
        EXPECT_STREQ(OrNull(out.message), item.message) << item.line;
        EXPECT_STREQ(OrNull(out.title), item.title) << item.line;
        ReleaseArticle(&out);
        EXPECT_EQ(out.name, nullptr);
    }
}

TEST(Lines, AUtf8DatLineIsTakenAsItIs) {
    _ArticleOut out = {};
    EXPECT_EQ(parseArticle("名<>sage<>日<>文<>題\n", &out, false), 0);
    EXPECT_STREQ(out.title, "題");
    ReleaseArticle(&out);
}

TEST(NPUrl, DividesABoardAddress) {
    const struct {
        const char* url;
        int32 status;
        const char* host;
        const char* board;
    } kCases[] = {
        {"http://host/board/", 0, "host", "board"},
        {"http://host/a/b/", 0, "host", "a/b"},
        {"http://host/board/index.html", 0, "host", "board"},
        {"http://host/board", -1, "(null)", "(null)"},
        {"http://host/", -1, "(null)", "(null)"},
        {"http://host", -1, "(null)", "(null)"},
        {"//host/board/", -1, "(null)", "(null)"},
        {"host/board/", -1, "(null)", "(null)"},
        {"", -1, "(null)", "(null)"},
    };
    for (const auto& item : kCases) {
        const NPUrl url(item.url);
        EXPECT_EQ(url.Status(), item.status) << item.url;
        EXPECT_STREQ(OrNull(url.Host()), item.host) << item.url;
        EXPECT_STREQ(OrNull(url.Board()), item.board) << item.url;
    }
}

TEST(ThreadAddress, DependsOnTheKindOfThread) {
    EXPECT_EQ(MakeThreadAddress("http://h/news/", "123.dat"),
              "http://h/test/read.cgi?bbs=news&key=123");
    EXPECT_EQ(MakeThreadAddress("http://h/news/", "123.cgi"),
              "http://h/bbs/read.cgi?BBS=news&KEY=123");
    EXPECT_EQ(MakeThreadAddress("http://h/sports/42/", "9.cgi"),
              "http://h/sports/bbs/read.cgi?BBS=42&KEY=9");
    EXPECT_EQ(MakeThreadAddress("http://h/news", "123.dat"), "");
    EXPECT_EQ(MakeThreadAddress("http://h/news/", "123"), "");
}
