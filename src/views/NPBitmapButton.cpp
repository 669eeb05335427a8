#include "views/NPBitmapButton.h"

#include <Bitmap.h>
#include <InterfaceDefs.h>

#include <cmath>

NPBitmapButton::NPBitmapButton(BRect frame, const char* name, const BBitmap* bitmap,
                               BMessage* message, uint32 resizingMode)
    : BControl(frame, name, nullptr, message, resizingMode, B_WILL_DRAW | B_NAVIGABLE),
      fBitmap(bitmap) {}

void NPBitmapButton::SetBitmap(const BBitmap* bitmap) {
    fBitmap = bitmap;
    Invalidate();
}

void NPBitmapButton::Draw(BRect) {
    const BRect bounds = Bounds();
    const rgb_color panel = ui_color(B_PANEL_BACKGROUND_COLOR);
    SetLowColor(panel);
    FillRect(bounds, B_SOLID_LOW);
    if (fInside && IsEnabled()) {
        SetHighColor(tint_color(panel, fPressed ? B_DARKEN_2_TINT : B_DARKEN_1_TINT));
        FillRoundRect(bounds, 3, 3);
    }
    if (IsFocus()) {
        SetHighColor(ui_color(B_NAVIGATION_BASE_COLOR));
        StrokeRoundRect(bounds, 3, 3);
    }
    const BRect picture = fBitmap->Bounds();
    SetDrawingMode(B_OP_OVER);
    DrawBitmap(fBitmap, BPoint(floorf((bounds.Width() - picture.Width()) / 2),
                               floorf((bounds.Height() - picture.Height()) / 2)));
    SetDrawingMode(B_OP_COPY);
}

void NPBitmapButton::MouseDown(BPoint) {
    if (!IsEnabled())
        return;
    fPressed = fInside = true;
    SetMouseEventMask(B_POINTER_EVENTS, B_LOCK_WINDOW_FOCUS);
    Invalidate();
}

void NPBitmapButton::MouseMoved(BPoint where, uint32 transit, const BMessage*) {
    const bool inside = transit != B_EXITED_VIEW && Bounds().Contains(where);
    if (inside == fInside)
        return;
    fInside = inside;
    Invalidate();
}

void NPBitmapButton::MouseUp(BPoint where) {
    const bool chosen = fPressed && Bounds().Contains(where);
    fPressed = false;
    Invalidate();
    if (chosen)
        Invoke();
}
