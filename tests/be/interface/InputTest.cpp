#include "support/TestWindow.h"

#include <Application.h>
#include <InterfaceDefs.h>

#include <cstdarg>
#include <cstdio>

namespace {

std::string Text(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Text(const char* format, ...) {
    char text[200];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    return text;
}

// Notes every event with what the current message says of it.
class InputLog : public BView {
public:
    InputLog(BRect frame, const char* name, Log& log, uint32 flags = B_WILL_DRAW | B_NAVIGABLE)
        : BView(frame, name, B_FOLLOW_NONE, flags), fLog(log) {}

    void MouseDown(BPoint where) override {
        BPoint asked;
        uint32 buttons = 0;
        GetMouse(&asked, &buttons);
        fLog.Add(Text("%s down %g,%g buttons %d clicks %d%s", Name(), where.x, where.y,
                      _Field("buttons"), _Field("clicks"),
                      asked == where && int32(buttons) == _Field("buttons") ? "" : " but asked"));
    }
    void MouseUp(BPoint where) override { fLog.Add(Text("%s up %g,%g", Name(), where.x, where.y)); }
    void MouseMoved(BPoint, uint32 transit, const BMessage*) override {
        const char* names[] = {"entered", "inside", "exited", "outside"};
        fLog.Add(Text("%s %s", Name(), names[transit]));
    }
    void KeyDown(const char* bytes, int32 numBytes) override {
        fLog.Add(Text("%s key %02x x%d raw %02x code %02x mods %x", Name(), uchar(bytes[0]),
                      numBytes, _Field("raw_char"), _Field("key"), _Field("modifiers") & 0xff));
        BView::KeyDown(bytes, numBytes);
    }
    void MakeFocus(bool focus) override {
        BView::MakeFocus(focus);
        fLog.Add(Text("%s %s", Name(), focus ? "focused" : "unfocused"));
    }
    void WindowActivated(bool active) override {
        fLog.Add(Text("%s %s", Name(), active ? "active" : "inactive"));
    }
    void MessageReceived(BMessage* message) override {
        if (message->what != B_INPUT_METHOD_EVENT)
            return BView::MessageReceived(message);
        const char* string = "";
        bool confirmed = false;
        message->FindString("be:string", &string);
        message->FindBool("be:confirmed", &confirmed);
        const uint32 opcode = static_cast<uint32>(_Field("be:opcode"));
        fLog.Add(opcode == B_INPUT_METHOD_STARTED ? "started"
                 : opcode == B_INPUT_METHOD_STOPPED
                     ? "stopped"
                     : Text("%s %s %d", string, confirmed ? "confirmed" : "composed",
                            _Field("be:selection")));
    }

private:
    int32 _Field(const char* name) {
        int32 value = 0;
        Window()->CurrentMessage()->FindInt32(name, &value);
        return value;
    }

    Log& fLog;
};

// Two views side by side.
struct InputFixture : testing::Test {
    InputFixture() {
        window->Lock();
        left = window.Add(new InputLog(BRect(0, 0, 49, 99), "left", log));
        right = window.Add(new InputLog(BRect(50, 0, 99, 99), "right", log));
        window->Unlock();
        window.Show();
        server::testing::WaitUntil(
            [this] { return window.Locked([this] { return window->IsActive(); }); });
        window.Settle();
        log.Take();
    }
    Lines Settled() {
        window.Settle();
        return log.Take();
    }
    void FocusLeft() {
        window.Locked([&] { left->MakeFocus(true); });
        log.Take();
    }

    Log log;
    TestWindow<> window{149, 99};
    InputLog* left;
    InputLog* right;
};

} // namespace

using Pointer = InputFixture;
using Keys = InputFixture;

TEST_F(Pointer, ViewsAreToldInTheirOwnCoordinates) {
    server::testing::Click(window, BPoint(60, 10));
    EXPECT_EQ((Lines{"right down 10,10 buttons 1 clicks 1", "right up 10,10"}), Settled());
}

TEST_F(Pointer, QuickClicksAreCounted) {
    server::testing::Click(window, BPoint(60, 10), 1, 0, 3);
    const Lines lines = Settled();
    ASSERT_EQ(6U, lines.size());
    EXPECT_EQ("right down 10,10 buttons 1 clicks 2", lines[2]);
    EXPECT_EQ("right down 10,10 buttons 1 clicks 3", lines[4]);
}

TEST_F(Pointer, AnotherButtonOrPlaceStartsANewCount) {
    server::testing::Click(window, BPoint(60, 10));
    server::testing::Click(window, BPoint(60, 10), 2);
    server::testing::Click(window, BPoint(60, 40), 2);
    const Lines lines = Settled();
    EXPECT_EQ("right down 10,10 buttons 2 clicks 1", lines[2]);
    EXPECT_EQ("right down 10,40 buttons 2 clicks 1", lines[4]);
}

TEST_F(Pointer, EnteringAndLeavingIsTold) {
    server::testing::MouseMove(window, BPoint(10, 10));
    window.Settle();
    server::testing::MouseMove(window, BPoint(11, 10));
    window.Settle();
    server::testing::MouseMove(window, BPoint(60, 10));
    window.Settle();
    server::testing::MouseLeave(window);
    EXPECT_EQ(
        (Lines{"left entered", "left inside", "left exited", "right entered", "right exited"}),
        Settled());
}

TEST_F(Pointer, AHeldButtonKeepsThePointer) {
    server::testing::MouseDown(window, BPoint(10, 10));
    server::testing::MouseMove(window, BPoint(60, 10), 1);
    window.Settle();
    server::testing::MouseMove(window, BPoint(500, 10), 1);
    window.Settle();
    server::testing::MouseUp(window, BPoint(60, 10));
    EXPECT_EQ((Lines{"left down 10,10 buttons 1 clicks 1", "left exited", "left outside",
                     "left up 60,10", "right entered"}),
              Settled());
}

// A menu that opens under a held button gets the release.
TEST_F(Pointer, APressWhoseReleaseWentElsewhereIsForgotten) {
    server::testing::MouseDown(window, BPoint(10, 10));
    server::testing::Click(window, BPoint(60, 10));
    server::testing::MouseDown(window, BPoint(10, 10));
    window.Settle();
    log.Take();
    server::testing::MouseMove(window, BPoint(60, 10));
    server::testing::Click(window, BPoint(70, 10));
    const Lines lines = Settled();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ("right up 20,10", lines.back());
}

TEST_F(Pointer, AViewWithAnEventMaskSeesWhatIsNotItsOwn) {
    window.Locked([&] { left->SetEventMask(B_POINTER_EVENTS); });
    server::testing::MouseMove(window, BPoint(60, 10));
    window.Settle();
    server::testing::Click(window, BPoint(60, 10));
    window.Settle();
    server::testing::MouseLeave(window);
    EXPECT_EQ((Lines{"right entered", "left outside", "right down 10,10 buttons 1 clicks 1",
                     "left down 60,10 buttons 1 clicks 1", "right up 10,10", "left up 60,10",
                     "right exited", "left outside"}),
              Settled());
    window.Locked([&] { left->SetEventMask(0); });
    server::testing::MouseMove(window, BPoint(60, 10));
    EXPECT_EQ(Lines{"right entered"}, Settled());
}

TEST_F(Pointer, MovesThatPileUpAreOne) {
    window.Locked([&] {
        for (int i = 0; i < 100; i++)
            server::testing::MouseMove(window, BPoint(static_cast<float>(i % 40), 10));
    });
    EXPECT_LT(Settled().size(), 10U);
}

TEST_F(Pointer, AHiddenViewGetsNothing) {
    window.Locked([&] { right->Hide(); });
    server::testing::Click(window, BPoint(60, 10));
    EXPECT_EQ(Lines{}, Settled());
}

struct KeyCase {
    char byte;
    uint32 modifiers;
    uint32 functionKey;
    const char* expected;
};

class KeyCases : public InputFixture, public testing::WithParamInterface<KeyCase> {};

TEST_P(KeyCases, ArriveAsDocumented) {
    FocusLeft();
    server::testing::Key(window, GetParam().byte, GetParam().modifiers, GetParam().functionKey);
    EXPECT_EQ(Lines{GetParam().expected}, Settled());
}

INSTANTIATE_TEST_SUITE_P(
    All, KeyCases,
    testing::Values(
        KeyCase{'a', 0, 0, "left key 61 x1 raw 61 code 3c mods 0"},
        KeyCase{B_ENTER, 0, 0, "left key 0a x1 raw 0a code 47 mods 0"},
        KeyCase{B_HOME, 0, 0, "left key 01 x1 raw 01 code 20 mods 0"},
        KeyCase{B_LEFT_ARROW, B_SHIFT_KEY, 0, "left key 1c x1 raw 1c code 61 mods 1"},
        KeyCase{B_RIGHT_ARROW, B_COMMAND_KEY, 0, "left key 1d x1 raw 1d code 63 mods 2"},
        KeyCase{B_FUNCTION_KEY, 0, B_F5_KEY, "left key 10 x1 raw 10 code 06 mods 0"},
        KeyCase{B_DELETE, 0, 0, "left key 7f x1 raw 7f code 34 mods 0"},
        // Nobody claims it: the control byte, with Control instead of Command.
        KeyCase{'a', B_COMMAND_KEY, 0, "left key 01 x1 raw 61 code 3c mods 4"},
        KeyCase{B_FUNCTION_KEY, B_SHIFT_KEY, B_F10_KEY, "left key 00 x1 raw 00 code 68 mods 0"}));

TEST_F(Keys, TheMenuKeyReachesTheFocus) {
    FocusLeft();
    server::testing::MenuKey(window);
    EXPECT_EQ(Lines{"left key 00 x1 raw 00 code 68 mods 0"}, Settled());
}

TEST_F(Keys, CharactersComeWhole) {
    FocusLeft();
    server::testing::Type(window, "é");
    EXPECT_EQ(1U, Settled().size());
    server::testing::Type(window, "漢");
    const Lines lines = Settled();
    ASSERT_EQ(1U, lines.size());
    EXPECT_EQ(0U, lines[0].find("left key e6 x3"));
}

TEST_F(Keys, TabGoesRoundTheNavigableViews) {
    server::testing::Key(window, B_TAB);
    EXPECT_EQ(Lines{"left focused"}, Settled());
    server::testing::Key(window, B_TAB);
    EXPECT_EQ((Lines{"left key 09 x1 raw 09 code 26 mods 0", "left unfocused", "right focused"}),
              Settled());
    server::testing::Key(window, B_TAB);
    server::testing::Key(window, B_TAB, B_SHIFT_KEY);
    window.Settle();
    EXPECT_EQ(right, window.Locked([&] { return window->CurrentFocus(); }));
}

TEST_F(Keys, TheInputMethodSpeaksToAwareViews) {
    FocusLeft();
    server::testing::Compose(window, "か", 3);
    EXPECT_EQ(Lines{}, Settled());
    window.Locked([&] { left->SetFlags(left->Flags() | B_INPUT_METHOD_AWARE); });
    server::testing::CommitComposition(window, "");
    log.Take();
    server::testing::Compose(window, "かん", 6);
    server::testing::Compose(window, "漢字", 6);
    server::testing::CommitComposition(window, "漢字");
    const Lines lines = Settled();
    EXPECT_EQ(
        (Lines{"started", "かん composed 6", "漢字 composed 6", "漢字 confirmed 6", "stopped"}),
        Lines(lines.end() - 5, lines.end()));
}

TEST_F(Keys, ActivationIsToldToEveryView) {
    server::testing::Activate(window, true);
    Settled();
    server::testing::Activate(window, false);
    EXPECT_EQ((Lines{"left inactive", "right inactive"}), Settled());
    EXPECT_FALSE(window.Locked([&] { return window->IsActive(); }));
}
