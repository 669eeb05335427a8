// The columns of a list: their widths, their order, which of them are shown and which sorts.
#include "widgets/ColumnListView.h"

#include "widgets/CLVColumnLabelView.h"

#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
constexpr float kMenuReach = 5; // pixels around the click in which releasing keeps the menu open
} // namespace

void ColumnListView::AddColumn(const CLVColumn& column) {
    fOrder.push_back(CountColumns());
    fColumns.push_back(column);
    if (column.sortMode != CLVSortMode::kNone)
        SetSortMode(CountColumns() - 1, column.sortMode);
}

void ColumnListView::SetColumnWidth(int32 column, float width) {
    if (column < 0 || column >= CountColumns() || !std::isfinite(width))
        return;
    width = std::clamp(floorf(width), fColumns[column].minWidth, 10000.0F);
    if (width == fColumns[column].width)
        return;
    fColumns[column].width = width;
    ColumnWidthChanged(column, width);
}

void ColumnListView::ColumnWidthChanged(int32, float) {
    _ColumnsChanged();
}

void ColumnListView::_ColumnsChanged() {
    Invalidate();
    if (fHeader != nullptr)
        fHeader->Invalidate();
    _UpdateScrollBars();
}

void ColumnListView::ShowColumn(int32 column, bool isShown) {
    if (fColumns[column].isShown == isShown)
        return;
    fColumns[column].isShown = isShown;
    _ColumnsChanged();
}

void ColumnListView::OpenHeaderMenu(BPoint screen) {
    const auto isHideable = [](const CLVColumn& column) { return column.Is(CLVColumn::kHideable); };
    if (std::ranges::none_of(fColumns, isHideable))
        return;
    BPopUpMenu* menu = new BPopUpMenu("columns", false, false);
    for (int32 column = 0; column < CountColumns(); column++) {
        const CLVColumn& info = fColumns[column];
        BMessage* message = new BMessage(kMsgToggleColumn);
        message->AddInt32("column", column);
        BMenuItem* item =
            new BMenuItem((info.name.empty() ? info.label : info.name).c_str(), message);
        item->SetMarked(info.isShown);
        item->SetEnabled(isHideable(info));
        menu->AddItem(item);
    }
    menu->SetTargetForItems(this);
    menu->SetAsyncAutoDestruct(true);
    const BPoint reach(kMenuReach, kMenuReach);
    menu->Go(screen, true, true, BRect(screen - reach, screen + reach), true);
}

void ColumnListView::_ToggleColumn(const BMessage* message) {
    int32 column = -1;
    if (message->FindInt32("column", &column) == B_OK && column >= 0 && column < CountColumns() &&
        fColumns[column].Is(CLVColumn::kHideable))
        ShowColumn(column, !fColumns[column].isShown);
}

void ColumnListView::GetDisplayOrder(int32* order) const {
    std::copy(fOrder.begin(), fOrder.end(), order);
}

void ColumnListView::SetDisplayOrder(std::span<const int32> order) {
    std::vector<int32> columns(fOrder.size());
    std::iota(columns.begin(), columns.end(), 0);
    if (!std::is_permutation(columns.begin(), columns.end(), order.begin(), order.end()))
        return;
    fOrder.assign(order.begin(), order.end());
    Invalidate();
    if (fHeader != nullptr)
        fHeader->Invalidate();
}

float ColumnListView::ColumnLeft(int32 column) const {
    float left = 0;
    for (const int32 each : fOrder) {
        if (each == column)
            break;
        left += fColumns[each].ShownWidth();
    }
    return left;
}

void ColumnListView::SetSortMode(int32 column, CLVSortMode mode) {
    if (mode == CLVSortMode::kNone && column != SortKey())
        return;
    if (SortKey() >= 0 && SortKey() < CountColumns())
        fColumns[SortKey()].sortMode = CLVSortMode::kNone;
    fColumns[column].sortMode = mode;
    fRows.SetSortKey(mode == CLVSortMode::kNone ? -1 : column, mode);
    Invalidate();
    if (fHeader != nullptr)
        fHeader->Invalidate();
}
