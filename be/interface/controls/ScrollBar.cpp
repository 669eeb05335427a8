#include <ScrollBar.h>

#include "interface/windows/ViewPrivate.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

const float kLeastKnob = 24;
const float kInset = 3; // the knob lies that far inside of the trough
const bigtime_t kFirstRepeat = 300000;
const bigtime_t kNextRepeat = 50000;

} // namespace

BScrollBar::BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
                       orientation direction)
    : BView(frame, name,
            direction == B_VERTICAL ? B_FOLLOW_RIGHT | B_FOLLOW_TOP_BOTTOM
                                    : B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE | B_FRAME_EVENTS),
      fTarget(nullptr), fValue(min), fMin(min), fMax(max), fSmallStep(1), fLargeStep(10),
      fProportion(0), fOrientation(direction), fHold(Hold::kNothing), fHovered(false), fGrip(0) {
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    SetTarget(target);
}

BScrollBar::~BScrollBar() {
    SetTarget(static_cast<BView*>(nullptr));
}

void BScrollBar::SetTarget(BView* target) {
    if (target == fTarget)
        return;
    const auto barOf = [this](BView* view) -> BScrollBar*& {
        Private& data = Private::Of(view);
        return fOrientation == B_VERTICAL ? data.verticalBar : data.horizontalBar;
    };
    if (fTarget != nullptr && barOf(fTarget) == this)
        barOf(fTarget) = nullptr;
    fTarget = target;
    if (fTarget == nullptr)
        return;
    if (barOf(fTarget) != nullptr)
        barOf(fTarget)->fTarget = nullptr;
    barOf(fTarget) = this;
}

void BScrollBar::SetTarget(const char* targetName) {
    if (targetName == nullptr)
        SetTarget(static_cast<BView*>(nullptr));
    else if (Window() != nullptr)
        SetTarget(Window()->FindView(targetName));
}

void BScrollBar::SetOrientation(orientation direction) {
    BView* target = fTarget;
    SetTarget(static_cast<BView*>(nullptr));
    fOrientation = direction;
    SetTarget(target);
    Invalidate();
}

void BScrollBar::SetValue(float value) {
    // One that is no number would differ from itself for ever.
    if (std::isnan(value))
        return;
    const float wanted = std::round(std::clamp(value, fMin, std::max(fMin, fMax)));
    if (wanted == fValue)
        return;
    fValue = wanted;
    Invalidate();
    ValueChanged(fValue);
}

void BScrollBar::ValueChanged(float newValue) {
    if (fTarget == nullptr)
        return;
    const BPoint at = fTarget->LeftTop();
    if (fOrientation == B_VERTICAL)
        fTarget->ScrollTo(BPoint(at.x, newValue));
    else
        fTarget->ScrollTo(BPoint(newValue, at.y));
}

void BScrollBar::SetProportion(float proportion) {
    const float wanted = std::clamp(proportion, 0.0F, 1.0F);
    if (wanted == fProportion)
        return;
    fProportion = wanted;
    Invalidate();
}

void BScrollBar::SetRange(float min, float max) {
    const float least = std::round(min);
    const float most = std::max(least, std::round(max));
    if (least == fMin && most == fMax)
        return;
    fMin = least;
    fMax = most;
    Invalidate();
    SetValue(fValue);
}

void BScrollBar::GetRange(float* min, float* max) const {
    if (min != nullptr)
        *min = fMin;
    if (max != nullptr)
        *max = fMax;
}

void BScrollBar::SetSteps(float smallStep, float largeStep) {
    fSmallStep = std::max(0.0F, smallStep);
    fLargeStep = std::max(0.0F, largeStep);
}

void BScrollBar::GetSteps(float* smallStep, float* largeStep) const {
    if (smallStep != nullptr)
        *smallStep = fSmallStep;
    if (largeStep != nullptr)
        *largeStep = fLargeStep;
}

void BScrollBar::AttachedToWindow() {}
void BScrollBar::DetachedFromWindow() {
    fHold = Hold::kNothing;
}

void BScrollBar::MessageReceived(BMessage* message) {
    // The wheel over a bar turns its target.
    if (message->what == B_MOUSE_WHEEL_CHANGED && fTarget != nullptr)
        fTarget->MessageReceived(message);
    else
        BView::MessageReceived(message);
}

