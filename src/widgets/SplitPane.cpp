#include "widgets/SplitPane.h"

#include <Cursor.h>
#include <InterfaceDefs.h>

#include <algorithm>
#include <cmath>

SplitPane::SplitPane(BRect frame, const char* name, BView* one, BView* two, uint32 resizingMode)
    : BView(frame, name, resizingMode, B_WILL_DRAW | B_FRAME_EVENTS), fOne(one), fTwo(two) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    fOne->SetResizingMode(B_FOLLOW_LEFT | B_FOLLOW_TOP);
    fTwo->SetResizingMode(B_FOLLOW_LEFT | B_FOLLOW_TOP);
    AddChild(fOne);
    AddChild(fTwo);
    _Place();
}

void SplitPane::AttachedToWindow() {
    BView::AttachedToWindow();
    _Place();
}

void SplitPane::SetAlignment(int32 alignment) {
    fAlignment = alignment == kSideBySide ? kSideBySide : kStacked;
    _Place();
}

void SplitPane::SetBarPosition(float position) {
    fPosition = std::max(0.0F, floorf(position));
    _Place();
}

void SplitPane::SetBarThickness(float thickness) {
    fThickness = thickness;
    _Place();
}

void SplitPane::SetMinSizeOne(float size) {
    fMinOne = size;
    _Place();
}

void SplitPane::SetMinSizeTwo(float size) {
    fMinTwo = size;
    _Place();
}

float SplitPane::_Length() const {
    return (_SideBySide() ? Bounds().Width() : Bounds().Height()) + 1;
}

float SplitPane::_Along(BPoint where) const {
    return _SideBySide() ? where.x : where.y;
}

// Where there is no room for both, the first gives way.
float SplitPane::_FittedPosition() const {
    const float most = std::max(0.0F, _Length() - fThickness - fMinTwo);
    return std::clamp(fPosition, std::min(fMinOne, most), most);
}

BRect SplitPane::_BarRect() const {
    const BRect bounds = Bounds();
    const float position = _FittedPosition();
    return _SideBySide() ? BRect(position, 0, position + fThickness - 1, bounds.bottom)
                         : BRect(0, position, bounds.right, position + fThickness - 1);
}

void SplitPane::_Place() {
    const BRect bounds = Bounds();
    const BRect bar = _BarRect();
    fOne->MoveTo(0, 0);
    if (_SideBySide()) {
        fOne->ResizeTo(bar.left - 1, bounds.bottom);
        fTwo->MoveTo(bar.right + 1, 0);
        fTwo->ResizeTo(bounds.right - bar.right - 1, bounds.bottom);
    } else {
        fOne->ResizeTo(bounds.right, bar.top - 1);
        fTwo->MoveTo(0, bar.bottom + 1);
        fTwo->ResizeTo(bounds.right, bounds.bottom - bar.bottom - 1);
    }
    Invalidate(bar);
}

void SplitPane::Draw(BRect) {
    const BRect bar = _BarRect();
    const float x = floorf((bar.left + bar.right) / 2);
    const float y = floorf((bar.top + bar.bottom) / 2);
    const float grip = 10;
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    if (_SideBySide())
        StrokeLine(BPoint(x, y - grip), BPoint(x, y + grip));
    else
        StrokeLine(BPoint(x - grip, y), BPoint(x + grip, y));
}

void SplitPane::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    _Place();
}

void SplitPane::MouseDown(BPoint where) {
    const BRect bar = _BarRect();
    if (!bar.Contains(where))
        return;
    fDragging = true;
    fDragOffset = _Along(where) - _Along(bar.LeftTop());
    SetMouseEventMask(B_POINTER_EVENTS, B_LOCK_WINDOW_FOCUS);
}

void SplitPane::MouseMoved(BPoint where, uint32, const BMessage*) {
    if (!fDragging) {
        const BCursor shape(_SideBySide() ? B_CURSOR_ID_RESIZE_EAST_WEST
                                          : B_CURSOR_ID_RESIZE_NORTH_SOUTH);
        SetViewCursor(_BarRect().Contains(where) ? &shape : B_CURSOR_SYSTEM_DEFAULT);
        return;
    }
    SetBarPosition(_Along(where) - fDragOffset);
    fPosition = _FittedPosition();
}

void SplitPane::MouseUp(BPoint) {
    fDragging = false;
}
