#include "app/WindowList.h"

#include <Window.h>

#include <algorithm>
#include <mutex>

namespace {

struct Windows {
    std::mutex lock;
    std::vector<BWindow*> all; // guarded by lock
};

// Never destroyed: windows may outlive main.
Windows& TheWindows() {
    static Windows* windows = new Windows;
    return *windows;
}

} // namespace

void WindowList::Add(BWindow* window) {
    Windows& windows = TheWindows();
    std::lock_guard lock(windows.lock);
    windows.all.push_back(window);
}

void WindowList::Remove(BWindow* window) {
    Windows& windows = TheWindows();
    std::lock_guard lock(windows.lock);
    std::erase(windows.all, window);
}

std::vector<BWindow*> WindowList::All() {
    Windows& windows = TheWindows();
    std::lock_guard lock(windows.lock);
    return windows.all;
}

bool WindowList::Contains(const BWindow* window) {
    Windows& windows = TheWindows();
    std::lock_guard lock(windows.lock);
    return std::find(windows.all.begin(), windows.all.end(), window) != windows.all.end();
}

std::vector<WindowList::Listed> WindowList::AllListed() {
    Windows& windows = TheWindows();
    std::lock_guard lock(windows.lock);
    std::vector<Listed> listed;
    // A window takes itself off the list before it goes: those here stand as long as the lock is
    // held.
    for (BWindow* window : windows.all)
        listed.push_back({window, BMessenger(window)});
    return listed;
}
