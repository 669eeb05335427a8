#include "views/ClickListView.h"

#include "browser/BrowserWindow.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <OS.h>
#include <PopUpMenu.h>

void ClickListView::MouseDown(BPoint where) {
    int32 clicks = 1;
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    if (BMessage* message = Window()->CurrentMessage()) {
        message->FindInt32("clicks", &clicks);
        message->FindInt32("buttons", &buttons);
    }
    const int32 index = FullListIndexOf(where);
    FullListSelect(index);
    if (index >= 0 && (buttons & B_PRIMARY_MOUSE_BUTTON) != 0) {
        if (fClickMode == kDoubleClick && clicks > 1 && index == fLastPressed)
            RowChosen(index);
        fPressTime = system_time();
    } else if (index >= 0 && (buttons & B_SECONDARY_MOUSE_BUTTON) != 0) {
        OpenPopUpMenu(index, ConvertToScreen(where));
    }
    fLastPressed = index;
    fPressedRow = FullListItemAt(index);
    ColumnListView::MouseDown(where);
}

void ClickListView::MouseUp(BPoint where) {
    bigtime_t clickSpeed = 500000;
    get_click_speed(&clickSpeed);
    // It may have moved meanwhile, or gone with its list; a patrol may have selected another one.
    const int32 index = fPressedRow != nullptr ? FullListIndexOf(fPressedRow) : -1;
    if (fClickMode == kSingleClick && fPressTime >= 0 && index >= 0 &&
        system_time() - fPressTime < clickSpeed)
        RowChosen(index);
    fPressTime = -1;
    ColumnListView::MouseUp(where);
}

// A new row may get the old one's address.
void ClickListView::MakeEmpty() {
    fPressedRow = nullptr;
    ColumnListView::MakeEmpty();
}

BrowserWindow* ClickListView::Browser() const {
    return dynamic_cast<BrowserWindow*>(Window());
}

void ClickListView::ShowMenu(BPopUpMenu* menu, BPoint screen) {
    const BRect open(screen.x - 5, screen.y - 5, screen.x + 5, screen.y + 5);
    menu->SetAsyncAutoDestruct(true);
    menu->Go(screen, true, true, open, true);
}
