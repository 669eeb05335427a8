#include <parsedate.h>

#include <clocale>
#include <cstdlib>

#include <gtest/gtest.h>

namespace {

constexpr time_t kNovember6 = 784111777; // 1994-11-06 08:49:37 UTC

struct Case {
    const char* text;
    time_t moment;
};

} // namespace

class ParseDateTest : public testing::Test {
protected:
    ParseDateTest() { _SetZone("Asia/Tokyo"); }
    ~ParseDateTest() override {
        setlocale(LC_ALL, "C");
        _SetZone("UTC");
    }
    static void _SetZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
};

TEST_F(ParseDateTest, ReadsWhatServersSend) {
    const Case kCases[] = {
        {"Sun, 06 Nov 1994 08:49:37 GMT", kNovember6},
        {"Sun, 06 Nov 1994 08:49:37 UTC", kNovember6},
        {"Sun, 6 Nov 1994 08:49:37 GMT\r\n", kNovember6},
        {"06 Nov 1994 08:49:37 +0000", kNovember6},
        {"Sun, 06 Nov 1994 17:49:37 +0900", kNovember6},
        {"Sun, 06 Nov 1994 03:49:37 -0500", kNovember6},
        {"Sun, 06 Nov 1994 17:49:37 JST", kNovember6},
        {"Sunday, 06-Nov-94 08:49:37 GMT", kNovember6},
        {"Sun Nov  6 08:49:37 GMT 1994", kNovember6},
        {"SUN, 06 NOV 1994 08:49:37 gmt", kNovember6},
        {"Sun, 06 Nov 1994 08:49 GMT", kNovember6 - 37},
        {"Thu, 01 Jan 1970 00:00:00 UTC", 0},
        {"Thu, 29 Feb 2024 12:00:00 GMT", 1709208000},
        {"Fri, 31 Dec 2100 23:59:59 GMT", 4133980799},
    };
    for (const Case& current : kCases)
        EXPECT_EQ(current.moment, parsedate(current.text, -1)) << current.text;
}

TEST_F(ParseDateTest, ADateWithoutAZoneIsLocalTime) {
    const Case kCases[] = {
        {"Sun Nov  6 17:49:37 1994\n", kNovember6},
        {"Sun Nov  6 17:49:37 1994", kNovember6},
        {"Sun, 06 Nov 1994 17:49:37", kNovember6},
    };
    for (const Case& current : kCases)
        EXPECT_EQ(current.moment, parsedate(current.text, -1)) << current.text;
    time_t now = 1700000000;
    EXPECT_EQ(now, parsedate(ctime(&now), -1));
}

TEST_F(ParseDateTest, WhatIsNoDateIsMinusOne) {
    const char* const kTexts[] = {"",
                                  "garbage",
                                  "0",
                                  "Sun, 32 Nov 1994 08:49:37 GMT",
                                  "Sun, 29 Feb 2023 08:49:37 GMT",
                                  "Sun, 06 Nvo 1994 08:49:37 GMT",
                                  "Sun, 06 Nov 1994 24:49:37 GMT",
                                  "Sun, 06 Nov 1994 08:60:37 GMT",
                                  "Sun, 06 Nov 1994 08:49:37 XYZ",
                                  "Sun, 06 Nov 99999999 08:49:37 GMT",
                                  "Sun, 06 Nov 1994 GMT",
                                  "Sun, 06 Nov 1994 08:49:37 GMT extra",
                                  "Sun, -6 Nov 1994 08:49:37 GMT",
                                  ": : : : :",
                                  "- - - - -"};
    for (const char* text : kTexts)
        EXPECT_EQ(-1, parsedate(text, -1)) << text;
    EXPECT_EQ(-1, parsedate(nullptr, -1));
    EXPECT_EQ(-1, parsedate(std::string(100000, '9').c_str(), -1));
}

TEST_F(ParseDateTest, TheLocaleDoesNotMatter) {
    if (!setlocale(LC_ALL, "ja_JP.UTF-8"))
        GTEST_SKIP() << "no Japanese locale";
    EXPECT_EQ(kNovember6, parsedate("Sun, 06 Nov 1994 08:49:37 GMT", -1));
}

TEST_F(ParseDateTest, WhatTheCacheWritesComesBack) {
    time_t moments[] = {0, 951782400, 1709208000, 2147483647, 4102444799};
    for (time_t moment : moments) {
        char text[32];
        strftime(text, sizeof(text), "%a, %d %b %Y %H:%M:%S %Z", gmtime(&moment));
        EXPECT_EQ(moment, parsedate(text, -1)) << text;
    }
}
