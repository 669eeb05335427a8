#pragma once

#include "server/MenuServer.h"

#include <Menu.h>

class BWindow;

// What menus share behind their documented calls.
class BMenu::Private {
public:
    static server::MenuSnapshot SnapshotOf(const BMenu* menu);
    static BMenu* RootOf(BMenu* menu);
    static int32 IndexOfMarked(const BMenu* menu);

    // What happens when an item has been chosen: in radio mode it is marked; then its message goes
    // out. Without a target of its own the item gets `fallback`, which may be null.
    static void Choose(BMenuItem* item, BWindow* fallback);
    // Shortcuts of all items below `menu`, which is `root` or lies below it.
    static void AddShortcuts(BWindow* window, const BMenu* root, const BMenu* menu);
};

class BMenuItem::Private {
public:
    static int32 TokenOf(const BMenuItem* item) { return item->fToken; }
    // The item of this token, if it still is in a menu whose root is `root`; else null.
    static BMenuItem* Find(const BMenu* root, int32 token);
    static void SetSubmenu(BMenuItem* item, BMenu* menu) { item->fSubmenu = menu; }
    static void Invoke(BMenuItem* item, BWindow* fallback);
};
