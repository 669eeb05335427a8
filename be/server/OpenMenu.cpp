#include "server/OpenMenu.h"

#include "interface/fonts/Typeface.h"
#include "server/NativeWindow.h"

#include <InterfaceDefs.h>

#include <QActionGroup>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QProxyStyle>

#include <cmath>
#include <utility>

namespace server {

namespace {

OpenMenu* sCurrent = nullptr;

// "&" marks a key in Qt's labels, and a tab begins the shortcut.
QString Escaped(const std::string& text) {
    QString label = QString::fromStdString(text);
    label.replace(QLatin1Char('&'), QLatin1String("&&"));
    label.replace(QLatin1Char('\t'), QLatin1Char(' '));
    return label;
}

QString LabelOf(const MenuLine& line) {
    const QString label = Escaped(line.label);
    return line.shortcut.empty() ? label : label + QLatin1Char('\t') + Escaped(line.shortcut);
}

std::string PlainLabel(const QAction* action) {
    if (action->isSeparator())
        return "-";
    QString label = action->text().section(QLatin1Char('\t'), 0, 0);
    label.replace(QLatin1String("&&"), QLatin1String("&"));
    return label.toStdString();
}

QPoint PointOf(BPoint point) {
    return QPoint(static_cast<int>(std::lround(point.x)), static_cast<int>(std::lround(point.y)));
}

bool Contains(BRect rect, const QPoint& point) {
    return rect.IsValid() &&
           rect.Contains(BPoint(static_cast<float>(point.x()), static_cast<float>(point.y())));
}

QColor UiColor(color_which which) {
    const rgb_color color = ui_color(which);
    return QColor(color.red, color.green, color.blue);
}

// The colours of the controls that menus open over.
QPalette MenuPalette() {
    QPalette palette;
    const QColor background = UiColor(B_MENU_BACKGROUND_COLOR);
    const QColor text = UiColor(B_MENU_ITEM_TEXT_COLOR);
    palette.setColor(QPalette::Window, background);
    palette.setColor(QPalette::Base, background);
    palette.setColor(QPalette::Button, background);
    palette.setColor(QPalette::Highlight, UiColor(B_MENU_SELECTED_BACKGROUND_COLOR));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, QColor(0x9a, 0xa1, 0xa9));
    }
    palette.setColor(QPalette::HighlightedText, UiColor(B_MENU_SELECTED_ITEM_TEXT_COLOR));
    return palette;
}

// Menus of hundreds of lines scroll instead of growing past the screen, and typing goes to a line.
class MenuStyle : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        return hint == SH_Menu_Scrollable || hint == SH_Menu_KeyboardSearch
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

void UseLook(QMenu* menu) {
    static MenuStyle* const sStyle = new MenuStyle;
    menu->setStyle(sStyle);
    menu->setPalette(MenuPalette());
    menu->setFont(Typeface::MenuFont());
}

void ApplyState(QAction* action, const MenuLine& line) {
    action->setText(LabelOf(line));
    action->setEnabled(line.enabled);
    action->setCheckable(line.marked || line.radio);
    action->setChecked(line.marked);
}

} // namespace

OpenMenu* OpenMenu::Current() {
    return sCurrent;
}

void OpenMenu::Show(MenuRequest request, QWindow* owner) {
    Dismiss();
    sCurrent = new OpenMenu(std::move(request), owner);
    sCurrent->_Pop();
}

void OpenMenu::Dismiss() {
    if (sCurrent != nullptr)
        sCurrent->_Finish(MenuOutcome());
}

OpenMenu::OpenMenu(MenuRequest request, QWindow* owner)
    : fRequest(std::move(request)), fOwner(owner) {
    UseLook(&fMenu);
    _Fill(&fMenu, fRequest.menu);
    fMenu.installEventFilter(this);
    QObject::connect(&fMenu, &QMenu::triggered, this,
                     [this](const QAction* action) { Choose(action); });
    QObject::connect(&fMenu, &QMenu::aboutToHide, this, [this] {
        // A choice is told after the menu has begun to hide.
        QMetaObject::invokeMethod(
            this, [this] { _Finish(MenuOutcome()); }, Qt::QueuedConnection);
    });
}

