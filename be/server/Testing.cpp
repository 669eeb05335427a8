#include "server/Testing.h"

#include "app/WindowList.h"
#include "interface/windows/WindowPrivate.h"
#include "server/Desktop.h"
#include "server/Keys.h"
#include "server/NativeWindow.h"
#include "server/OpenMenu.h"
#include "server/Server.h"
#include "server/WindowLink.h"

#include <OS.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextCharFormat>
#include <QWheelEvent>

namespace server::testing {

namespace {

// Reached by failures alone, so that a slow or busy machine fails none.
const bigtime_t kPatience = 60000000;
const bigtime_t kPause = 2000;

// A window's link never changes, and the window may be locked for long.
std::shared_ptr<WindowLink> LinkOf(BWindow* window) {
    return WindowList::Contains(window) ? BWindow::Private::Of(window).link : nullptr;
}

// On the server's thread, with the window's native one.
void WithNative(BWindow* window, const std::function<void(NativeWindow&)>& work) {
    const std::shared_ptr<WindowLink> link = LinkOf(window);
    if (link == nullptr)
        return;
    Call([&] {
        if (NativeWindow* native = NativeWindow::Of(*link))
            work(*native);
    });
}

void Send(BWindow* window, QEvent& event) {
    WithNative(window, [&](NativeWindow& native) { QCoreApplication::sendEvent(&native, &event); });
}

Qt::KeyboardModifiers QtModifiers(uint32 modifiers) {
    Qt::KeyboardModifiers result;
    if (modifiers & B_SHIFT_KEY)
        result |= Qt::ShiftModifier;
    if (modifiers & B_COMMAND_KEY)
        result |= Qt::ControlModifier;
    if (modifiers & B_OPTION_KEY)
        result |= Qt::AltModifier;
    return result;
}

Qt::MouseButtons QtButtons(uint32 buttons) {
    Qt::MouseButtons result;
    if (buttons & B_PRIMARY_MOUSE_BUTTON)
        result |= Qt::LeftButton;
    if (buttons & B_SECONDARY_MOUSE_BUTTON)
        result |= Qt::RightButton;
    if (buttons & B_TERTIARY_MOUSE_BUTTON)
        result |= Qt::MiddleButton;
    return result;
}

void SendMouse(BWindow* window, QEvent::Type type, BPoint where, uint32 button, uint32 buttons,
               uint32 modifiers) {
    WithNative(window, [&](NativeWindow& native) {
        const QPointF local(where.x, where.y);
        QMouseEvent event(type, local, native.mapToGlobal(local),
                          static_cast<Qt::MouseButton>(QtButtons(button).toInt()),
                          QtButtons(buttons), QtModifiers(modifiers));
        QCoreApplication::sendEvent(&native, &event);
    });
}

// The event is made on the server's thread: it creates the keyboard that it comes from.
void SendKey(BWindow* window, QEvent::Type type, int key, uint32 modifiers, const QString& text) {
    WithNative(window, [&](NativeWindow& native) {
        QKeyEvent event(type, key, QtModifiers(modifiers), text);
        QCoreApplication::sendEvent(&native, &event);
    });
}

// What a locked window tells; -1 for one that has gone.
int32 MarksOf(BWindow* window) {
    if (!WindowList::Contains(window) || !window->Lock())
        return -1;
    const int32 marks = BWindow::Private::Of(window).marks;
    window->Unlock();
    return marks;
}

// The loop takes what is posted here last: then all before it has been handled.
bool HasHandledAll(BWindow* window) {
    const int32 before = MarksOf(window);
    if (before < 0 || window->PostMessage(kMsgMark) != B_OK)
        return false;
    return WaitUntil([&] { return MarksOf(window) != before; });
}

bool HasDrawnAll(BWindow* window) {
    if (!WindowList::Contains(window) || !window->Lock())
        return false;
    const BWindow::Private& data = BWindow::Private::Of(window);
    const bool hasDrawn = !data.showPending && (!data.NeedsUpdate() || !data.CanUpdate());
    const bool isQuiet = hasDrawn && !window->IsMessageWaiting();
    window->Unlock();
    return isQuiet;
}

} // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    const bigtime_t end = system_time() + kPatience;
    while (!condition()) {
        if (system_time() > end)
            return false;
        snooze(kPause);
    }
    return true;
}

