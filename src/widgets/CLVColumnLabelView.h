#pragma once

#include <View.h>

class ColumnListView;

// The header of a ColumnListView: labels with the sort arrow, grips between them. A click on a
// label sorts, a drag on it moves the column, a drag on a grip changes a width; the secondary
// button opens the menu that shows and hides columns. Scrolls with its list.
class CLVColumnLabelView : public BView {
public:
    static constexpr float kHeight = 22;

    // The list is borrowed and lives as long.
    CLVColumnLabelView(BRect frame, ColumnListView* list);

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;

private:
    enum class Hold { kNothing, kLabel, kMove, kGrip };

    int32 _ColumnAt(float x) const;
    int32 _GripAt(float x) const;
    float _RightOf(int32 column) const;
    void _DrawLabel(int32 column, BRect rect);
    void _DrawSortArrow(BRect rect, bool ascending);
    void _Sort(int32 column);
    void _MoveColumn(int32 column, float x);

    ColumnListView* const fList;
    Hold fHold = Hold::kNothing;
    int32 fColumn = -1; // what is held
    float fStart = 0;   // where the pointer was pressed
    float fStartWidth = 0;
};
