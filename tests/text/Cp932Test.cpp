#include "text/cp932.h"
#include "text/Cp932Table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Converted {
    std::string bytes;
    int32 consumed;
    int32 status;
};

// The input stands alone in its allocation, so that a read behind it is seen by the sanitizer.
Converted ToUtf8(const std::string& input) {
    std::vector<char> source(input.begin(), input.end());
    Converted result{std::string(input.size() * 3, '\0'), static_cast<int32>(input.size()), 0};
    int32 written = -1;
    result.status =
        cp932_conv_to_utf8(source.data(), &result.consumed, result.bytes.data(), &written);
    result.bytes.resize(written);
    return result;
}

Converted ToCp932(const std::string& input) {
    std::vector<char> source(input.begin(), input.end());
    Converted result{std::string(input.size() + 1, '\0'), static_cast<int32>(input.size()), 0};
    int32 written = -1;
    result.status =
        utf8_conv_to_cp932(source.data(), &result.consumed, result.bytes.data(), &written);
    result.bytes.resize(written);
    return result;
}

std::string Utf8(uint16 code) {
    char bytes[3];
    return std::string(bytes, put_utf8_from_unicode(code, bytes));
}

std::string DoubleByte(uint16 code) {
    return {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
}

struct Pair {
    uint16 cp932;
    uint16 unicode;
};

} // namespace

TEST(Cp932, DecodesTheAmbiguousCodesAsThePublishedTableDoes) {
    constexpr Pair kPairs[] = {
        {0x8140, 0x3000}, {0x8161, 0x2225}, {0x8150, 0xFFE3}, {0x817C, 0xFF0D}, {0x815C, 0x2015},
        {0x8191, 0xFFE0}, {0x815F, 0xFF3C}, {0x8192, 0xFFE1}, {0x8160, 0xFF5E}, {0x81CA, 0xFFE2},
        {0x82A0, 0x3042}, {0x8740, 0x2460}, {0x8754, 0x2160}, {0x875F, 0x3349}, {0x8790, 0x2252},
        {0x879A, 0x2235}, {0xEAA4, 0x7199}, {0xEAA5, 0},      {0xED40, 0x7E8A}, {0xEEEF, 0x2170},
        {0xEEF9, 0xFFE2}, {0xFA40, 0x2170}, {0xFA55, 0xFFE4}, {0xFC4B, 0x9ED1}, {0xFC4C, 0},
        {0xF040, 0},      {0xE000, 0x6DC6}, {0x8100, 0},      {0x8200, 0},
    };
    for (const Pair& pair : kPairs) {
        const Converted result = ToUtf8(DoubleByte(pair.cp932));
        EXPECT_EQ(result.bytes, pair.unicode != 0 ? Utf8(pair.unicode) : std::string(1, '\0'))
            << std::hex << pair.cp932;
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.consumed, 2);
    }
}

TEST(Cp932, EncodesWhatSeveralCodesShareAsTheHighestOfThem) {
    constexpr Pair kPairs[] = {
        {0x8790, 0x2252}, {0x8791, 0x2261}, {0x8792, 0x222B}, {0x8795, 0x221A}, {0x8796, 0x22A5},
        {0x8797, 0x2220}, {0x879B, 0x2229}, {0x879C, 0x222A}, {0xFA5B, 0x2235}, {0xFA54, 0xFFE2},
        {0xFA4A, 0x2160}, {0xFA53, 0x2169}, {0xFA40, 0x2170}, {0xFA59, 0x2116}, {0xFA5A, 0x2121},
        {0xFA58, 0x3231}, {0xFA5C, 0x7E8A}, {0xFC4B, 0x9ED1}, {0xFA57, 0xFF02}, {0xFA56, 0xFF07},
        {0xFA55, 0xFFE4}, {0x8180, 0x00F7}, {0x8198, 0x00A7}, {0x814E, 0x00A8}, {0x818B, 0x00B0},
        {0x817D, 0x00B1}, {0x814C, 0x00B4}, {0x81F7, 0x00B6}, {0x817E, 0x00D7}, {0x815F, 0xFF3C},
        {0x8160, 0xFF5E}, {0x817C, 0xFF0D}, {0x815C, 0x2015}, {0x8161, 0x2225},
    };
    for (const Pair& pair : kPairs) {
        EXPECT_EQ(ToCp932(Utf8(pair.unicode)).bytes, DoubleByte(pair.cp932))
            << std::hex << pair.unicode;
    }
}

