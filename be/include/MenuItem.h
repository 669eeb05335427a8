#pragma once

#include <Invoker.h>
#include <Rect.h>
#include <String.h>

class BMenu;

// A line of a menu: a label and a message, or a label and a submenu. Its menu owns it, it owns
// its message and its submenu. The chosen item's message carries "when" (int64), "source" (the
// item's pointer) and "index" (int32), and goes to the target; without one to the window of the
// menu.
class BMenuItem : public BInvoker {
public:
    BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
    explicit BMenuItem(BMenu* menu, BMessage* message = nullptr);
    ~BMenuItem() override;

    virtual void SetLabel(const char* name);
    virtual void SetEnabled(bool enable);
    // In a menu in radio mode, marking one item unmarks the others.
    virtual void SetMarked(bool mark);
    // The Command key is implied. 0 takes the shortcut away.
    virtual void SetShortcut(char character, uint32 modifiers);

    const char* Label() const;
    // An item of a disabled menu is disabled too.
    bool IsEnabled() const;
    bool IsMarked() const;
    char Shortcut(uint32* modifiers = nullptr) const;
    BMenu* Submenu() const;
    BMenu* Menu() const;

    class Private;

protected:
    status_t Invoke(BMessage* message = nullptr) override;

private:
    friend class Private;
    friend class BMenu;

    const int32 fToken; // names the item to the server
    // Guarded by the lock of the menu's window while the menu is in one
    BString fLabel;
    BMenu* fSubmenu = nullptr;
    BMenu* fSuper = nullptr;
    uint32 fModifiers = 0;
    char fShortcut = 0;
    bool fEnabled = true;
    bool fMarked = false;
};

// A line between groups of items.
class BSeparatorItem : public BMenuItem {
public:
    BSeparatorItem();
    ~BSeparatorItem() override;

    void SetEnabled(bool enable) override;
};