void OpenMenu::_Fill(QMenu* menu, const MenuSnapshot& lines) {
    for (const MenuLine& line : lines)
        _AddLine(menu, line);
}

void OpenMenu::_AddLine(QMenu* menu, const MenuLine& line) {
    if (line.separator) {
        menu->addSeparator();
        return;
    }
    QAction* action = nullptr;
    if (line.hasSubmenu) {
        QMenu* submenu = menu->addMenu(LabelOf(line));
        UseLook(submenu);
        submenu->installEventFilter(this);
        _Fill(submenu, line.submenu);
        action = submenu->menuAction();
    } else {
        action = menu->addAction(LabelOf(line));
    }
    action->setData(line.token);
    if (line.radio) {
        auto* group = new QActionGroup(menu);
        group->addAction(action);
        group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    }
    ApplyState(action, line);
}

void OpenMenu::_Apply(QMenu* menu, const MenuSnapshot& lines) {
    const QList<QAction*> actions = menu->actions();
    for (qsizetype i = 0; i < actions.size() && i < qsizetype(lines.size()); i++) {
        const MenuLine& line = lines[static_cast<size_t>(i)];
        if (line.separator || actions[i]->isSeparator())
            continue;
        ApplyState(actions[i], line);
        if (line.hasSubmenu && actions[i]->menu() != nullptr)
            _Apply(actions[i]->menu(), line.submenu);
    }
}

void OpenMenu::Update(const MenuSnapshot& menu) {
    _Apply(&fMenu, menu);
}

void OpenMenu::_Pop() {
    if (fOwner != nullptr) {
        fMenu.winId();
        if (QWindow* window = fMenu.windowHandle())
            window->setTransientParent(fOwner);
    }
    const QList<QAction*> actions = fMenu.actions();
    QAction* at = fRequest.selected >= 0 ? actions.value(fRequest.selected) : nullptr;
    fMenu.popup(PointOf(fRequest.where), at);
    if (at != nullptr)
        fMenu.setActiveAction(at);
    else if (fRequest.selectFirst)
        fMenu.setActiveAction(actions.value(0));
}

void OpenMenu::_Finish(const MenuOutcome& outcome) {
    if (fFinished)
        return;
    fFinished = true;
    if (sCurrent == this)
        sCurrent = nullptr;
    fMenu.removeEventFilter(this);
    fMenu.close();
    if (fRequest.done)
        fRequest.done(outcome);
    // Only where no other menu follows does the window get its keyboard back.
    if (outcome.kind != MenuOutcome::Kind::kTitle) {
        if (auto* owner = dynamic_cast<NativeWindow*>(fOwner.data()))
            owner->MenuClosed();
    }
    deleteLater();
}

bool OpenMenu::_IsPointingElsewhere(const QPoint& global) {
    for (size_t i = 0; i < fRequest.titles.size(); i++) {
        if (static_cast<int32>(i) == fRequest.currentTitle || !Contains(fRequest.titles[i], global))
            continue;
        PointAt(static_cast<int32>(i));
        return true;
    }
    return false;
}

// Left and Right at the top level step through the titles of a menu bar.
bool OpenMenu::_KeyLeavesMenu(const QKeyEvent* event) {
    if (fRequest.titles.empty())
        return false;
    const QAction* active = fMenu.activeAction();
    const bool opensSubmenu = active != nullptr && active->menu() != nullptr && active->isEnabled();
    if (event->key() == Qt::Key_Left)
        _Step(-1);
    else if (event->key() == Qt::Key_Right && !opensSubmenu)
        _Step(1);
    else
        return false;
    return true;
}

bool OpenMenu::_KeepsOpen(const QPoint& global) const {
    if (fMenu.geometry().contains(global))
        return false;
    if (Contains(fRequest.openRect, global))
        return true;
    for (const BRect& title : fRequest.titles) {
        if (Contains(title, global))
            return true;
    }
    return false;
}

