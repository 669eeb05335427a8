#include <PopUpMenu.h>

#include "interface/menus/MenuPrivate.h"
#include "interface/menus/MenuSession.h"

#include <Looper.h>
#include <Message.h>
#include <OS.h>
#include <Window.h>

#include <memory>

BPopUpMenu::BPopUpMenu(const char* title, bool radioMode, bool labelFromMarked, menu_layout layout)
    : BMenu(title, layout) {
    SetRadioMode(radioMode);
    SetLabelFromMarked(radioMode && labelFromMarked);
}

BPopUpMenu::~BPopUpMenu() = default;

BMenuItem* BPopUpMenu::Go(BPoint where, bool deliversMessage, bool openAnyway, bool async) {
    // Without a rectangle, a click that opens the menu needs not hold the button.
    const float reach = openAnyway ? 5 : 2;
    return _Go(where, deliversMessage,
               BRect(where.x - reach, where.y - reach, where.x + reach, where.y + reach), async);
}

BMenuItem* BPopUpMenu::Go(BPoint where, bool deliversMessage, bool, BRect clickToOpen, bool async) {
    return _Go(where, deliversMessage, clickToOpen, async);
}

BMenuItem* BPopUpMenu::_Go(BPoint where, bool deliversMessage, BRect clickToOpen, bool async) {
    BWindow* window = dynamic_cast<BWindow*>(BLooper::LooperForThread(find_thread(nullptr)));
    server::MenuRequest request;
    request.menu = Private::SnapshotOf(this);
    request.where = where;
    request.openRect = clickToOpen;
    request.window = window;
    const auto choose = [this, deliversMessage, window](const server::MenuOutcome& outcome) {
        BMenuItem* item = outcome.kind == server::MenuOutcome::Kind::kChosen
                              ? BMenuItem::Private::Find(this, outcome.token)
                              : nullptr;
        if (item != nullptr && deliversMessage)
            BMenu::Private::Choose(item, window);
        else if (item != nullptr && IsRadioMode() && item->Menu() == this)
            item->SetMarked(true);
        return item;
    };
    if (!async || window == nullptr)
        return choose(MenuSession::OpenAndWait(this, std::move(request)));
    // With the callback goes the menu, also when the window goes before the choice.
    std::shared_ptr<BPopUpMenu> self(this, [](BPopUpMenu* menu) {
        if (menu->AsyncAutoDestruct())
            delete menu;
    });
    MenuSession::Open(this, std::move(request),
                      [choose, self](const server::MenuOutcome& outcome) { choose(outcome); });
    return nullptr;
}

void BPopUpMenu::SetAsyncAutoDestruct(bool state) {
    fAutoDestruct = state;
}

bool BPopUpMenu::AsyncAutoDestruct() const {
    return fAutoDestruct;
}
