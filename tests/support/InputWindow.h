#pragma once

#include "server/Testing.h"

#include <Window.h>

#include <gtest/gtest.h>

#include <functional>

// A window on the screen for the length of a test, active, with input sent to it.
class InputWindow {
public:
    explicit InputWindow(BRect frame = BRect(50, 50, 449, 349))
        : fWindow(new BWindow(frame, "test", B_TITLED_WINDOW, 0)) {
        fWindow->Show();
        server::testing::Activate(fWindow, true);
        Settle();
    }
    ~InputWindow() {
        if (fWindow->Lock())
            fWindow->Quit();
    }
    InputWindow(const InputWindow&) = delete;
    InputWindow& operator=(const InputWindow&) = delete;

    void Settle() { EXPECT_TRUE(server::testing::WaitUntilIdle(fWindow)); }

    // With the window locked.
    void Do(const std::function<void()>& work) {
        ASSERT_TRUE(fWindow->Lock());
        work();
        fWindow->Unlock();
    }
    template <typename View>
    View* Add(View* view) {
        Do([&] { fWindow->AddChild(view); });
        Settle();
        return view;
    }

    void Key(char byte, uint32 modifiers = 0) {
        server::testing::Key(fWindow, byte, modifiers);
        Settle();
    }
    void Type(const char* utf8) {
        server::testing::Type(fWindow, utf8);
        Settle();
    }
    void Click(BPoint where, uint32 modifiers = 0, int32 clicks = 1) {
        server::testing::Click(fWindow, where, 1, modifiers, clicks);
        Settle();
    }
    void Drag(BPoint from, BPoint to) {
        server::testing::MouseDown(fWindow, from);
        server::testing::MouseMove(fWindow, to, 1);
        server::testing::MouseUp(fWindow, to);
        Settle();
    }

    BWindow* operator->() const { return fWindow; }
    BWindow* Get() const { return fWindow; }

private:
    BWindow* fWindow; // deletes itself
};
