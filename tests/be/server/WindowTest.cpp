#include "support/TestWindow.h"

#include "interface/windows/WindowPrivate.h"
#include "server/Drawing.h"
#include "server/NativeWindow.h"
#include "server/Server.h"

#include <Application.h>
#include <Cursor.h>
#include <Screen.h>

namespace {

const rgb_color kColor = make_color(200, 10, 20);

class FilledView : public BView {
public:
    explicit FilledView(BRect frame) : BView(frame, "filled", B_FOLLOW_ALL_SIDES, B_WILL_DRAW) {}

    void Draw(BRect updateRect) override {
        SetHighColor(kColor);
        FillRect(updateRect);
    }
};

class AskedWindow : public BWindow {
public:
    using BWindow::BWindow;

    bool QuitRequested() override {
        fAsked++;
        return fMayQuit;
    }
    void MessageReceived(BMessage* message) override {
        fMessages.Add(std::to_string(message->what));
        if (message->what != 'test')
            BWindow::MessageReceived(message);
    }
    void MenusBeginning() override { fMessages.Add("beginning"); }
    void MenusEnded() override { fMessages.Add("ended"); }
    void WindowActivated(bool active) override { fMessages.Add(active ? "active" : "inactive"); }

    std::atomic<int> fAsked{0};
    std::atomic<bool> fMayQuit{true};
    Log fMessages;
};

bool IsGone(const BMessenger& window) {
    return server::testing::WaitUntil([&] { return !window.IsValid(); });
}

} // namespace

TEST(Window, ShowsWhatItsViewsDraw) {
    TestWindow<> window(99, 49);
    window.Add(new FilledView(window->Bounds()));
    window.Show();
    const server::testing::Picture picture = server::testing::Snapshot(window);
    EXPECT_EQ(100, picture.width);
    EXPECT_EQ(50, picture.height);
    EXPECT_EQ(kColor, picture.At(0, 0));
    EXPECT_EQ(kColor, picture.At(99, 49));
}

TEST(Window, WhatTheDesktopAsksForDuringADrawingIsShownAfterIt) {
    TestWindow<> window(99, 49);
    window.Add(new FilledView(window->Bounds()));
    window.Show();
    window.Settle();
    const std::shared_ptr<server::WindowLink> link =
        window.Locked([&] { return BWindow::Private::Of(window).link; });
    const auto expose = [&] {
        server::NativeWindow::Of(*link)->Paint(QRegion(QRect(0, 0, 100, 50)));
    };
    {
        server::Drawing drawing(link);
        EXPECT_TRUE(server::Call(expose));
    }
    EXPECT_TRUE(server::Call([] {})); // behind what the drawing's end has sent
    bool isLeft = false;
    link->Pixels().Take(QRegion(), [&](const QImage&, const QRegion&) { isLeft = true; });
    EXPECT_FALSE(isLeft);
}

TEST(Window, IsListedUntilItHasGone) {
    const int32 before = be_app->CountWindows();
    auto* window = new BWindow(BRect(0, 0, 99, 99), "listed", B_TITLED_WINDOW, 0);
    EXPECT_EQ(before + 1, be_app->CountWindows());
    EXPECT_EQ(window, be_app->WindowAt(before));
    EXPECT_EQ(nullptr, be_app->WindowAt(before + 1));
    EXPECT_EQ(nullptr, be_app->WindowAt(-1));
    window->Show();
    window->Lock();
    window->Quit();
    EXPECT_EQ(before, be_app->CountWindows());
    EXPECT_TRUE(
        server::testing::WaitUntil([] { return server::testing::CountServerWindows() == 0; }));
}

TEST(Window, TheCloseButtonAsksFirst) {
    TestWindow<AskedWindow> window;
    window.Show();
    window->fMayQuit = false;
    server::testing::CloseByUser(window);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return window->fAsked == 1; }));
    window.Settle();
    EXPECT_FALSE(window.Locked([&] { return window->IsHidden(); }));
}

TEST(Window, CommandWClosesIt) {
    auto* window = new AskedWindow(BRect(0, 0, 99, 99), "closed", B_TITLED_WINDOW, 0);
    const BMessenger messenger(window);
    window->Show();
    server::testing::WaitUntilIdle(window);
    server::testing::Key(window, 'w', B_COMMAND_KEY);
    EXPECT_TRUE(IsGone(messenger));
}

TEST(Window, ShortcutsSendTheirMessages) {
    TestWindow<AskedWindow> window;
    window.Show();
    window.Locked([&] {
        window->AddShortcut('G', B_COMMAND_KEY, new BMessage('test'));
        window->AddShortcut('w', B_COMMAND_KEY | B_SHIFT_KEY, new BMessage('test'));
        EXPECT_TRUE(window->HasShortcut('g', 0));
        EXPECT_FALSE(window->HasShortcut('g', B_SHIFT_KEY));
    });
    window->fMessages.Take();
    server::testing::Key(window, 'g', B_COMMAND_KEY);
    server::testing::Key(window, 'w', B_COMMAND_KEY | B_SHIFT_KEY);
    window.Settle();
    EXPECT_EQ((Lines{std::to_string('test'), std::to_string('test')}), window->fMessages.Take());
    window.Locked([&] { window->RemoveShortcut('g', 0); });
    server::testing::Key(window, 'g', B_COMMAND_KEY);
    window.Settle();
    EXPECT_EQ(0, window->fAsked);
}

