#pragma once

#include "messages/Messages.h"
#include "views/NPTextView.h"
#include "views/PopUpTextView.h"
#include "views/PopUpWindow.h"

#include "server/Testing.h"

#include <AppDefs.h>
#include <Application.h>
#include <Message.h>
#include <Messenger.h>
#include <OS.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Keeps what its text view asks of it.
class AskedWindow : public BWindow {
public:
    explicit AskedWindow(BRect frame) : BWindow(frame, "thread", B_TITLED_WINDOW, 0) {}

    void MessageReceived(BMessage* message) override {
        if (message->what == kMsgThreadInWindow)
            fAsked = *message;
        else
            BWindow::MessageReceived(message);
    }

    BMessage fAsked; // with the window locked
};

// A thread in a window on the screen, with input sent to it.
class ThreadFixture : public testing::Test {
protected:
    static constexpr const char* kTag = "<a href=\"../test/read.cgi/b/1/1\" target=\"_blank\">";

    void SetUp() override { Open(BRect(300, 300, 899, 699)); }
    void TearDown() override {
        fMessenger.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(server::testing::WaitUntil([] { return be_app->CountWindows() == 0; }));
    }

    void Open(BRect frame) {
        fWindow = new AskedWindow(frame);
        fMessenger = BMessenger(fWindow);
        BRect text = fWindow->Bounds();
        text.right -= B_V_SCROLL_BAR_WIDTH + 1;
        fView = new NPTextView(text, text.InsetByCopy(8, 8));
        fWindow->AddChild(
            new BScrollView("scroll", fView, B_FOLLOW_ALL_SIDES, 0, false, true, B_NO_BORDER));
        fView->clearText();
        fWindow->Show();
        server::testing::Activate(fWindow, true);
        Settle();
        server::testing::RecordLaunches();
    }

    static std::string Anchor(const std::string& text) { return kTag + text + "</a>"; }

    void AddPost(int32 number, const std::string& body) {
        Do([&] {
            fView->addNumItem(number);
            fView->addNameItem("名無しさん");
            fView->addMailItem("sage");
            fView->addDateItem("02/01/23");
            fView->addArticleItem(body.c_str());
            fView->addLineFeed();
        });
        Settle();
    }

    template <typename Work>
    void Do(Work work) {
        ASSERT_TRUE(fWindow->Lock());
        work();
        fWindow->Unlock();
    }
    template <typename Work>
    auto Ask(Work work) {
        fWindow->Lock();
        auto result = work();
        fWindow->Unlock();
        return result;
    }
    void Settle() {
        EXPECT_TRUE(server::testing::WaitUntilIdle(fWindow));
        // Links are opened beside the window.
        EXPECT_TRUE(server::testing::WaitUntil([] { return find_thread("open_url") < 0; }));
    }

    std::string Text() {
        return Ask([this] { return std::string(fView->Text()); });
    }
    int32 OffsetOf(const std::string& part, size_t from = 0) {
        return static_cast<int32>(Text().find(part, from));
    }
    // In the window, a little right of where the byte's character begins.
    BPoint PointOf(int32 offset) {
        return Ask([&] {
            float height = 0;
            const BPoint at = fView->PointAt(offset, &height);
            return fView->ConvertToParent(at + BPoint(1, height / 2));
        });
    }
    void ClickAt(int32 offset, uint32 button = B_PRIMARY_MOUSE_BUTTON, int32 clicks = 1) {
        server::testing::Click(fWindow, PointOf(offset), button, 0, clicks);
        Settle();
    }

    // So that the next click is no double click.
    void ClickElsewhere() {
        server::testing::Click(fWindow, BPoint(3, 390), B_TERTIARY_MOUSE_BUTTON);
        Settle();
    }

    // Beside the thread's window there are no others.
    static size_t CountPopUps() { return static_cast<size_t>(be_app->CountWindows() - 1); }
    static bool WaitForPopUps(size_t count) {
        return server::testing::WaitUntil([count] { return CountPopUps() == count; });
    }
    // While none of them opens or closes.
    static std::vector<PopUpWindow*> PopUps() {
        std::vector<PopUpWindow*> found;
        for (int32 i = 0; BWindow* window = be_app->WindowAt(i); i++) {
            if (auto* popUp = dynamic_cast<PopUpWindow*>(window))
                found.push_back(popUp);
        }
        return found;
    }
    // The one that a click at an offset opens.
    PopUpWindow* OpenAt(int32 offset) {
        EXPECT_TRUE(WaitForPopUps(0));
        ClickAt(offset);
        PopUpWindow* popUp = CountPopUps() == 1 ? PopUps()[0] : nullptr;
        EXPECT_TRUE(server::testing::WaitUntilIdle(popUp));
        return popUp;
    }
    static std::string TextOf(PopUpWindow* popUp) {
        popUp->Lock();
        const std::string text = popUp->TextView()->Text();
        popUp->Unlock();
        return text;
    }

    AskedWindow* fWindow = nullptr;
    BMessenger fMessenger;
    NPTextView* fView = nullptr;
};
