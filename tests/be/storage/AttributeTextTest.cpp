#include "storage/AttributeText.h"

#include <cmath>
#include <cstring>
#include <limits>

#include <TypeConstants.h>

#include <gtest/gtest.h>

namespace {

template <class Number>
std::string bytesOf(std::initializer_list<Number> numbers) {
    std::string bytes;
    for (Number number : numbers)
        bytes.append(reinterpret_cast<const char*>(&number), sizeof(number));
    return bytes;
}

struct Case {
    type_code type;
    std::string value;
    std::string text;
};

} // namespace

TEST(AttributeText, ValuesAreWrittenForPeopleAndComeBackExactly) {
    const float kNoNumber = std::numeric_limits<float>::quiet_NaN();
    const Case kCases[] = {
        {B_STRING_TYPE, "スレッド", "スレッド"},
        {B_STRING_TYPE, std::string("abc\0", 4), "abc\\0"},
        {B_STRING_TYPE, " a b ", "\\sa b\\s"},
        {B_STRING_TYPE, "a\n\t\r\\\x01\x7f", "a\\n\\t\\r\\\\\\x01\\x7f"},
        {B_STRING_TYPE, "\xff\x83", "\\xff\\x83"},
        {B_STRING_TYPE, "hex:12", "\\x68ex:12"},
        {B_STRING_TYPE, "", ""},
        {B_MIME_STRING_TYPE, "text/plain", "text/plain"},
        {B_BOOL_TYPE, std::string("\1", 1), "true"},
        {B_BOOL_TYPE, std::string("\0", 1), "false"},
        {B_BOOL_TYPE, std::string("\2", 1), "hex:02"},
        {B_INT32_TYPE, bytesOf<int32>({-12}), "-12"},
        {B_INT32_TYPE, "ab", "hex:6162"},
        {B_INT32_TYPE, "", "hex:"},
        {B_INT8_TYPE, bytesOf<int8>({-128}), "-128"},
        {B_UINT8_TYPE, bytesOf<uint8>({200}), "200"},
        {B_UINT64_TYPE, bytesOf<uint64>({~0ULL}), "18446744073709551615"},
        {B_TIME_TYPE, bytesOf<int64>({1700000000}), "1700000000"},
        {B_FLOAT_TYPE, bytesOf<float>({0.1F}), "0.1"},
        {B_FLOAT_TYPE, bytesOf<float>({-0.0F}), "-0"},
        {B_DOUBLE_TYPE, bytesOf<double>({1e300}), "1e+300"},
        {B_POINT_TYPE, bytesOf<float>({1, 2.5F}), "1 2.5"},
        {B_RECT_TYPE, bytesOf<float>({0, 0, 639, 479}), "0 0 639 479"},
        {B_RGB_COLOR_TYPE, "\x01\x02\xfe\xff", "#0102feff"},
        {B_RAW_TYPE, std::string("\0\1", 2), "hex:0001"},
        {B_FLOAT_TYPE, bytesOf<float>({kNoNumber}), "hex:0000c07f"},
    };
    for (const Case& current : kCases) {
        EXPECT_EQ(current.text, writeValue(current.type, current.value));
        EXPECT_EQ(current.value, readValue(current.type, current.text)) << current.text;
    }
}

TEST(AttributeText, EveryByteSurvivesInAString) {
    std::string all;
    for (int byte = 0; byte < 256; byte++)
        all += static_cast<char>(byte);
    std::string text = writeValue(B_STRING_TYPE, all + "日本" + all);
    EXPECT_EQ(std::string::npos, text.find('\n'));
    EXPECT_EQ(all + "日本" + all, readValue(B_STRING_TYPE, text));
}

TEST(AttributeText, DamagedValuesAreNone) {
    const Case kCases[] = {
        {B_INT32_TYPE, "", "12x"},      {B_INT32_TYPE, "", "99999999999"},
        {B_INT32_TYPE, "", ""},         {B_UINT8_TYPE, "", "-1"},
        {B_BOOL_TYPE, "", "maybe"},     {B_RECT_TYPE, "", "1 2 3"},
        {B_RECT_TYPE, "", "1 2 3 4 5"}, {B_RGB_COLOR_TYPE, "", "#12345"},
        {B_STRING_TYPE, "", "a\\"},     {B_STRING_TYPE, "", "\\q"},
        {B_STRING_TYPE, "", "\\x1"},    {B_RAW_TYPE, "", "plain"},
        {B_RAW_TYPE, "", "hex:123"},    {B_RAW_TYPE, "", "hex:zz"},
    };
    for (const Case& current : kCases)
        EXPECT_FALSE(readValue(current.type, current.text)) << current.text;
}

TEST(AttributeText, NamesAndTypesAreOneWordEach) {
    EXPECT_EQ("a\\sname", writeName("a name"));
    EXPECT_EQ("\\x23remark", writeName("#remark"));
    EXPECT_EQ("a name", readName("a\\sname"));
    EXPECT_FALSE(readName("bad\\"));
    EXPECT_EQ("LONG", writeType(B_INT32_TYPE));
    EXPECT_EQ("0x00000001", writeType(1));
    EXPECT_EQ(type_code(1), readType("0x00000001"));
    EXPECT_EQ(type_code(B_INT32_TYPE), readType("LONG"));
    EXPECT_FALSE(readType("LON"));
    EXPECT_FALSE(readType(""));
}
