#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class BWindow;

namespace server {

class WindowLink;

// One line of a menu, as it stood when the menu was opened. Text is UTF-8; "&" and tabs in a label
// are shown as they are.
struct MenuLine {
    std::string label;
    std::string shortcut; // shown at the right, as text only
    bool enabled = true;
    bool marked = false;
    bool radio = false; // a mark is shown as one of several
    bool separator = false;
    // What comes back when it is chosen; above 0. A line with a submenu can be chosen itself, by a
    // click, Enter or Space, only with one.
    int32 token = 0;
    bool hasSubmenu = false;
    std::vector<MenuLine> submenu;
};

using MenuSnapshot = std::vector<MenuLine>;

// How an open menu ended.
struct MenuOutcome {
    enum class Kind {
        kChosen,    // token names the line
        kDismissed, // nothing was chosen
        kTitle // the menu closed because another title of the bar is wanted: title is its index
    };
    Kind kind = Kind::kDismissed;
    int32 token = 0;
    int32 title = -1;
    bool byKey = false; // that title was reached with the keyboard
};

struct MenuRequest {
    MenuSnapshot menu;
    BPoint where; // left top in screen pixels; moved so that the menu stays on the screen
    // Releasing the button here, in screen pixels, leaves the menu open.
    BRect openRect;
    // A menu bar's titles in screen pixels, and which of them this menu hangs below; -1 for a
    // pop-up. With them, pointing at another title or Left and Right at the top level end the menu
    // with kTitle.
    std::vector<BRect> titles;
    int32 currentTitle = -1;
    bool selectFirst = false; // opened by key
    int32 selected = -1;      // this line is placed over `where` and highlighted; for menu fields
    BWindow* window =
        nullptr; // whose window the menu belongs to; only used before ShowMenu returns
    // Called once, on the server's thread: it may post messages or signal, and must not wait or
    // lock a looper.
    std::function<void(const MenuOutcome&)> done;
};

// Shows a native menu and returns at once. Any thread, looper locked or not. An open menu of the
// same program ends first, as dismissed. Without a server (it has not started or has stopped) the
// outcome is kDismissed.
void ShowMenu(MenuRequest request);

// Lines changed while the menu is open: the labels, marks and enabled states of the open menu
// follow. Nothing happens if no menu is open. Tokens must be those of the request.
void UpdateMenu(const MenuSnapshot& menu);

// Closes the open menu, as dismissed.
void CloseMenu();

} // namespace server
