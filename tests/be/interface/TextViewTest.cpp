#include "support/InputWindow.h"

#include <Clipboard.h>
#include <Message.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <TextView.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <random>
#include <string>

namespace {

using namespace server::testing;

const BRect kFrame(10, 10, 289, 189);

BTextView* NewTextView() {
    return new BTextView(kFrame, "text", BRect(4, 4, 270, 170), B_FOLLOW_ALL,
                         B_WILL_DRAW | B_NAVIGABLE);
}

class TextViewTest : public testing::Test {
protected:
    TextViewTest() {
        window.Do([&] {
            text = NewTextView();
            window->AddChild(text);
            text->MakeFocus(true);
        });
        window.Settle();
    }

    std::string Text() {
        std::string result;
        window.Do([&] { result = text->Text(); });
        return result;
    }
    std::string Selected() {
        std::string result;
        window.Do([&] {
            int32 from = 0;
            int32 to = 0;
            text->GetSelection(&from, &to);
            result = std::string(text->Text() + from, to - from);
        });
        return result;
    }
    void SetText(const std::string& content) {
        window.Do([&] { text->SetText(content.c_str()); });
        window.Settle();
    }
    void PutCaret(int32 offset) {
        window.Do([&] { text->Select(offset, offset); });
    }
    BPoint PlaceOf(int32 offset) {
        BPoint place;
        window.Do([&] {
            float height = 0;
            place = text->PointAt(offset, &height);
            place.y += height / 2;
            text->ConvertToWindow(&place);
        });
        return place;
    }

