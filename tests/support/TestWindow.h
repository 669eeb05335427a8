#pragma once

#include "server/Testing.h"

#include <AppDefs.h>
#include <Message.h>
#include <View.h>
#include <Window.h>

#include <functional>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

// A window for one test: shown, driven from outside, gone at the end. Includes be/server: for tests
// with windows.
template <class Window = BWindow>
class TestWindow {
public:
    explicit TestWindow(float width = 199, float height = 149)
        : fWindow(
              new Window(BRect(100, 100, 100 + width, 100 + height), "test", B_TITLED_WINDOW, 0)) {}
    ~TestWindow() {
        if (fWindow->Lock())
            fWindow->Quit();
    }

    // Before Show the window belongs to the test; afterwards views are touched with Locked only.
    template <class View>
    View* Add(View* view) {
        fWindow->AddChild(view);
        return view;
    }
    void Show() {
        fWindow->Show();
        Settle();
    }
    void Settle() { ASSERT_TRUE(server::testing::WaitUntilIdle(fWindow)); }
    template <class Work>
    auto Locked(Work work) {
        struct Unlocker {
            BWindow* window;
            ~Unlocker() { window->Unlock(); }
        };
        fWindow->Lock();
        Unlocker unlocker{fWindow};
        return work();
    }
    rgb_color PixelAt(int32 x, int32 y) { return server::testing::Snapshot(fWindow).At(x, y); }

    Window* Get() { return fWindow; }
    operator BWindow*() { return fWindow; }
    Window* operator->() { return fWindow; }

private:
    Window* fWindow;
};

// What a view or window was told, in order; any thread.
class Log {
public:
    void Add(const std::string& line) {
        std::lock_guard lock(fLock);
        fLines.push_back(line);
    }
    std::vector<std::string> Take() {
        std::lock_guard lock(fLock);
        return std::exchange(fLines, {});
    }

private:
    std::mutex fLock;
    std::vector<std::string> fLines; // guarded by fLock
};

using Lines = std::vector<std::string>;
