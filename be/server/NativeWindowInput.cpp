// Events of the desktop, translated into the API's messages.
#include "server/Keys.h"
#include "server/NativeWindow.h"

#include <AppDefs.h>

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace server {

namespace {

const int kClickDistance = 4;
const int kWheelStep = 120;

BPoint PixelOf(const QPointF& point) {
    return BPoint(static_cast<float>(std::floor(point.x())),
                  static_cast<float>(std::floor(point.y())));
}

// Types of X events, the same ones in the core protocol and in its extension for input, whose
// events are generic ones with a type of their own.
enum { kKeyPress = 2, kButtonPress = 4, kEnter = 7, kLeave = 8, kFocusIn = 9, kGeneric = 35 };

int XTypeOf(const uint8_t* event) {
    const int type = event[0] & 0x7f;
    uint16_t inner = 0;
    memcpy(&inner, event + 8, sizeof(inner));
    return type == kGeneric ? inner : type;
}

bool IsMenuKey(const QKeyEvent* event) {
    return event->key() == Qt::Key_Menu ||
           (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
}

} // namespace

bool NativeWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: _MousePressed(static_cast<QMouseEvent*>(event)); return true;
    case QEvent::MouseButtonRelease: _MouseReleased(static_cast<QMouseEvent*>(event)); return true;
    case QEvent::MouseMove: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        _MouseMoved(mouse->position(), ButtonsOf(mouse->buttons()),
                    ModifiersOf(mouse->modifiers()));
        return true;
    }
    case QEvent::Leave: _Left(); return true;
    case QEvent::Wheel: _Wheel(static_cast<QWheelEvent*>(event)); return true;
    case QEvent::KeyPress: _Key(static_cast<QKeyEvent*>(event), true); return true;
    case QEvent::KeyRelease: _Key(static_cast<QKeyEvent*>(event), false); return true;
    case QEvent::InputMethod: _InputMethod(static_cast<QInputMethodEvent*>(event)); return true;
    case QEvent::InputMethodQuery:
        _InputMethodQuery(static_cast<QInputMethodQueryEvent*>(event));
        return true;
    case QEvent::FocusIn: _Activated(true); return true;
    case QEvent::FocusOut: {
        // A menu that takes the keyboard for a while belongs to this window.
        const QWindow* next = QGuiApplication::focusWindow();
        if (next == nullptr || next->type() != Qt::Popup)
            _Activated(false);
        return true;
    }
    case QEvent::Close: {
        BMessage message(B_QUIT_REQUESTED);
        _Send(message);
        event->ignore();
        return true;
    }
    case QEvent::WindowBlocked: fBlocked = true; return true;
    case QEvent::WindowUnblocked: fBlocked = false; return true;
    case QEvent::WindowStateChange: {
        BMessage message(B_MINIMIZE);
        message.AddBool("minimize", windowStates() & Qt::WindowMinimized);
        message.AddBool("be:told", true);
        _Send(message);
        return true;
    }
    default: return QWindow::event(event);
    }
}

bool NativeWindow::nativeEvent(const QByteArray& type, void* message, qintptr* result) {
    if (type == "xcb_generic_event_t")
        _XEvent(XTypeOf(static_cast<const uint8_t*>(message)));
    return QWindow::nativeEvent(type, message, result);
}

// What the toolkit keeps to itself: input of a blocked window, and that the window manager has
// taken the pointer, to move the window with Alt held.
void NativeWindow::_XEvent(int type) {
    if (type == kEnter || type == kLeave)
        fAltAlone = false;
    // When the toolkit has read the event's time: without it window managers refuse.
    if (fBlocked && (type == kKeyPress || type == kButtonPress || type == kFocusIn))
        QMetaObject::invokeMethod(
            this, [this] { _PassFocus(); }, Qt::QueuedConnection);
}

void NativeWindow::_SendPointer(uint32 what, const QPointF& where, uint32 buttons, uint32 modifiers,
                                int32 clicks) {
    const BPoint pixel = PixelOf(where);
    fLink.fPointerX.store(pixel.x, std::memory_order_relaxed);
    fLink.fPointerY.store(pixel.y, std::memory_order_relaxed);
    fLink.fButtons.store(buttons, std::memory_order_relaxed);
    NoteModifiers(modifiers);
    BMessage message(what);
    message.AddPoint("where", pixel);
    message.AddPoint("screen_where",
                     pixel + BPoint(static_cast<float>(x()), static_cast<float>(y())));
    message.AddInt32("buttons", static_cast<int32>(buttons));
    message.AddInt32("modifiers", static_cast<int32>(modifiers));
    if (clicks > 0)
        message.AddInt32("clicks", clicks);
    _Send(message);
}

void NativeWindow::_MousePressed(const QMouseEvent* event) {
    fAltAlone = false;
    const QPointF distance = event->position() - fClickPoint;
    const uint32 button = ButtonsOf(event->button());
    const bool again =
        fClicks > 0 && button == fClickButton &&
        fSinceClick.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval() &&
        distance.manhattanLength() <= kClickDistance;
    fClicks = again ? fClicks + 1 : 1;
    fClickButton = button;
    fClickPoint = event->position();
    fSinceClick.start();
    _SendPointer(B_MOUSE_DOWN, event->position(), ButtonsOf(event->buttons()),
                 ModifiersOf(event->modifiers()), fClicks);
}

void NativeWindow::_MouseReleased(const QMouseEvent* event) {
    _SendPointer(B_MOUSE_UP, event->position(), ButtonsOf(event->buttons()),
                 ModifiersOf(event->modifiers()), 0);
}

void NativeWindow::_MouseMoved(const QPointF& where, uint32 buttons, uint32 modifiers) {
    _SendPointer(B_MOUSE_MOVED, where, buttons, modifiers, 0);
}

void NativeWindow::_Left() {
    if (fLink.Buttons() != 0)
        return;
    QPointF where = mapFromGlobal(QCursor::pos());
    if (QRect(QPoint(0, 0), size()).contains(where.toPoint()))
        where = QPointF(-1, where.y());
    _MouseMoved(where, 0, CurrentModifiers());
}

void NativeWindow::_Wheel(const QWheelEvent* event) {
    BMessage message(B_MOUSE_WHEEL_CHANGED);
    message.AddPoint("where", PixelOf(event->position()));
    message.AddFloat("be:wheel_delta_x", -static_cast<float>(event->angleDelta().x()) / kWheelStep);
    message.AddFloat("be:wheel_delta_y", -static_cast<float>(event->angleDelta().y()) / kWheelStep);
    message.AddInt32("modifiers", static_cast<int32>(ModifiersOf(event->modifiers())));
    _Send(message);
}

void NativeWindow::_Key(const QKeyEvent* event, bool down) {
    NoteModifiers(ModifiersOf(event->modifiers()));
    if (event->key() == Qt::Key_Alt) {
        if (!down && fAltAlone) {
            BMessage message(kOpenKeyMenuBar);
            _Send(message);
        }
        fAltAlone = down;
        return;
    }
    fAltAlone = false;
    fGivenUp.clear();
    BMessage message(down ? B_KEY_DOWN : B_KEY_UP);
    if (IsMenuKey(event)) {
        const QKeyEvent menuKey(event->type(), Qt::Key_Menu, Qt::NoModifier);
        FillKeyMessage(&menuKey, message);
        _Send(message);
    } else if (FillKeyMessage(event, message)) {
        _Send(message);
    }
}

} // namespace server
