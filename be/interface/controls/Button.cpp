#include <Button.h>

#include "interface/controls/ControlPrivate.h"

#include <Window.h>

#include <algorithm>

namespace {

constexpr float kSmallestWidth = 75;
constexpr float kPadding = 12;

} // namespace

BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message,
                 uint32 resizeMask, uint32 flags)
    : BControl(frame, name, label, message, resizeMask, flags) {}

BButton::~BButton() = default;

void BButton::Draw(BRect) {
    control_look::State state = Private::StateOf(this);
    state.pressed = Value() == B_CONTROL_ON;
    state.isDefault = fDefault;
    control_look::DrawButton(this, Bounds(), state);
    control_look::DrawLabel(this, Label(), Bounds().InsetByCopy(4, 2), B_ALIGN_CENTER, IsEnabled());
}

void BButton::MouseDown(BPoint) {
    if (!Private::TakesPress(this))
        return;
    SetTracking(true);
    SetValue(B_CONTROL_ON);
    SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
}

void BButton::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BControl::MouseMoved(where, transit, dragMessage);
    if (IsTracking())
        SetValue(Bounds().Contains(where) ? B_CONTROL_ON : B_CONTROL_OFF);
}

void BButton::MouseUp(BPoint where) {
    if (!IsTracking())
        return;
    SetTracking(false);
    const bool pressed = Bounds().Contains(where);
    SetValue(B_CONTROL_OFF);
    if (pressed)
        Invoke();
}

void BButton::KeyDown(const char* bytes, int32 numBytes) {
    if (numBytes == 1 && (bytes[0] == B_SPACE || bytes[0] == B_ENTER)) {
        if (IsEnabled())
            Invoke();
        return;
    }
    BControl::KeyDown(bytes, numBytes);
}

void BButton::AttachedToWindow() {
    BControl::AttachedToWindow();
    if (fDefault)
        Window()->SetDefaultButton(this);
}

void BButton::DetachedFromWindow() {
    if (Window()->DefaultButton() == this)
        Window()->SetDefaultButton(nullptr);
    BControl::DetachedFromWindow();
}

status_t BButton::Invoke(BMessage* message) {
    SetValueNoUpdate(B_CONTROL_ON);
    const status_t status = BControl::Invoke(message);
    SetValueNoUpdate(B_CONTROL_OFF);
    return status;
}

void BButton::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width =
            std::max(kSmallestWidth, control_look::LabelWidth(this, Label()) + 2 * kPadding) - 1;
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(this) + 8) - 1;
}

void BButton::MakeDefault(bool isDefault) {
    if (isDefault == fDefault)
        return;
    fDefault = isDefault;
    Invalidate();
    if (Window() == nullptr)
        return;
    if (isDefault && Window()->DefaultButton() != this)
        Window()->SetDefaultButton(this);
    else if (!isDefault && Window()->DefaultButton() == this)
        Window()->SetDefaultButton(nullptr);
}

bool BButton::IsDefault() const {
    return fDefault;
}
