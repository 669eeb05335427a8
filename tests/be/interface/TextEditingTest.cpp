#include "interface/text/TextCaret.h"
#include "interface/text/TextDocument.h"
#include "interface/text/TextHistory.h"
#include "interface/text/TextWords.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

constexpr rgb_color kBlack{0, 0, 0, 255};

class TextEditing : public testing::Test {
protected:
    void Hold(const std::string& text) {
        document.Insert(0, text.data(), static_cast<int32>(text.size()));
    }
    int32 Moved(int32 from, CaretMove move) {
        caret.Select(from, from);
        caret.Move(document, move, false, 100);
        return caret.Caret();
    }
    std::string WordAt(int32 offset) {
        int32 from = 0;
        int32 to = 0;
        FindWordAround(document.buffer, offset, &from, &to);
        return document.Copy(from, to).text;
    }

    TextDocument document{BFont(), kBlack};
    TextCaret caret;
};

TEST_F(TextEditing, WordsAreRunsOfOneScript) {
    Hold("It's 日本語とカタカナー、http 12.");
    EXPECT_EQ(WordAt(0), "It");
    EXPECT_EQ(WordAt(5), "日本語");
    EXPECT_EQ(WordAt(14), "と");
    EXPECT_EQ(WordAt(17), "カタカナー");
    EXPECT_EQ(WordAt(35), "http");
    EXPECT_EQ(WordAt(document.buffer.Length()), ".");
}

TEST_F(TextEditing, AnEmptyTextHasNoWord) {
    EXPECT_EQ(WordAt(0), "");
}

TEST_F(TextEditing, MovesGoWhereTheKeysSay) {
    Hold("one two\n日本語\nlast");
    const int32 japanese = 8;
    const int32 end = document.buffer.Length();
    const std::pair<std::pair<int32, CaretMove>, int32> table[] = {
        {{0, CaretMove::kRight}, 1},
        {{0, CaretMove::kLeft}, 0},
        {{japanese, CaretMove::kRight}, japanese + 3},
        {{japanese, CaretMove::kLeft}, 7},
        {{0, CaretMove::kWordRight}, 4},
        {{5, CaretMove::kWordLeft}, 4},
        {{4, CaretMove::kWordLeft}, 0},
        {{5, CaretMove::kLineStart}, 0},
        {{5, CaretMove::kLineEnd}, 7},
        {{0, CaretMove::kUp}, 0},
        {{end, CaretMove::kDown}, end},
        {{japanese, CaretMove::kDown}, 18},
        {{5, CaretMove::kTextEnd}, end},
        {{5, CaretMove::kTextStart}, 0},
        {{5, CaretMove::kPageDown}, end},
        {{3, CaretMove::kPageUp}, 0},
    };
    for (const auto& [from, to] : table)
        EXPECT_EQ(Moved(from.first, from.second), to) << from.first;
}

TEST_F(TextEditing, MovingUpAndDownKeepsTheColumn) {
    Hold("a long line\nx\nanother long line");
    caret.Select(9, 9);
    caret.Move(document, CaretMove::kDown, false, 100);
    EXPECT_EQ(caret.Caret(), 13);
    caret.Move(document, CaretMove::kUp, false, 100);
    EXPECT_EQ(caret.Caret(), 9);
}

TEST_F(TextEditing, ExtendingKeepsTheAnchorAndAnArrowCollapses) {
    Hold("abcdef");
    caret.Select(3, 3);
    caret.Move(document, CaretMove::kLeft, true, 100);
    caret.Move(document, CaretMove::kLeft, true, 100);
    EXPECT_EQ(caret.Start(), 1);
    EXPECT_EQ(caret.End(), 3);
    caret.Move(document, CaretMove::kRight, false, 100);
    EXPECT_EQ(caret.Caret(), 3);
    EXPECT_TRUE(caret.IsEmpty());
}

TextEdit Typing(int32 offset, const char* text) {
    return {B_UNDO_TYPING, offset, {}, {text, {{0, 0}}}, offset, offset};
}

TextEdit Erasing(int32 offset, const char* text) {
    return {B_UNDO_TYPING, offset, {text, {{0, 0}}}, {}, offset, offset};
}

TEST(TextHistory, AWordTypedIsUndoneAtOnce) {
    TextHistory history;
    history.Note(Typing(0, "a"));
    history.Note(Typing(1, "b"));
    history.Note(Typing(2, " "));
    history.Note(Typing(3, "c"));
    EXPECT_EQ(history.TakeUndo()->inserted.text, "c");
    EXPECT_EQ(history.TakeUndo()->inserted.text, "ab ");
    EXPECT_FALSE(history.TakeUndo());
}

TEST(TextHistory, BackspacesJoinFromBehind) {
    TextHistory history;
    history.Note(Erasing(2, "c"));
    history.Note(Erasing(1, "b"));
    history.Note(Erasing(0, "a"));
    const auto edit = history.TakeUndo();
    EXPECT_EQ(edit->removed.text, "abc");
    EXPECT_EQ(edit->offset, 0);
}

TEST(TextHistory, ANewEditDropsWhatWasUndone) {
    TextHistory history;
    history.Note(Typing(0, "a"));
    history.EndGroup();
    history.Note(Typing(1, "b"));
    history.TakeUndo();
    EXPECT_EQ(history.RedoKind(), B_UNDO_TYPING);
    history.Note(Typing(1, "c"));
    EXPECT_FALSE(history.TakeRedo());
    EXPECT_EQ(history.TakeUndo()->inserted.text, "c");
    EXPECT_EQ(history.TakeUndo()->inserted.text, "a");
}

TEST(TextHistory, ForgetsTheOldestBeyondItsSize) {
    TextHistory history;
    const std::string large(1024 * 1024, 'x');
    for (int i = 0; i < 8; i++) {
        history.Note(Typing(0, large.c_str()));
        history.EndGroup();
    }
    int kept = 0;
    while (history.TakeUndo())
        kept++;
    EXPECT_GE(kept, 1);
    EXPECT_LT(kept, 5);
}

} // namespace
