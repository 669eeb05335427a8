#pragma once

#include <Invoker.h>
#include <List.h>
#include <ListItem.h>
#include <View.h>

#include <memory>

enum list_view_type { B_SINGLE_SELECTION_LIST, B_MULTIPLE_SELECTION_LIST };

// A column of rows, of which the user selects one or several and invokes one (double click or
// Enter). The list doesn't own its items: who removes or empties, deletes them.
// The selection message and the invocation message carry "index" (int32) for each selected row.
class BListView : public BView, public BInvoker {
public:
    BListView(BRect frame, const char* name, list_view_type type = B_SINGLE_SELECTION_LIST,
              uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
              uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE);
    ~BListView() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focused = true) override;
    void FrameResized(float width, float height) override;
    void WindowActivated(bool active) override;
    void SetFont(const BFont* font, uint32 mask = B_FONT_ALL) override;
    void ScrollTo(BPoint where) override;
    using BView::ScrollTo;

    virtual bool AddItem(BListItem* item);
    virtual bool AddItem(BListItem* item, int32 index);
    virtual bool AddList(BList* items);
    virtual bool AddList(BList* items, int32 index);
    virtual bool RemoveItem(BListItem* item);
    virtual BListItem* RemoveItem(int32 index);
    virtual bool RemoveItems(int32 index, int32 count);
    virtual void MakeEmpty();

    BListItem* ItemAt(int32 index) const;
    int32 IndexOf(BListItem* item) const;
    int32 IndexOf(BPoint where) const;
    BListItem* FirstItem() const;
    BListItem* LastItem() const;
    bool HasItem(BListItem* item) const;
    int32 CountItems() const;
    bool IsEmpty() const;
    const BListItem** Items() const;
    BRect ItemFrame(int32 index);
    void InvalidateItem(int32 index);

    void Select(int32 index, bool extend = false);
    void Select(int32 from, int32 to, bool extend = false);
    void Deselect(int32 index);
    void DeselectAll();
    void DeselectExcept(int32 from, int32 to);
    bool IsItemSelected(int32 index) const;
    // The index of the n-th selected row, -1 if there is none.
    int32 CurrentSelection(int32 n = 0) const;
    virtual void SelectionChanged();
    void ScrollToSelection();

    // Both take ownership.
    virtual void SetSelectionMessage(BMessage* message);
    virtual void SetInvocationMessage(BMessage* message);
    BMessage* SelectionMessage() const;
    BMessage* InvocationMessage() const;
    status_t Invoke(BMessage* message = nullptr) override;

    virtual void SetListType(list_view_type type);
    list_view_type ListType() const;
    void SortItems(int (*compare)(const void*, const void*));
    bool SwapItems(int32 a, int32 b);
    bool MoveItem(int32 from, int32 to);
    void DoForEach(bool (*func)(BListItem*));
    void DoForEach(bool (*func)(BListItem*, void*), void* argument);

private:
    void _ItemsChanged(int32 firstIndex);
    void _UpdateScrollBars();
    void _SelectionDone();
    bool _SetSelected(int32 index, bool selected);
    void _MoveSelection(int32 index, bool extend);
    void _ScrollToIndex(int32 index);
    float _TopOf(int32 index) const;
    int32 _PageLength() const;

    // Window thread only
    BList fItems;
    std::unique_ptr<BMessage> fSelectionMessage;
    list_view_type fType;
    int32 fAnchor = -1;
    int32 fCursor = -1;
    int32 fLastPressed = -1;
};
