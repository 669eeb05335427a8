#include "text/html.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Case {
    const char* input;
    const char* output;
};

std::string Decoded(const char* input) {
    BString text(input);
    ReplaceHTMLEscapeString(&text);
    return text.String();
}

} // namespace

TEST(Html, TruncateNullCharKeepsTheLastByteWhereItStood) {
    const struct {
        std::string input;
        std::string output; // with the terminator
    } kCases[] = {
        {"abc", std::string("abc\0", 4)},
        {std::string("ab\0c", 4), std::string("ab\0\0", 4)},
        {std::string("a\0XY\n", 5), std::string("aXYY\0", 5)},
        {std::string("\0\0", 2), std::string("\0", 1)},
        {"", std::string("\0", 1)},
    };
    for (const auto& item : kCases) {
        std::string buffer = item.input + 'z';
        const uint32 kept = TruncateNullChar(buffer.data(), static_cast<uint32>(item.input.size()));
        EXPECT_EQ(kept, item.output.size() - 1);
        EXPECT_EQ(buffer.substr(0, kept + 1), item.output);
    }
}

TEST(Html, DecodesCharacterReferences) {
    constexpr Case kCases[] = {
        {"&#65;&#x41;&#0x41;", "AAA"},
        {"&#12354;", "あ"},
        {"&#1234567;", "&#1234567;"},
        {"a&#;b&#X41;c", "abc"},
        {"&#0;", ""},
        {"&# 65;", "A"},
        {"&#65", "&#65"},
        {"&#65601;", "A"},
        {"&#38;#65;", "A"},
        {"&#-1;", "\xEF\xBF\xBF"},
        {"a&nbsp;b", "a b"},
        {"&lt;&gt;&amp;", "<>&"},
        {"&quot;x&quot;", "'x'"},
        {"&hearts;&clubs;&spades;&diams;", "♥♣♠♦"},
        {"&amp;hearts;", "♥"},
        {"&amp;lt;", "&lt;"},
        {"&copy;&reg;&trade;&cent;&pound;&yen;&curren;&brvbar;", "©®™¢£¥¤¦"},
        {"&ordf;&laquo;&raquo;&not;&shy;&macr;&sup1;&sup2;&sup3;", "ª«»¬\u00AD¯¹²³"},
        {"&micro;&ordm;&frac14;&frac12;&frac34;", "µº¼½¾"},
        {"&unknown; & x", "&unknown; & x"},
        {"", ""},
    };
    for (const Case& item : kCases)
        EXPECT_EQ(Decoded(item.input), item.output) << item.input;
}

TEST(Html, UrlEncodesOnlyLettersAndDigitsAsTheyAre) {
    constexpr Case kCases[] = {
        {"a b-c", "a+b%2Dc"},    {"あ", "%82%A0"}, {"éa", "%E9%61"}, {"-._*~", "%2D%2E%5F%2A%7E"},
        {"\r\n\t", "%0D%0A%09"}, {"ｱ", "%B1"},     {"表", "%95%5C"}, {"Az09", "Az09"},
        {"é a", "%E9%61"},       {"\x7F", "\x7F"},
    };
    for (const Case& item : kCases) {
        BString text(item.input);
        EXPECT_EQ(UrlEncoded(&text), 0);
        EXPECT_STREQ(text.String(), item.output);
    }
}

TEST(Html, UrlEncodedRefusesWhatIsNotWhollyConverted) {
    for (const char* input : {"a\u301Cb", "\u2212", "\U0001F600",
                              "ab\x80"
                              "cd",
                              "x\xE3"}) {
        BString text(input);
        EXPECT_EQ(UrlEncoded(&text), -1) << input;
        EXPECT_STREQ(text.String(), input);
    }
}