// Handled and drawn, then the server has done what it was told, and what came back of that is
// handled too.
bool WaitUntilIdle(BWindow* window) {
    return WaitUntil([window] {
        return HasHandledAll(window) && HasDrawnAll(window) &&
               Call([] { QCoreApplication::sendPostedEvents(); }) && HasHandledAll(window) &&
               HasDrawnAll(window) && Call([] {});
    });
}

Picture Snapshot(BWindow* window) {
    Picture picture;
    const std::shared_ptr<WindowLink> link = LinkOf(window);
    if (link == nullptr)
        return picture;
    const QImage image = link->Pixels().Copy().convertToFormat(QImage::Format_RGB32);
    picture.width = image.width();
    picture.height = image.height();
    for (int y = 0; y < image.height(); y++) {
        for (int x = 0; x < image.width(); x++) {
            const QRgb pixel = image.pixel(x, y);
            picture.pixels.push_back(make_color(static_cast<uint8>(qRed(pixel)),
                                                static_cast<uint8>(qGreen(pixel)),
                                                static_cast<uint8>(qBlue(pixel))));
        }
    }
    return picture;
}

bool SavePicture(BWindow* window, const std::string& pngPath) {
    const std::shared_ptr<WindowLink> link = LinkOf(window);
    return link != nullptr && link->Pixels().Copy().save(QString::fromStdString(pngPath), "PNG");
}

void MouseDown(BWindow* window, BPoint where, uint32 button, uint32 modifiers, int32 clicks) {
    // The click before counts if it was there a moment ago: those before this one are sent first.
    for (int32 i = 1; i < clicks; i++)
        Click(window, where, button, modifiers);
    SendMouse(window, QEvent::MouseButtonPress, where, button, button, modifiers);
}

void MouseUp(BWindow* window, BPoint where, uint32 button, uint32 modifiers) {
    SendMouse(window, QEvent::MouseButtonRelease, where, button, 0, modifiers);
}

void MouseMove(BWindow* window, BPoint where, uint32 buttons, uint32 modifiers) {
    SendMouse(window, QEvent::MouseMove, where, 0, buttons, modifiers);
}

void MouseLeave(BWindow* window) {
    QEvent event(QEvent::Leave);
    Send(window, event);
}

void Click(BWindow* window, BPoint where, uint32 button, uint32 modifiers, int32 clicks) {
    MouseDown(window, where, button, modifiers, clicks);
    MouseUp(window, where, button, modifiers);
}

std::string TitleOf(BWindow* window) {
    std::string title;
    WithNative(window, [&](NativeWindow& native) { title = native.title().toStdString(); });
    return title;
}

bool IsBlocked(BWindow* window) {
    bool isBlocked = false;
    WithNative(window, [&](NativeWindow& native) { isBlocked = native.IsBlocked(); });
    return isBlocked;
}

void Wheel(BWindow* window, BPoint where, float deltaX, float deltaY) {
    WithNative(window, [&](NativeWindow& native) {
        const QPointF local(where.x, where.y);
        const QPoint angle(static_cast<int>(-deltaX * 120), static_cast<int>(-deltaY * 120));
        QWheelEvent event(local, native.mapToGlobal(local), QPoint(), angle, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&native, &event);
    });
}

void Key(BWindow* window, char byte, uint32 modifiers, uint32 functionKey) {
    const bool isPrintable = byte > 0x20 && byte < 0x7f;
    const int key = isPrintable ? toupper(byte) : QtKeyOf(byte, functionKey);
    const QString text = isPrintable || byte == ' ' ? QString(QLatin1Char(byte)) : QString();
    SendKey(window, QEvent::KeyPress, key, modifiers, text);
    SendKey(window, QEvent::KeyRelease, key, modifiers, text);
}

void MenuKey(BWindow* window) {
    SendKey(window, QEvent::KeyPress, Qt::Key_Menu, 0, QString());
}

void Type(BWindow* window, const char* utf8) {
    for (const char32_t code : QString::fromUtf8(utf8).toStdU32String()) {
        const int key = code < 0x80 ? toupper(static_cast<int>(code)) : static_cast<int>(code);
        SendKey(window, QEvent::KeyPress, key, 0, QString::fromUcs4(&code, 1));
    }
}

