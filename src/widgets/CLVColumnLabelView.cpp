#include "widgets/CLVColumnLabelView.h"

#include "widgets/ColumnListView.h"

#include <Cursor.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <String.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {
constexpr float kGripReach = 4; // pixels on either side of a grip that take hold of it
constexpr float kDragStart = 5; // pixels the pointer moves before a press becomes a drag
constexpr float kInset = 3;
constexpr float kArrowRoom = 7;
} // namespace

CLVColumnLabelView::CLVColumnLabelView(BRect frame, ColumnListView* list)
    : BView(frame, "labels", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, B_WILL_DRAW), fList(list) {}

void CLVColumnLabelView::AttachedToWindow() {
    BView::AttachedToWindow();
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    SetLowColor(ViewColor());
}

float CLVColumnLabelView::_RightOf(int32 column) const {
    return fList->ColumnLeft(column) + fList->ColumnAt(column).ShownWidth();
}

int32 CLVColumnLabelView::_ColumnAt(float x) const {
    for (int32 column = 0; column < fList->CountColumns(); column++) {
        if (x >= fList->ColumnLeft(column) && x < _RightOf(column))
            return column;
    }
    return -1;
}

int32 CLVColumnLabelView::_GripAt(float x) const {
    for (int32 column = 0; column < fList->CountColumns(); column++) {
        const CLVColumn& info = fList->ColumnAt(column);
        if (info.isShown && !info.Is(CLVColumn::kNotResizable) &&
            fabsf(x - _RightOf(column)) <= kGripReach)
            return column;
    }
    return -1;
}

void CLVColumnLabelView::Draw(BRect updateRect) {
    const BRect bounds = Bounds();
    for (int32 column = 0; column < fList->CountColumns(); column++) {
        const BRect rect(fList->ColumnLeft(column), bounds.top, _RightOf(column) - 1,
                         bounds.bottom);
        if (fList->ColumnAt(column).isShown && rect.Intersects(updateRect))
            _DrawLabel(column, rect);
    }
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeLine(bounds.LeftBottom(), bounds.RightBottom());
}

void CLVColumnLabelView::_DrawLabel(int32 column, BRect rect) {
    const CLVColumn& info = fList->ColumnAt(column);
    if (fHold == Hold::kMove && column == fColumn) {
        SetHighColor(tint_color(ViewColor(), B_DARKEN_1_TINT));
        FillRect(rect);
    }
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeLine(BPoint(rect.right, rect.top + 5), BPoint(rect.right, rect.bottom - 5));
    const bool sorts = info.sortMode != CLVSortMode::kNone;
    const float room = rect.Width() - 2 * kInset - (sorts ? kArrowRoom : 0);
    BString label(info.label.c_str());
    if (room > 0) {
        if (StringWidth(label.String()) > room)
            TruncateString(&label, B_TRUNCATE_END, room);
        font_height height;
        GetFontHeight(&height);
        const float textHeight = height.ascent + height.descent;
        SetHighColor(ui_color(B_PANEL_TEXT_COLOR));
        SetLowColor(ViewColor());
        DrawString(
            label.String(),
            BPoint(rect.left + kInset, floorf((rect.Height() - textHeight) / 2 + height.ascent)));
    }
    if (sorts)
        _DrawSortArrow(rect, info.sortMode == CLVSortMode::kAscending);
}

void CLVColumnLabelView::_DrawSortArrow(BRect rect, bool ascending) {
    const float x = floorf(rect.right - 5);
    const float y = floorf((rect.top + rect.bottom) / 2);
    if (rect.Width() < kArrowRoom)
        return;
    SetHighColor(ui_color(B_CONTROL_MARK_COLOR));
    if (ascending)
        FillTriangle(BPoint(x - 3, y + 2), BPoint(x + 3, y + 2), BPoint(x, y - 2));
    else
        FillTriangle(BPoint(x - 3, y - 2), BPoint(x + 3, y - 2), BPoint(x, y + 2));
}

void CLVColumnLabelView::MouseDown(BPoint where) {
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    if (BMessage* message = Window()->CurrentMessage())
        message->FindInt32("buttons", &buttons);
    if ((buttons & B_SECONDARY_MOUSE_BUTTON) != 0) {
        fList->OpenHeaderMenu(ConvertToScreen(where));
        return;
    }
    const int32 grip = _GripAt(where.x);
    fColumn = grip >= 0 ? grip : _ColumnAt(where.x);
    if (fColumn < 0)
        return;
    fHold = grip >= 0 ? Hold::kGrip : Hold::kLabel;
    fStart = where.x;
    fStartWidth = fList->ColumnWidth(fColumn);
    SetMouseEventMask(B_POINTER_EVENTS, B_LOCK_WINDOW_FOCUS);
}

void CLVColumnLabelView::MouseMoved(BPoint where, uint32, const BMessage*) {
    switch (fHold) {
    case Hold::kNothing: {
        static const BCursor sResize(B_CURSOR_ID_RESIZE_EAST_WEST);
        SetViewCursor(_GripAt(where.x) >= 0 ? &sResize : B_CURSOR_SYSTEM_DEFAULT);
        break;
    }
    case Hold::kGrip: fList->SetColumnWidth(fColumn, fStartWidth + where.x - fStart); break;
    case Hold::kLabel:
        if (fabsf(where.x - fStart) < kDragStart)
            break;
        fHold = Hold::kMove;
        [[fallthrough]];
    case Hold::kMove: _MoveColumn(fColumn, where.x); break;
    }
}

void CLVColumnLabelView::MouseUp(BPoint) {
    if (fHold == Hold::kLabel && fList->ColumnAt(fColumn).Is(CLVColumn::kSortable))
        _Sort(fColumn);
    fHold = Hold::kNothing;
    fColumn = -1;
    Invalidate();
}

void CLVColumnLabelView::_Sort(int32 column) {
    const bool ascending = fList->ColumnAt(column).sortMode == CLVSortMode::kAscending;
    fList->SetSortMode(column, ascending ? CLVSortMode::kDescending : CLVSortMode::kAscending);
}

// Puts the held column where the pointer is, once that is past the middle of another.
void CLVColumnLabelView::_MoveColumn(int32 column, float x) {
    const int32 other = _ColumnAt(x);
    if (other < 0 || other == column)
        return;
    const float middle = fList->ColumnLeft(other) + fList->ColumnWidth(other) / 2;
    const bool toTheRight = fList->ColumnLeft(other) > fList->ColumnLeft(column);
    if (toTheRight ? x < middle : x > middle)
        return;
    std::vector<int32> order(fList->CountColumns());
    fList->GetDisplayOrder(order.data());
    std::erase(order, column);
    const auto at = std::find(order.begin(), order.end(), other);
    order.insert(toTheRight ? at + 1 : at, column);
    fList->SetDisplayOrder(order);
}
