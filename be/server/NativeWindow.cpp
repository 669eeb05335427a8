#include "server/NativeWindow.h"

#include "server/CursorShapes.h"
#include "server/MenuServer.h"
#include "server/Screens.h"

#include <AppDefs.h>

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace server {

namespace {

// All open native windows, the one that had the keyboard last at the end.
std::vector<NativeWindow*> sWindows;

const int kLargest = 32768;
const int kSettleTime = 300; // milliseconds a window manager gets to take notice of a change
const int kReachable = 32;   // so much of a window must be on a screen
const QRgb kBackground = 0xfff2f2f2;
const QRgb kBorder = 0xffb6bbc2;

bool IsPopUp(window_look look) {
    return look == B_BORDERED_WINDOW_LOOK || look == B_NO_BORDER_WINDOW_LOOK;
}

bool IsModalFeel(window_feel feel) {
    return feel == B_MODAL_APP_WINDOW_FEEL || feel == B_MODAL_ALL_WINDOW_FEEL ||
           feel == B_MODAL_SUBSET_WINDOW_FEEL;
}

Qt::WindowFlags KindOf(window_look look, window_feel feel) {
    if (IsPopUp(look))
        return Qt::ToolTip | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
    if (look == B_MODAL_WINDOW_LOOK || IsModalFeel(feel))
        return Qt::Dialog;
    if (look == B_FLOATING_WINDOW_LOOK)
        return Qt::Tool;
    return Qt::Window;
}

Qt::WindowFlags ButtonsFor(uint32 flags) {
    const uint32 limits = B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE;
    if ((flags & limits) == 0)
        return {};
    Qt::WindowFlags buttons = Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (!(flags & B_NOT_CLOSABLE))
        buttons |= Qt::WindowCloseButtonHint;
    if (!(flags & B_NOT_ZOOMABLE))
        buttons |= Qt::WindowMaximizeButtonHint;
    if (!(flags & B_NOT_MINIMIZABLE))
        buttons |= Qt::WindowMinimizeButtonHint;
    return buttons;
}

// A window without decoration is set off by a hairline on its outermost pixels.
void DrawBorder(QPainter& painter, const QRect& whole) {
    for (const QRect& side : QRegion(whole) - QRegion(whole.adjusted(1, 1, -1, -1)))
        painter.fillRect(side, QColor(kBorder));
}

int Pixels(float inclusive) {
    return std::clamp(static_cast<int>(std::lround(inclusive)) + 1, 1, kLargest);
}

// A limit as large as a screen is no limit: it must not keep a maximised window from filling a
// larger one.
QSize WithoutScreens(QSize largest) {
    for (const QScreen* one : QGuiApplication::screens()) {
        if (largest.width() >= one->size().width())
            largest.setWidth(kLargest);
        if (largest.height() >= one->size().height())
            largest.setHeight(kLargest);
    }
    return largest;
}

QRect GeometryOf(BRect frame) {
    return QRect(static_cast<int>(std::lround(frame.left)),
                 static_cast<int>(std::lround(frame.top)), Pixels(frame.Width()),
                 Pixels(frame.Height()));
}

} // namespace

NativeWindow::NativeWindow(WindowLink& link)
    : fLink(link), fKeptLink(link.shared_from_this()), fStore(this) {
    setSurfaceType(QSurface::RasterSurface);
    ApplyKind();
    ApplyLimits();
    ApplyTitle();
    setGeometry(GeometryOf(link.fSpec.frame));
    QObject::connect(this, &QWindow::screenChanged, [this] { _SendFrame(B_SCREEN_CHANGED); });
    sWindows.insert(sWindows.begin(), this);
}

NativeWindow::~NativeWindow() {
    std::erase(sWindows, this);
}

int NativeWindow::CountWindows() {
    return static_cast<int>(sWindows.size());
}

void NativeWindow::CloseAll() {
    while (!sWindows.empty()) {
        const std::shared_ptr<WindowLink> link = sWindows.back()->fKeptLink;
        link->fNative.reset();
    }
}

NativeWindow* NativeWindow::LastActive() {
    for (auto at = sWindows.rbegin(); at != sWindows.rend(); ++at) {
        if ((*at)->isVisible() && !IsPopUp((*at)->fLink.fSpec.look))
            return *at;
    }
    return nullptr;
}

// The only window that this one blocks; null when it blocks all, or none.
NativeWindow* NativeWindow::_Subset() const {
    const std::shared_ptr<WindowLink> subset = fLink.fSpec.subset.lock();
    return subset != nullptr && fLink.fSpec.feel == B_MODAL_SUBSET_WINDOW_FEEL ? Of(*subset)
                                                                               : nullptr;
}

// What keeps the input from this window; where one lies over another, the one that gets it.
NativeWindow* NativeWindow::_Blocker() const {
    for (auto at = sWindows.rbegin(); at != sWindows.rend(); ++at) {
        const window_feel feel = (*at)->fLink.fSpec.feel;
        const bool blocksMe = feel != B_MODAL_SUBSET_WINDOW_FEEL || (*at)->_Subset() == this;
        if (*at != this && (*at)->isVisible() && !(*at)->fBlocked && IsModalFeel(feel) && blocksMe)
            return *at;
    }
    return nullptr;
}

void NativeWindow::_PassFocus() {
    if (NativeWindow* blocker = _Blocker())
        blocker->BringForward();
}

// To the front, with the keyboard; what blocks it comes before it.
void NativeWindow::BringForward() {
    if (windowStates() & Qt::WindowMinimized)
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    raise();
    if (fBlocked)
        _PassFocus();
    else
        requestActivate();
}

QRect NativeWindow::OwnerFrame() const {
    const NativeWindow* owner = _Subset() != nullptr ? _Subset() : LastActive();
    return owner != nullptr && owner != this ? owner->geometry() : QRect();
}

void NativeWindow::ShowIt(bool takesFocus) {
    NativeWindow* parent = _Subset() != nullptr ? _Subset() : LastActive();
    if (parent != this && KindOf(fLink.fSpec.look, fLink.fSpec.feel) != Qt::Window)
        setTransientParent(parent);
    const bool takesNow = takesFocus && _MayTakeFocus();
    fHoldsBack = takesFocus && !takesNow;
    setFlag(Qt::WindowDoesNotAcceptFocus, !takesNow);
    _KeepOnScreen();
    fShown = true;
    show();
    if (takesNow)
        requestActivate();
}

// A window manager gives the keyboard to a new window by itself, if that takes it at all: from when
// it is seen the user may go to it.
void NativeWindow::_AskForAttention() {
    if (!std::exchange(fHoldsBack, false))
        return;
    setFlag(Qt::WindowDoesNotAcceptFocus, false);
    // Reading that, a window manager forgets what a window has asked for.
    QTimer::singleShot(kSettleTime, this, [this] {
        if (fShown && !fActive)
            alert(0);
    });
}

// An alert comes by itself: while the user types in another program it only asks for attention.
bool NativeWindow::_MayTakeFocus() const {
    return !IsModalFeel(fLink.fSpec.feel) || QGuiApplication::focusWindow() != nullptr ||
           LastActive() == nullptr;
}

// A frame that was kept from another screen may lie where there is none now.
void NativeWindow::_KeepOnScreen() {
    const QRect mine = geometry();
    for (const QScreen* one : QGuiApplication::screens()) {
        const QRect common = one->availableGeometry() & mine;
        if (IsPopUp(fLink.fSpec.look) ||
            (common.width() >= kReachable && common.height() >= kReachable))
            return;
    }
    if (const QScreen* main = QGuiApplication::primaryScreen()) {
        setPosition(main->availableGeometry().topLeft() + QPoint(kReachable, kReachable));
        _SendFrame(B_WINDOW_MOVED);
    }
}

void NativeWindow::HideIt() {
    const bool wasActive = fActive;
    fShown = false;
    hide();
    if (!wasActive)
        return;
    _Activated(false);
    if (NativeWindow* next = LastActive())
        next->requestActivate();
}

void NativeWindow::ApplyTitle() {
    const QString title = QString::fromStdString(fLink.fSpec.title);
    setTitle(title.isEmpty() ? QCoreApplication::applicationName() : title);
}

void NativeWindow::ApplyKind() {
    const WindowSpec& spec = fLink.fSpec;
    Qt::WindowFlags kind = KindOf(spec.look, spec.feel) | ButtonsFor(spec.flags);
    if (spec.flags & B_AVOID_FOCUS)
        kind |= Qt::WindowDoesNotAcceptFocus;
    if (spec.feel == B_FLOATING_ALL_WINDOW_FEEL)
        kind |= Qt::WindowStaysOnTopHint;
    setFlags(kind);
    if (_Subset() != nullptr)
        setModality(Qt::WindowModal);
    else
        setModality(IsModalFeel(spec.feel) ? Qt::ApplicationModal : Qt::NonModal);
}

void NativeWindow::ApplyLimits() {
    const WindowSpec& spec = fLink.fSpec;
    QSize smallest(Pixels(spec.minWidth), Pixels(spec.minHeight));
    QSize largest = WithoutScreens(QSize(Pixels(spec.maxWidth), Pixels(spec.maxHeight)));
    const QSize now = GeometryOf(spec.frame).size();
    if (spec.flags & (B_NOT_RESIZABLE | B_NOT_H_RESIZABLE)) {
        smallest.setWidth(now.width());
        largest.setWidth(now.width());
    }
    if (spec.flags & (B_NOT_RESIZABLE | B_NOT_V_RESIZABLE)) {
        smallest.setHeight(now.height());
        largest.setHeight(now.height());
    }
    setMinimumSize(smallest);
    setMaximumSize(largest);
}

void NativeWindow::ApplyFrame(bool moved) {
    ApplyLimits();
    const QRect wanted = GeometryOf(fLink.fSpec.frame);
    if (moved)
        setGeometry(wanted);
    else
        resize(wanted.size());
}

void NativeWindow::ApplyCursor() {
    setCursor(CursorFor(fLink.fCursor.get()));
}

void NativeWindow::ApplicationCursorChanged() {
    for (NativeWindow* window : sWindows)
        window->ApplyCursor();
}

QRegion NativeWindow::_DeviceRegion(const QRegion& region) const {
    const double scale = devicePixelRatio();
    QRegion device;
    for (const QRect& rect : region) {
        const QPoint leftTop(static_cast<int>(std::floor(rect.left() * scale)),
                             static_cast<int>(std::floor(rect.top() * scale)));
        const QPoint end(static_cast<int>(std::ceil((rect.right() + 1) * scale)),
                         static_cast<int>(std::ceil((rect.bottom() + 1) * scale)));
        device += QRect(leftTop, end - QPoint(1, 1));
    }
    return device;
}

// The pixels that device pixels lie in.
QRegion NativeWindow::_LogicalRegion(const QRegion& device) const {
    const double scale = devicePixelRatio();
    QRegion logical;
    for (const QRect& rect : device) {
        const QPoint from(static_cast<int>(rect.left() / scale),
                          static_cast<int>(rect.top() / scale));
        const QPoint end(static_cast<int>(std::ceil((rect.right() + 1) / scale)),
                         static_cast<int>(std::ceil((rect.bottom() + 1) / scale)));
        logical += QRect(from, end - QPoint(1, 1));
    }
    return logical & QRect(QPoint(0, 0), size());
}

void NativeWindow::_Copy(const QImage& image, const QRegion& changed) {
    QPaintDevice* device = fStore.paintDevice();
    // Both are in device pixels: without the device's ratio the copy is exact at every scale.
    QImage* target = device->devType() == QInternal::Image ? static_cast<QImage*>(device) : nullptr;
    const double ratio = target != nullptr ? target->devicePixelRatio() : 1;
    if (target != nullptr)
        target->setDevicePixelRatio(1);
    {
        QPainter painter(device);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        for (const QRect& rect : changed)
            painter.drawImage(rect.topLeft(), image, rect);
        for (const QRect& rect : changed - QRegion(image.rect()))
            painter.fillRect(rect, QColor(kBackground));
        if (fLink.fSpec.look == B_BORDERED_WINDOW_LOOK)
            DrawBorder(painter, image.rect());
    }
    if (target != nullptr)
        target->setDevicePixelRatio(ratio);
}

void NativeWindow::Paint(const QRegion& exposed) {
    if (!isExposed())
        return;
    QRegion wanted = exposed;
    if (fStore.size() != size()) {
        fStore.resize(size());
        wanted = QRegion(QRect(QPoint(0, 0), size()));
    }
    fLink.fSurface.Take(_DeviceRegion(wanted), [&](const QImage& image, const QRegion& changed) {
        const QRegion logical = _LogicalRegion(changed);
        fStore.beginPaint(logical);
        _Copy(image, changed);
        fStore.endPaint();
        fStore.flush(logical, this);
    });
}

void NativeWindow::exposeEvent(QExposeEvent*) {
    if (!isExposed())
        return;
    const float scale = static_cast<float>(devicePixelRatio());
    if (fLink.fScale.exchange(scale) != scale)
        _SendFrame(B_SCREEN_CHANGED);
    Paint(QRegion(QRect(QPoint(0, 0), size())));
    _AskForAttention();
}

void NativeWindow::resizeEvent(QResizeEvent*) {
    if (!fShown || (width() == fWidth && height() == fHeight))
        return;
    fWidth = width();
    fHeight = height();
    _SendFrame(B_WINDOW_RESIZED);
}

void NativeWindow::moveEvent(QMoveEvent*) {
    fAltAlone = false; // held to move the window
    if (fShown)
        _SendFrame(B_WINDOW_MOVED);
}

void NativeWindow::_Send(BMessage& message) {
    fLink.fTarget.SendMessage(&message);
}

void NativeWindow::_SendFrame(uint32 what) {
    BMessage message(what);
    message.AddInt32("width", width() - 1);
    message.AddInt32("height", height() - 1);
    message.AddPoint("where", BPoint(static_cast<float>(x()), static_cast<float>(y())));
    if (what == B_SCREEN_CHANGED) {
        const QRect screenRect = screen() != nullptr ? screen()->geometry() : QRect();
        message.AddRect("frame", Inclusive(screenRect));
        message.AddInt32("mode", B_RGB32);
    }
    message.AddInt32("serial", fLink.fSeenSerial);
    _Send(message);
}

void NativeWindow::_Activated(bool active) {
    if (active == fActive)
        return;
    fActive = active;
    if (active) {
        std::erase(sWindows, this);
        sWindows.push_back(this);
    }
    BMessage message(B_WINDOW_ACTIVATED);
    message.AddBool("active", active);
    _Send(message);
}

void NativeWindow::MenuClosed() {
    if (fShown && fActive && QGuiApplication::focusWindow() != this)
        requestActivate();
}

} // namespace server