void Compose(BWindow* window, const char* utf8, int32 cursorByte, int32 clauseStart,
             int32 clauseEnd) {
    const auto units = [utf8](int32 bytes) {
        return static_cast<int>(QString::fromUtf8(utf8, bytes).size());
    };
    QList<QInputMethodEvent::Attribute> attributes = {
        QInputMethodEvent::Attribute(QInputMethodEvent::Cursor, units(cursorByte), 1)};
    if (clauseStart < clauseEnd) {
        QTextCharFormat format;
        format.setBackground(Qt::blue);
        attributes.append(QInputMethodEvent::Attribute(
            QInputMethodEvent::TextFormat, units(clauseStart),
            units(clauseEnd) - units(clauseStart), QVariant::fromValue<QTextFormat>(format)));
    }
    QInputMethodEvent event(QString::fromUtf8(utf8), attributes);
    Send(window, event);
}

void CommitComposition(BWindow* window, const char* utf8, int32 replaceStart, int32 replaceLength) {
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(utf8), replaceStart, replaceLength);
    Send(window, event);
}

int32 InputNoticesDuring(const std::function<void()>& work) {
    int32 count = 0;
    QMetaObject::Connection connection;
    Call([&] {
        connection = QObject::connect(QGuiApplication::inputMethod(),
                                      &QInputMethod::cursorRectangleChanged, [&count] { count++; });
    });
    work();
    Call([&] { QObject::disconnect(connection); });
    return count;
}

PointerShape ShapeOf(BWindow* window) {
    PointerShape shape = PointerShape::kOther;
    WithNative(window, [&](NativeWindow& native) {
        if (native.cursor().shape() == Qt::PointingHandCursor)
            shape = PointerShape::kLink;
        else if (native.cursor().shape() == Qt::IBeamCursor)
            shape = PointerShape::kText;
    });
    return shape;
}

void Activate(BWindow* window, bool active) {
    QFocusEvent event(active ? QEvent::FocusIn : QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    Send(window, event);
}

void ResizeByUser(BWindow* window, float width, float height) {
    WithNative(window, [&](NativeWindow& native) {
        native.resize(static_cast<int>(width) + 1, static_cast<int>(height) + 1);
    });
}

void CloseByUser(BWindow* window) {
    QCloseEvent event;
    Send(window, event);
}

bool MenuIsOpen() {
    bool open = false;
    Call([&] { open = OpenMenu::Current() != nullptr; });
    return open;
}

std::vector<std::string> MenuLabels() {
    std::vector<std::string> labels;
    Call([&] {
        if (const OpenMenu* menu = OpenMenu::Current())
            labels = menu->Labels();
    });
    return labels;
}

BRect MenuFrame() {
    BRect frame;
    Call([&] {
        if (const OpenMenu* menu = OpenMenu::Current()) {
            const QRect rect = menu->Frame();
            frame.Set(float(rect.left()), float(rect.top()), float(rect.right()),
                      float(rect.bottom()));
        }
    });
    return frame;
}

namespace {

bool WithLine(const std::string& path, const std::function<bool(OpenMenu&, QAction*)>& work) {
    bool result = false;
    Call([&] {
        OpenMenu* menu = OpenMenu::Current();
        QAction* action = menu != nullptr ? menu->Find(path) : nullptr;
        result = action != nullptr && work(*menu, action);
    });
    return result;
}

} // namespace

bool MenuLineIsMarked(const std::string& path) {
    return WithLine(path, [](OpenMenu&, const QAction* action) { return action->isChecked(); });
}

bool MenuLineIsEnabled(const std::string& path) {
    return WithLine(path, [](OpenMenu&, const QAction* action) { return action->isEnabled(); });
}

bool ChooseMenuLine(const std::string& path) {
    return WithLine(path, [](OpenMenu& menu, QAction* action) {
        if (!action->isEnabled() || action->data().toInt() <= 0)
            return false;
        if (action->menu() != nullptr)
            menu.Click(action);
        else
            menu.Choose(action);
        return OpenMenu::Current() != &menu;
    });
}

void DismissMenu() {
    Call([] { OpenMenu::Dismiss(); });
}

void PointAtTitle(int32 index) {
    Call([index] {
        if (OpenMenu* menu = OpenMenu::Current())
            menu->PointAt(index);
    });
}

void KeyInMenu(char byte) {
    Call([byte] {
        if (OpenMenu* menu = OpenMenu::Current())
            menu->Press(QtKeyOf(byte, 0));
    });
}

void RecordLaunches() {
    server::RecordLaunches();
}

std::vector<std::string> Launches() {
    return RecordedLaunches();
}

std::string PrimarySelection() {
    return server::PrimarySelection();
}

int32 CountServerWindows() {
    int32 count = 0;
    Call([&] { count = NativeWindow::CountWindows(); });
    return count;
}

} // namespace server::testing