TEST(Cp932, EncodesLatinOneBytesAsThemselvesAndRefusesTheRest) {
    for (uint16 code = 0x80; code <= 0xFF; code++) {
        const Converted result = ToCp932(Utf8(code));
        const bool isItself = (code <= 0xA0 || code >= 0xE0) && code != 0xF7;
        if (isItself)
            EXPECT_EQ(result.bytes, std::string(1, static_cast<char>(code))) << code;
        else
            EXPECT_TRUE(result.bytes.size() == 2 || result.bytes == "?") << code;
        EXPECT_EQ(result.status, result.bytes == "?" ? -1 : 0);
    }
    constexpr uint16 kLacking[] = {0x301C, 0x2212, 0x2014, 0x2016, 0xA5, 0xA2, 0xA3, 0xAC, 0x203E};
    for (const uint16 code : kLacking) {
        EXPECT_EQ(ToCp932(Utf8(code)).bytes, "?");
        EXPECT_EQ(ToCp932(Utf8(code)).status, -1);
    }
}

TEST(Cp932, HasPagesForJustTheBlocksItKnows) {
    int pages = 0;
    for (const Cp932Page* page : unicode_to_cp932)
        pages += page != nullptr;
    EXPECT_EQ(pages, 98);
    EXPECT_EQ(unicode_to_cp932[0x05], nullptr);
    EXPECT_NE(unicode_to_cp932[0xF9], nullptr);
}

TEST(Cp932, EveryCodeComesBackAsTheSameCharacter) {
    for (int32 i = 0; i < kCp932Entries; i++) {
        const uint16 character = cp932_to_unicode[i];
        if (character == 0)
            continue;
        const Converted encoded = ToCp932(Utf8(character));
        ASSERT_EQ(encoded.status, 0);
        ASSERT_EQ(ToUtf8(encoded.bytes).bytes, Utf8(character)) << std::hex << character;
    }
}

TEST(Cp932, DecodesSingleBytes) {
    const struct {
        std::string input;
        std::string output;
        int32 status;
    } kCases[] = {
        {"", "", 0},
        {"abc", "abc", 0},
        {"\xB1", "\xEF\xBD\xB1", 0},
        {"\xA1\xDF", "\xEF\xBD\xA1\xEF\xBE\x9F", 0},
        {"a\x80\xA0\xFD\xFE\xFFz", "a?????z", -1},
        {"\xF0\x40", std::string(1, '\0'), 0},
    };
    for (const auto& item : kCases) {
        const Converted result = ToUtf8(item.input);
        EXPECT_EQ(result.bytes, item.output);
        EXPECT_EQ(result.status, item.status);
        EXPECT_EQ(result.consumed, static_cast<int32>(item.input.size()));
    }
}

TEST(Cp932, ACutInputGivesWhatATerminatorWouldHaveGiven) {
    EXPECT_EQ(ToUtf8("a\x82").bytes, std::string("a\0", 2));
    EXPECT_EQ(ToUtf8("a\x82").consumed, 2);
    EXPECT_EQ(ToUtf8("\xE0").bytes, Utf8(0x6DC6));
    const Converted cut = ToCp932("\xE3\x81");
    EXPECT_EQ(cut.bytes, ToCp932(Utf8(0x3040)).bytes);
    EXPECT_EQ(cut.consumed, 2);
}

TEST(Cp932, ACutInputGivesNoMoreBytesThanItHas) {
    const Converted cut = ToCp932("a\xD3");
    EXPECT_EQ(cut.bytes, "a?");
    EXPECT_EQ(cut.status, -1);
    EXPECT_EQ(cut.consumed, 2);
}

TEST(Cp932, StopsAtWhatStartsNoSequence) {
    const Converted stray = ToCp932("ab\x80"
                                    "cd");
    EXPECT_EQ(stray.bytes, "ab");
    EXPECT_EQ(stray.consumed, 2);
    EXPECT_EQ(stray.status, 0);
    EXPECT_EQ(ToCp932("\xF0\x9F\x98\x80").consumed, 0);
}

TEST(Cp932, AnOverlongLetterAdvancesByOneByte) {
    // 0xC1 0x81 stands for "A" with one byte too many; its second byte starts nothing.
    const Converted overlong = ToCp932("\xC1\x81");
    EXPECT_EQ(overlong.bytes, "A");
    EXPECT_EQ(overlong.consumed, 1);
}

TEST(Cp932, SetUnicodeDecodesOneSequence) {
    const struct {
        const char* bytes;
        int32 length;
        uint16 code;
    } kCases[] = {{"A", 1, 'A'},
                  {"\xC3\xA9", 2, 0xE9},
                  {"\xE3\x81\x82", 3, 0x3042},
                  {"\x80", 0, 0},
                  {"\xF0\x9F", 0, 0},
                  {"", 1, 0},
                  {"\xE3", 3, static_cast<uint16>((0xE3 << 12) - 0xE2080)}};
    for (const auto& item : kCases) {
        uint16 code = 99;
        EXPECT_EQ(set_unicode(item.bytes, &code), item.length);
        EXPECT_EQ(code, item.code);
    }
}
