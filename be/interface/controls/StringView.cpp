#include <StringView.h>

#include "interface/controls/ControlLook.h"

BStringView::BStringView(BRect frame, const char* name, const char* text, uint32 resizeMask,
                         uint32 flags)
    : BView(frame, name, resizeMask, flags | B_FULL_UPDATE_ON_RESIZE), fText(text) {
    BView::SetHighColor(ui_color(B_PANEL_TEXT_COLOR));
}

BStringView::~BStringView() = default;

void BStringView::AttachedToWindow() {
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
        SetLowColor(ViewColor());
    }
}

void BStringView::Draw(BRect) {
    BString shown(fText);
    TruncateString(&shown, fTruncation, Bounds().Width() + 1);
    control_look::DrawPlainLabel(this, shown.String(), Bounds(), fAlignment);
}

void BStringView::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = control_look::LabelWidth(this, fText.String());
    if (height != nullptr)
        *height = control_look::LineHeight(this) - 1;
}

void BStringView::SetText(const char* text) {
    if (fText == text)
        return;
    fText = text;
    Invalidate();
}

const char* BStringView::Text() const {
    return fText.String();
}

void BStringView::SetAlignment(alignment flag) {
    if (flag == fAlignment)
        return;
    fAlignment = flag;
    Invalidate();
}

alignment BStringView::Alignment() const {
    return fAlignment;
}

void BStringView::SetTruncation(uint32 mode) {
    if (mode == fTruncation)
        return;
    fTruncation = mode;
    Invalidate();
}

uint32 BStringView::Truncation() const {
    return fTruncation;
}
