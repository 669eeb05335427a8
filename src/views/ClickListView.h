#pragma once

#include "widgets/ColumnListView.h"

// How the user chooses a row: with one click, or with two.
enum click_mode { kSingleClick = 1, kDoubleClick = 2 };

class BrowserWindow;

// What the board list and the thread list share: a row is chosen by a click (a press shorter than a
// double click's time), by a double click or by the Enter key; the secondary button or the Menu key
// open its menu.
class ClickListView : public ColumnListView {
public:
    using ColumnListView::ColumnListView;

    void SetClickMode(click_mode mode) { fClickMode = mode; }

    void MouseDown(BPoint where) override;
    void MouseUp(BPoint where) override;
    void MakeEmpty() override;
    void InvokeRow(int32 index) override { RowChosen(index); }
    void OpenRowMenu(int32 index, BPoint screen) override { OpenPopUpMenu(index, screen); }

protected:
    virtual void RowChosen(int32 index) = 0;
    virtual void OpenPopUpMenu(int32 index, BPoint screen) = 0;

    // The window of a list that stands in one of the program's; null elsewhere.
    BrowserWindow* Browser() const;
    // Opens the menu at a point of the screen; it deletes itself when it has closed.
    static void ShowMenu(class BPopUpMenu* menu, BPoint screen);

private:
    click_mode fClickMode = kDoubleClick;
    int32 fLastPressed = -1;                  // full index of the row under the last press
    const CLVListItem* fPressedRow = nullptr; // borrowed; null when it has gone
    bigtime_t fPressTime = -1; // of the last press of the primary button; −1 when none is pending
};
