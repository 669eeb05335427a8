#pragma once

#include <Locker.h>
#include <Messenger.h>

#include <functional>

class NPWindow;

// How workers reach the window that started them. Workers outlive windows: the link is shared by
// both and knows when the window has gone. Holds the two item locks of the window, which keep the
// workers of one kind from adding at once.
//
// Lock order: an item lock, then the window's looper. The window's own thread takes no item lock.
class WindowLink {
public:
    explicit WindowLink(NPWindow* window);
    WindowLink(const WindowLink&) = delete;
    WindowLink& operator=(const WindowLink&) = delete;

    // Calls with the window locked; false when it has gone. From a worker.
    bool Call(const std::function<void(NPWindow*)>& call);
    // Posts to the window; nothing happens when it has gone.
    void Post(BMessage* message) const { fMessenger.SendMessage(message); }
    // By the window, locked, as it goes.
    void Detach() { fWindow = nullptr; }

    BLocker& ArticleLock() { return fArticleLock; }
    BLocker& ThreadListLock() { return fThreadListLock; }

private:
    // Constant after construction
    BMessenger fMessenger;

    BLocker fArticleLock;
    BLocker fThreadListLock;
    NPWindow* fWindow; // guarded by the window's looper
};
