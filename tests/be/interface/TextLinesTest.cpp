#include "interface/text/TextDocument.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr rgb_color kBlack{0, 0, 0, 255};

class TextLinesTest : public testing::Test {
protected:
    void Insert(int32 offset, const std::string& text) {
        document.Insert(offset, text.data(), static_cast<int32>(text.size()));
    }
    void Append(const std::string& text) { Insert(document.buffer.Length(), text); }

    float WidthOf(const std::string& text) {
        TextDocument other{BFont(), kBlack};
        other.Insert(0, text.data(), static_cast<int32>(text.size()));
        return other.lines.LineAt(0).width;
    }

    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (int32 i = 0; i < document.lines.CountLines(); i++) {
            const int32 from = document.lines.LineAt(i).offset;
            const int32 to = document.lines.LineVisibleEnd(i);
            lines.emplace_back(from < to ? document.buffer.Range(from, to) : "", to - from);
        }
        return lines;
    }

    TextDocument document{BFont(), kBlack};
};

using Strings = std::vector<std::string>;

TEST_F(TextLinesTest, AnEmptyTextHasOneLineOfTheFontsHeight) {
    EXPECT_EQ(document.lines.CountLines(), 1);
    EXPECT_EQ(document.lines.Height(), document.styles.Style(0).height);
}

TEST_F(TextLinesTest, ALineFeedAtTheEndBeginsOneMoreLine) {
    Append("a\n\nb\n");
    EXPECT_EQ(Lines(), (Strings{"a", "", "b", ""}));
    EXPECT_EQ(document.lines.Height(), 4 * document.styles.Style(0).height);
}

TEST_F(TextLinesTest, WordsStayWholeAndSpacesHangOverTheEdge) {
    Append("alpha beta   gamma");
    document.lines.SetWrapWidth(WidthOf("alpha beta") + 0.5F);
    EXPECT_EQ(Lines(), (Strings{"alpha beta   ", "gamma"}));
}

TEST_F(TextLinesTest, AWordWiderThanALineBreaksAnywhere) {
    Append("aa wwwwwwwwww");
    document.lines.SetWrapWidth(WidthOf("wwww") + 0.5F);
    EXPECT_EQ(Lines(), (Strings{"aa ", "wwww", "wwww", "ww"}));
}

TEST_F(TextLinesTest, JapaneseBreaksBetweenCharactersButForMarks) {
    document.lines.SetWrapWidth(WidthOf("日日日日") + 0.5F);
    Append("日本語文。次の「文」です");
    EXPECT_EQ(Lines(), (Strings{"日本語", "文。次の", "「文」で", "す"}));
}

TEST_F(TextLinesTest, TheNarrowestWidthPutsOneCharacterIntoALine) {
    Append("日本ab");
    document.lines.SetWrapWidth(1);
    EXPECT_EQ(Lines(), (Strings{"日", "本", "a", "b"}));
}

TEST_F(TextLinesTest, ATabReachesTheNextStop) {
    document.lines.SetTabWidth(50);
    Append("a\tb");
    EXPECT_EQ(document.lines.XAt(0, 2), 50);
}

TEST_F(TextLinesTest, ALineIsAsHighAsItsHighestStyle) {
    Append("small\nlarge\n");
    BFont font;
    font.SetSize(40);
    const int32 large = document.styles.Intern(font, kBlack);
    const int32 before = document.lines.Height();
    document.SetRuns(6, 11, {{0, large}});
    const int32 grown = document.styles.Style(large).height - document.styles.Style(0).height;
    EXPECT_EQ(document.lines.Height(), before + grown);
    EXPECT_EQ(document.lines.LineAt(1).ascent, document.styles.Style(large).ascent);
}

TEST_F(TextLinesTest, OffsetsAndPlacesLeadToEachOther) {
    Append("ab日本\xF0\x9F\x98\x80 e\xCC\x81x\n次の行");
    document.lines.SetWrapWidth(WidthOf("ab日本") + 0.5F);
    for (int32 offset = 0; offset <= document.buffer.Length();
         offset = offset < document.buffer.Length() ? document.lines.NextCaret(offset)
                                                    : offset + 1) {
        const int32 line = document.lines.IndexAtOffset(offset);
        EXPECT_EQ(document.lines.OffsetAtX(line, document.lines.XAt(line, offset)), offset);
        EXPECT_EQ(document.lines.IndexAtY(static_cast<float>(document.lines.LineAt(line).top)),
                  line);
    }
}

