#pragma once

#include "widgets/CLVColumn.h"
#include "widgets/CLVListItem.h"

#include <SupportDefs.h>

#include <functional>
#include <memory>
#include <vector>

// The rows of a list without any view: their order, which of them are visible, their sorting. Full
// indexes count all rows, visible ones leave out what lies in collapsed rows and what a filter of a
// flat list does not let through. Rows that are added
// go to the end and are sorted in when the order is next asked for: adding many costs one merge.
class RowList {
public:
    using Comparison = int32 (*)(const CLVListItem*, const CLVListItem*, int32 column);
    using Filter = std::function<bool(const CLVListItem&)>;

    explicit RowList(bool hierarchical) : fHierarchical(hierarchical) {}

    // Takes ownership.
    void Add(CLVListItem* row);
    void MakeEmpty();

    int32 CountFull() const { return static_cast<int32>(fRows.size()); }
    CLVListItem* FullAt(int32 index);
    int32 FullIndexOf(const CLVListItem* row);
    int32 CountVisible();
    CLVListItem* VisibleAt(int32 index);
    int32 VisibleIndexOf(const CLVListItem* row);

    // The nearest row above with a lower level; null for a row of the top level.
    CLVListItem* Superitem(const CLVListItem* row);
    // The first visible row that holds a hidden one; the row itself when it is visible.
    CLVListItem* VisibleAncestor(CLVListItem* row);
    void SetExpanded(CLVListItem* row, bool expanded);

    // Of a flat list: rows for which it does not hold are not visible; an empty one shows all.
    void SetFilter(Filter filter);
    bool IsFiltered() const { return static_cast<bool>(fFilter); }

    // Null compares the columns' texts. Sorting is stable; only a flat list is sorted.
    void SetComparison(Comparison compare) { fCompare = compare; }
    void SetSortKey(int32 column, CLVSortMode mode);
    int32 SortKey() const { return fSortColumn; }
    // What one row sorts by may have changed: it stays where it is until rows come or the order is
    // asked for anew.
    void RowChanged() { fOrderIsStale = true; }

private:
    void _Resort();
    void _Sort();
    bool _HidesRows() const { return fHierarchical || fFilter; }
    void _FindVisible();
    void _FindExpanded();
    bool _IsLess(const CLVListItem* a, const CLVListItem* b) const;

    const bool fHierarchical;
    Comparison fCompare = nullptr;
    int32 fSortColumn = -1;
    CLVSortMode fSortMode = CLVSortMode::kNone;
    std::vector<std::unique_ptr<CLVListItem>> fRows;
    size_t fSorted = 0;         // so many rows from the start have been sorted
    bool fOrderIsStale = false; // they may be in order no more
    Filter fFilter;
    std::vector<CLVListItem*> fVisible; // where rows may be hidden
    bool fVisibleIsStale = false;
};
