// A list's items and which of them are selected.

#include <ListView.h>

#include <Message.h>
#include <Window.h>

#include <algorithm>

bool BListView::AddItem(BListItem* item) {
    return AddItem(item, CountItems());
}

bool BListView::AddItem(BListItem* item, int32 index) {
    if (item == nullptr || !fItems.AddItem(item, index))
        return false;
    if (Window() != nullptr) {
        BFont font;
        GetFont(&font);
        item->Update(this, &font);
    }
    _ItemsChanged(index);
    return true;
}

bool BListView::AddList(BList* items) {
    return AddList(items, CountItems());
}

bool BListView::AddList(BList* items, int32 index) {
    if (items == nullptr || !fItems.AddList(items, index))
        return false;
    BFont font;
    GetFont(&font);
    for (int32 i = 0; Window() != nullptr && i < items->CountItems(); i++)
        ItemAt(index + i)->Update(this, &font);
    _ItemsChanged(index);
    return true;
}

bool BListView::RemoveItem(BListItem* item) {
    return RemoveItem(IndexOf(item)) != nullptr;
}

BListItem* BListView::RemoveItem(int32 index) {
    BListItem* item = static_cast<BListItem*>(fItems.RemoveItem(index));
    if (item == nullptr)
        return nullptr;
    const bool wasSelected = item->IsSelected();
    item->Deselect();
    _ItemsChanged(index);
    if (wasSelected)
        _SelectionDone();
    return item;
}

bool BListView::RemoveItems(int32 index, int32 count) {
    if (!fItems.RemoveItems(index, count))
        return false;
    _ItemsChanged(index);
    return true;
}

void BListView::MakeEmpty() {
    fItems.MakeEmpty();
    _ItemsChanged(0);
}

void BListView::_ItemsChanged(int32 firstIndex) {
    const int32 last = CountItems() - 1;
    fCursor = std::min(fCursor, last);
    fAnchor = std::min(fAnchor, last);
    fLastPressed = -1;
    if (Window() == nullptr)
        return;
    BRect below = Bounds();
    below.top = std::max(below.top, _TopOf(firstIndex));
    if (below.IsValid())
        Invalidate(below);
    _UpdateScrollBars();
}

bool BListView::_SetSelected(int32 index, bool selected) {
    BListItem* item = ItemAt(index);
    if (item == nullptr || item->IsSelected() == selected)
        return false;
    if (selected)
        item->Select();
    else
        item->Deselect();
    InvalidateItem(index);
    return true;
}

void BListView::_SelectionDone() {
    SelectionChanged();
    if (fSelectionMessage != nullptr)
        Invoke(fSelectionMessage.get());
}

void BListView::Select(int32 index, bool extend) {
    Select(index, index, extend);
}

void BListView::Select(int32 from, int32 to, bool extend) {
    if (from < 0 || to < from || to >= CountItems())
        return;
    const bool keep = extend && fType == B_MULTIPLE_SELECTION_LIST;
    const int32 last = fType == B_MULTIPLE_SELECTION_LIST ? to : from;
    bool changed = false;
    for (int32 i = 0; i < CountItems(); i++) {
        const bool inside = i >= from && i <= last;
        if (inside || !keep)
            changed = _SetSelected(i, inside) || changed;
    }
    fCursor = last;
    fAnchor = from;
    if (changed)
        _SelectionDone();
}

void BListView::_MoveSelection(int32 index, bool extend) {
    if (!extend || fAnchor < 0) {
        Select(index, false);
        return;
    }
    const int32 anchor = fAnchor;
    Select(std::min(anchor, index), std::max(anchor, index), false);
    fAnchor = anchor;
    fCursor = index;
}

void BListView::Deselect(int32 index) {
    if (_SetSelected(index, false))
        _SelectionDone();
}

void BListView::DeselectAll() {
    DeselectExcept(0, -1);
}

void BListView::DeselectExcept(int32 from, int32 to) {
    bool changed = false;
    for (int32 i = 0; i < CountItems(); i++) {
        if (i < from || i > to)
            changed = _SetSelected(i, false) || changed;
    }
    if (changed)
        _SelectionDone();
}

bool BListView::IsItemSelected(int32 index) const {
    const BListItem* item = ItemAt(index);
    return item != nullptr && item->IsSelected();
}

int32 BListView::CurrentSelection(int32 n) const {
    for (int32 i = 0; i < CountItems(); i++) {
        if (IsItemSelected(i) && n-- == 0)
            return i;
    }
    return -1;
}

void BListView::SelectionChanged() {}

void BListView::ScrollToSelection() {
    _ScrollToIndex(CurrentSelection());
}

void BListView::SortItems(int (*compare)(const void*, const void*)) {
    fItems.SortItems(compare);
    _ItemsChanged(0);
}

bool BListView::SwapItems(int32 a, int32 b) {
    const bool swapped = fItems.SwapItems(a, b);
    if (swapped)
        _ItemsChanged(std::min(a, b));
    return swapped;
}

bool BListView::MoveItem(int32 from, int32 to) {
    const bool moved = fItems.MoveItem(from, to);
    if (moved)
        _ItemsChanged(std::min(from, to));
    return moved;
}

void BListView::DoForEach(bool (*func)(BListItem*)) {
    for (int32 i = 0; BListItem* item = ItemAt(i); i++) {
        if (func(item))
            return;
    }
}

void BListView::DoForEach(bool (*func)(BListItem*, void*), void* argument) {
    for (int32 i = 0; BListItem* item = ItemAt(i); i++) {
        if (func(item, argument))
            return;
    }
}
