#pragma once

#include "server/WindowLink.h"

#include <Message.h>

#include <QBackingStore>
#include <QElapsedTimer>
#include <QEvent>
#include <QString>
#include <QWindow>

#include <memory>

class BWindow;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace server {

// To a window: a tap of Alt asks for its menu bar.
const uint32 kOpenKeyMenuBar = '_KMB';

// The desktop's end of a window: shows the surface, turns events into messages. Server thread only.
class NativeWindow : public QWindow {
public:
    explicit NativeWindow(WindowLink& link);
    ~NativeWindow() override;

    // The open native window of a link; null if there is none.
    static NativeWindow* Of(const WindowLink& link) { return link.fNative.get(); }
    static int CountWindows();
    static void CloseAll();
    // The window that had the keyboard last and is still there.
    static NativeWindow* LastActive();

    void ShowIt(bool takesFocus);
    void HideIt();
    void BringForward();
    void ApplyTitle();
    void ApplyKind();
    void ApplyLimits();
    void ApplyFrame(bool moved);
    void ApplyCursor();
    static void ApplicationCursorChanged();
    void Paint(const QRegion& exposed);
    void SetInputContext(const InputContext& context);
    void ResetInputMethod();
    void MenuClosed(); // a native menu that had the keyboard has gone
    // Of the window that this one comes for: the one it blocks, else the one used last.
    QRect OwnerFrame() const;
    bool IsBlocked() const { return fBlocked; } // a modal window keeps the input from it

protected:
    bool event(QEvent* event) override;
    bool nativeEvent(const QByteArray& type, void* message, qintptr* result) override;
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void _Send(BMessage& message);
    void _SendPointer(uint32 what, const QPointF& where, uint32 buttons, uint32 modifiers,
                      int32 clicks);
    void _MousePressed(const QMouseEvent* event);
    void _MouseReleased(const QMouseEvent* event);
    void _MouseMoved(const QPointF& where, uint32 buttons, uint32 modifiers);
    void _Left();
    void _Wheel(const QWheelEvent* event);
    void _Key(const QKeyEvent* event, bool down);
    void _InputMethod(const QInputMethodEvent* event);
    void _InputMethodQuery(QInputMethodQueryEvent* event) const;
    void _Activated(bool active);
    void _KeepOnScreen();
    NativeWindow* _Subset() const;
    NativeWindow* _Blocker() const;
    void _XEvent(int type);
    void _PassFocus();
    bool _MayTakeFocus() const;
    void _AskForAttention();
    void _SendFrame(uint32 what);
    BMessage _CompositionMessage(int32 opcode) const;
    void _StartComposing();
    void _StopComposing(const QInputMethodEvent* event);
    void _AddReplaced(const QInputMethodEvent* event, BMessage& message) const;
    bool _IsLateResult(const QInputMethodEvent* event);
    QRegion _DeviceRegion(const QRegion& region) const;
    QRegion _LogicalRegion(const QRegion& device) const;
    void _Copy(const QImage& image, const QRegion& changed);

    WindowLink& fLink;
    // The link owns this window, and lasts until it has closed it: after the server has stopped,
    // the window's side may have let go of it first.
    const std::shared_ptr<WindowLink> fKeptLink;
    QBackingStore fStore;
    bool fActive = false;
    bool fComposing = false;
    bool fShown = false;
    bool fBlocked = false;
    bool fHoldsBack = false; // shown, but without the keyboard until it has been seen
    bool fAltAlone = false;  // Alt went down and nothing else happened since
    int fWidth = -1;
    int fHeight = -1;
    // Clicks
    QElapsedTimer fSinceClick;
    QPointF fClickPoint;
    uint32 fClickButton = 0;
    int32 fClicks = 0;
    // The composition: its number, what it showed last, what was on show when it was given up
    int32 fComposition = 0;
    QString fPreedit;
    QString fGivenUp;
    // What the input method asks for
    bool fInputEnabled = false;
    QRect fCaret;
    QString fSurrounding;
    int fCursor = 0;
    int fAnchor = 0;
};

} // namespace server
