#include "widgets/ColumnListView.h"

#include "widgets/CLVColumnLabelView.h"

#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
// Sent to ourselves when rows were added: what follows from many of them is done once.
constexpr uint32 kMsgContentChanged = 'clCC';
} // namespace

ColumnListView::ColumnListView(BRect frame, const char* name, Hierarchy hierarchy)
    : BView(frame, name, B_FOLLOW_ALL_SIDES,
            B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_NAVIGABLE_JUMP),
      fRows(hierarchy == Hierarchy::kOutline) {}

ColumnListView::~ColumnListView() = default;

void ColumnListView::AttachedToWindow() {
    BView::AttachedToWindow();
    SetViewColor(ui_color(B_LIST_BACKGROUND_COLOR));
    font_height height;
    GetFontHeight(&height);
    fRowHeight = std::max(CLVListItem::kLeastHeight, ceilf(height.ascent + height.descent) + 4);
    _UpdateScrollBars();
}

void ColumnListView::AddItem(CLVListItem* row) {
    fRows.Add(row);
    _ContentChanged();
}

void ColumnListView::_ContentChanged() {
    if (fContentIsStale || Window() == nullptr)
        return;
    fContentIsStale = true;
    Window()->PostMessage(kMsgContentChanged, this);
}

void ColumnListView::MakeEmpty() {
    fSelected = nullptr;
    fRows.MakeEmpty();
    ScrollTo(BPoint(Bounds().left, 0));
    Invalidate();
    _UpdateScrollBars();
}

void ColumnListView::SetExpanded(CLVListItem* row, bool expanded) {
    if (!row->IsSuperitem() || row->IsExpanded() == expanded)
        return;
    fRows.SetExpanded(row, expanded);
    if (fSelected != nullptr)
        fSelected = fRows.VisibleAncestor(fSelected);
    Invalidate();
    _UpdateScrollBars();
}

// What was in the middle is elsewhere now: the selected row comes into sight, or the first one.
void ColumnListView::SetFilter(RowList::Filter filter) {
    fRows.SetFilter(std::move(filter));
    _UpdateScrollBars();
    if (fSelected != nullptr && IsShown(fSelected))
        ScrollToSelection();
    else
        ScrollTo(BPoint(Bounds().left, 0));
    Invalidate();
}

void ColumnListView::RowChanged(const CLVListItem* row) {
    fRows.RowChanged();
    InvalidateItem(row);
}

void ColumnListView::FinishAdding() {
    fContentIsStale = false;
    Invalidate();
    _UpdateScrollBars();
}

void ColumnListView::InvalidateItem(const CLVListItem* row) {
    const int32 index = fRows.VisibleIndexOf(row);
    if (index >= 0)
        Invalidate(_RowRect(index));
}

BRect ColumnListView::_RowRect(int32 index) const {
    const BRect bounds = Bounds();
    const float top = static_cast<float>(index) * fRowHeight;
    return BRect(bounds.left, top, bounds.right, top + fRowHeight - 1);
}

CLVListItem* ColumnListView::_RowAt(BPoint where) {
    return where.y < 0 ? nullptr : fRows.VisibleAt(static_cast<int32>(where.y / fRowHeight));
}

int32 ColumnListView::FullListIndexOf(BPoint where) {
    CLVListItem* row = _RowAt(where);
    return row != nullptr ? fRows.FullIndexOf(row) : -1;
}

int32 ColumnListView::FullListCurrentSelection() {
    return fSelected != nullptr ? fRows.FullIndexOf(fSelected) : -1;
}

void ColumnListView::FullListSelect(int32 index) {
    _Select(fRows.FullAt(index));
}

void ColumnListView::_Select(CLVListItem* row) {
    if (row == fSelected)
        return;
    if (fSelected != nullptr)
        InvalidateItem(fSelected);
    fSelected = row;
    if (row != nullptr)
        InvalidateItem(row);
}

void ColumnListView::SelectShown() {
    if (fSelected == nullptr || !IsShown(fSelected))
        _Select(fRows.VisibleAt(0));
    ScrollToSelection();
}

void ColumnListView::ScrollToSelection() {
    const int32 index = fSelected != nullptr ? fRows.VisibleIndexOf(fSelected) : -1;
    if (index < 0)
        return;
    const BRect bounds = Bounds();
    const BRect row = _RowRect(index);
    if (row.top < bounds.top)
        ScrollTo(BPoint(bounds.left, row.top));
    else if (row.bottom > bounds.bottom)
        ScrollTo(BPoint(bounds.left, row.bottom - bounds.Height()));
}

BPoint ColumnListView::SelectionOnScreen() {
    const int32 index = fSelected != nullptr ? fRows.VisibleIndexOf(fSelected) : -1;
    const BRect row = _RowRect(std::max<int32>(index, 0));
    return ConvertToScreen(BPoint(row.left + 24, row.bottom));
}

void ColumnListView::InvokeRow(int32) {}

void ColumnListView::OpenRowMenu(int32, BPoint) {}

void ColumnListView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgContentChanged: FinishAdding(); break;
    case kMsgToggleColumn: _ToggleColumn(message); break;
    default: BView::MessageReceived(message);
    }
}

void ColumnListView::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    _UpdateScrollBars();
}

void ColumnListView::WindowActivated(bool active) {
    BView::WindowActivated(active);
    if (fSelected != nullptr)
        InvalidateItem(fSelected);
}

void ColumnListView::MakeFocus(bool focus) {
    BView::MakeFocus(focus);
    if (fSelected != nullptr)
        InvalidateItem(fSelected);
    if (Parent() != nullptr)
        Parent()->Invalidate();
}

void ColumnListView::ScrollTo(BPoint where) {
    BView::ScrollTo(where);
    if (fHeader != nullptr)
        fHeader->ScrollTo(BPoint(Bounds().left, 0));
}

void ColumnListView::_UpdateScrollBars() {
    float width = 0;
    for (const CLVColumn& column : fColumns)
        width += column.ShownWidth();
    const float height = static_cast<float>(fRows.CountVisible()) * fRowHeight;
    const auto update = [](BScrollBar* bar, float content, float visible, float step) {
        if (bar == nullptr)
            return;
        bar->SetRange(0, std::max(0.0F, content - visible));
        bar->SetProportion(content > 0 ? std::min(1.0F, visible / content) : 1.0F);
        bar->SetSteps(step, std::max(step, visible - step));
    };
    const BRect bounds = Bounds();
    update(ScrollBar(B_HORIZONTAL), width, bounds.Width() + 1, 20);
    update(ScrollBar(B_VERTICAL), height, bounds.Height() + 1, fRowHeight);
}
