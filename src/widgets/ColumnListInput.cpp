#include "widgets/ColumnListView.h"

#include "widgets/MenuKey.h"

#include <InterfaceDefs.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>

bool ColumnListView::_IsOnExpander(const CLVListItem* row, BPoint where) const {
    if (!row->IsSuperitem())
        return false;
    for (int32 column = 0; column < CountColumns(); column++) {
        const float left = ColumnLeft(column);
        if (fColumns[column].Is(CLVColumn::kExpander) && where.x >= left &&
            where.x < left + fColumns[column].width)
            return true;
    }
    return false;
}

void ColumnListView::MouseDown(BPoint where) {
    if (!IsFocus())
        MakeFocus(true);
    CLVListItem* row = _RowAt(where);
    _Select(row);
    int32 clicks = 1;
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    if (BMessage* message = Window()->CurrentMessage()) {
        message->FindInt32("clicks", &clicks);
        message->FindInt32("buttons", &buttons);
    }
    if (row == nullptr || !row->IsSuperitem() || (buttons & B_PRIMARY_MOUSE_BUTTON) == 0)
        return;
    if (_IsOnExpander(row, where) || clicks % 2 == 0)
        SetExpanded(row, !row->IsExpanded());
}

int32 ColumnListView::_RowsOnPage() const {
    return std::max<int32>(1, static_cast<int32>((Bounds().Height() + 1) / fRowHeight) - 1);
}

void ColumnListView::_MoveSelection(int32 index) {
    const int32 count = fRows.CountVisible();
    if (count == 0)
        return;
    _Select(fRows.VisibleAt(std::clamp<int32>(index, 0, count - 1)));
    ScrollToSelection();
}

// Right opens a row or steps into it, Left closes it or steps out.
void ColumnListView::_PressArrow(char key) {
    if (fSelected == nullptr)
        return;
    const bool opens = key == B_RIGHT_ARROW;
    if (fSelected->IsSuperitem() && fSelected->IsExpanded() != opens) {
        SetExpanded(fSelected, opens);
    } else if (opens && fSelected->IsSuperitem()) {
        _MoveSelection(fRows.VisibleIndexOf(fSelected) + 1);
    } else if (!opens && fRows.Superitem(fSelected) != nullptr) {
        _Select(fRows.Superitem(fSelected));
        ScrollToSelection();
    }
}

void ColumnListView::KeyDown(const char* bytes, int32 numBytes) {
    const int32 selection = fSelected != nullptr ? fRows.VisibleIndexOf(fSelected) : -1;
    // What can't be seen is not acted on.
    const int32 row = selection >= 0 ? FullListCurrentSelection() : -1;
    if (IsMenuKey(Window()->CurrentMessage())) {
        if (row >= 0)
            OpenRowMenu(row, SelectionOnScreen());
        else
            OpenHeaderMenu(ConvertToScreen(Bounds().LeftTop()));
        return;
    }
    switch (bytes[0]) {
    case B_UP_ARROW: _MoveSelection(selection - 1); break;
    case B_DOWN_ARROW: _MoveSelection(selection + 1); break;
    case B_HOME: _MoveSelection(0); break;
    case B_END: _MoveSelection(fRows.CountVisible() - 1); break;
    case B_PAGE_UP: _MoveSelection(selection - _RowsOnPage()); break;
    case B_PAGE_DOWN: _MoveSelection(selection + _RowsOnPage()); break;
    case B_LEFT_ARROW:
    case B_RIGHT_ARROW: _PressArrow(bytes[0]); break;
    case B_ENTER:
    case B_SPACE:
        if (fSelected != nullptr && fSelected->IsSuperitem())
            SetExpanded(fSelected, !fSelected->IsExpanded());
        else if (row >= 0)
            InvokeRow(row);
        break;
    default: BView::KeyDown(bytes, numBytes);
    }
}
