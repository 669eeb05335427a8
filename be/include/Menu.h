#pragma once

#include <InterfaceDefs.h>
#include <List.h>
#include <MenuItem.h>
#include <String.h>
#include <View.h>

enum menu_layout { B_ITEMS_IN_ROW = 0, B_ITEMS_IN_COLUMN, B_ITEMS_IN_MATRIX };

// A list of items, shown by the window server. A menu owns its items. While it is part of a
// window's menu bar it is guarded by the window's lock.
class BMenu : public BView {
public:
    explicit BMenu(const char* title, menu_layout layout = B_ITEMS_IN_COLUMN);
    ~BMenu() override;

    bool AddItem(BMenuItem* item);
    bool AddItem(BMenuItem* item, int32 index);
    // Makes an item for the submenu.
    bool AddItem(BMenu* menu);
    bool AddItem(BMenu* menu, int32 index);
    bool AddSeparatorItem();

    // What is removed is the caller's.
    bool RemoveItem(BMenuItem* item);
    BMenuItem* RemoveItem(int32 index);
    bool RemoveItem(BMenu* menu);
    bool RemoveItems(int32 index, int32 count, bool deleteItems = false);

    BMenuItem* ItemAt(int32 index) const;
    BMenu* SubmenuAt(int32 index) const;
    int32 CountItems() const;
    int32 IndexOf(BMenuItem* item) const;
    int32 IndexOf(BMenu* menu) const;
    // The first item with this label or message code, submenus included; null if there is none.
    BMenuItem* FindItem(const char* label) const;
    BMenuItem* FindItem(uint32 command) const;
    BMenuItem* FindMarked();

    // Of the items that stand in the menu now, not of their submenus'.
    virtual status_t SetTargetForItems(BHandler* target);
    virtual status_t SetTargetForItems(BMessenger messenger);

    virtual void SetEnabled(bool state);
    bool IsEnabled() const;
    virtual void SetRadioMode(bool state);
    bool IsRadioMode() const;
    // Whether the item that stands for this menu is labelled like the marked item.
    virtual void SetLabelFromMarked(bool state);
    bool IsLabelFromMarked() const;
    menu_layout Layout() const;

    BMenu* Supermenu() const;
    BMenuItem* Superitem() const;

    class Private;

private:
    friend class Private;
    friend class BMenuItem;

    void _Changed();

    // Guarded by the lock of the menu's window while the menu is in one
    BList fItems;
    BMenuItem* fSuperitem = nullptr;
    menu_layout fLayout;
    bool fEnabled = true;
    bool fRadioMode = false;
    bool fLabelFromMarked = false;
};