// Qt only opens what lies below a line with a submenu, where a click, Enter or Space may choose it
// too.
bool OpenMenu::_ChoosesSubmenu(const QAction* action) {
    if (action == nullptr || action->menu() == nullptr || !action->isEnabled() ||
        action->data().toInt() <= 0)
        return false;
    Choose(action);
    return true;
}

bool OpenMenu::_ClickChooses(const QMenu* menu, const QMouseEvent* event) {
    const QAction* action = menu->actionAt(event->position().toPoint());
    return action == std::exchange(fPressed, nullptr) && _ChoosesSubmenu(action);
}

bool OpenMenu::_KeyChooses(const QMenu* menu, const QKeyEvent* event) {
    const int key = event->key();
    return (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) &&
           _ChoosesSubmenu(menu->activeAction());
}

bool OpenMenu::eventFilter(QObject* watched, QEvent* event) {
    const QMenu* menu = qobject_cast<QMenu*>(watched);
    if (menu == nullptr) // a submenu that is being destroyed
        return false;
    switch (event->type()) {
    case QEvent::MouseMove:
        return _IsPointingElsewhere(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
    case QEvent::MouseButtonRelease:
        return _ClickChooses(menu, static_cast<QMouseEvent*>(event)) ||
               _KeepsOpen(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
    case QEvent::MouseButtonPress: {
        fPressed = menu->actionAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        // A press on the open menu's own title closes it; Qt would pass the press on and open it
        // again.
        const QPoint global = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        const size_t title = static_cast<size_t>(fRequest.currentTitle);
        if (fRequest.currentTitle < 0 || title >= fRequest.titles.size() ||
            !Contains(fRequest.titles[title], global))
            return false;
        _Finish(MenuOutcome());
        return true;
    }
    case QEvent::KeyPress:
        return _KeyChooses(menu, static_cast<QKeyEvent*>(event)) ||
               (menu == &fMenu && _KeyLeavesMenu(static_cast<QKeyEvent*>(event)));
    default: return false;
    }
}

void OpenMenu::PointAt(int32 title) {
    _GoToTitle(title, false);
}

void OpenMenu::Press(int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&fMenu, &event);
}

void OpenMenu::_GoToTitle(int32 title, bool byKey) {
    if (fRequest.titles.empty())
        return;
    MenuOutcome outcome;
    outcome.kind = MenuOutcome::Kind::kTitle;
    outcome.title = title;
    outcome.byKey = byKey;
    _Finish(outcome);
}

void OpenMenu::_Step(int32 direction) {
    const int32 count = static_cast<int32>(fRequest.titles.size());
    if (count > 0)
        _GoToTitle((fRequest.currentTitle + direction + count) % count, true);
}

namespace {

void AddLabels(const QMenu& menu, const std::string& prefix, std::vector<std::string>& labels) {
    for (const QAction* action : menu.actions()) {
        labels.push_back(prefix + PlainLabel(action));
        if (action->menu() != nullptr)
            AddLabels(*action->menu(), labels.back() + "/", labels);
    }
}

QAction* FindIn(const QMenu& menu, const std::string& prefix, const std::string& path) {
    for (QAction* action : menu.actions()) {
        const std::string label = prefix + PlainLabel(action);
        if (label == path)
            return action;
        if (action->menu() == nullptr)
            continue;
        if (QAction* found = FindIn(*action->menu(), label + "/", path))
            return found;
    }
    return nullptr;
}

} // namespace

std::vector<std::string> OpenMenu::Labels() const {
    std::vector<std::string> labels;
    AddLabels(fMenu, "", labels);
    return labels;
}

QRect OpenMenu::Frame() const {
    return fMenu.geometry();
}

QAction* OpenMenu::Find(const std::string& path) const {
    return FindIn(fMenu, "", path);
}

void OpenMenu::Choose(const QAction* action) {
    MenuOutcome outcome;
    outcome.kind = MenuOutcome::Kind::kChosen;
    outcome.token = action->data().toInt();
    _Finish(outcome);
}

void OpenMenu::Click(QAction* action) {
    const QPointF where = fMenu.actionGeometry(action).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, where, fMenu.mapToGlobal(where), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
        QCoreApplication::sendEvent(&fMenu, &event);
    }
}

} // namespace server
