// What a view has to do with input: focus, the pointer, the input method, the wheel.
#include "interface/windows/ViewPrivate.h"
#include "interface/windows/WindowPrivate.h"
#include "server/WindowLink.h"

#include <Message.h>
#include <ScrollBar.h>

#include <cmath>

namespace {

const float kStepsPerNotch = 3;

// False if the bar can't go that way at all: then a parent may want the wheel. A touchpad sends
// parts of pixels: what is left of one is kept for the next time.
bool ScrollByWheel(BScrollBar* bar, float notches, float& rest) {
    if (bar == nullptr || notches == 0)
        return false;
    float least = 0;
    float most = 0;
    float small = 0;
    bar->GetRange(&least, &most);
    bar->GetSteps(&small, nullptr);
    if (most <= least)
        return false;
    const float wanted = bar->Value() + rest + notches * small * kStepsPerNotch;
    const float whole = std::round(wanted);
    rest = whole < least || whole > most ? 0 : wanted - whole;
    bar->SetValue(whole);
    return true;
}

} // namespace

void BView::MessageReceived(BMessage* message) {
    if (message->what != B_MOUSE_WHEEL_CHANGED)
        return BHandler::MessageReceived(message);
    float dx = 0;
    float dy = 0;
    message->FindFloat("be:wheel_delta_x", &dx);
    message->FindFloat("be:wheel_delta_y", &dy);
    const bool scrolledDown = ScrollByWheel(fPrivate->verticalBar, dy, fPrivate->wheelRest.y);
    const bool scrolledAcross = ScrollByWheel(fPrivate->horizontalBar, dx, fPrivate->wheelRest.x);
    if (!scrolledDown && !scrolledAcross)
        BHandler::MessageReceived(message);
}

void BView::MakeFocus(bool focus) {
    if (fPrivate->window == nullptr || focus == IsFocus())
        return;
    BWindow::Private& window = BWindow::Private::Of(fPrivate->window);
    if (focus && window.focus != nullptr)
        window.focus->MakeFocus(false);
    window.SetFocus(focus ? this : nullptr);
}

bool BView::IsFocus() const {
    return fPrivate->window != nullptr && BWindow::Private::Of(fPrivate->window).focus == this;
}

// While a message about the pointer is handled, the first call tells what that message says: a
// short click has ended by the time it is handled, and its button would not be seen.
void BView::GetMouse(BPoint* location, uint32* buttons, bool) {
    if (fPrivate->window == nullptr) {
        *location = BPoint();
        *buttons = 0;
        return;
    }
    BWindow::Private& window = BWindow::Private::Of(fPrivate->window);
    const bool fresh = window.pointerFresh;
    window.pointerFresh = false;
    if (location != nullptr)
        *location = ConvertFromWindow(fresh ? window.pointer : window.link->Pointer());
    if (buttons != nullptr)
        *buttons = fresh ? window.buttons : window.link->Buttons();
}

status_t BView::SetEventMask(uint32 mask, uint32 options) {
    fPrivate->eventMask = mask;
    fPrivate->eventOptions = options;
    if (fPrivate->window != nullptr)
        BWindow::Private::Of(fPrivate->window).Watch(this);
    return B_OK;
}

uint32 BView::EventMask() {
    return fPrivate->eventMask;
}

status_t BView::SetMouseEventMask(uint32 mask, uint32) {
    if (fPrivate->window == nullptr || BWindow::Private::Of(fPrivate->window).buttons == 0)
        return B_ERROR;
    fPrivate->mouseEventMask = mask;
    return B_OK;
}

void BView::SetViewCursor(const BCursor* cursor, bool) {
    fPrivate->cursor.reset();
    if (cursor != nullptr)
        fPrivate->cursor.emplace(*cursor);
    if (fPrivate->window == nullptr)
        return;
    BWindow::Private& window = BWindow::Private::Of(fPrivate->window);
    if (window.lastMouseView == this)
        window.UpdateCursor(this);
}

void BView::Private::SetInputMethodState(const InputMethodState& given) {
    if (window == nullptr)
        return;
    server::InputContext context;
    context.enabled = given.enabled;
    context.caret = view->ConvertToWindow(given.caret);
    context.surrounding = given.surrounding;
    context.cursorByte = given.cursorByte;
    context.anchorByte = given.anchorByte;
    BWindow::Private::Of(window).TellInputMethod(context);
}

bool BView::Private::InputMethodIsEnabled() const {
    return window != nullptr && BWindow::Private::Of(window).inputMethodIsEnabled;
}

void BView::Private::ResetInputMethod() {
    if (window != nullptr)
        BWindow::Private::Of(window).ResetInputMethod();
}

void BView::Private::CallLater(bigtime_t delay, std::function<void()> call) {
    if (window != nullptr)
        BWindow::Private::Of(window).CallLater(view, delay, std::move(call));
}

void BView::Private::CancelCalls() {
    if (window != nullptr)
        BWindow::Private::Of(window).CancelCalls(view);
}
