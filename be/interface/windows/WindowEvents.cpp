// The framework's part of events: whom they are for, and what the window does itself.
#include "interface/windows/WindowPrivate.h"

#include "app/LooperPrivate.h"
#include "server/NativeWindow.h"
#include "server/WindowLink.h"

#include <Button.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstring>

namespace {

struct PointerFields {
    BPoint where;
    int32 buttons = 0;
};

PointerFields PointerOf(const BMessage* message) {
    PointerFields fields;
    message->FindPoint("where", &fields.where);
    message->FindInt32("buttons", &fields.buttons);
    return fields;
}

bool SameMove(const BMessage* a, const BMessage* b) {
    return PointerOf(a).buttons == PointerOf(b).buttons;
}

} // namespace

void BWindow::DispatchMessage(BMessage* message, BHandler* handler) {
    if (!fPrivate->Dispatch(message, handler))
        BLooper::DispatchMessage(message, handler);
}

bool BWindow::Private::Dispatch(BMessage* message, BHandler* handler) {
    switch (message->what) {
    case B_KEY_DOWN: KeyPressed(message, handler); return true;
    case B_KEY_UP: {
        const char* bytes = "";
        message->FindString("bytes", &bytes);
        const int32 count = static_cast<int32>(strlen(bytes));
        const BView* target = focus;
        if (focus != nullptr)
            focus->KeyUp(bytes, count);
        _TellWatchers(B_KEYBOARD_EVENTS, target, [&](BView* view) { view->KeyUp(bytes, count); });
        return true;
    }
    case B_MOUSE_DOWN: MousePressed(message, handler); return true;
    case B_MOUSE_UP: MouseReleased(message, handler); return true;
    case B_MOUSE_MOVED: MouseMoved(message); return true;
    case B_MOUSE_WHEEL_CHANGED: WheelTurned(message, handler); return true;
    case B_INPUT_METHOD_EVENT: InputMethodSpoke(message); return true;
    case B_WINDOW_ACTIVATED: {
        bool nowActive = false;
        message->FindBool("active", &nowActive);
        Activated(nowActive);
        return true;
    }
    case B_WINDOW_RESIZED: ResizedByServer(message); return true;
    case B_WINDOW_MOVED: MovedByServer(message); return true;
    case B_SCREEN_CHANGED: ScreenChanged(message); return true;
    case B_MINIMIZE: {
        bool wanted = false;
        bool told = false;
        message->FindBool("minimize", &wanted);
        if (message->FindBool("be:told", &told) == B_OK && told)
            minimized = wanted;
        else
            window->Minimize(wanted);
        return true;
    }
    case B_ZOOM: window->Zoom(); return true;
    case server::kOpenKeyMenuBar:
        if (openKeyMenuBar)
            openKeyMenuBar();
        return true;
    default: return false;
    }
}

bool BWindow::Private::IsStale(const BMessage* message) const {
    BMessageQueue* queue = window->MessageQueue();
    if (message->what == B_MOUSE_MOVED) {
        const BMessage* next = queue->FindMessage(int32(0));
        return next != nullptr && next->what == B_MOUSE_MOVED && SameMove(message, next);
    }
    return message->what == B_WINDOW_RESIZED &&
           queue->FindMessage(uint32(B_WINDOW_RESIZED)) != nullptr;
}

BView* BWindow::Private::ViewAt(BPoint where) const {
    return BView::Private::Of(top.get()).ViewAt(where);
}

void BWindow::Private::MousePressed(BMessage* message, BHandler* handler) {
    const PointerFields fields = PointerOf(message);
    pointer = fields.where;
    buttons = static_cast<uint32>(fields.buttons);
    if (std::has_single_bit(buttons))
        _ForgetPress();
    BView* target = dynamic_cast<BView*>(handler);
    if (target == nullptr)
        target = mouseDownView != nullptr ? mouseDownView : ViewAt(pointer);
    mouseDownView = target;
    if (target != nullptr) {
        lastMouseView = target;
        pointerFresh = true;
        const BPoint where = target->ConvertFromWindow(pointer);
        message->AddPoint("be:view_where", where);
        target->MouseDown(where);
        pointerFresh = false;
    }
    _TellWatchers(B_POINTER_EVENTS, target,
                  [this](BView* view) { view->MouseDown(view->ConvertFromWindow(pointer)); });
}

