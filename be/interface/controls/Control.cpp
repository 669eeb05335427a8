#include <Control.h>

#include "interface/controls/ControlPrivate.h"

#include <Message.h>
#include <OS.h>
#include <Window.h>

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message,
                   uint32 resizeMask, uint32 flags)
    : BView(frame, name, resizeMask, flags), BInvoker(message, nullptr), fLabel(label) {}

BControl::~BControl() = default;

void BControl::AttachedToWindow() {
    BView::AttachedToWindow();
    AdoptParentColors();
    if (!Messenger().IsValid())
        SetTarget(Window());
}

void BControl::DetachedFromWindow() {
    fTracking = false;
    fHovered = false;
    BView::DetachedFromWindow();
}

void BControl::MessageReceived(BMessage* message) {
    BView::MessageReceived(message);
}

void BControl::MakeFocus(bool focused) {
    if (focused == IsFocus())
        return;
    fFocusChanging = true;
    BView::MakeFocus(focused);
    Invalidate();
    fFocusChanging = false;
}

void BControl::KeyDown(const char* bytes, int32 numBytes) {
    if (numBytes == 1 && (bytes[0] == B_SPACE || bytes[0] == B_ENTER) && fEnabled) {
        SetValue(fValue == B_CONTROL_OFF ? B_CONTROL_ON : B_CONTROL_OFF);
        Invoke();
        return;
    }
    BView::KeyDown(bytes, numBytes);
}

void BControl::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BView::MouseMoved(where, transit, dragMessage);
    const bool hovered = transit == B_ENTERED_VIEW || transit == B_INSIDE_VIEW;
    if (hovered == fHovered)
        return;
    fHovered = hovered;
    if (fEnabled)
        Invalidate();
}

void BControl::WindowActivated(bool active) {
    BView::WindowActivated(active);
    if (IsFocus())
        Invalidate();
}

void BControl::SetLabel(const char* label) {
    if (fLabel == label)
        return;
    fLabel = label;
    Invalidate();
}

const char* BControl::Label() const {
    return fLabel.String();
}

void BControl::SetValue(int32 value) {
    if (value == fValue)
        return;
    fValue = value;
    Invalidate();
}

void BControl::SetValueNoUpdate(int32 value) {
    fValue = value;
}

int32 BControl::Value() const {
    return fValue;
}

void BControl::SetEnabled(bool enabled) {
    if (enabled == fEnabled)
        return;
    fEnabled = enabled;
    fTracking = false;
    if (!enabled && IsFocus())
        MakeFocus(false);
    // Tab passes a disabled control by.
    if (!enabled) {
        fNavigable = Flags() & B_NAVIGABLE;
        SetFlags(Flags() & ~B_NAVIGABLE);
    } else {
        SetFlags(Flags() | fNavigable);
    }
    Invalidate();
}

bool BControl::IsEnabled() const {
    return fEnabled;
}

status_t BControl::Invoke(BMessage* message) {
    const BMessage* sent = message != nullptr ? message : Message();
    if (sent == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*sent);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", this);
    copy.AddInt32("be:value", fValue);
    return BInvoker::Invoke(&copy);
}

void BControl::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = Bounds().Width();
    if (height != nullptr)
        *height = control_look::kFieldHeight - 1;
}

bool BControl::IsFocusChanging() const {
    return fFocusChanging;
}

bool BControl::IsTracking() const {
    return fTracking;
}

void BControl::SetTracking(bool state) {
    fTracking = state;
}

control_look::State BControl::Private::StateOf(const BControl* control) {
    control_look::State state;
    state.enabled = control->fEnabled;
    state.hovered = control->fHovered;
    state.focused =
        control->IsFocus() && control->Window() != nullptr && control->Window()->IsActive();
    return state;
}

bool BControl::Private::TakesPress(const BControl* control) {
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    const BMessage* message =
        control->Window() != nullptr ? control->Window()->CurrentMessage() : nullptr;
    if (message != nullptr)
        message->FindInt32("buttons", &buttons);
    return control->fEnabled && (buttons & B_PRIMARY_MOUSE_BUTTON) != 0;
}
