#include "text/Folding.h"

#include <gtest/gtest.h>

namespace {

TEST(Folding, WhatReadsAlikeIsAlike) {
    struct Case {
        const char* one;
        const char* other;
    };
    const Case kAlike[] = {{"ﾆｭｰｽ", "ニュース"},
                           {"ﾆｭｰｽ速報＋", "にゅーす速報+"},
                           {"ＡＢＣ　１２３", "abc 123"},
                           {"ｶﾞｷﾞｸﾞｹﾞｺﾞ", "がぎぐげご"},
                           {"ﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞ", "だぢづでど"},
                           {"ﾊﾞﾋﾟﾌﾞﾍﾟﾎﾞ", "ばぴぶぺぼ"},
                           {"ヴ", "ｳﾞ"},
                           {"か゛", "ガ"},
                           {"ﾅﾞ", "な゛"},
                           {"｢ﾊﾟｿｺﾝ｣､･｡", "「ぱそこん」、・。"}};
    for (const Case& row : kAlike)
        EXPECT_EQ(Folded(row.one), Folded(row.other)) << row.one;
    for (const char* same : {"漢字 abc", "\xE3\x81", "\xFF\xE3", "😀", "゛あ゛"})
        EXPECT_EQ(Folded(same), same);
    EXPECT_NE(Folded("は"), Folded("ば"));
}

} // namespace