// A release may go elsewhere: to a menu that opened meanwhile. The next press or move of a pointer
// without its button then ends what began here.
void BWindow::Private::_ForgetPress() {
    if (mouseDownView == nullptr)
        return;
    BView::Private::Of(mouseDownView).mouseEventMask = 0;
    mouseDownView = nullptr;
}

// Views that asked for events that are not theirs. What one is told may take another away.
void BWindow::Private::_TellWatchers(uint32 mask, const BView* except,
                                     const std::function<void(BView*)>& tell) {
    const std::vector<BView*> known = watchers;
    for (BView* view : known) {
        const bool isThere = std::find(watchers.begin(), watchers.end(), view) != watchers.end();
        if (view == except || !isThere || !(BView::Private::Of(view).eventMask & mask))
            continue;
        pointerFresh = true; // each may ask what this message says
        tell(view);
        pointerFresh = false;
    }
}

void BWindow::Private::Watch(BView* view) {
    std::erase(watchers, view);
    if (BView::Private::Of(view).eventMask != 0)
        watchers.push_back(view);
}

void BWindow::Private::MouseReleased(BMessage* message, BHandler* handler) {
    const PointerFields fields = PointerOf(message);
    pointer = fields.where;
    buttons = static_cast<uint32>(fields.buttons);
    BView* target = dynamic_cast<BView*>(handler);
    if (target == nullptr)
        target = mouseDownView != nullptr ? mouseDownView : ViewAt(pointer);
    if (buttons == 0)
        _ForgetPress();
    if (target != nullptr) {
        pointerFresh = true;
        const BPoint where = target->ConvertFromWindow(pointer);
        message->AddPoint("be:view_where", where);
        target->MouseUp(where);
        pointerFresh = false;
    }
    _TellWatchers(B_POINTER_EVENTS, target,
                  [this](BView* view) { view->MouseUp(view->ConvertFromWindow(pointer)); });
    // The pointer may have ended over another view.
    if (buttons == 0 && ViewAt(pointer) != lastMouseView)
        MouseMoved(message);
}

void BWindow::Private::_SendMouse(BView* view, BMessage* message, uint32 transit) {
    pointerFresh = true;
    const BPoint where = view->ConvertFromWindow(pointer);
    message->RemoveName("be:view_where");
    message->RemoveName("be:transit");
    message->AddPoint("be:view_where", where);
    message->AddInt32("be:transit", static_cast<int32>(transit));
    view->MouseMoved(where, transit, nullptr);
    pointerFresh = false;
}

// While a button is down, its view has the pointer wherever it goes.
void BWindow::Private::MouseMoved(BMessage* message) {
    const PointerFields fields = PointerOf(message);
    pointer = fields.where;
    buttons = static_cast<uint32>(fields.buttons);
    if (buttons == 0)
        _ForgetPress();
    BView* under = ViewAt(pointer);
    BView* before = lastMouseView;
    _MoveTold(message, under, before);
    _TellWatchers(B_POINTER_EVENTS, nullptr, [&](BView* view) {
        if (view != under && view != before && view != mouseDownView)
            _SendMouse(view, message, B_OUTSIDE_VIEW);
    });
}

void BWindow::Private::_MoveTold(BMessage* message, BView* under, BView* before) {
    if (mouseDownView != nullptr) {
        const bool isInside = under == mouseDownView;
        const bool wasInside = before == mouseDownView;
        lastMouseView = isInside ? mouseDownView : nullptr;
        const uint32 transit = isInside ? (wasInside ? B_INSIDE_VIEW : B_ENTERED_VIEW)
                                        : (wasInside ? B_EXITED_VIEW : B_OUTSIDE_VIEW);
        return _SendMouse(mouseDownView, message, transit);
    }
    lastMouseView = under;
    UpdateCursor(under);
    if (before == under) {
        if (under != nullptr)
            _SendMouse(under, message, B_INSIDE_VIEW);
        return;
    }
    if (before != nullptr)
        _SendMouse(before, message, B_EXITED_VIEW);
    // What the first was told may have taken the second away.
    if (under != nullptr && lastMouseView == under)
        _SendMouse(under, message, B_ENTERED_VIEW);
}

