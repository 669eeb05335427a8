#include "windows/WindowSlot.h"

#include "messages/Messages.h"

#include <Autolock.h>
#include <Window.h>

bool WindowSlot::_Activate() {
    return fWindow.SendMessage(kMsgActivateWindow) == B_OK;
}

void WindowSlot::_Show(BWindow* window) {
    fWindow = BMessenger(window);
    window->Show();
}

BMessenger WindowSlot::Window() {
    const BAutolock lock(fLock);
    return fWindow.IsValid() ? fWindow : BMessenger();
}

bool WindowSlot::Leave(const BMessenger& window) {
    const BAutolock lock(fLock);
    const bool isThere = fWindow == window;
    if (isThere)
        fWindow = BMessenger();
    return isThere;
}
