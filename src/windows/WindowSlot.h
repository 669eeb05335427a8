#pragma once

#include <Locker.h>
#include <Messenger.h>

class BWindow;

// The place of a window of which there is one at most. Any thread.
class WindowSlot {
public:
    // Sends the window that is there kMsgActivateWindow; without one, makes and shows it.
    template <typename Make>
    void Open(Make make);
    // As the window closes; false when another is there.
    bool Leave(const BMessenger& window);
    // The window that is there; invalid without one.
    BMessenger Window();

private:
    bool _Activate();
    void _Show(BWindow* window);

    BLocker fLock{"window slot"};
    BMessenger fWindow; // guarded by fLock
};

template <typename Make>
void WindowSlot::Open(Make make) {
    fLock.Lock();
    if (!_Activate())
        _Show(make());
    fLock.Unlock();
}
