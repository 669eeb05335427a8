#include <List.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

BList::BList(int32 itemsPerBlock)
    : fItems(nullptr), fCount(0), fCapacity(0), fBlockSize(max_c(itemsPerBlock, 1)) {}

BList::BList(const BList& list) : BList(list.fBlockSize) {
    *this = list;
}

BList::~BList() {
    free(fItems);
}

BList& BList::operator=(const BList& list) {
    if (this == &list)
        return *this;
    fBlockSize = list.fBlockSize;
    MakeEmpty();
    AddList(&list);
    return *this;
}

bool BList::operator==(const BList& list) const {
    return fCount == list.fCount && std::equal(fItems, fItems + fCount, list.fItems);
}

bool BList::AddItem(void* item) {
    return AddItem(item, fCount);
}

bool BList::AddItem(void* item, int32 index) {
    if (index < 0 || index > fCount || !_Grow(1))
        return false;
    std::move_backward(fItems + index, fItems + fCount, fItems + fCount + 1);
    fItems[index] = item;
    fCount++;
    return true;
}

bool BList::AddList(const BList* list) {
    return AddList(list, fCount);
}

bool BList::AddList(const BList* list, int32 index) {
    if (!list || index < 0 || index > fCount)
        return false;
    // A list may be added to itself: its items are copied before any of them moves.
    BList copy(fBlockSize);
    if (list == this) {
        copy.AddList(list, 0);
        list = &copy;
    }
    int32 added = list->fCount;
    if (!_Grow(added))
        return false;
    std::move_backward(fItems + index, fItems + fCount, fItems + fCount + added);
    std::copy(list->fItems, list->fItems + added, fItems + index);
    fCount += added;
    return true;
}

bool BList::RemoveItem(void* item) {
    int32 index = IndexOf(item);
    return index >= 0 && RemoveItems(index, 1);
}

void* BList::RemoveItem(int32 index) {
    void* item = ItemAt(index);
    RemoveItems(index, 1);
    return item;
}

bool BList::RemoveItems(int32 index, int32 count) {
    if (index < 0 || index >= fCount || count < 0)
        return false;
    count = min_c(count, fCount - index);
    std::move(fItems + index + count, fItems + fCount, fItems + index);
    fCount -= count;
    return true;
}

bool BList::ReplaceItem(int32 index, void* item) {
    if (index < 0 || index >= fCount)
        return false;
    fItems[index] = item;
    return true;
}

void BList::MakeEmpty() {
    free(fItems);
    fItems = nullptr;
    fCount = 0;
    fCapacity = 0;
}

void BList::SortItems(int (*compare)(const void* item1, const void* item2)) {
    if (compare && fCount > 1)
        qsort(fItems, static_cast<size_t>(fCount), sizeof(void*), compare);
}

bool BList::SwapItems(int32 indexA, int32 indexB) {
    if (min_c(indexA, indexB) < 0 || max_c(indexA, indexB) >= fCount)
        return false;
    std::swap(fItems[indexA], fItems[indexB]);
    return true;
}

bool BList::MoveItem(int32 fromIndex, int32 toIndex) {
    if (min_c(fromIndex, toIndex) < 0 || max_c(fromIndex, toIndex) >= fCount)
        return false;
    if (fromIndex < toIndex)
        std::rotate(fItems + fromIndex, fItems + fromIndex + 1, fItems + toIndex + 1);
    else
        std::rotate(fItems + toIndex, fItems + fromIndex, fItems + fromIndex + 1);
    return true;
}

void* BList::ItemAt(int32 index) const {
    return index >= 0 && index < fCount ? fItems[index] : nullptr;
}

int32 BList::IndexOf(void* item) const {
    void** hit = std::find(fItems, fItems + fCount, item);
    return hit == fItems + fCount ? -1 : static_cast<int32>(hit - fItems);
}

void BList::DoForEach(bool (*function)(void* item)) {
    for (int32 i = 0; function && i < fCount; i++) {
        if (function(fItems[i]))
            return;
    }
}

void BList::DoForEach(bool (*function)(void* item, void* argument), void* argument) {
    for (int32 i = 0; function && i < fCount; i++) {
        if (function(fItems[i], argument))
            return;
    }
}

// Room for `count` more, in whole blocks and at least half as much again, so that long lists stay
// cheap to fill.
bool BList::_Grow(int32 count) {
    if (fCapacity - fCount >= count)
        return true;
    int64 wanted = max_c(int64(fCount) + count, int64(fCapacity) + fCapacity / 2);
    wanted = (wanted + fBlockSize - 1) / fBlockSize * fBlockSize;
    if (wanted > 0x7FFFFFFF)
        return false;
    auto items = static_cast<void**>(realloc(fItems, static_cast<size_t>(wanted) * sizeof(void*)));
    if (!items)
        return false;
    fItems = items;
    fCapacity = static_cast<int32>(wanted);
    return true;
}
