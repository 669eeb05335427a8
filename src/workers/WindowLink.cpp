#include "workers/WindowLink.h"

#include "app/NPWindow.h"

WindowLink::WindowLink(NPWindow* window)
    : fMessenger(window), fArticleLock("article lock"), fThreadListLock("thread list lock"),
      fWindow(window) {}

bool WindowLink::Call(const std::function<void(NPWindow*)>& call) {
    if (!fMessenger.LockTarget())
        return false;
    BLooper* looper = nullptr;
    fMessenger.Target(&looper);
    const bool isThere = fWindow != nullptr;
    if (isThere)
        call(fWindow);
    looper->Unlock();
    return isThere;
}
