#include "windows/WindowSlot.h"

#include "app/Messages.h"

#include <Autolock.h>
#include <Window.h>

bool WindowSlot::_Activate() {
    return fWindow.SendMessage(kMsgActivateWindow) == B_OK;
}

void WindowSlot::_Show(BWindow* window) {
    fWindow = BMessenger(window);
    window->Show();
}

void WindowSlot::Leave(BWindow* window) {
    const BAutolock lock(fLock);
    if (fWindow == BMessenger(window))
        fWindow = BMessenger();
}
