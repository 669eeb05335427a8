#include "post/PostAnswer.h"

#include "text/cp932.h"

#include <gtest/gtest.h>

namespace {

std::string Cp932(const std::string& utf8) {
    std::string text(utf8.size(), '\0');
    int32 length = static_cast<int32>(utf8.size());
    int32 written = 0;
    EXPECT_EQ(utf8_conv_to_cp932(utf8.data(), &length, text.data(), &written), 0);
    return text.substr(0, static_cast<size_t>(written));
}

PostAnswer AnswerOf(const std::string& page) {
    PostAnswer answer;
    for (size_t start = 0; start < page.size();) {
        const size_t end = std::min(page.find('\n', start), page.size() - 1) + 1;
        answer.AddLine(page.data() + start, static_cast<int32>(end - start));
        start = end;
    }
    return answer;
}

} // namespace

TEST(PostAnswer, OnlyAnUnquotedRefreshIsSuccess) {
    const struct {
        const char* page;
        bool expected;
    } cases[] = {
        {"<meta http-equiv=refresh content=0>\n", true},
        {"<meta http-equiv=Content-Type>\n<meta http-equiv=refresh>\n", true},
        {"<meta http-equiv=http-equiv=refresh>\n", true},
        {"<meta http-equiv=\"refresh\">\n", false},
        {"<meta http-equiv=Refresh>\n", false},
        {"<meta http-equiv=", false},
        {"", false},
    };
    for (const auto& test : cases)
        EXPECT_EQ(AnswerOf(test.page).IsSuccess(), test.expected) << test.page;
}

TEST(PostAnswer, TheServersWordsStandBehindTheTitle) {
    const struct {
        std::string page;
        std::string expected;
    } cases[] = {
        {"<title>x</title><body>ＥＲＲＯＲ：<b>だめ</b>です<br>もう一度\n</body>",
         "ＥＲＲＯＲ：だめです\nもう一度"},
        {"<title>x</title>a\tb\nc<br/>d<brown>e", "abc\nd\ne"},
        {"<title>x</title>1 > 0<a href=\"x\">link</a>", "1 > 0link"},
        {"<title>x</title>cut <b", "cut "},
        {"<title>x</title>&nbsp;&lt;&lt;<b>&quot;a&quot;</b> &amp;hearts; &#12354;", " <<'a' ♥ あ"},
        {"no title at all", ""},
        {"<title>x</title>first</title>second", "firstsecond"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(AnswerOf(Cp932(test.page)).ErrorText(), test.expected) << test.page;
}

TEST(PostAnswer, LinesBeyondItsSizeAreLeftOutAndReadingGoesOn) {
    const std::string title = "<title></title>";
    const std::string filler(4000, 'a');
    const std::string page = title + "\n" + filler + "\n" + filler + "\nend\n";
    EXPECT_EQ(AnswerOf(page).ErrorText(), filler + "end");
}

TEST(PostAnswer, OfAnUnfinishedLineAsMuchIsKeptAsFits) {
    PostAnswer answer = AnswerOf("<title></title>\n");
    std::string rest;
    for (int i = 0; i < 2000; i++)
        rest += "あ";
    const std::string bytes = Cp932(rest);
    answer.AddUnfinishedLine(bytes.data(), static_cast<int32>(bytes.size()));
    EXPECT_EQ(answer.ErrorText(), rest.substr(0, (4095 - 16) / 3 * 3));
}

TEST(PostAnswer, WhatDoesNotConvertHidesNothing) {
    // No character, a byte that starts none, a lead byte at the end.
    const std::string page = "<title></title>a\x81\xAD"
                             "b\xFD"
                             "c\n\x82";
    EXPECT_EQ(AnswerOf(page).ErrorText(), "ab?c");
}