float BScrollBar::_Length() const {
    return (fOrientation == B_VERTICAL ? Bounds().Height() : Bounds().Width()) + 1;
}

float BScrollBar::_Along(BPoint where) const {
    return fOrientation == B_VERTICAL ? where.y : where.x;
}

float BScrollBar::_KnobLength() const {
    const float length = _Length();
    const float least = std::min(kLeastKnob, length);
    const float share = fProportion > 0 ? length * fProportion : kLeastKnob;
    return std::clamp(std::round(share), least, length);
}

// Invalid if there is nothing to scroll.
BRect BScrollBar::_Knob() const {
    if (fMax <= fMin)
        return BRect();
    const float room = _Length() - _KnobLength();
    const float from = std::round(room * (fValue - fMin) / (fMax - fMin));
    const BRect bounds = Bounds();
    if (fOrientation == B_VERTICAL)
        return BRect(bounds.left, from, bounds.right, from + _KnobLength() - 1);
    return BRect(from, bounds.top, from + _KnobLength() - 1, bounds.bottom);
}

void BScrollBar::Draw(BRect) {
    BRect knob = _Knob();
    if (!knob.IsValid())
        return;
    knob.InsetBy(fOrientation == B_VERTICAL ? kInset : 2, fOrientation == B_VERTICAL ? 2 : kInset);
    const bool held = fHold == Hold::kKnob;
    SetHighColor(tint_color(ui_color(B_SCROLL_BAR_THUMB_COLOR), held       ? B_DARKEN_2_TINT
                                                                : fHovered ? B_DARKEN_1_TINT
                                                                           : B_NO_TINT));
    const float radius = std::floor(std::min(knob.Width(), knob.Height()) / 2);
    FillRoundRect(knob, std::min(4.0F, radius), std::min(4.0F, radius));
}

void BScrollBar::MouseDown(BPoint where) {
    const BRect knob = _Knob();
    if (!knob.IsValid())
        return;
    fPointer = where;
    const float along = _Along(where);
    const float from = _Along(knob.LeftTop());
    const float end = _Along(knob.RightBottom());
    if (along >= from && along <= end) {
        fHold = Hold::kKnob;
        fGrip = along - from;
        return Invalidate();
    }
    fHold = Hold::kTrough;
    _PageTowards(along);
    _RepeatAfter(kFirstRepeat);
}

void BScrollBar::_RepeatAfter(bigtime_t delay) {
    Private::Of(this).CallLater(delay, [this] {
        if (fHold != Hold::kTrough)
            return;
        _PageTowards(_Along(fPointer));
        _RepeatAfter(kNextRepeat);
    });
}

void BScrollBar::MouseUp(BPoint) {
    fHold = Hold::kNothing;
    Private::Of(this).CancelCalls();
    Invalidate();
}

void BScrollBar::MouseMoved(BPoint where, uint32 transit, const BMessage*) {
    fPointer = where;
    _SetHovered(transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW);
    if (fHold == Hold::kKnob)
        _DragTo(_Along(where));
}

void BScrollBar::_SetHovered(bool hovered) {
    if (hovered == fHovered)
        return;
    fHovered = hovered;
    Invalidate();
}

void BScrollBar::_DragTo(float along) {
    const float room = _Length() - _KnobLength();
    if (room > 0)
        SetValue(fMin + (along - fGrip) / room * (fMax - fMin));
}

// Stops where the knob has reached the pointer.
void BScrollBar::_PageTowards(float along) {
    const BRect knob = _Knob();
    if (along < _Along(knob.LeftTop()))
        SetValue(fValue - fLargeStep);
    else if (along > _Along(knob.RightBottom()))
        SetValue(fValue + fLargeStep);
}

void BScrollBar::Pulse() {}
void BScrollBar::FrameResized(float, float) {}

void BScrollBar::GetPreferredSize(float* width, float* height) {
    const bool vertical = fOrientation == B_VERTICAL;
    if (width != nullptr)
        *width = vertical ? B_V_SCROLL_BAR_WIDTH : Bounds().Width();
    if (height != nullptr)
        *height = vertical ? Bounds().Height() : B_H_SCROLL_BAR_HEIGHT;
}
