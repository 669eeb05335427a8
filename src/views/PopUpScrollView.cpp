#include "views/PopUpScrollView.h"

#include "views/PopUpWindow.h"

#include <InterfaceDefs.h>

PopUpScrollView::PopUpScrollView(BView* text, bool scrolls)
    : BScrollView("pop-up", text, B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_PULSE_NEEDED, false, scrolls,
                  B_NO_BORDER) {}

void PopUpScrollView::MouseMoved(BPoint where, uint32, const BMessage*) {
    BPoint point;
    uint32 buttons = 0;
    GetMouse(&point, &buttons, false);
    // A scroll bar that is being dragged keeps the pointer.
    if (buttons != 0)
        return;
    PopUpWindow* window = static_cast<PopUpWindow*>(Window());
    window->PointerIsOver(window->Frame().Contains(ConvertToScreen(where)));
}

void PopUpScrollView::Pulse() {
    static_cast<PopUpWindow*>(Window())->TimeIsUp();
}
