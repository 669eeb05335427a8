#include "interface/fonts/AdvanceTable.h"
#include "interface/fonts/ScriptShaping.h"
#include "interface/fonts/ShapedText.h"

#include <Font.h>
#include <String.h>

#include <cstring>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

float WidthOfTable(const BFont& font, const char32_t* text) {
    const AdvanceTable& table = AdvanceTable::For(font);
    float width = 0;
    for (; *text != 0; text++)
        width += table.Advance(*text);
    return width;
}

} // namespace

TEST(Font, WidthsGrowWithTheSize) {
    BFont font(be_plain_font);
    font.SetSize(10);
    const float small = font.StringWidth("Width");
    font.SetSize(30);
    EXPECT_GT(small, 0);
    EXPECT_NEAR(small * 3, font.StringWidth("Width"), 0.01);
}

TEST(Font, WidthsAreThoseOfTheTable) {
    const BFont font(be_plain_font);
    EXPECT_FLOAT_EQ(WidthOfTable(font, U"AVAWA 漢字ｶﾅ"), font.StringWidth("AVAWA 漢字ｶﾅ"));
    EXPECT_FLOAT_EQ(font.StringWidth("A") + font.StringWidth("V"), font.StringWidth("AV"));
}

TEST(Font, IdeographsAreSquare) {
    BFont font(be_plain_font);
    font.SetSize(20);
    EXPECT_NEAR(20, font.StringWidth("漢"), 0.5);
    EXPECT_NEAR(20, font.StringWidth("あ"), 0.5);
}

TEST(Font, LengthCountsBytesAndStopsAtTheEnd) {
    const BFont font(be_plain_font);
    EXPECT_FLOAT_EQ(font.StringWidth("ab"), font.StringWidth("abcd", 2));
    EXPECT_FLOAT_EQ(font.StringWidth("ab"), font.StringWidth("ab", 100));
    EXPECT_FLOAT_EQ(0, font.StringWidth("ab", 0));
    EXPECT_FLOAT_EQ(0, font.StringWidth(nullptr));
}

TEST(Font, BrokenBytesCountAsTheReplacementCharacter) {
    const BFont font(be_plain_font);
    EXPECT_FLOAT_EQ(font.StringWidth("\xef\xbf\xbd"), font.StringWidth("\xff"));
    EXPECT_FLOAT_EQ(2 * font.StringWidth("\xef\xbf\xbd"), font.StringWidth("\xe6\xbc"));
}

TEST(Font, MarksAddNothingToTheWidth) {
    const BFont font(be_plain_font);
    EXPECT_TRUE(NeedsShaping("e\xcc\x81", 3));
    EXPECT_NEAR(font.StringWidth("e"), font.StringWidth("e\xcc\x81"), 1);
    const std::vector<float> offsets = ShapedOffsets(font, "e\xcc\x81x", 4);
    ASSERT_EQ(5U, offsets.size());
    EXPECT_FLOAT_EQ(0, offsets[0]);
    EXPECT_LT(offsets[3], offsets[4]);
}

TEST(Font, HasAHeight) {
    font_height height;
    be_plain_font->GetHeight(&height);
    EXPECT_GT(height.ascent, be_plain_font->Size() / 2);
    EXPECT_GT(height.descent, 0);
}

struct Truncation {
    uint32 mode;
    const char* start;
    const char* end;
};

class Truncations : public testing::TestWithParam<Truncation> {};

TEST_P(Truncations, FitAndShowWhereTheyWereCut) {
    const BFont font(be_plain_font);
    BString text("始まりbeginning, middle and the end終わり");
    const float width = font.StringWidth(text.String()) / 2;
    font.TruncateString(&text, GetParam().mode, width);
    EXPECT_LE(font.StringWidth(text.String()), width);
    EXPECT_EQ(0, text.FindFirst(GetParam().start)) << text.String();
    EXPECT_EQ(text.Length() - static_cast<int32>(strlen(GetParam().end)),
              text.FindLast(GetParam().end))
        << text.String();
}

INSTANTIATE_TEST_SUITE_P(All, Truncations,
                         testing::Values(Truncation{B_TRUNCATE_END, "始まり", "…"},
                                         Truncation{B_TRUNCATE_BEGINNING, "…", "終わり"},
                                         Truncation{B_TRUNCATE_MIDDLE, "始まり", "終わり"}));

TEST(Font, TextThatFitsIsNotCut) {
    BString text("short");
    be_plain_font->TruncateString(&text, B_TRUNCATE_END, 1000);
    EXPECT_STREQ("short", text.String());
    be_plain_font->TruncateString(&text, B_TRUNCATE_END, 1);
    EXPECT_STREQ("…", text.String());
}

TEST(Font, FamiliesAndStylesAreListedAndTaken) {
    ASSERT_GT(count_font_families(), 0);
    font_family family;
    font_style style;
    ASSERT_EQ(B_OK, get_font_family(0, &family));
    ASSERT_GT(count_font_styles(family), 0);
    ASSERT_EQ(B_OK, get_font_style(family, 0, &style));
    BFont font;
    ASSERT_EQ(B_OK, font.SetFamilyAndStyle(family, style));
    font_family gotFamily;
    font_style gotStyle;
    font.GetFamilyAndStyle(&gotFamily, &gotStyle);
    EXPECT_STREQ(family, gotFamily);
    EXPECT_STREQ(style, gotStyle);
    EXPECT_NE(B_OK, get_font_family(-1, &family));
    EXPECT_NE(B_OK, get_font_family(count_font_families(), &family));
}

TEST(Font, AnUnknownFamilyOrStyleChangesNothing) {
    BFont font(be_plain_font);
    EXPECT_EQ(B_BAD_VALUE, font.SetFamilyAndStyle("No Such Family", nullptr));
    font_family family;
    be_plain_font->GetFamilyAndStyle(&family, nullptr);
    EXPECT_EQ(B_BAD_VALUE, font.SetFamilyAndStyle(family, "No Such Style"));
    EXPECT_TRUE(font == *be_plain_font);
}

TEST(Font, BoldIsNamedByItsStyle) {
    font_style style;
    be_bold_font->GetFamilyAndStyle(nullptr, &style);
    EXPECT_STREQ("Bold", style);
    EXPECT_GT(be_bold_font->StringWidth("mmmm"), be_plain_font->StringWidth("mmmm"));
}

TEST(Font, TheFixedFontIsFixed) {
    EXPECT_TRUE(be_fixed_font->IsFixed());
    EXPECT_FLOAT_EQ(be_fixed_font->StringWidth("iii"), be_fixed_font->StringWidth("MMM"));
}

TEST(Font, SeveralThreadsMeasureTheSame) {
    const BFont font(be_plain_font);
    std::vector<float> widths(4);
    std::vector<std::thread> threads;
    for (float& width : widths)
        threads.emplace_back([&] { width = font.StringWidth("数える：count いろはにほへと"); });
    for (std::thread& thread : threads)
        thread.join();
    for (const float width : widths)
        EXPECT_FLOAT_EQ(widths[0], width);
}
