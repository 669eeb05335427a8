#pragma once

#include <SupportDefs.h>

// An ordered list of pointers, which it neither owns nor looks at. Indexes begin at 0; an index
// outside the list fails (false, or a null item). Not synchronised.
class BList {
public:
    BList(int32 itemsPerBlock = 20);
    BList(const BList& list);
    virtual ~BList();
    BList& operator=(const BList& list);
    bool operator==(const BList& list) const;
    bool operator!=(const BList& list) const { return !(*this == list); }

    bool AddItem(void* item);
    bool AddItem(void* item, int32 index); // index may be CountItems()
    bool AddList(const BList* list);
    bool AddList(const BList* list, int32 index);
    bool RemoveItem(void* item); // its first occurrence
    void* RemoveItem(int32 index);
    bool RemoveItems(int32 index, int32 count);
    bool ReplaceItem(int32 index, void* item);
    void MakeEmpty();

    // The order of `compare`, which gets pointers to items.
    void SortItems(int (*compare)(const void* item1, const void* item2));
    bool SwapItems(int32 indexA, int32 indexB);
    bool MoveItem(int32 fromIndex, int32 toIndex);

    void* ItemAt(int32 index) const;
    void* ItemAtFast(int32 index) const { return fItems[index]; } // unchecked
    void* FirstItem() const { return ItemAt(0); }
    void* LastItem() const { return ItemAt(fCount - 1); }
    void* Items() const { return fItems; }
    int32 IndexOf(void* item) const; // -1 when it is not in the list
    bool HasItem(void* item) const { return IndexOf(item) >= 0; }
    int32 CountItems() const { return fCount; }
    bool IsEmpty() const { return fCount == 0; }

    // Ends early as soon as a call returns true.
    void DoForEach(bool (*function)(void* item));
    void DoForEach(bool (*function)(void* item, void* argument), void* argument);

private:
    bool _Grow(int32 count);

    void** fItems;
    int32 fCount;
    int32 fCapacity;
    int32 fBlockSize;
};