TEST(Window, HidingAndShowingCount) {
    TestWindow<> window;
    window->Hide();
    window->Show();
    EXPECT_TRUE(window.Locked([&] { return window->IsHidden(); }));
    window.Show();
    EXPECT_FALSE(window.Locked([&] { return window->IsHidden(); }));
    window.Locked([&] { window->Hide(); });
    EXPECT_TRUE(window.Locked([&] { return window->IsHidden(); }));
    window.Show();
    EXPECT_FALSE(window.Locked([&] { return window->IsHidden(); }));
}

TEST(Window, TheOneThatIsActivatedIsActive) {
    TestWindow<> first;
    TestWindow<> second;
    first.Show();
    second.Show();
    first.Locked([&] { first->Activate(); });
    EXPECT_TRUE(server::testing::WaitUntil(
        [&] { return first.Locked([&] { return first->IsActive(); }); }));
    EXPECT_TRUE(server::testing::WaitUntil(
        [&] { return second.Locked([&] { return !second->IsActive(); }); }));
}

TEST(Window, WhenTheActiveOneGoesTheOneBeforeIsActive) {
    TestWindow<> first;
    first.Show();
    {
        TestWindow<> second;
        second.Show();
        EXPECT_TRUE(server::testing::WaitUntil(
            [&] { return first.Locked([&] { return !first->IsActive(); }); }));
    }
    EXPECT_TRUE(server::testing::WaitUntil(
        [&] { return first.Locked([&] { return first->IsActive(); }); }));
}

TEST(Window, MovesAndResizesToWhereItIsTold) {
    TestWindow<> window;
    window.Show();
    window.Locked([&] {
        window->MoveTo(300, 200);
        window->ResizeTo(120, 80);
        EXPECT_EQ(BRect(300, 200, 420, 280), window->Frame());
    });
    window.Settle();
    EXPECT_EQ(BRect(300, 200, 420, 280), window.Locked([&] { return window->Frame(); }));
    EXPECT_EQ(121, server::testing::Snapshot(window).width);
}

TEST(Window, OneFromAScreenThatHasGoneComesBack) {
    auto* window = new BWindow(BRect(9000, -5000, 9100, -4900), "far", B_TITLED_WINDOW, 0);
    window->Show();
    ASSERT_TRUE(server::testing::WaitUntilIdle(window));
    window->Lock();
    EXPECT_TRUE(BScreen(window).Frame().Contains(window->Frame().LeftTop()));
    window->Quit();
}

TEST(Window, ManyWindowsDrawAtOnce) {
    std::vector<std::unique_ptr<TestWindow<>>> windows;
    for (int i = 0; i < 6; i++) {
        windows.push_back(std::make_unique<TestWindow<>>());
        windows.back()->Add(new FilledView((*windows.back())->Bounds()));
        (*windows.back())->Show();
    }
    for (const auto& window : windows) {
        window->Settle();
        EXPECT_EQ(kColor, window->PixelAt(100, 100));
    }
}

TEST(Window, APulseComesOnlyWhereOneIsNeeded) {
    class Pulsing : public BView {
    public:
        Pulsing() : BView(BRect(0, 0, 9, 9), "pulsing", B_FOLLOW_NONE, B_PULSE_NEEDED) {}
        void Pulse() override { fPulses++; }
        std::atomic<int> fPulses{0};
    };
    TestWindow<> window;
    auto* view = window.Add(new Pulsing);
    window->SetPulseRate(10000);
    window.Show();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return view->fPulses > 3; }));
    window.Locked([&] { view->SetFlags(0); });
    window.Settle();
    const int seen = view->fPulses;
    snooze(50000);
    EXPECT_EQ(seen, view->fPulses);
}

TEST(Cursor, BadDataAreRefused) {
    uint8 data[68] = {16, 1, 3, 4};
    EXPECT_EQ(B_OK, BCursor(data).InitCheck());
    data[0] = 32;
    EXPECT_EQ(B_BAD_VALUE, BCursor(data).InitCheck());
    EXPECT_EQ(B_BAD_VALUE, BCursor(static_cast<const void*>(nullptr)).InitCheck());
    EXPECT_TRUE(BCursor(B_HAND_CURSOR) == *B_CURSOR_SYSTEM_DEFAULT);
    EXPECT_TRUE(BCursor(B_I_BEAM_CURSOR) != *B_CURSOR_SYSTEM_DEFAULT);
}

TEST(Cursor, TheApplicationAndViewsTakeThem) {
    TestWindow<> window;
    auto* view = window.Add(new BView(BRect(0, 0, 50, 50), "view", B_FOLLOW_NONE, 0));
    window.Show();
    be_app->Lock();
    be_app->SetCursor(B_I_BEAM_CURSOR);
    be_app->HideCursor();
    EXPECT_TRUE(be_app->IsCursorHidden());
    be_app->ShowCursor();
    be_app->SetCursor(B_HAND_CURSOR);
    be_app->Unlock();
    window.Locked([&] { view->SetViewCursor(B_CURSOR_I_BEAM); });
    server::testing::MouseMove(window, BPoint(10, 10));
    window.Settle();
}
