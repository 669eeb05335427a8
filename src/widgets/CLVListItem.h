#pragma once

#include <InterfaceDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <string>
#include <vector>

class BBitmap;
class BView;

// A row of a ColumnListView, which owns it. Rows of a hierarchical list have an outline level; a
// superitem is the parent of the deeper rows that follow it. The window's thread, or with it
// locked.
class CLVListItem {
public:
    static constexpr float kLeastHeight = 20;

    CLVListItem(uint32 level, bool superitem, bool expanded)
        : fLevel(level), fSuperitem(superitem), fExpanded(expanded) {}
    virtual ~CLVListItem() = default;
    CLVListItem(const CLVListItem&) = delete;
    CLVListItem& operator=(const CLVListItem&) = delete;

    // Draws one cell; the owner's high and low colours are the row's text and background.
    virtual void DrawItemColumn(BView* owner, BRect cell, int32 column) = 0;
    // What the cell sorts by when the list has no comparison of its own; null without a text.
    virtual const char* ColumnText(int32 column) const = 0;

    uint32 OutlineLevel() const { return fLevel; }
    bool IsSuperitem() const { return fSuperitem; }
    bool IsExpanded() const { return fExpanded; }

private:
    friend class RowList;

    const uint32 fLevel;
    const bool fSuperitem;
    bool fExpanded;
};

// A row whose cells are texts and bitmaps.
class CLVEasyItem : public CLVListItem {
public:
    using CLVListItem::CLVListItem;

    // The text is copied; null empties the cell.
    void SetColumnContent(int32 column, const char* text, alignment align = B_ALIGN_LEFT,
                          bool truncate = true);
    // The bitmap is borrowed and must outlive the row; null empties the cell.
    void SetColumnContent(int32 column, const BBitmap* bitmap, float horizontalOffset = 2);

    const BBitmap* GetColumnContentBitmap(int32 column) const;

    void DrawItemColumn(BView* owner, BRect cell, int32 column) override;
    const char* ColumnText(int32 column) const override;

protected:
    // A text as a cell shows it.
    static void DrawText(BView* owner, BRect rect, const char* text, alignment align);

private:
    struct Cell {
        enum class Kind { kEmpty, kText, kBitmap };
        Kind kind = Kind::kEmpty;
        bool truncate = true;
        alignment align = B_ALIGN_LEFT;
        float offset = 0;
        std::string text;
        const BBitmap* bitmap = nullptr;
    };

    Cell& _CellAt(int32 column);
    static void _DrawText(BView* owner, BRect rect, const Cell& cell);

    std::vector<Cell> fCells;
};
