#include <RadioButton.h>

#include "interface/ControlPrivate.h"

#include <algorithm>

namespace {

constexpr float kLabelGap = 7;

// The next enabled one of the group in this direction; null at its end.
BRadioButton* Neighbour(BView* view, bool backwards) {
    while ((view = backwards ? view->PreviousSibling() : view->NextSibling()) != nullptr) {
        BRadioButton* button = dynamic_cast<BRadioButton*>(view);
        if (button != nullptr && button->IsEnabled())
            return button;
    }
    return nullptr;
}

void TurnSiblingsOff(BView* view, bool backwards) {
    while ((view = backwards ? view->PreviousSibling() : view->NextSibling()) != nullptr) {
        if (BRadioButton* button = dynamic_cast<BRadioButton*>(view))
            button->SetValue(B_CONTROL_OFF);
    }
}

} // namespace

BRadioButton::BRadioButton(BRect frame, const char* name, const char* label, BMessage* message,
                           uint32 resizeMask, uint32 flags)
    : BControl(frame, name, label, message, resizeMask, flags) {}

BRadioButton::~BRadioButton() = default;

void BRadioButton::Draw(BRect) {
    control_look::State state = Private::StateOf(this);
    state.pressed = fPressed;
    const BRect mark = control_look::MarkFrame(Bounds());
    control_look::DrawRadioButton(this, mark, Value() != B_CONTROL_OFF, state);
    BRect label = Bounds();
    label.left = mark.right + kLabelGap;
    control_look::DrawLabel(this, Label(), label, B_ALIGN_LEFT, IsEnabled());
}

void BRadioButton::MouseDown(BPoint) {
    if (!Private::TakesPress(this))
        return;
    SetTracking(true);
    fPressed = true;
    Invalidate();
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
}

void BRadioButton::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BControl::MouseMoved(where, transit, dragMessage);
    if (!IsTracking() || fPressed == Bounds().Contains(where))
        return;
    fPressed = !fPressed;
    Invalidate();
}

void BRadioButton::MouseUp(BPoint where) {
    if (!IsTracking())
        return;
    SetTracking(false);
    fPressed = false;
    Invalidate();
    if (!Bounds().Contains(where))
        return;
    SetValue(B_CONTROL_ON);
    Invoke();
}

void BRadioButton::KeyDown(const char* bytes, int32 numBytes) {
    if (numBytes != 1 || !IsEnabled()) {
        BControl::KeyDown(bytes, numBytes);
        return;
    }
    switch (bytes[0]) {
    case B_SPACE:
    case B_ENTER:
        if (Value() == B_CONTROL_OFF) {
            SetValue(B_CONTROL_ON);
            Invoke();
        }
        return;
    case B_LEFT_ARROW:
    case B_UP_ARROW: _ChooseNeighbour(true); return;
    case B_RIGHT_ARROW:
    case B_DOWN_ARROW: _ChooseNeighbour(false); return;
    default: BControl::KeyDown(bytes, numBytes); return;
    }
}

void BRadioButton::_ChooseNeighbour(bool backwards) {
    BRadioButton* button = Neighbour(this, backwards);
    if (button == nullptr)
        return;
    button->MakeFocus(true);
    button->SetValue(B_CONTROL_ON);
    button->Invoke();
}

void BRadioButton::SetValue(int32 value) {
    BControl::SetValue(value);
    if (value == B_CONTROL_OFF)
        return;
    for (const bool backwards : {true, false})
        TurnSiblingsOff(this, backwards);
}

void BRadioButton::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = control_look::MarkFrame(Bounds()).right + kLabelGap +
                 control_look::LabelWidth(this, Label());
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(this) + 4) - 1;
}
