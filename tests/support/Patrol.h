#pragma once

#include "support/Browser.h"
#include "support/OpenWindow.h"

#include "cache/NPBookmark.h"

#include <Application.h>
#include <Button.h>
#include <StringView.h>

#include "windows/NPPatrolWindow.h"

#include <string>

// The patrol window that is open, seen from outside.
class Patrol {
public:
    static bool IsOpen() {
        return With([](BWindow*) {});
    }
    // The title of the thread that is being visited.
    static std::string Status() {
        std::string text;
        With([&](BWindow* window) {
            text = static_cast<BStringView*>(window->FindView("status"))->Text();
        });
        return text;
    }
    static void PressStop() {
        With([](BWindow* window) { static_cast<BButton*>(window->FindView("stop"))->Invoke(); });
    }
    static bool WaitForStatus(const std::string& text) {
        return server::testing::WaitUntil([&] { return Status() == text; });
    }
    // A patrol may be long: it has ended when nothing has changed for the time of a wait.
    static bool WaitForEnd() {
        std::string last;
        for (;;) {
            if (server::testing::WaitUntil([] { return !IsOpen(); }))
                return true;
            const std::string now = Status();
            if (now == last)
                return false;
            last = now;
        }
    }

    // Calls with the patrol window locked; false without one.
    template <typename Call>
    static bool With(Call call) {
        return WithOpen<NPPatrolWindow>(call);
    }
};
