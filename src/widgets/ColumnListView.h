#pragma once

#include "widgets/CLVColumn.h"
#include "widgets/RowList.h"

#include <View.h>

#include <span>
#include <vector>

class CLVColumnLabelView;
class CLVContainerView;

// A list of rows with columns that can be resized, reordered and sorted by; in a hierarchical one,
// rows open and close. One row at a time is selected. It stands in a CLVContainerView, which holds
// its header and its scroll bars.
//
// Owns its rows. The window's thread, or with the window locked. Rows that are added are drawn
// together, when the window next draws.
class ColumnListView : public BView {
public:
    enum class Hierarchy { kFlat, kOutline };

    ColumnListView(BRect frame, const char* name, Hierarchy hierarchy);
    ~ColumnListView() override;

    // Columns; `column` is the number in order of adding.
    void AddColumn(const CLVColumn& column);
    int32 CountColumns() const { return static_cast<int32>(fColumns.size()); }
    const CLVColumn& ColumnAt(int32 column) const { return fColumns[column]; }
    float ColumnWidth(int32 column) const { return fColumns[column].width; }
    void SetColumnWidth(int32 column, float width);
    // The columns as they stand from left to right. What is no permutation of them is ignored.
    void GetDisplayOrder(int32* order) const;
    void SetDisplayOrder(std::span<const int32> order);
    // A hidden column keeps its width and its place, and may go on being the sort key.
    void ShowColumn(int32 column, bool isShown);
    virtual void ColumnWidthChanged(int32 column, float width);
    // The menu that shows and hides columns; nothing where none is hideable.
    void OpenHeaderMenu(BPoint screen);
    // Where a column stands, in the list's coordinates.
    float ColumnLeft(int32 column) const;

    // Sorting
    void SetSortFunction(RowList::Comparison compare) { fRows.SetComparison(compare); }
    // Makes the column the sort key; kNone takes that from it.
    void SetSortMode(int32 column, CLVSortMode mode);
    int32 SortKey() const { return fRows.SortKey(); }

    // Rows; full indexes count collapsed and filtered ones.
    void AddItem(CLVListItem* row);
    virtual void MakeEmpty();
    int32 FullListCountItems() const { return fRows.CountFull(); }
    CLVListItem* FullListItemAt(int32 index) { return fRows.FullAt(index); }
    int32 FullListIndexOf(const CLVListItem* row) { return fRows.FullIndexOf(row); }
    int32 FullListIndexOf(BPoint where);
    CLVListItem* Superitem(const CLVListItem* row) { return fRows.Superitem(row); }
    void SetExpanded(CLVListItem* row, bool expanded);
    void InvalidateItem(const CLVListItem* row);
    // What a row shows has changed, and perhaps what it sorts by: it stays where it is until the
    // list is sorted next.
    void RowChanged(const CLVListItem* row);
    // Rows that were added count for the scroll bars from now on, and not only when the window
    // comes to it.
    void FinishAdding();

    // Rows for which it does not hold are not shown; all else goes on with them, and one that is
    // selected stays so. An empty one shows all. What comes later follows it too.
    void SetFilter(RowList::Filter filter);
    int32 CountShown() { return fRows.CountVisible(); }
    bool IsShown(const CLVListItem* row) { return fRows.VisibleIndexOf(row) >= 0; }

    // Selection; −1 when nothing is selected or to select nothing.
    int32 FullListCurrentSelection();
    void FullListSelect(int32 index);
    // Selects the first row of those that are shown, unless one of them is selected.
    void SelectShown();
    void ScrollToSelection();
    // Where the selected row is, on the screen: for a menu opened by key.
    BPoint SelectionOnScreen();

    // The Enter key on the selected row; a menu wanted for it. The Menu key with no row in sight
    // opens the header's menu.
    virtual void InvokeRow(int32 fullIndex);
    virtual void OpenRowMenu(int32 fullIndex, BPoint screen);

    float RowHeight() const { return fRowHeight; }
    void SetHeader(CLVColumnLabelView* header) { fHeader = header; }

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MessageReceived(BMessage* message) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void MakeFocus(bool focus = true) override;
    void ScrollTo(BPoint where) override;

private:
    // From the header's menu: "column" int32.
    static constexpr uint32 kMsgToggleColumn = 'clTC';

    void _DrawRow(CLVListItem* row, BRect rect, BRect updateRect);
    void _DrawExpander(CLVListItem* row, BRect cell);
    void _SetRowColors(bool selected);
    BRect _RowRect(int32 visibleIndex) const;
    CLVListItem* _RowAt(BPoint where);
    bool _IsOnExpander(const CLVListItem* row, BPoint where) const;
    void _Select(CLVListItem* row);
    void _MoveSelection(int32 visibleIndex);
    void _PressArrow(char key);
    int32 _RowsOnPage() const;
    void _ContentChanged();
    void _ColumnsChanged();
    void _ToggleColumn(const BMessage* message);
    void _UpdateScrollBars();

    RowList fRows;
    std::vector<CLVColumn> fColumns;
    std::vector<int32> fOrder; // columns from left to right
    CLVListItem* fSelected = nullptr;
    CLVColumnLabelView* fHeader = nullptr;
    float fRowHeight = CLVListItem::kLeastHeight;
    bool fContentIsStale = false; // a message to ourselves is under way
};
