#pragma once

#include "messages/Messages.h"
#include "windows/NPWriteWindow.h"

#include "server/Testing.h"

#include <Application.h>
#include <Clipboard.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>

#include <gtest/gtest.h>

#include <string>

inline NPWriteWindow* FindWriteWindow() {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        if (NPWriteWindow* window = dynamic_cast<NPWriteWindow*>(be_app->WindowAt(i)))
            return window;
    }
    return nullptr;
}

inline void SetClipboard(const std::string& text) {
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                  static_cast<ssize_t>(text.size()));
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

// The open write window, driven from outside; closed at the end.
class Writer {
public:
    Writer() {
        server::testing::WaitUntil([] { return FindWriteWindow() != nullptr; });
        fWindow = FindWriteWindow();
        fMessenger = BMessenger(fWindow);
        server::testing::Activate(fWindow, true);
        Settle();
    }
    ~Writer() { Close(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void Settle() { EXPECT_TRUE(server::testing::WaitUntilIdle(fWindow)); }
    void Type(const char* text) {
        server::testing::Type(fWindow, text);
        Settle();
    }
    void Press(char key, uint32 modifiers = 0) {
        server::testing::Key(fWindow, key, modifiers);
        Settle();
    }
    void SetName(const char* name) {
        Do([&] { static_cast<BTextControl*>(fWindow->FindView("name"))->SetText(name); });
    }
    std::string Text() {
        std::string text;
        Do([&] { text = Editor()->Text(); });
        return text;
    }
    int32 Caret() {
        int32 start = 0;
        int32 end = 0;
        Do([&] { Editor()->GetSelection(&start, &end); });
        return start == end ? start : -1;
    }
    void Select(int32 offset) {
        Do([&] { Editor()->Select(offset, offset); });
    }
    // The name of the view that keys go to: a field's own text has its field's.
    std::string Focus() {
        std::string name;
        Do([&] {
            BView* focus = fWindow->CurrentFocus();
            if (focus != nullptr && dynamic_cast<BTextControl*>(focus->Parent()) != nullptr)
                focus = focus->Parent();
            name = focus != nullptr && focus->Name() != nullptr ? focus->Name() : "";
        });
        return name;
    }
    std::string Field(const char* name) {
        std::string text;
        Do([&] { text = static_cast<BTextControl*>(fWindow->FindView(name))->Text(); });
        return text;
    }
    std::string Status() {
        std::string text;
        Do([&] { text = static_cast<BStringView*>(fWindow->FindView("status"))->Text(); });
        return text;
    }
    bool CanSend() {
        bool can = false;
        Do([&] { can = static_cast<BControl*>(fWindow->FindView("send"))->IsEnabled(); });
        return can;
    }
    void Send() { fMessenger.SendMessage(kMsgSendPost); }
    BTextView* Editor() { return static_cast<BTextView*>(fWindow->FindView("message")); }
    bool WaitUntilClosed() {
        return server::testing::WaitUntil([this] { return !fMessenger.IsValid() && !IsListed(); });
    }
    void Close() {
        fMessenger.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitUntilClosed());
    }
    NPWriteWindow* Window() const { return fWindow; }

    template <typename Work>
    void Do(Work work) {
        if (!fMessenger.LockTarget())
            return;
        work();
        fWindow->Unlock();
    }

private:
    // A window that can't be reached any more may still be on its way out.
    bool IsListed() const {
        for (int32 i = 0; i < be_app->CountWindows(); i++) {
            if (be_app->WindowAt(i) == fWindow)
                return true;
        }
        return false;
    }

    NPWriteWindow* fWindow = nullptr;
    BMessenger fMessenger;
};

inline WriteWindowSetup SetupFor(int port) {
    WriteWindowSetup setup;
    setup.target = {PostFamily::kBbsCgi, "h.jp", "news", "12"};
    setup.proxy = {true, "127.0.0.1", std::to_string(port)};
    return setup;
}
