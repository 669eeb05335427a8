#include "widgets/RowList.h"

#include <algorithm>
#include <cstring>
#include <utility>

void RowList::Add(CLVListItem* row) {
    fRows.emplace_back(row);
    fVisibleIsStale = true;
}

void RowList::MakeEmpty() {
    fRows.clear();
    fVisible.clear();
    _Resort();
    fVisibleIsStale = false;
}

CLVListItem* RowList::FullAt(int32 index) {
    _Sort();
    return index >= 0 && index < CountFull() ? fRows[index].get() : nullptr;
}

int32 RowList::FullIndexOf(const CLVListItem* row) {
    _Sort();
    const auto at = std::find_if(fRows.begin(), fRows.end(),
                                 [row](const auto& candidate) { return candidate.get() == row; });
    return at == fRows.end() ? -1 : static_cast<int32>(at - fRows.begin());
}

int32 RowList::CountVisible() {
    _FindVisible();
    return _HidesRows() ? static_cast<int32>(fVisible.size()) : CountFull();
}

CLVListItem* RowList::VisibleAt(int32 index) {
    if (!_HidesRows())
        return FullAt(index);
    return index >= 0 && index < CountVisible() ? fVisible[index] : nullptr;
}

int32 RowList::VisibleIndexOf(const CLVListItem* row) {
    if (!_HidesRows())
        return FullIndexOf(row);
    _FindVisible();
    const auto at = std::find(fVisible.begin(), fVisible.end(), row);
    return at == fVisible.end() ? -1 : static_cast<int32>(at - fVisible.begin());
}

CLVListItem* RowList::Superitem(const CLVListItem* row) {
    for (int32 i = FullIndexOf(row) - 1; i >= 0; i--) {
        if (fRows[i]->OutlineLevel() < row->OutlineLevel())
            return fRows[i].get();
    }
    return nullptr;
}

CLVListItem* RowList::VisibleAncestor(CLVListItem* row) {
    while (row != nullptr && VisibleIndexOf(row) < 0)
        row = Superitem(row);
    return row;
}

void RowList::SetExpanded(CLVListItem* row, bool expanded) {
    row->fExpanded = expanded;
    fVisibleIsStale = true;
}

void RowList::SetFilter(Filter filter) {
    fFilter = std::move(filter);
    fVisibleIsStale = true;
}

void RowList::_FindVisible() {
    if (!_HidesRows())
        return;
    _Sort();
    if (!fVisibleIsStale)
        return;
    fVisibleIsStale = false;
    fVisible.clear();
    if (fHierarchical)
        return _FindExpanded();
    for (const auto& row : fRows) {
        if (fFilter(*row))
            fVisible.push_back(row.get());
    }
}

void RowList::_FindExpanded() {
    constexpr uint32 kNothing = ~0U;
    uint32 hiddenBelow = kNothing; // rows deeper than this lie in a collapsed one
    for (const auto& row : fRows) {
        if (row->OutlineLevel() > hiddenBelow && hiddenBelow != kNothing)
            continue;
        hiddenBelow = row->IsSuperitem() && !row->IsExpanded() ? row->OutlineLevel() : kNothing;
        fVisible.push_back(row.get());
    }
}

void RowList::SetSortKey(int32 column, CLVSortMode mode) {
    fSortColumn = column;
    fSortMode = mode;
    _Resort();
}

void RowList::_Resort() {
    fSorted = 0;
    fOrderIsStale = false;
}

bool RowList::_IsLess(const CLVListItem* a, const CLVListItem* b) const {
    int32 order = 0;
    if (fCompare != nullptr) {
        order = fCompare(a, b, fSortColumn);
    } else {
        const char* textA = a->ColumnText(fSortColumn);
        const char* textB = b->ColumnText(fSortColumn);
        order = strcmp(textA != nullptr ? textA : "", textB != nullptr ? textB : "");
    }
    return fSortMode == CLVSortMode::kDescending ? order > 0 : order < 0;
}

void RowList::_Sort() {
    if (fSorted == fRows.size())
        return;
    if (fOrderIsStale)
        _Resort();
    if (!fHierarchical && fSortColumn >= 0 && fSortMode != CLVSortMode::kNone) {
        const auto isLess = [this](const auto& a, const auto& b) {
            return _IsLess(a.get(), b.get());
        };
        const auto middle = fRows.begin() + static_cast<std::ptrdiff_t>(fSorted);
        std::stable_sort(middle, fRows.end(), isLess);
        if (fSorted > 0 && isLess(*middle, *(middle - 1)))
            std::inplace_merge(fRows.begin(), middle, fRows.end(), isLess);
    }
    fSorted = fRows.size();
    fVisibleIsStale = true;
}
