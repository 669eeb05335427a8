#include "browser/WindowLink.h"

#include "browser/BrowserWindow.h"

#include <Autolock.h>

WindowLink::WindowLink(BrowserWindow* window)
    : fMessenger(window), fArticleLock("article lock"), fThreadListLock("thread list lock"),
      fWindow(window) {}

bool WindowLink::Call(const Calling& call) {
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

bool WindowLink::CallForThreads(const Calling& call) {
    const BAutolock lock(fThreadListLock);
    return Call(call);
}

bool WindowLink::CallForArticle(const Calling& call) {
    const BAutolock lock(fArticleLock);
    return Call(call);
}
