#include <CheckBox.h>

#include "interface/controls/ControlPrivate.h"

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
                     uint32 resizeMask, uint32 flags)
    : BControl(frame, name, label, message, resizeMask, flags) {}

BCheckBox::~BCheckBox() = default;

void BCheckBox::Draw(BRect) {
    Private::DrawMarked(this, fPressed, control_look::DrawCheckBox);
}

void BCheckBox::MouseDown(BPoint) {
    Private::BeginPress(this, &fPressed);
}

void BCheckBox::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BControl::MouseMoved(where, transit, dragMessage);
    Private::MovePress(this, where, &fPressed);
}

void BCheckBox::MouseUp(BPoint where) {
    if (!Private::EndPress(this, where, &fPressed))
        return;
    SetValue(Value() == B_CONTROL_OFF ? B_CONTROL_ON : B_CONTROL_OFF);
    Invoke();
}

void BCheckBox::GetPreferredSize(float* width, float* height) {
    Private::GetMarkedSize(this, width, height);
}
