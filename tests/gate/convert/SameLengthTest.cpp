#include "convert/SameLength.h"

#include <gtest/gtest.h>

#include <string>

using gate::SameLengthRewriter;

namespace {

struct Case {
    std::string input, output;
};

const Case kCases[] = {
    {"see https://a.example/ now\n", "see  http://a.example/ now\n"},
    {"see ttps://a.example/ now\n", "see  ttp://a.example/ now\n"},
    {"hhttps://httpshttps://x", "h http://https http://x"},
    {"http://a ttp://b sssp://c https:/ HTTPS://d", "http://a ttp://b sssp://c https:/ HTTPS://d"},
    {"&#128512;", "(U+1F600)"},
    {"&#x1F600;&#X1f600;", "(U+1F600)(U+1F600)"},
    {"&#65536;&#65535;", "U+10000 &#65535;"},
    {"&#1114111;&#1114112;&#x10FFFF;", "(U+10FFFF)&#1114112;(U+10FFFF)"},
    {"&#00000128512;", "(U+1F600)     "},
    {"&#0000000000128512;", "&#0000000000128512;"},
    {"&#12354;&#x3042;&amp;&#;&#x;&&#128512", "&#12354;&#x3042;&amp;&#;&#x;&&#128512"},
    {"&#12x8512;&#128512&#128512;", "&#12x8512;&#128512(U+1F600)"},
    // The second byte of a character may look like a letter: 83 74 is one.
    {"\x83ttps://a", "\x83ttps://a"},
    {"\x83tttps://a", "\x83t ttp://a"},
    {"\x83hhttps://a", "\x83h http://a"},
    // A first half without a second one hides nothing.
    {"\x83\nhttps://a", "\x83\n http://a"},
    {"\xB1https://a", "\xB1 http://a"},
};

std::string Rewritten(std::string_view first, std::string_view second) {
    SameLengthRewriter rewriter;
    std::string output = rewriter.Feed(first);
    output += rewriter.Feed(second);
    return output + rewriter.Finish();
}

} // namespace

TEST(SameLength, RewritesWhatTheProgramCantKnowWithoutMovingAByte) {
    for (const Case& item : kCases) {
        EXPECT_EQ(Rewritten(item.input, ""), item.output);
        EXPECT_EQ(item.input.size(), item.output.size()) << item.input;
    }
}

TEST(SameLength, PiecesOfAnySizeMakeTheSameText) {
    for (const Case& item : kCases) {
        for (size_t cut = 0; cut <= item.input.size(); cut++)
            EXPECT_EQ(Rewritten(item.input.substr(0, cut), item.input.substr(cut)), item.output);
        SameLengthRewriter rewriter;
        std::string output;
        for (const char byte : item.input)
            output += rewriter.Feed({&byte, 1});
        EXPECT_EQ(output + rewriter.Finish(), item.output);
    }
}

TEST(SameLength, ARangeHoldsWhatTheWholeFileHoldsThere) {
    for (const Case& item : kCases) {
        const std::string file = "a line\n" + item.input;
        const std::string whole = "a line\n" + item.output;
        for (size_t start = 7; start <= file.size(); start++) {
            const size_t before = std::min(start, SameLengthRewriter::kLongestMark);
            SameLengthRewriter rewriter(std::string_view(file).substr(start - before, before));
            std::string range = rewriter.Feed(std::string_view(file).substr(start));
            range += rewriter.Finish();
            EXPECT_EQ(range, whole.substr(start)) << item.input << " from " << start;
        }
    }
}

TEST(SameLength, LittleIsHeldBack) {
    SameLengthRewriter rewriter;
    const std::string digits = "&#" + std::string(100, '1');
    EXPECT_EQ(rewriter.Feed("plain\n"), "plain\n");
    EXPECT_EQ(rewriter.Feed("http"), "");
    EXPECT_EQ(rewriter.Feed("x"), "httpx");
    EXPECT_GE(rewriter.Feed(digits).size(), digits.size() - SameLengthRewriter::kLongestMark);
}
