#pragma once

#include "server/Testing.h"

#include <Application.h>
#include <Messenger.h>
#include <Window.h>

// Calls with the open window of this class locked; false without one. For tests on a thread of
// their own.
template <class Kind, typename Call>
bool WithOpen(Call call) {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        // Looked at only while it is locked: it may be going.
        const BMessenger messenger(nullptr, be_app->WindowAt(i));
        BLooper* looper = nullptr;
        if (!messenger.LockTarget())
            continue;
        messenger.Target(&looper);
        Kind* window = dynamic_cast<Kind*>(looper);
        if (window != nullptr)
            call(window);
        looper->Unlock();
        if (window != nullptr)
            return true;
    }
    return false;
}

template <class Kind>
bool IsOpen() {
    return WithOpen<Kind>([](Kind*) {});
}

// The window of this class, waited for and idle; null when none comes. It must not close meanwhile.
template <class Kind>
Kind* WaitForOpen() {
    Kind* found = nullptr;
    server::testing::WaitUntil(
        [&] { return WithOpen<Kind>([&](Kind* window) { found = window; }); });
    if (found != nullptr)
        server::testing::WaitUntilIdle(found);
    return found;
}

template <class Kind>
bool WaitForClosed() {
    return server::testing::WaitUntil([] { return !IsOpen<Kind>(); });
}
