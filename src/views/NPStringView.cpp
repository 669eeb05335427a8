#include "views/NPStringView.h"

#include "net/ThreadAddress.h"
#include "views/OpenInBrowser.h"

#include <Cursor.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

NPStringView::NPStringView(BRect frame)
    : BStringView(frame, "url", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
                  B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE) {}

void NPStringView::AttachedToWindow() {
    BStringView::AttachedToWindow();
    SetHighColor(ui_color(B_LINK_TEXT_COLOR));
}

void NPStringView::SetUrl(const char* url, const char* dat) {
    fAddress = MakeThreadAddress(url, dat);
    SetText(fAddress.c_str());
}

bool NPStringView::_IsOnText(BPoint where) const {
    return !fAddress.empty() && where.x <= StringWidth(fAddress.c_str());
}

void NPStringView::MouseDown(BPoint where) {
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    if (BMessage* message = Window()->CurrentMessage())
        message->FindInt32("buttons", &buttons);
    if ((buttons & B_PRIMARY_MOUSE_BUTTON) != 0 && _IsOnText(where))
        OpenInBrowser(fAddress.c_str());
}

void NPStringView::MouseMoved(BPoint where, uint32, const BMessage*) {
    static const BCursor sLink(B_CURSOR_ID_FOLLOW_LINK);
    SetViewCursor(_IsOnText(where) ? &sLink : B_CURSOR_SYSTEM_DEFAULT);
}
