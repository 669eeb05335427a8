#include "views/PopUpLife.h"

bool PopUpLife::PointerIsOver(bool isOver) {
    const bool hasLeft = fIsPointed && !isOver;
    fIsPointed = isOver;
    if (isOver)
        fWaits = false;
    return hasLeft && _MayClose();
}

bool PopUpLife::AnchorPointed(bool isOn) {
    fWaits = !isOn && !fIsPointed;
    return false;
}

bool PopUpLife::NextOpened() {
    fHasNext = true;
    return false;
}

bool PopUpLife::NextClosed() {
    fHasNext = false;
    fWaits = !fIsPointed;
    return false;
}

bool PopUpLife::MenuOpened() {
    fHasMenu = true;
    return false;
}

// The menu has had the pointer: nobody told whether it left this one meanwhile.
bool PopUpLife::MenuClosed() {
    fHasMenu = fIsPointed = false;
    fWaits = true;
    return false;
}

bool PopUpLife::TimeIsUp() const {
    return fWaits && _MayClose();
}
