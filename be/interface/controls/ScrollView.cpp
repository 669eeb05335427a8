#include <ScrollView.h>

#include "interface/windows/ViewPrivate.h"

#include <ScrollBar.h>
#include <Window.h>

namespace {

float BorderWidth(border_style border) {
    return border == B_NO_BORDER ? 0 : border == B_PLAIN_BORDER ? 1 : 2;
}

// The frame that leaves room around the target for border and bars.
BRect FrameAround(const BView* target, bool horizontal, bool vertical, border_style border) {
    BRect frame = target != nullptr ? target->Frame() : BRect(0, 0, 80, 80);
    if (vertical)
        frame.right += B_V_SCROLL_BAR_WIDTH + 1;
    if (horizontal)
        frame.bottom += B_H_SCROLL_BAR_HEIGHT + 1;
    const float width = BorderWidth(border);
    return frame.InsetByCopy(-width, -width);
}

} // namespace

BScrollView::BScrollView(const char* name, BView* target, uint32 resizingMode, uint32 flags,
                         bool horizontal, bool vertical, border_style border)
    : BView(FrameAround(target, horizontal, vertical, border), name, resizingMode,
            flags | B_WILL_DRAW),
      fTarget(nullptr), fHorizontal(nullptr), fVertical(nullptr), fBorder(border),
      fHighlighted(false) {
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    if (horizontal)
        fHorizontal = new BScrollBar(BRect(0, 0, 14, 14), "_HSB_", nullptr, 0, 1000, B_HORIZONTAL);
    if (vertical)
        fVertical = new BScrollBar(BRect(0, 0, 14, 14), "_VSB_", nullptr, 0, 1000, B_VERTICAL);
    _PlaceBars();
    SetTarget(target);
    if (fHorizontal != nullptr)
        AddChild(fHorizontal);
    if (fVertical != nullptr)
        AddChild(fVertical);
}

BScrollView::~BScrollView() = default;

BScrollBar* BScrollView::ScrollBar(orientation direction) const {
    return direction == B_HORIZONTAL ? fHorizontal : fVertical;
}

void BScrollView::SetTarget(BView* target) {
    if (target == fTarget)
        return;
    if (fTarget != nullptr) {
        fTarget->TargetedByScrollView(nullptr);
        RemoveChild(fTarget);
    }
    fTarget = target;
    if (fHorizontal != nullptr)
        fHorizontal->SetTarget(target);
    if (fVertical != nullptr)
        fVertical->SetTarget(target);
    if (fTarget == nullptr)
        return;
    _PlaceTarget();
    AddChild(fTarget, ChildAt(0));
    fTarget->TargetedByScrollView(this);
}

// Inside of the border and beside the bars.
void BScrollView::_PlaceTarget() {
    const float border = BorderWidth(fBorder);
    fTarget->MoveTo(border, border);
}

void BScrollView::_PlaceBars() {
    const float border = BorderWidth(fBorder);
    const BRect inside = Bounds().InsetByCopy(border, border);
    const float right =
        fVertical != nullptr ? inside.right - B_V_SCROLL_BAR_WIDTH - 1 : inside.right;
    const float bottom =
        fHorizontal != nullptr ? inside.bottom - B_H_SCROLL_BAR_HEIGHT - 1 : inside.bottom;
    if (fVertical != nullptr) {
        fVertical->MoveTo(inside.right - B_V_SCROLL_BAR_WIDTH, inside.top);
        fVertical->ResizeTo(B_V_SCROLL_BAR_WIDTH, bottom - inside.top);
    }
    if (fHorizontal != nullptr) {
        fHorizontal->MoveTo(inside.left, inside.bottom - B_H_SCROLL_BAR_HEIGHT);
        fHorizontal->ResizeTo(right - inside.left, B_H_SCROLL_BAR_HEIGHT);
    }
}

void BScrollView::_Fit() {
    if (fTarget == nullptr)
        return;
    const float border = BorderWidth(fBorder);
    BRect inside = Bounds().InsetByCopy(border, border);
    if (fVertical != nullptr)
        inside.right -= B_V_SCROLL_BAR_WIDTH + 1;
    if (fHorizontal != nullptr)
        inside.bottom -= B_H_SCROLL_BAR_HEIGHT + 1;
    fTarget->MoveTo(inside.LeftTop());
    fTarget->ResizeTo(inside.Width(), inside.Height());
}

void BScrollView::SetBorder(border_style border) {
    if (border == fBorder)
        return;
    fBorder = border;
    _PlaceBars();
    _Fit();
    Invalidate();
}

status_t BScrollView::SetBorderHighlighted(bool highlight) {
    if (fBorder == B_NO_BORDER)
        return B_ERROR;
    if (highlight == fHighlighted)
        return B_OK;
    fHighlighted = highlight;
    const BRect bounds = Bounds();
    const float width = BorderWidth(fBorder);
    BRegion frame(bounds);
    frame.Exclude(bounds.InsetByCopy(width, width));
    Invalidate(&frame);
    return B_OK;
}

// A hairline; the focus is a line in the accent's colour, thicker where there is room for it.
void BScrollView::Draw(BRect) {
    const float border = BorderWidth(fBorder);
    if (border == 0)
        return;
    const bool shown = fHighlighted && Window() != nullptr && Window()->IsActive();
    const BRect bounds = Bounds();
    SetHighColor(ui_color(shown ? B_KEYBOARD_NAVIGATION_COLOR : B_CONTROL_BORDER_COLOR));
    if (shown && border > 1)
        StrokeRect(bounds);
    StrokeRect(bounds.InsetByCopy(border - 1, border - 1));
}

void BScrollView::AttachedToWindow() {}

void BScrollView::WindowActivated(bool) {
    if (fHighlighted)
        Invalidate();
}

void BScrollView::GetPreferredSize(float* width, float* height) {
    const BRect frame = FrameAround(fTarget, fHorizontal != nullptr, fVertical != nullptr, fBorder);
    if (width != nullptr)
        *width = frame.Width();
    if (height != nullptr)
        *height = frame.Height();
}
