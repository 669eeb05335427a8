#pragma once

#include <Locker.h>
#include <Messenger.h>

#include <functional>

class BrowserWindow;

// How workers reach the window that started them. Workers outlive windows: the link is shared by
// both and knows when the window has gone. Holds the two item locks of the window, which keep the
// workers of one kind from adding at once.
//
// Lock order: an item lock, then the window's looper. The window's own thread takes no item lock.
class WindowLink {
public:
    using Calling = std::function<void(BrowserWindow*)>;

    explicit WindowLink(BrowserWindow* window);
    WindowLink(const WindowLink&) = delete;
    WindowLink& operator=(const WindowLink&) = delete;

    // Calls with the window locked; false when it has gone. From a worker.
    bool Call(const Calling& call);
    // The same under the item lock of the thread list, or of the article.
    bool CallForThreads(const Calling& call);
    bool CallForArticle(const Calling& call);
    // Posts to the window; nothing happens when it has gone.
    void Post(BMessage* message) const { fMessenger.SendMessage(message); }
    const BMessenger& Messenger() const { return fMessenger; }
    // By the window, locked, as it goes.
    void Detach() { fWindow = nullptr; }

private:
    // Constant after construction
    BMessenger fMessenger;

    BLocker fArticleLock;
    BLocker fThreadListLock;
    BrowserWindow* fWindow; // guarded by the window's looper
};
