#include "support/TestWindow.h"

#include <Alert.h>
#include <Application.h>
#include <Button.h>
#include <Handler.h>
#include <Invoker.h>
#include <TextView.h>

#include <atomic>

namespace {

const char kLong[] =
    "スレッドが選択されていません！長い文章はここで折り返されて、どの行も枠の中に収まります。";

// The alert that is open, once it is.
BAlert* OpenAlert() {
    BAlert* alert = nullptr;
    server::testing::WaitUntil([&] {
        for (int32 i = 0; i < be_app->CountWindows(); i++)
            alert = dynamic_cast<BAlert*>(be_app->WindowAt(i));
        return alert != nullptr;
    });
    server::testing::WaitUntilIdle(alert);
    return alert;
}

// An alert that another thread waits for.
class AskedAlert {
public:
    explicit AskedAlert(BAlert* alert) : fAlert(alert) {
        fThread = spawn_thread(Ask, "asks", B_NORMAL_PRIORITY, this);
        // The thread that made it holds the new alert's lock.
        alert->Unlock();
        resume_thread(fThread);
        OpenAlert();
    }
    int32 Answer() {
        wait_for_thread(fThread, nullptr);
        return fAnswer;
    }
    BAlert* Get() { return fAlert; }

private:
    static int32 Ask(void* self) {
        auto* asked = static_cast<AskedAlert*>(self);
        asked->fAlert->Lock();
        asked->fAnswer = asked->fAlert->Go();
        return 0;
    }

    BAlert* fAlert;
    thread_id fThread;
    std::atomic<int32> fAnswer{-2};
};

BAlert* ThreeButtons() {
    return new BAlert("title", kLong, "one", "two", "three");
}

BPoint MiddleOf(BAlert* alert, int32 button) {
    alert->Lock();
    const BRect frame = alert->ButtonAt(button)->ConvertToWindow(alert->ButtonAt(button)->Bounds());
    alert->Unlock();
    return BPoint(frame.left + 10, frame.top + 10);
}

} // namespace

TEST(Alert, TheClickedButtonIsTheAnswer) {
    AskedAlert asked(ThreeButtons());
    server::testing::Click(asked.Get(), MiddleOf(asked.Get(), 1));
    EXPECT_EQ(1, asked.Answer());
}

TEST(Alert, EnterChoosesTheLastButton) {
    AskedAlert asked(ThreeButtons());
    server::testing::Key(asked.Get(), B_ENTER);
    EXPECT_EQ(2, asked.Answer());
}

TEST(Alert, AShortcutChoosesItsButton) {
    BAlert* alert = ThreeButtons();
    alert->SetShortcut(0, B_ESCAPE);
    EXPECT_EQ(B_ESCAPE, alert->Shortcut(0));
    EXPECT_EQ('\0', alert->Shortcut(7));
    AskedAlert asked(alert);
    server::testing::Key(asked.Get(), B_ESCAPE);
    EXPECT_EQ(0, asked.Answer());
}

TEST(Alert, EscapeClosesOneWithASingleButton) {
    AskedAlert asked(new BAlert("title", "text", "OK"));
    server::testing::Key(asked.Get(), B_ESCAPE);
    EXPECT_EQ(0, asked.Answer());
}

TEST(Alert, TextAndButtonsLieWithinIt) {
    BAlert* alert = ThreeButtons();
    const BRect bounds = alert->Bounds();
    const BRect text = alert->TextView()->Frame();
    EXPECT_GT(alert->TextView()->CountLines(), 1);
    EXPECT_TRUE(bounds.Contains(text));
    for (int32 i = 0; i < 3; i++) {
        const BRect button = alert->ButtonAt(i)->Frame();
        EXPECT_TRUE(bounds.Contains(button));
        EXPECT_GT(button.top, text.bottom);
        EXPECT_TRUE(i == 0 || button.left > alert->ButtonAt(i - 1)->Frame().right);
    }
    EXPECT_EQ(nullptr, alert->ButtonAt(3));
    alert->Quit();
}

TEST(Alert, WidthsFollowTheWidestLabelIfAsked) {
    auto* alert =
        new BAlert("title", "text", "a", "a much longer label", nullptr, B_WIDTH_FROM_WIDEST);
    EXPECT_EQ(alert->ButtonAt(1)->Frame().Width(), alert->ButtonAt(0)->Frame().Width());
    alert->Quit();
    alert = new BAlert("title", "text", "a", "a much longer label", nullptr, B_WIDTH_FROM_LABEL);
    EXPECT_LT(alert->ButtonAt(0)->Frame().Width(), alert->ButtonAt(1)->Frame().Width());
    alert->Quit();
}