    InputWindow window;
    BTextView* text = nullptr;
};

TEST_F(TextViewTest, TypingInsertsAtTheCaretAndReplacesTheSelection) {
    window.Type("abc");
    EXPECT_EQ(Text(), "abc");
    window.Key(B_LEFT_ARROW);
    window.Type("日本");
    EXPECT_EQ(Text(), "ab日本c");
    window.Key(B_LEFT_ARROW, B_SHIFT_KEY);
    window.Key(B_ENTER);
    EXPECT_EQ(Text(), "ab日\nc");
}

TEST_F(TextViewTest, BackspaceAndDeleteTakeCharactersAndWithCtrlWords) {
    SetText("one two 日本語");
    PutCaret(8);
    window.Key(B_DELETE);
    EXPECT_EQ(Text(), "one two 本語");
    window.Key(B_BACKSPACE);
    EXPECT_EQ(Text(), "one two本語");
    window.Key(B_BACKSPACE, B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one 本語");
}

TEST_F(TextViewTest, ControlBytesAreNotTyped) {
    window.Type("a");
    for (const char letter : {'b', 'd', 'h', 'j', 'k', 'm', 'g'})
        window.Key(letter, B_COMMAND_KEY);
    EXPECT_EQ(Text(), "a");
    window.Key(B_TAB);
    EXPECT_EQ(Text(), "a\t");
}

TEST_F(TextViewTest, ClicksSelectWordsAndLinesAndDraggingSelectsWhatItPasses) {
    SetText("one two three\nnext");
    window.Click(PlaceOf(5), 0, 2);
    EXPECT_EQ(Selected(), "two");
    window.Click(PlaceOf(5), 0, 3);
    EXPECT_EQ(Selected(), "one two three\n");
    window.Drag(PlaceOf(2), PlaceOf(9));
    EXPECT_EQ(Selected(), "e two t");
    window.Click(PlaceOf(11), B_SHIFT_KEY);
    EXPECT_EQ(Selected(), "e two thr");
}

TEST_F(TextViewTest, DraggingOutOfTheViewScrollsOn) {
    std::string lines;
    for (int i = 0; i < 100; i++)
        lines += "line\n";
    SetText(lines);
    MouseDown(window.Get(), PlaceOf(1));
    MouseMove(window.Get(), BPoint(60, 280), 1);
    EXPECT_TRUE(WaitUntil([&] {
        float top = 0;
        window.Do([&] { top = text->Bounds().top; });
        return top > 200;
    }));
    MouseUp(window.Get(), BPoint(60, 280));
    EXPECT_GT(Selected().size(), 100u);
}

TEST_F(TextViewTest, ASelectionIsOfferedToThePrimarySelection) {
    SetText("one two");
    window.Drag(PlaceOf(0), PlaceOf(3));
    EXPECT_TRUE(WaitUntil([] { return PrimarySelection() == "one"; }));
}

TEST_F(TextViewTest, TheMiddleButtonPastesThePrimarySelectionWhereItIsPressed) {
    SetText("one two");
    window.Drag(PlaceOf(0), PlaceOf(3));
    EXPECT_TRUE(WaitUntil([] { return PrimarySelection() == "one"; }));
    Click(window.Get(), PlaceOf(7), B_TERTIARY_MOUSE_BUTTON);
    window.Settle();
    EXPECT_EQ(Text(), "one twoone");
}

TEST_F(TextViewTest, TheClipboardKeysCutCopyPasteAndSelectAll) {
    SetText("one two");
    window.Key('a', B_COMMAND_KEY);
    EXPECT_EQ(Selected(), "one two");
    window.Key('x', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "");
    window.Key('v', B_COMMAND_KEY);
    window.Key('v', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one twoone two");
}

TEST_F(TextViewTest, CtrlZTakesBackAndWithShiftDoesAgain) {
    window.Type("one");
    window.Type(" ");
    window.Type("two");
    window.Key('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one ");
    window.Key('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "");
    window.Key('z', B_COMMAND_KEY | B_SHIFT_KEY);
    EXPECT_EQ(Text(), "one ");
}

TEST_F(TextViewTest, ACompositionIsShownInPlaceAndTypedWhenConfirmed) {
    SetText("[]");
    PutCaret(1);
    Compose(window.Get(), "にほん", 9);
    window.Settle();
    EXPECT_EQ(Text(), "[にほん]");
    Compose(window.Get(), "日本", 6);
    window.Settle();
    EXPECT_EQ(Text(), "[日本]");
    CommitComposition(window.Get(), "日本語");
    window.Settle();
    EXPECT_EQ(Text(), "[日本語]");
    window.Key('z', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "[]");
}

TEST_F(TextViewTest, AnEmptiedCompositionLeavesNothing) {
    SetText("ab");
    PutCaret(1);
    Compose(window.Get(), "かな", 6);
    Compose(window.Get(), "", 0);
    window.Settle();
    EXPECT_EQ(Text(), "ab");
}

TEST_F(TextViewTest, AClickKeepsWhatHasBeenComposed) {
    SetText("ab");
    PutCaret(2);
    Compose(window.Get(), "かな", 6);
    window.Settle();
    window.Click(PlaceOf(0));
    EXPECT_EQ(Text(), "abかな");
}

// The result of what was given up comes late from some input methods, and on the way from others.
TEST_F(TextViewTest, AGivenUpCompositionIsEnteredOnceAndWhereItWas) {
    BTextView* other = NewTextView();
    window.Add(other);
    const std::function<void()> kGivenUp[] = {
        [&] {
            window.Do([&] { other->MakeFocus(true); });
            window.Settle();
            CommitComposition(window.Get(), "かな");
        },
        [&] {
            window.Do([&] {
                CommitComposition(window.Get(), "仮名");
                other->MakeFocus(true);
            });
        },
    };
    for (const auto& giveUp : kGivenUp) {
        SetText("");
        window.Do([&] { text->MakeFocus(true); });
        Compose(window.Get(), "かな", 6);
        window.Settle();
        giveUp();
        window.Settle();
        EXPECT_EQ(Text(), "かな");
        window.Do([&] { EXPECT_STREQ(other->Text(), ""); });
    }
    Compose(window.Get(), "かな", 6);
    CommitComposition(window.Get(), "かな");
    window.Settle();
    window.Do([&] { EXPECT_STREQ(other->Text(), "かな"); });
}

TEST_F(TextViewTest, AnInputMethodReplacesWhatItNames) {
    const struct {
        int32 start;
        int32 length;
        const char* result;
        const char* text;
    } kCases[] = {
        {-3, 3, "", "[]"},        {-3, 3, "二本", "[二本]"}, {-1, 2, "x", "[日本x"},
        {-99, 199, "all", "all"}, {0, 0, "", "[日本語]"},
    };
    for (const auto& item : kCases) {
        SetText("[日本語]");
        PutCaret(10);
        window.Settle();
        CommitComposition(window.Get(), item.result, item.start, item.length);
        window.Settle();
        EXPECT_EQ(Text(), item.text);
    }
    // Undone, a conversion comes back as a composition.
    SetText("[日本語]");
    PutCaret(10);
    window.Settle();
    CommitComposition(window.Get(), "", -3, 3);
    Compose(window.Get(), "にほんご", 12);
    window.Settle();
    EXPECT_EQ(Text(), "[にほんご]");
}

TEST_F(TextViewTest, TheClauseBeingConvertedStandsOnAGroundOfItsOwn) {
    window.Do([&] {
        const BFont font(be_plain_font);
        text->SetStylable(true);
        text->SetFontAndColor(&font, B_FONT_SIZE);
    });
    Compose(window.Get(), "にほんご", 12, 0, 6);
    window.Settle();
    const auto groundOf = [&](int32 offset) {
        const BPoint place = PlaceOf(offset);
        const Picture picture = Snapshot(window.Get());
        return picture.At(static_cast<int32>(place.x), static_cast<int32>(text->Frame().top) + 5);
    };
    EXPECT_NE(groundOf(0), groundOf(9));
}

TEST_F(TextViewTest, InsertionsIntoAReadOnlyTextAreNoNewsForTheInputMethod) {
    window.Do([&] { text->MakeEditable(false); });
    window.Settle();
    const int32 notices = InputNoticesDuring([&] {
        window.Do([&] {
            for (int i = 0; i < 50; i++)
                text->Insert(text->TextLength(), "line\n", 5);
        });
        window.Settle();
    });
    EXPECT_EQ(notices, 0);
}

TEST_F(TextViewTest, AReadOnlyTextIsNotTypedIntoButSelected) {
    SetText("one two");
    window.Do([&] { text->MakeEditable(false); });
    window.Type("x");
    window.Key(B_BACKSPACE);
    window.Key('x', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "one two");
    window.Click(PlaceOf(5), 0, 2);
    EXPECT_EQ(Selected(), "two");
}

TEST_F(TextViewTest, TabLeavesAReadOnlyTextAndShiftTabAnyText) {
    BTextView* other = NewTextView();
    window.Add(other);
    window.Key(B_TAB, B_SHIFT_KEY);
    window.Do([&] { EXPECT_TRUE(other->IsFocus()); });
    window.Do([&] {
        text->MakeEditable(false);
        text->MakeFocus(true);
    });
    window.Key(B_TAB);
    window.Do([&] { EXPECT_TRUE(other->IsFocus()); });
    EXPECT_EQ(Text(), "");
}

TEST_F(TextViewTest, PastedTextLosesControlBytesAndStopsAtTheLimit) {
    ASSERT_TRUE(be_clipboard->Lock());
    be_clipboard->Clear();
    const std::string pasted = "a\r\nb\rc\x01\x1B"
                               "dあい";
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, pasted.data(),
                                  static_cast<ssize_t>(pasted.size()));
    be_clipboard->Commit();
    be_clipboard->Unlock();
    window.Do([&] { text->SetMaxBytes(11); });
    window.Key('v', B_COMMAND_KEY);
    EXPECT_EQ(Text(), "a\nb\ncdあ");
}

TEST_F(TextViewTest, DisallowedCharactersAreNotTyped) {
    window.Do([&] { text->DisallowChar('x'); });
    window.Type("axb");
    EXPECT_EQ(Text(), "ab");
}

TEST_F(TextViewTest, HiddenTypingShowsBulletsAndCopiesNothing) {
    window.Do([&] { text->HideTyping(true); });
    window.Type("iiii");
    window.Do([&] {
        const float narrow = text->LineWidth(0);
        text->SetText("wwww");
        EXPECT_EQ(text->LineWidth(0), narrow);
    });
}

TEST_F(TextViewTest, RunsColourOnlyAStylableText) {
    const rgb_color blue = {0, 0, 255, 255};
    text_run_array* runs = BTextView::AllocRunArray(2);
    runs->runs[0] = {2, *be_plain_font, blue};
    (&runs->runs[0])[1] = {4, *be_plain_font, {0, 0, 0, 255}};
    window.Do([&] {
        text->Insert(0, "abcdef", 6, runs);
        rgb_color color;
        text->GetFontAndColor(2, nullptr, &color);
        EXPECT_NE(color, blue);
        text->SetText("");
        text->SetStylable(true);
        text->Insert(0, "abcdef", 6, runs);
        text->GetFontAndColor(3, nullptr, &color);
        EXPECT_EQ(color, blue);
        text->GetFontAndColor(4, nullptr, &color);
        EXPECT_NE(color, blue);
        text_run_array* back = text->RunArray(1, 5);
        ASSERT_EQ(back->count, 3);
        EXPECT_EQ((&back->runs[0])[1].offset, 1);
        EXPECT_EQ((&back->runs[0])[1].color, blue);
        BTextView::FreeRunArray(back);
    });
    BTextView::FreeRunArray(runs);
}

TEST(TextRunArray, SurvivesFlatteningAndRefusesOtherBytes) {
    text_run_array* runs = BTextView::AllocRunArray(1);
    font_family family;
    font_style style;
    ASSERT_EQ(get_font_family(0, &family), B_OK);
    ASSERT_EQ(get_font_style(family, 0, &style), B_OK);
    BFont font;
    font.SetFamilyAndStyle(family, style);
    font.SetSize(17);
    runs->runs[0] = {7, font, {1, 2, 3, 255}};
    void* flat = BTextView::FlattenRunArray(runs);
    text_run_array* back = BTextView::UnflattenRunArray(flat);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->runs[0].offset, 7);
    EXPECT_EQ(back->runs[0].font, font);
    BTextView::FreeRunArray(back);
    static_cast<char*>(flat)[0] ^= 1;
    EXPECT_EQ(BTextView::UnflattenRunArray(flat), nullptr);
    free(flat);
    BTextView::FreeRunArray(runs);
}

TEST_F(TextViewTest, TheTextRectangleDecidesWhereLinesWrap) {
    SetText("これは長い文章なので何行かに分かれます。これは長い文章なので何行かに分かれます。");
    window.Do([&] {
        const int32 wide = text->CountLines();
        text->SetTextRect(BRect(4, 4, 100, 170));
        EXPECT_GT(text->CountLines(), wide);
        EXPECT_EQ(text->TextRect().Height() + 1, text->TextHeight(0, text->CountLines() - 1));
        text->SetWordWrap(false);
        EXPECT_EQ(text->CountLines(), 1);
    });
}

TEST_F(TextViewTest, OffsetsClampToTheTextAndToCharacters) {
    SetText("日本");
    window.Do([&] {
        text->Select(-5, 100);
        int32 from = -1;
        int32 to = -1;
        text->GetSelection(&from, &to);
        EXPECT_EQ(from, 0);
        EXPECT_EQ(to, 6);
        text->Insert(4, "x", 1);
        EXPECT_STREQ(text->Text(), "日x本");
        EXPECT_EQ(text->ByteAt(100), 0);
        EXPECT_EQ(text->OffsetAt(BPoint(-10, -10)), 0);
        EXPECT_EQ(text->OffsetAt(BPoint(0, 1000)), 7);
        char buffer[8];
        text->GetText(3, 100, buffer);
        EXPECT_STREQ(buffer, "x本");
    });
}

TEST_F(TextViewTest, AnyOrderOfCallsKeepsTextSelectionAndLinesInStep) {
    std::mt19937 random(11);
    const auto any = [&](int32 below) { return static_cast<int32>(random() % (below + 1)); };
    window.Do([&] {
        text->SetStylable(true);
        BFont font;
        for (int step = 0; step < 1500; step++) {
            const int32 length = text->TextLength();
            const int32 from = any(length + 4) - 2;
            const int32 to = from + any(9);
            font.SetSize(static_cast<float>(8 + any(20)));
            switch (any(9)) {
            case 0: text->Delete(from, to); break;
            case 1: text->Select(from, to); break;
            case 2: text->SetFontAndColor(from, to, &font, B_FONT_SIZE); break;
            case 3: text->Cut(be_clipboard); break;
            case 4: text->Paste(be_clipboard); break;
            case 5: text->Undo(be_clipboard); break;
            case 6: text->ScrollToOffset(from); break;
            case 7: text->Highlight(from, to); break;
            default: text->Insert(from, "a日\xCC\x81\n \xD7\x90\xFF", any(10)); break;
            }
            int32 start = -1;
            int32 end = -1;
            text->GetSelection(&start, &end);
            ASSERT_LE(0, start);
            ASSERT_LE(start, end);
            ASSERT_LE(end, text->TextLength());
            ASSERT_EQ(strlen(text->Text()), static_cast<size_t>(text->TextLength()));
            const int32 line = any(text->CountLines() - 1);
            ASSERT_EQ(text->LineAt(text->OffsetAt(line)), line);
        }
    });
    window.Settle();
}

TEST(TextViewScrolling, TheScrollBarFollowsTheTextAndKeysScroll) {
    InputWindow window;
    BTextView* text = NewTextView();
    text->MakeEditable(false);
    window.Add(new BScrollView("scroll", text, B_FOLLOW_NONE, 0, false, true));
    window.Do([&] {
        std::string lines;
        for (int i = 0; i < 100; i++)
            lines += "line\n";
        text->SetText(lines.c_str());
        float low = 0;
        float high = 0;
        text->ScrollBar(B_VERTICAL)->GetRange(&low, &high);
        EXPECT_EQ(high, text->TextHeight(0, 100) + 8 - (text->Bounds().Height() + 1));
        text->MakeFocus(true);
    });
    window.Key(B_END);
    window.Do([&] {
        float low = 0;
        float high = 0;
        text->ScrollBar(B_VERTICAL)->GetRange(&low, &high);
        EXPECT_EQ(text->Bounds().top, high);
    });
    window.Key(B_HOME);
    window.Do([&] {
        EXPECT_EQ(text->Bounds().top, 0);
        text->ScrollToOffset(text->TextLength());
        EXPECT_GT(text->Bounds().top, 0);
        text->SetText("short");
        EXPECT_EQ(text->Bounds().top, 0);
    });
}

class CountingTextView : public BTextView {
public:
    CountingTextView() : BTextView(kFrame, "text", BRect(4, 4, 270, 170), B_FOLLOW_ALL) {}

    void Draw(BRect update) override {
        draws++;
        BTextView::Draw(update);
    }

    std::atomic<int> draws{0};
};

TEST(TextViewDrawing, WhatIsInsertedBelowTheVisiblePartDrawsNothing) {
    InputWindow window;
    CountingTextView* text = window.Add(new CountingTextView);
    window.Do([&] {
        for (int i = 0; i < 200; i++)
            text->Insert(text->TextLength(), "line\n", 5);
    });
    window.Settle();
    int before = 0;
    window.Do([&] {
        before = text->draws.load();
        text->Insert(text->TextLength(), "more\n", 5);
    });
    window.Settle();
    window.Do([&] { EXPECT_EQ(text->draws, before); });
}

TEST(TextViewDrawing, TheCaretStopsBlinkingInAnInactiveWindow) {
    InputWindow window;
    CountingTextView* text = window.Add(new CountingTextView);
    window.Do([&] { text->MakeFocus(true); });
    int before = 0;
    window.Do([&] { before = text->draws.load(); });
    EXPECT_TRUE(WaitUntil([&] { return text->draws > before + 1; }));
    Activate(window.Get(), false);
    window.Settle();
    snooze(700000);
    window.Do([&] { before = text->draws.load(); });
    snooze(1200000);
    window.Do([&] { EXPECT_EQ(text->draws, before); });
}

} // namespace
