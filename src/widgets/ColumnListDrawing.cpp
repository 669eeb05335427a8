#include "widgets/ColumnListView.h"

#include <InterfaceDefs.h>
#include <Window.h>

#include <cmath>

namespace {

// Sooner than the selection itself, the row of a list that has not the keyboard.
rgb_color Faded(rgb_color color, rgb_color background) {
    const auto mix = [](uint8 a, uint8 b) { return static_cast<uint8>((a + b) / 2); };
    return {mix(color.red, background.red), mix(color.green, background.green),
            mix(color.blue, background.blue), 255};
}

} // namespace

void ColumnListView::Draw(BRect updateRect) {
    const int32 first = static_cast<int32>(updateRect.top / fRowHeight);
    const int32 last = static_cast<int32>(updateRect.bottom / fRowHeight);
    for (int32 i = first < 0 ? 0 : first; i <= last; i++) {
        CLVListItem* row = fRows.VisibleAt(i);
        if (row == nullptr)
            break;
        _DrawRow(row, _RowRect(i), updateRect);
    }
}

void ColumnListView::_SetRowColors(bool selected) {
    const rgb_color background = ui_color(B_LIST_BACKGROUND_COLOR);
    const bool active = IsFocus() && Window()->IsActive();
    if (!selected) {
        SetLowColor(background);
        SetHighColor(ui_color(B_LIST_ITEM_TEXT_COLOR));
    } else if (active) {
        SetLowColor(ui_color(B_LIST_SELECTED_BACKGROUND_COLOR));
        SetHighColor(ui_color(B_LIST_SELECTED_ITEM_TEXT_COLOR));
    } else {
        SetLowColor(Faded(ui_color(B_CONTROL_BORDER_COLOR), background));
        SetHighColor(ui_color(B_LIST_ITEM_TEXT_COLOR));
    }
}

void ColumnListView::_DrawRow(CLVListItem* row, BRect rect, BRect updateRect) {
    _SetRowColors(row == fSelected);
    if (row == fSelected)
        FillRect(rect, B_SOLID_LOW);
    float left = 0;
    for (const int32 column : fOrder) {
        const float width = fColumns[column].ShownWidth();
        const BRect cell(left, rect.top, left + width - 1, rect.bottom);
        left += width;
        if (width <= 0 || !cell.Intersects(updateRect))
            continue;
        if (fColumns[column].Is(CLVColumn::kExpander))
            _DrawExpander(row, cell);
        else
            row->DrawItemColumn(this, cell, column);
    }
}

void ColumnListView::_DrawExpander(CLVListItem* row, BRect cell) {
    if (!row->IsSuperitem())
        return;
    const float x = floorf((cell.left + cell.right) / 2);
    const float y = floorf((cell.top + cell.bottom) / 2);
    if (row->IsExpanded())
        FillTriangle(BPoint(x - 4, y - 2), BPoint(x + 4, y - 2), BPoint(x, y + 3));
    else
        FillTriangle(BPoint(x - 2, y - 4), BPoint(x - 2, y + 4), BPoint(x + 3, y));
}
