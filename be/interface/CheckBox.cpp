#include <CheckBox.h>

#include "interface/ControlPrivate.h"

#include <algorithm>

namespace {

constexpr float kLabelGap = 7;

} // namespace

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
                     uint32 resizeMask, uint32 flags)
    : BControl(frame, name, label, message, resizeMask, flags) {}

BCheckBox::~BCheckBox() = default;

void BCheckBox::Draw(BRect) {
    control_look::State state = Private::StateOf(this);
    state.pressed = fPressed;
    const BRect mark = control_look::MarkFrame(Bounds());
    control_look::DrawCheckBox(this, mark, Value() != B_CONTROL_OFF, state);
    BRect label = Bounds();
    label.left = mark.right + kLabelGap;
    control_look::DrawLabel(this, Label(), label, B_ALIGN_LEFT, IsEnabled());
}

void BCheckBox::MouseDown(BPoint) {
    if (!Private::TakesPress(this))
        return;
    SetTracking(true);
    fPressed = true;
    Invalidate();
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
}

void BCheckBox::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BControl::MouseMoved(where, transit, dragMessage);
    if (!IsTracking() || fPressed == Bounds().Contains(where))
        return;
    fPressed = !fPressed;
    Invalidate();
}

void BCheckBox::MouseUp(BPoint where) {
    if (!IsTracking())
        return;
    SetTracking(false);
    fPressed = false;
    Invalidate();
    if (!Bounds().Contains(where))
        return;
    SetValue(Value() == B_CONTROL_OFF ? B_CONTROL_ON : B_CONTROL_OFF);
    Invoke();
}

void BCheckBox::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = control_look::MarkFrame(Bounds()).right + kLabelGap +
                 control_look::LabelWidth(this, Label());
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(this) + 4) - 1;
}