TEST_F(TextLinesTest, ACaretStepsOverACharacterWithItsMark) {
    Append("e\xCC\x81x");
    EXPECT_TRUE(document.lines.LineAt(0).isShaped);
    EXPECT_EQ(document.lines.NextCaret(0), 3);
    EXPECT_EQ(document.lines.PreviousCaret(3), 0);
}

TEST_F(TextLinesTest, TheEndOfAWrappedLineIsTheNextLinesStart) {
    Append("日本語");
    document.lines.SetWrapWidth(WidthOf("日本") + 0.5F);
    EXPECT_EQ(document.lines.OffsetAtX(0, 1000), 3);
    EXPECT_EQ(document.lines.OffsetAtX(1, 1000), 9);
}

TEST_F(TextLinesTest, ChangesGiveTheLayoutThatAFreshOneGives) {
    const Strings parts = {"a",    "word ",       "日本語", "。", "「",        "」",
                           "\n",   "\t",          " ",      "つ", "e\xCC\x81", "\xF0\x9F\x98\x80",
                           "\xFF", "longlongword"};
    BFont font;
    font.SetSize(24);
    const int32 large = document.styles.Intern(font, kBlack);
    std::mt19937 random(7);
    document.lines.SetWrapWidth(90);
    for (int step = 0; step < 1500; step++) {
        const int32 length = document.buffer.Length();
        const int32 from = document.Clamp(static_cast<int32>(random() % (length + 1)));
        const int32 to = document.Clamp(from + static_cast<int32>(random() % 12));
        if (length < 300 && random() % 5 < 3)
            Insert(from, parts[random() % parts.size()] + parts[random() % parts.size()]);
        else if (from < to && random() % 2 == 0)
            document.SetRuns(from, to, {{0, random() % 2 == 0 ? large : 0}});
        else
            document.Delete(from, std::max(from, to));
        TextLines fresh(&document.buffer, &document.styles);
        fresh.SetWrapWidth(90);
        ASSERT_EQ(document.lines.CountLines(), fresh.CountLines()) << step;
        ASSERT_EQ(document.lines.Height(), fresh.Height()) << step;
        for (int32 i = 0; i < fresh.CountLines(); i++) {
            ASSERT_EQ(document.lines.LineAt(i).offset, fresh.LineAt(i).offset) << step;
            ASSERT_EQ(document.lines.LineAt(i).top, fresh.LineAt(i).top) << step;
            ASSERT_EQ(document.lines.LineAt(i).width, fresh.LineAt(i).width) << step;
            ASSERT_EQ(document.lines.LineAt(i).isShaped, fresh.LineAt(i).isShaped) << step;
        }
    }
}

TEST_F(TextLinesTest, AppendingTouchesOnlyTheLastLine) {
    document.lines.SetWrapWidth(200);
    for (int i = 0; i < 100; i++)
        Append("日本語の行です。\n");
    const TextLines::Change change = document.Insert(document.buffer.Length(), "x", 1);
    EXPECT_EQ(change.first, 100);
    EXPECT_EQ(change.last, 101);
    EXPECT_FALSE(change.moved);
}

TEST_F(TextLinesTest, ALineFeedInTheMiddleMovesWhatIsBelow) {
    Append("one\ntwo\nthree");
    const TextLines::Change change = document.Insert(1, "\n", 1);
    EXPECT_TRUE(change.moved);
    EXPECT_EQ(change.first, 0);
    EXPECT_EQ(Lines(), (Strings{"o", "ne", "two", "three"}));
}

double MillisecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> spent =
        std::chrono::steady_clock::now() - start;
    return spent.count();
}

TEST_F(TextLinesTest, TypingIntoAParagraphOfAMegabyteDoesNotGrowWithItsLength) {
    std::string paragraph;
    while (paragraph.size() < 1000000)
        paragraph += "word 日本語の文章、";
    document.lines.SetWrapWidth(500);
    const double once = MillisecondsOf([&] { Append(paragraph); });
    const double appended = MillisecondsOf([&] {
        for (int i = 0; i < 1000; i++)
            Append("字");
    });
    EXPECT_LT(appended, once * 5 + 50);
}

} // namespace
