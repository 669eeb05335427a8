#include "widgets/CLVListItem.h"

#include <Bitmap.h>
#include <Font.h>
#include <String.h>
#include <View.h>

#include <cmath>

namespace {
constexpr float kTextInset = 3;
}

CLVEasyItem::Cell& CLVEasyItem::_CellAt(int32 column) {
    if (column >= static_cast<int32>(fCells.size()))
        fCells.resize(column + 1);
    return fCells[column];
}

void CLVEasyItem::SetColumnContent(int32 column, const char* text, alignment align, bool truncate) {
    Cell& cell = _CellAt(column);
    cell = Cell();
    if (text == nullptr)
        return;
    cell.kind = Cell::Kind::kText;
    cell.text = text;
    cell.align = align;
    cell.truncate = truncate;
}

void CLVEasyItem::SetColumnContent(int32 column, const BBitmap* bitmap, float horizontalOffset) {
    Cell& cell = _CellAt(column);
    cell = Cell();
    if (bitmap == nullptr)
        return;
    cell.kind = Cell::Kind::kBitmap;
    cell.bitmap = bitmap;
    cell.offset = horizontalOffset;
}

const char* CLVEasyItem::ColumnText(int32 column) const {
    const bool isText = column >= 0 && column < static_cast<int32>(fCells.size()) &&
                        fCells[column].kind == Cell::Kind::kText;
    return isText ? fCells[column].text.c_str() : nullptr;
}

const BBitmap* CLVEasyItem::GetColumnContentBitmap(int32 column) const {
    return column >= 0 && column < static_cast<int32>(fCells.size()) ? fCells[column].bitmap
                                                                     : nullptr;
}

void CLVEasyItem::DrawItemColumn(BView* owner, BRect rect, int32 column) {
    if (column >= static_cast<int32>(fCells.size()))
        return;
    const Cell& cell = fCells[column];
    if (cell.kind == Cell::Kind::kText)
        _DrawText(owner, rect, cell);
    if (cell.kind != Cell::Kind::kBitmap)
        return;
    const BRect bounds = cell.bitmap->Bounds();
    const float top = rect.top + floorf((rect.Height() - bounds.Height()) / 2);
    owner->SetDrawingMode(B_OP_OVER);
    owner->DrawBitmap(cell.bitmap, BPoint(rect.left + cell.offset, top));
    owner->SetDrawingMode(B_OP_COPY);
}

void CLVEasyItem::DrawText(BView* owner, BRect rect, const char* text, alignment align) {
    Cell cell;
    cell.text = text;
    cell.align = align;
    _DrawText(owner, rect, cell);
}

void CLVEasyItem::_DrawText(BView* owner, BRect rect, const Cell& cell) {
    // Text that stands at the right may use the cell up to its left edge: numbers need it.
    const float leftInset = cell.align == B_ALIGN_RIGHT ? 0 : kTextInset;
    const float room = rect.Width() + 1 - leftInset - kTextInset;
    if (room <= 0 || cell.text.empty())
        return;
    // A list cell is one line: the line feed that a date's text ends with is not drawn.
    BString text(cell.text.c_str(), static_cast<int32>(cell.text.find_last_not_of('\n') + 1));
    float width = owner->StringWidth(text.String());
    if (cell.truncate && width > room) {
        owner->TruncateString(&text, B_TRUNCATE_END, room);
        width = owner->StringWidth(text.String());
    }
    font_height height;
    owner->GetFontHeight(&height);
    float left = rect.left + kTextInset;
    if (cell.align == B_ALIGN_RIGHT)
        left = rect.right + 1 - kTextInset - width;
    else if (cell.align == B_ALIGN_CENTER)
        left = rect.left + (rect.Width() - width) / 2;
    const float textHeight = height.ascent + height.descent;
    const float baseline = rect.top + floorf((rect.Height() + 1 - textHeight) / 2 + height.ascent);
    owner->DrawString(text.String(), BPoint(floorf(left), baseline));
}
