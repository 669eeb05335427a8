#pragma once

#include "server/MenuServer.h"

#include <QMenu>
#include <QPointer>

#include <string>
#include <vector>

namespace server {

// The one native menu that may be open, built from a snapshot. Server thread only.
class OpenMenu : public QObject {
public:
    static OpenMenu* Current();
    static void Show(MenuRequest request, QWindow* owner);
    static void Dismiss();

    void Update(const MenuSnapshot& menu);

    // For tests
    std::vector<std::string> Labels() const;
    QRect Frame() const;
    QAction* Find(const std::string& path) const;
    void Choose(const QAction* action);
    void Click(QAction* action); // at the top level
    void PointAt(int32 title);
    void Press(int key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    OpenMenu(MenuRequest request, QWindow* owner);

    void _Fill(QMenu* menu, const MenuSnapshot& lines);
    void _AddLine(QMenu* menu, const MenuLine& line);
    void _Apply(QMenu* menu, const MenuSnapshot& lines);
    void _Pop();
    void _Finish(const MenuOutcome& outcome);
    bool _IsPointingElsewhere(const QPoint& global);
    void _GoToTitle(int32 title, bool byKey);
    void _Step(int32 direction);
    bool _KeyLeavesMenu(const QKeyEvent* event);
    bool _KeepsOpen(const QPoint& global) const;
    bool _ChoosesSubmenu(const QAction* action);
    bool _ClickChooses(const QMenu* menu, const QMouseEvent* event);
    bool _KeyChooses(const QMenu* menu, const QKeyEvent* event);

    MenuRequest fRequest;
    QMenu fMenu;
    QPointer<QWindow> fOwner;
    const QAction* fPressed = nullptr; // only compared
    bool fFinished = false;
};

} // namespace server