void BWindow::Private::UpdateCursor(BView* under) {
    const std::optional<BCursor> wanted =
        under != nullptr ? BView::Private::Of(under).cursor : std::nullopt;
    if (wanted == shownCursor)
        return;
    shownCursor = wanted;
    link->SetCursor(wanted ? &*wanted : nullptr);
}

void BWindow::Private::WheelTurned(BMessage* message, BHandler* handler) {
    BHandler* target = handler;
    if (handler == window) {
        BPoint where = pointer;
        message->FindPoint("where", &where);
        target = ViewAt(where);
    }
    if (target != nullptr)
        target->MessageReceived(message);
}

void BWindow::Private::TellInputMethod(const server::InputContext& context) {
    inputMethodIsEnabled = context.enabled;
    link->SetInputContext(context);
}

void BWindow::Private::ResetInputMethod() {
    givenUpComposition = composition;
    link->ResetInputMethod();
}

void BWindow::Private::InputMethodSpoke(BMessage* message) {
    message->FindInt32("be:composition", &composition);
    if (composition <= givenUpComposition)
        return;
    if (focus != nullptr && (BView::Private::Of(focus).flags & B_INPUT_METHOD_AWARE))
        focus->MessageReceived(message);
}

void BWindow::Private::_TellActivated(BView* from, bool nowActive) {
    from->WindowActivated(nowActive);
    const std::vector<BView*> children = BView::Private::Of(from).children;
    for (BView* child : children)
        _TellActivated(child, nowActive);
}

void BWindow::Private::Activated(bool nowActive) {
    if (nowActive == active)
        return;
    active = nowActive;
    window->WindowActivated(active);
    _TellActivated(top.get(), active);
}

void BWindow::Private::SetSize(float width, float height) {
    sizeChanged = true;
    frame.right = frame.left + width;
    frame.bottom = frame.top + height;
    BView::Private& topView = BView::Private::Of(top.get());
    topView.SetSize(width, height);
}

void BWindow::Private::ResizedByServer(const BMessage* message) {
    int32 width = 0;
    int32 height = 0;
    int32 serial = 0;
    bool own = false;
    message->FindInt32("width", &width);
    message->FindInt32("height", &height);
    message->FindBool("be:own", &own);
    if (message->FindInt32("serial", &serial) == B_OK && serial < link->Serial())
        return;
    const bool changed =
        width != static_cast<int32>(frame.Width()) || height != static_cast<int32>(frame.Height());
    if (changed && !own)
        SetSize(static_cast<float>(width), static_cast<float>(height));
    if (changed || own)
        window->FrameResized(frame.Width(), frame.Height());
}

// The calling window's thread: takes what the queue says about its size and draws.
void BWindow::Private::FollowSize() {
    BMessageQueue* queue = window->MessageQueue();
    while (BMessage* message = queue->FindMessage(uint32(B_WINDOW_RESIZED))) {
        queue->RemoveMessage(message);
        ResizedByServer(message);
        delete message;
    }
    Update();
}

void BWindow::Private::MovedByServer(const BMessage* message) {
    BPoint where = frame.LeftTop();
    int32 serial = 0;
    message->FindPoint("where", &where);
    if (message->FindInt32("serial", &serial) == B_OK && serial < link->Serial())
        return;
    if (where == frame.LeftTop())
        return;
    frame.OffsetTo(where);
    window->FrameMoved(where);
}

void BWindow::Private::ScreenChanged(const BMessage* message) {
    if (link->Scale() != surfaceScale)
        Invalidate(frame.OffsetToCopy(0, 0));
    BRect screen;
    if (message->FindRect("frame", &screen) == B_OK)
        window->ScreenChanged(screen, B_RGB32);
}

void BWindow::Private::SetFocus(BView* view) {
    if (focus == view)
        return;
    focus = view;
    window->SetPreferredHandler(view);
    if (view == nullptr || !(BView::Private::Of(view).flags & B_INPUT_METHOD_AWARE))
        TellInputMethod(server::InputContext());
}

void BWindow::Private::ViewGoes(BView* view) {
    if (focus == view)
        SetFocus(nullptr);
    if (lastMouseView == view)
        lastMouseView = nullptr;
    if (mouseDownView == view)
        mouseDownView = nullptr;
    if (painted == view)
        painted = nullptr;
    if (static_cast<void*>(defaultButton) == static_cast<void*>(view))
        defaultButton = nullptr;
    std::erase(watchers, view);
    CancelCalls(view);
}
