#pragma once

#include <Menu.h>

// A menu that opens anywhere on the screen.
class BPopUpMenu : public BMenu {
public:
    explicit BPopUpMenu(const char* title, bool radioMode = true, bool labelFromMarked = true,
                        menu_layout layout = B_ITEMS_IN_COLUMN);
    ~BPopUpMenu() override;

    // Opens the menu at a point of the screen. It stays open while the pointer's button is
    // released inside `clickToOpen` (screen coordinates), or with `openAnyway`.
    // Returns the chosen item, or null if none was chosen; null at once when `async`.
    // Only with `deliversMessage` is the item's message sent. Waiting for the choice, the caller's
    // window draws nothing.
    BMenuItem* Go(BPoint where, bool deliversMessage = false, bool openAnyway = false,
                  bool async = false);
    BMenuItem* Go(BPoint where, bool deliversMessage, bool openAnyway, BRect clickToOpen,
                  bool async = false);

    // Whether the menu deletes itself after an asynchronous Go.
    void SetAsyncAutoDestruct(bool state);
    bool AsyncAutoDestruct() const;

private:
    BMenuItem* _Go(BPoint where, bool deliversMessage, BRect clickToOpen, bool async);

    bool fAutoDestruct = false;
};
