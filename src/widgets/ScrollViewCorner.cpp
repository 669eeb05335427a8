#include "widgets/ScrollViewCorner.h"

#include <InterfaceDefs.h>

ScrollViewCorner::ScrollViewCorner(BRect frame)
    : BView(frame, "corner", B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM, B_WILL_DRAW) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}
