#include "post/Cookies.h"

#include <gtest/gtest.h>

using gate::CookieJar;
using gate::CookiePlace;
using gate::Seconds;

namespace {

constexpr Seconds kNow = 1'700'000'000;
const CookiePlace kPlace{"agree.example.io", "/test/bbs.cgi", true};

CookieJar Jar() {
    return CookieJar({{"example.io", "example.com"}, {"BAN", "PON"}, {}});
}

std::string SentAfter(const std::string& line, const CookiePlace& place, Seconds later = 0) {
    CookieJar jar = Jar();
    jar.Take(line, kPlace, kNow);
    return jar.HeaderFor(place, kNow + later);
}

} // namespace

TEST(Cookies, DomainsPathsAndExpiryDecideWhoGetsACookie) {
    const struct {
        const char* line;
        CookiePlace place;
        Seconds later;
        const char* header;
    } kCases[] = {
        {"a=1", {"agree.example.io", "/test/x"}, 0, "a=1"},
        {"a=1", {"AGREE.example.io", "/test"}, 0, "a=1"},
        {"a=1", {"agree.example.io", "/testing"}, 0, ""},
        {"a=1", {"agree.example.io", "/"}, 0, ""},
        {"a=1", {"x.agree.example.io", "/test/"}, 0, ""},
        {"a=1; path=/", {"agree.example.io", "/b/?q=/test/"}, 0, "a=1"},
        {"a=1; path=/; domain=.example.io", {"other.example.io", "/"}, 0, "a=1"},
        {"a=1; path=/; domain=EXAMPLE.IO", {"example.io", "/"}, 0, "a=1"},
        {"a=1; path=/; domain=.example.io", {"badexample.io", "/"}, 0, ""},
        {"a=1; path=/; domain=.example.io", {"www.example.com", "/"}, 0, ""},
        {"a=1; path=/; domain=.io", {"agree.example.io", "/"}, 0, ""},
        {"a=1; path=/; domain=other.example.io", {"other.example.io", "/"}, 0, ""},
        {"a=1; path=/; domain=example.com", {"www.example.com", "/"}, 0, ""},
        {"a=1; path=x", {"agree.example.io", "/test/"}, 0, "a=1"},
        {"a=1; path=/; secure", {"agree.example.io", "/", false}, 0, ""},
        {"a=1; path=/; Secure; HttpOnly", {"agree.example.io", "/", true}, 0, "a=1"},
        {"a=1; path=/; Max-Age=60", {"agree.example.io", "/"}, 59, "a=1"},
        {"a=1; path=/; Max-Age=60", {"agree.example.io", "/"}, 60, ""},
        {"a=1; path=/; Max-Age=-1", {"agree.example.io", "/"}, 0, ""},
        {"a=1; path=/; Max-Age=99999999999999999999", {"agree.example.io", "/"}, 9999, "a=1"},
        {"a=1; path=/; Max-Age=x", {"agree.example.io", "/"}, 9999, "a=1"},
        {"a=1; path=/; max-age=60; expires=Thu, 01 Jan 1970 00:00:00 GMT",
         {"agree.example.io", "/"},
         0,
         "a=1"},
        {"a=1; path=/; expires=Tue, 14-Nov-2023 22:14:20 GMT",
         {"agree.example.io", "/"},
         59,
         "a=1"},
        {"a=1; path=/; expires=Tue, 14-Nov-2023 22:14:20 GMT", {"agree.example.io", "/"}, 60, ""},
        {" a = 1=2 ; path=/", {"agree.example.io", "/"}, 0, "a=1=2"},
        {"a=; path=/", {"agree.example.io", "/"}, 0, "a="},
        {"a; path=/", {"agree.example.io", "/"}, 0, ""},
        {"=1; path=/", {"agree.example.io", "/"}, 0, ""},
        {"a=1\r\nX: y; path=/", {"agree.example.io", "/"}, 0, ""},
        {"PON=x; path=/", {"agree.example.io", "/"}, 0, ""},
        {"BAN=BOONBOONBOON; path=/; domain=.example.io", {"agree.example.io", "/"}, 0, ""},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(SentAfter(item.line, item.place, item.later), item.header)
            << item.line << " for " << item.place.host << item.place.path;
}

TEST(Cookies, ALaterOneReplacesAndADateThatHasPassedForgets) {
    CookieJar jar = Jar();
    EXPECT_TRUE(jar.Take("MonaTicket=1; path=/; domain=.example.io", kPlace, kNow));
    EXPECT_TRUE(jar.Take("acorn=2; path=/; domain=.example.io", kPlace, kNow));
    EXPECT_TRUE(jar.Take("deep=3; path=/test", kPlace, kNow));
    EXPECT_TRUE(jar.Take("MonaTicket=4; path=/; domain=.example.io", kPlace, kNow + 1));
    EXPECT_EQ(jar.HeaderFor(kPlace, kNow), "deep=3; MonaTicket=4; acorn=2");
    jar.Take("acorn=; path=/; domain=.example.io; expires=Thu, 01-Jan-1970 00:00:00 GMT", kPlace,
             kNow);
    EXPECT_EQ(jar.HeaderFor(kPlace, kNow), "deep=3; MonaTicket=4");
    EXPECT_EQ(jar.Drop("MonaTicket"), 1u);
    EXPECT_EQ(jar.All().size(), 1u);
}

TEST(Cookies, AJarTakesNoOtherFamilysCookieEvenFromDisk) {
    CookieJar jar = Jar();
    EXPECT_FALSE(jar.Take("a=1; path=/", {"www.other.net", "/", true}, kNow));
    EXPECT_FALSE(jar.Add({"a", "1", "other.net", "/", false, false, {}, 0}));
    EXPECT_TRUE(jar.Add({"a", "1", "example.io", "/", false, false, {}, 0}));
    EXPECT_EQ(jar.HeaderFor({"other.net", "/", true}, kNow), "");
}

TEST(Cookies, WantedOnesAreSentEvenIfEmpty) {
    CookieJar jar({{"example.io"}, {}, {"NAME", "MAIL"}});
    EXPECT_EQ(jar.HeaderFor(kPlace, kNow), "NAME=; MAIL=");
    jar.Take("MAIL=sage; path=/", kPlace, kNow);
    EXPECT_EQ(jar.HeaderFor(kPlace, kNow), "MAIL=sage; NAME=");
    EXPECT_EQ(jar.HeaderFor({"other.net", "/", true}, kNow), "");
}

TEST(Cookies, AServerCantFillTheJar) {
    CookieJar jar = Jar();
    for (int i = 0; i < 1000; i++)
        jar.Take("n" + std::to_string(i) + "=1; path=/", kPlace, kNow);
    EXPECT_LE(jar.All().size(), 50u);
    EXPECT_FALSE(jar.Take("big=" + std::string(5000, 'x'), kPlace, kNow));
}

TEST(Cookies, DatesOfEveryFormAreRead) {
    const struct {
        const char* text;
        std::optional<Seconds> seconds;
    } kCases[] = {
        {"Sun, 06 Nov 1994 08:49:37 GMT", 784111777},
        {"Sunday, 06-Nov-94 08:49:37 GMT", 784111777},
        {"Sun Nov  6 08:49:37 1994", 784111777},
        {"Fri, 01-Jan-69 00:00:00 GMT", 3124224000},
        {"01 jan 1970 0:0:0", 0},
        {"Thu, 31 Dec 9999 23:59:59 GMT", 253402300799},
        {"Thu, 30 Feb 2024 00:00:00 GMT", std::nullopt},
        {"06 Nov 1994 24:00:00", std::nullopt},
        {"06 Nov 1500 00:00:00", std::nullopt},
        {"06 Foo 1994 00:00:00", std::nullopt},
        {"", std::nullopt},
        {"0", std::nullopt},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(gate::ParseCookieDate(item.text), item.seconds) << item.text;
}
