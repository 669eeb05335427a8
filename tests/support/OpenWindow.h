#pragma once

#include "app/WindowList.h"
#include "server/Testing.h"

#include <Messenger.h>
#include <Window.h>

// Calls with the open window of this class locked; false without one. For tests on a thread of
// their own.
template <class Kind, typename Call>
bool WithOpen(Call call) {
    // All at once: while others come and go, one that stays is not passed over.
    for (const WindowList::Listed& listed : WindowList::AllListed()) {
        // Looked at only while it is locked: it may be going.
        if (!listed.messenger.LockTarget())
            continue;
        Kind* window = dynamic_cast<Kind*>(listed.window);
        if (window != nullptr)
            call(window);
        listed.window->Unlock();
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
