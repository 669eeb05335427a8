#include "interface/text/ShapedParagraph.h"

#include "interface/text/TextDocument.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr rgb_color kBlack{0, 0, 0, 255};

class ShapedParagraphTest : public testing::Test {
protected:
    ShapedParagraph Lay(const std::string& text,
                        float width = std::numeric_limits<float>::infinity()) {
        document.Insert(0, text.data(), static_cast<int32>(text.size()));
        return ShapedParagraph(document.buffer, document.styles, 0, static_cast<int32>(text.size()),
                               width, 40);
    }
    static float Covered(const std::vector<ShapedParagraph::Span>& spans) {
        float width = 0;
        for (const ShapedParagraph::Span& span : spans)
            width += span.right - span.left;
        return width;
    }

    TextDocument document{BFont(), kBlack};
};

const std::string kLatin = "AB ";
const std::string kArabic = "\xD8\xB9\xD8\xB1\xD8\xA8\xD9\x8A \xD9\x86\xD8\xB5";

TEST_F(ShapedParagraphTest, MarksJoinTheirCharacter) {
    const ShapedParagraph paragraph = Lay("ae\xCC\x81z");
    EXPECT_EQ(paragraph.NextCaret(1), 4);
    EXPECT_EQ(paragraph.PreviousCaret(4), 1);
    EXPECT_EQ(paragraph.OffsetAtX(0, paragraph.XAt(0, 4)), 4);
}

TEST_F(ShapedParagraphTest, ARunInTheOtherDirectionCoversNoneOfItsNeighbours) {
    const ShapedParagraph paragraph = Lay(kLatin + kArabic + " CD");
    const int32 from = static_cast<int32>(kLatin.size());
    const int32 to = from + static_cast<int32>(kArabic.size());
    const auto spans = paragraph.SpansOf(0, from, to);
    ASSERT_EQ(spans.size(), 1u);
    EXPECT_NEAR(spans[0].left, Covered(paragraph.SpansOf(0, 0, from)), 0.5F);
    EXPECT_NEAR(spans[0].right + Covered(paragraph.SpansOf(0, to, to + 3)),
                paragraph.Lines()[0].width, 0.5F);
}

TEST_F(ShapedParagraphTest, EachPartOfARunIsWithinIt) {
    const ShapedParagraph paragraph = Lay(kLatin + kArabic + " CD");
    const int32 from = static_cast<int32>(kLatin.size());
    const auto all = paragraph.SpansOf(0, from, from + 8);
    for (int32 at = from; at < from + 8; at += 2) {
        const auto spans = paragraph.SpansOf(0, at, at + 2);
        ASSERT_EQ(spans.size(), 1u);
        EXPECT_GE(spans[0].left, all[0].left - 0.5F);
        EXPECT_LE(spans[0].right, all[0].right + 0.5F);
    }
}

TEST_F(ShapedParagraphTest, WrapsAtTheGivenWidth) {
    const ShapedParagraph paragraph = Lay("e\xCC\x81 word word word word", 60);
    ASSERT_GT(paragraph.Lines().size(), 1u);
    for (const ShapedParagraph::Line& line : paragraph.Lines())
        EXPECT_LE(line.width, 60);
    EXPECT_EQ(paragraph.LineFrom(paragraph.Lines()[1].offset), 1);
}

TEST_F(ShapedParagraphTest, BrokenBytesStandForThemselves) {
    const ShapedParagraph paragraph = Lay("a\xCC\x81\xFF\xE3z");
    EXPECT_EQ(paragraph.NextCaret(3), 4);
    EXPECT_EQ(paragraph.NextCaret(4), 5);
}

} // namespace
