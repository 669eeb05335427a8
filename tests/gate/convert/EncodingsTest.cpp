#include "Text.h"

#include <gtest/gtest.h>

using gate::Charset;

TEST(Encodings, WhatCp932LacksBecomesAReference) {
    const struct {
        const char* utf8;
        const char* cp932;
    } kCases[] = {
        {"abc", "abc"},
        {"あ", "\x82\xA0"},
        {"ｱ", "\xB1"},
        {"😀", "&#128512;"},
        {"é\u00A0à", "&#233;&#160;&#224;"}, // bytes of their own would be half a character
        {"♥", "&#9829;"},
        {"〜−—‖¢£¬", "\x81\x60\x81\x7C\x81\x5C\x81\x61\x81\x91\x81\x92\xFA\x54"},
        {"～－", "\x81\x60\x81\x7C"},
        {"a\xFF\x82z", "a??z"},
        {"\xED\xA0\x80", "???"},
        {"\xE3\x81", "??"},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(gate::ToCp932(item.utf8, Charset::kUtf8), item.cp932) << item.utf8;
}

TEST(Encodings, BrokenBytesBecomeQuestionMarksAndSwallowNothing) {
    const struct {
        Charset from;
        std::string text;
        const char* utf8;
    } kCases[] = {
        {Charset::kCp932, "\x82\xA0\x82", "あ?"},
        {Charset::kCp932, "\x82<br>", "?<br>"},
        {Charset::kCp932, "\x80\xA0\xFF", "???"},
        {Charset::kCp932, "\xF0\x40", "?"},
        {Charset::kCp932, std::string("a\0b", 3), "ab"},
        {Charset::kCp932, "\x87\x40\xB1", "①ｱ"},
        {Charset::kEucJp, "\xA4\xA2", "あ"},
        {Charset::kEucJp, "\xA4\xA2\xA4", "あ?"},
        {Charset::kEucJp, "\xA4<br>", "?<br>"},
        {Charset::kEucJp, "\xA1\xC1\x8E\xB1\xAD\xA1", "～ｱ①"},
        {Charset::kUtf8, "\xE3\x81<br>", "?\?<br>"},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(gate::ToUtf8(item.text, item.from), item.utf8);
}

TEST(Encodings, ALongTextComesBackFromEachCharset) {
    std::string text;
    for (int i = 0; i < 3000; i++)
        text += "日本語とｶﾅと①～ text <br> ";
    EXPECT_EQ(gate::FromCp932(Sjis(text), Charset::kUtf8), text);
    EXPECT_EQ(gate::ToUtf8(gate::FromCp932(Sjis(text), Charset::kEucJp), Charset::kEucJp), text);
}

TEST(Encodings, ReferencesStayWhenAPostIsSentInAnotherCharset) {
    EXPECT_EQ(gate::FromCp932("&#128512;a", Charset::kUtf8), "&#128512;a");
    EXPECT_EQ(gate::FromCp932("\x82\xA0", Charset::kEucJp), "\xA4\xA2");
}

TEST(Encodings, TheBytesTellTheCharset) {
    const std::string text = "スレッドの一覧と本文です。2024/04/01(月) ID:abc ｱｱ";
    EXPECT_EQ(gate::GuessCharset(text), Charset::kUtf8);
    EXPECT_EQ(gate::GuessCharset(Sjis(text)), Charset::kCp932);
    EXPECT_EQ(gate::GuessCharset(Euc(text)), Charset::kEucJp);
    EXPECT_EQ(gate::GuessCharset("only ascii"), Charset::kCp932);
    EXPECT_EQ(gate::GuessCharset(text + "\xE3"), Charset::kUtf8);
}
