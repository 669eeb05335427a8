#include <RadioButton.h>

#include "interface/controls/ControlPrivate.h"

namespace {

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
    Private::DrawMarked(this, fPressed, control_look::DrawRadioButton);
}

void BRadioButton::MouseDown(BPoint) {
    Private::BeginPress(this, &fPressed);
}

void BRadioButton::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BControl::MouseMoved(where, transit, dragMessage);
    Private::MovePress(this, where, &fPressed);
}

void BRadioButton::MouseUp(BPoint where) {
    if (!Private::EndPress(this, where, &fPressed))
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
    Private::GetMarkedSize(this, width, height);
}
