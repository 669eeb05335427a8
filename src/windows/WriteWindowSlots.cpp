#include "windows/WriteWindowSlots.h"

#include <Autolock.h>
#include <Locker.h>
#include <Looper.h>

#include <algorithm>
#include <map>
#include <string>

namespace {

constexpr bigtime_t kPatience = 1000000; // microseconds

struct Slots {
    BLocker lock{"write window slots"};
    std::map<std::string, WindowSlot> byThread; // guarded by lock; a slot has its own
};

Slots& AllSlots() {
    static Slots& slots = *new Slots;
    return slots;
}

bool CloseWindow(const BMessenger& messenger) {
    BLooper* window = nullptr;
    const status_t status = messenger.LockTargetWithTimeout(kPatience);
    if (status != B_OK)
        return !messenger.IsValid(); // it has just gone
    messenger.Target(&window);
    if (window->QuitRequested()) {
        window->Quit();
        return true;
    }
    window->Unlock();
    return false;
}

} // namespace

std::vector<BMessenger> OpenWriteWindows() {
    Slots& slots = AllSlots();
    const BAutolock lock(slots.lock);
    std::vector<BMessenger> windows;
    for (auto& [thread, slot] : slots.byThread) {
        const BMessenger window = slot.Window();
        if (window.IsValid())
            windows.push_back(window);
    }
    return windows;
}

bool CloseWriteWindows() {
    const std::vector<BMessenger> windows = OpenWriteWindows();
    return std::all_of(windows.begin(), windows.end(), CloseWindow);
}

WindowSlot& WriteWindowSlotOf(const PostTarget& target) {
    Slots& slots = AllSlots();
    const BAutolock lock(slots.lock);
    return slots.byThread[target.host + "/" + target.board + "/" + target.DatName()];
}
