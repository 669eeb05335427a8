#include "views/NPProgressView.h"

#include <Font.h>
#include <InterfaceDefs.h>

#include <cmath>

namespace {
constexpr float kInset = 8;
constexpr float kBarWidth = 120;
constexpr float kButtonRoom = 40; // the network button stands at the right
} // namespace

NPProgressView::NPProgressView(BRect frame)
    : BView(frame, "progress", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE) {}

void NPProgressView::AttachedToWindow() {
    BView::AttachedToWindow();
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    SetLowColor(ViewColor());
}

void NPProgressView::DrawBar(const char* text, int32 value) {
    if (fText == text && fValue == value)
        return;
    fText = text;
    fValue = value;
    Invalidate();
}

void NPProgressView::Draw(BRect) {
    const BRect bounds = Bounds();
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeLine(bounds.LeftTop(), bounds.RightTop());
    float left = kInset;
    if (fValue > 0) {
        const BRect frame(left, bounds.top + 8, left + kBarWidth, bounds.bottom - 7);
        StrokeRect(frame);
        BRect bar = frame.InsetByCopy(1, 1);
        bar.right = bar.left + bar.Width() * static_cast<float>(fValue > 100 ? 100 : fValue) / 100;
        SetHighColor(ui_color(B_STATUS_BAR_COLOR));
        FillRect(bar);
        left = frame.right + kInset;
    }
    BString text(fText);
    TruncateString(&text, B_TRUNCATE_END, bounds.Width() - left - kButtonRoom);
    font_height height;
    GetFontHeight(&height);
    const float textHeight = height.ascent + height.descent;
    SetHighColor(ui_color(B_PANEL_TEXT_COLOR));
    DrawString(text.String(),
               BPoint(left, floorf((bounds.Height() + 1 - textHeight) / 2 + height.ascent)));
}