TEST(Alert, AnInvokerIsToldWhichButton) {
    class Target : public BHandler {
    public:
        void MessageReceived(BMessage* message) override {
            int32 which = -1;
            if (message->what == 'answ' && message->FindInt32("which", &which) == B_OK)
                fWhich = which;
        }
        std::atomic<int32> fWhich{-1};
    };
    Target target;
    be_app->Lock();
    be_app->AddHandler(&target);
    be_app->Unlock();
    BAlert* alert = ThreeButtons();
    {
        BInvoker invoker(new BMessage('answ'), &target);
        EXPECT_EQ(B_OK, alert->Go(&invoker));
    }
    server::testing::WaitUntilIdle(alert);
    server::testing::Click(alert, MiddleOf(alert, 1));
    EXPECT_TRUE(server::testing::WaitUntil([&] { return target.fWhich == 1; }));
    be_app->Lock();
    be_app->RemoveHandler(&target);
    be_app->Unlock();
}

TEST(Alert, AWindowThatWaitsGoesOnBeingDrawnAndHoldsNobodyUp) {
    class Asking : public BWindow {
    public:
        using BWindow::BWindow;
        void MessageReceived(BMessage* message) override {
            if (message->what == 'ask_')
                fAnswer = (new BAlert("title", "text", "OK"))->Go();
        }
        std::atomic<int32> fAnswer{-2};
    };
    TestWindow<Asking> window;
    window.Show();
    window->PostMessage('ask_');
    BAlert* alert = OpenAlert();
    server::testing::ResizeByUser(window, 249, 199);
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return server::testing::Snapshot(window).width == 250; }));
    // A second start of the program finds a locked window here.
    be_app->PostMessage(B_SILENT_RELAUNCH);
    BMessage question('ques');
    BMessage answer;
    EXPECT_EQ(B_OK, be_app_messenger.SendMessage(&question, &answer, 20000000, 20000000));
    server::testing::Key(alert, B_ENTER);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return window->fAnswer == 0; }));
}

// The window that an alert blocks may be the one that the user goes to, or that a second start of
// the program finds.
TEST(Alert, WhatIsToBringTheBlockedWindowToTheFrontBringsTheAlert) {
    TestWindow<> mine;
    TestWindow<> other;
    const std::function<void()> kWays[] = {
        [&] { mine.Locked([&] { mine->Activate(); }); },
        [&] { be_app->PostMessage(B_SILENT_RELAUNCH); },
    };
    mine.Show();
    other.Show();
    BAlert* alert = ThreeButtons();
    alert->SetFeel(B_MODAL_SUBSET_WINDOW_FEEL);
    alert->AddToSubset(mine.Get());
    AskedAlert asked(alert);
    const auto isActive = [](BWindow* window) {
        return server::testing::WaitUntil([window] {
            window->Lock();
            const bool active = window->IsActive();
            window->Unlock();
            return active;
        });
    };
    for (const auto& way : kWays) {
        other.Locked([&] { other->Activate(); });
        ASSERT_TRUE(isActive(other));
        way();
        EXPECT_TRUE(isActive(&way == kWays ? asked.Get() : other.Get()));
    }
    server::testing::Key(asked.Get(), B_ENTER);
    EXPECT_EQ(2, asked.Answer());
}

TEST(Alert, OpensOverItsWindowUnderTheProgramsName) {
    TestWindow<> mine(399, 299);
    mine.Locked([&] { mine->MoveTo(700, 500); });
    mine.Show();
    auto* alert = new BAlert("", "text", "OK");
    alert->SetFeel(B_MODAL_SUBSET_WINDOW_FEEL);
    alert->AddToSubset(mine.Get());
    AskedAlert asked(alert);
    alert->Lock();
    const BRect frame = alert->Frame();
    alert->Unlock();
    const BRect owner = mine.Locked([&] { return mine->Frame(); });
    EXPECT_NEAR((owner.left + owner.right) / 2, (frame.left + frame.right) / 2, 1);
    EXPECT_GE(frame.top, owner.top);
    EXPECT_LE(frame.bottom, owner.bottom);
    EXPECT_EQ("Test", server::testing::TitleOf(alert));
    server::testing::Key(asked.Get(), B_ENTER);
    EXPECT_EQ(0, asked.Answer());
}

TEST(Alert, OfASubsetKeepsTheInputFromItsWindowAlone) {
    TestWindow<> mine;
    TestWindow<> other;
    mine.Show();
    other.Show();
    BAlert* alert = ThreeButtons();
    EXPECT_EQ(alert->AddToSubset(mine.Get()), B_BAD_VALUE); // it still has the common feel
    alert->SetFeel(B_MODAL_SUBSET_WINDOW_FEEL);
    EXPECT_EQ(alert->AddToSubset(mine.Get()), B_OK);
    AskedAlert asked(alert);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return server::testing::IsBlocked(mine.Get()); }));
    EXPECT_FALSE(server::testing::IsBlocked(other.Get()));
    server::testing::Key(asked.Get(), B_ENTER);
    EXPECT_EQ(2, asked.Answer());
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return !server::testing::IsBlocked(mine.Get()); }));
}
