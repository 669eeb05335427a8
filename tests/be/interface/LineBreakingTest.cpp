#include "interface/text/LineBreaking.h"
#include "interface/fonts/ScriptShaping.h"
#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

uint32 CodeOf(const char* utf8) {
    return DecodeUtf8(utf8, static_cast<int32>(strlen(utf8))).code;
}

bool MayBreakBetween(const char* before, const char* after) {
    return MayBreak(BreakClassOf(CodeOf(before)), BreakClassOf(CodeOf(after)));
}

struct Pair {
    const char* before;
    const char* after;
};

TEST(LineBreaking, MayEndALineBetween) {
    const Pair pairs[] = {{"日", "本"}, {"か", "な"}, {"日", "a"},  {"a", "日"},  {" ", "a"},
                          {"。", "次"}, {"、", "a"},  {"あ", "「"}, {"」", "と"}, {"-", "a"},
                          {"ッ", "ト"}, {"…", "続"},  {" ", "「"},  {")", "日"},  {"。", "「"}};
    for (const Pair& pair : pairs)
        EXPECT_TRUE(MayBreakBetween(pair.before, pair.after)) << pair.before << pair.after;
}

TEST(LineBreaking, MayNotEndALineBetween) {
    const Pair pairs[] = {{"a", "b"},   {"a", "1"},   {"日", "。"}, {"日", "、"}, {"た", "」"},
                          {"（", "注"}, {"「", "あ"}, {"あ", "）"}, {"カ", "ー"}, {"き", "ょ"},
                          {"キ", "ャ"}, {"a", "."},   {"(", "日"},  {"a", " "},   {"日", " "},
                          {"時", "々"}, {"え", "！"}, {"え", "？"}, {"-", ")"},   {"「", "「"},
                          {"」", "」"}, {"ｶ", "ﾞ"}};
    for (const Pair& pair : pairs)
        EXPECT_FALSE(MayBreakBetween(pair.before, pair.after)) << pair.before << pair.after;
}

TEST(LineBreaking, ShapingIsAskedForByMarksAndDirections) {
    for (const char* text : {"e\xCC\x81", "か\xE3\x82\x99", "\xD7\x90", "\xD8\xA7", "\xE2\x80\x8D"})
        EXPECT_TRUE(NeedsShaping(text, static_cast<int32>(strlen(text)))) << text;
    for (const char* text : {"", "abc", "日本語、かな。", "ｶﾞ", "é", "★ω→", "\xFF\xE3"})
        EXPECT_FALSE(NeedsShaping(text, static_cast<int32>(strlen(text)))) << text;
}

struct Decoding {
    std::string bytes;
    uint32 code;
    int32 length;
};

TEST(Utf8, ReadsCharactersAndReplacesBrokenBytes) {
    const Decoding table[] = {{"A", 'A', 1},
                              {"\xC3\xA9", 0xE9, 2},
                              {"\xE3\x81\x82", 0x3042, 3},
                              {"\xF0\x9F\x98\x80", 0x1F600, 4},
                              {"\xE3\x81", kReplacementCharacter, 1},
                              {"\xE3\x41\x42", kReplacementCharacter, 1},
                              {"\xC0\x80", kReplacementCharacter, 1},
                              {"\xE0\x80\x80", kReplacementCharacter, 1},
                              {"\xED\xA0\x80", kReplacementCharacter, 1},
                              {"\xF5\x80\x80\x80", kReplacementCharacter, 1},
                              {"\x80", kReplacementCharacter, 1}};
    for (const Decoding& row : table) {
        const Utf8Character character =
            DecodeUtf8(row.bytes.data(), static_cast<int32>(row.bytes.size()));
        EXPECT_EQ(character.code, row.code);
        EXPECT_EQ(character.bytes, row.length);
    }
}

} // namespace
