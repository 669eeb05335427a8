#include <Menu.h>

#include "interface/menus/MenuPrivate.h"
#include "interface/menus/MenuSession.h"
#include "interface/windows/WindowPrivate.h"

#include <MenuBar.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cstring>
#include <string>

BMenu::BMenu(const char* title, menu_layout layout)
    : BView(BRect(0, 0, 0, 0), title, B_FOLLOW_NONE, B_WILL_DRAW), fLayout(layout) {}

BMenu::~BMenu() {
    MenuSession::Forget(this);
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++)
        delete item;
}

bool BMenu::AddItem(BMenuItem* item) {
    return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, int32 index) {
    if (item == nullptr || item->fSuper != nullptr || !fItems.AddItem(item, index))
        return false;
    item->fSuper = this;
    if (fLabelFromMarked && item->fMarked && fSuperitem != nullptr)
        fSuperitem->SetLabel(item->Label());
    _Changed();
    return true;
}

bool BMenu::AddItem(BMenu* menu) {
    return AddItem(menu, CountItems());
}

bool BMenu::AddItem(BMenu* menu, int32 index) {
    if (menu == nullptr || menu->fSuperitem != nullptr)
        return false;
    BMenuItem* item = new BMenuItem(menu);
    if (AddItem(item, index))
        return true;
    item->fSubmenu = nullptr;
    menu->fSuperitem = nullptr;
    delete item;
    return false;
}

bool BMenu::AddSeparatorItem() {
    return AddItem(new BSeparatorItem);
}

bool BMenu::RemoveItem(BMenuItem* item) {
    return RemoveItem(IndexOf(item)) != nullptr;
}

BMenuItem* BMenu::RemoveItem(int32 index) {
    BMenuItem* item = static_cast<BMenuItem*>(fItems.RemoveItem(index));
    if (item != nullptr) {
        item->fSuper = nullptr;
        _Changed();
    }
    return item;
}

bool BMenu::RemoveItem(BMenu* menu) {
    BMenuItem* item = RemoveItem(IndexOf(menu));
    if (item == nullptr)
        return false;
    item->fSubmenu = nullptr;
    menu->fSuperitem = nullptr;
    delete item;
    return true;
}

bool BMenu::RemoveItems(int32 index, int32 count, bool deleteItems) {
    if (index < 0 || count < 0 || index + count > CountItems())
        return false;
    for (int32 i = 0; i < count; i++) {
        BMenuItem* item = RemoveItem(index);
        if (deleteItems)
            delete item;
    }
    return true;
}

BMenuItem* BMenu::ItemAt(int32 index) const {
    return static_cast<BMenuItem*>(fItems.ItemAt(index));
}

BMenu* BMenu::SubmenuAt(int32 index) const {
    const BMenuItem* item = ItemAt(index);
    return item != nullptr ? item->Submenu() : nullptr;
}

int32 BMenu::CountItems() const {
    return fItems.CountItems();
}

int32 BMenu::IndexOf(BMenuItem* item) const {
    return fItems.IndexOf(item);
}

int32 BMenu::IndexOf(BMenu* menu) const {
    for (int32 i = 0; const BMenuItem* item = ItemAt(i); i++) {
        if (menu != nullptr && item->Submenu() == menu)
            return i;
    }
    return -1;
}

BMenuItem* BMenu::FindItem(const char* label) const {
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++) {
        if (label != nullptr && strcmp(item->Label(), label) == 0)
            return item;
        if (item->Submenu() == nullptr)
            continue;
        if (BMenuItem* found = item->Submenu()->FindItem(label))
            return found;
    }
    return nullptr;
}

BMenuItem* BMenu::FindItem(uint32 command) const {
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++) {
        if (item->Message() != nullptr && item->Command() == command)
            return item;
        if (item->Submenu() == nullptr)
            continue;
        if (BMenuItem* found = item->Submenu()->FindItem(command))
            return found;
    }
    return nullptr;
}

BMenuItem* BMenu::FindMarked() {
    return ItemAt(Private::IndexOfMarked(this));
}

status_t BMenu::SetTargetForItems(BHandler* target) {
    status_t status = B_OK;
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++)
        status = std::min(status, item->SetTarget(target));
    return status;
}

status_t BMenu::SetTargetForItems(BMessenger messenger) {
    status_t status = B_OK;
    for (int32 i = 0; BMenuItem* item = ItemAt(i); i++)
        status = std::min(status, item->SetTarget(messenger));
    return status;
}

void BMenu::SetEnabled(bool state) {
    fEnabled = state;
    _Changed();
}

bool BMenu::IsEnabled() const {
    return fEnabled && (Supermenu() == nullptr || Supermenu()->IsEnabled());
}

void BMenu::SetRadioMode(bool state) {
    fRadioMode = state;
    if (!state)
        SetLabelFromMarked(false);
}

bool BMenu::IsRadioMode() const {
    return fRadioMode;
}

void BMenu::SetLabelFromMarked(bool state) {
    fLabelFromMarked = state;
    if (state)
        fRadioMode = true;
}

bool BMenu::IsLabelFromMarked() const {
    return fLabelFromMarked;
}

menu_layout BMenu::Layout() const {
    return fLayout;
}

BMenu* BMenu::Supermenu() const {
    return fSuperitem != nullptr ? fSuperitem->Menu() : nullptr;
}

BMenuItem* BMenu::Superitem() const {
    return fSuperitem;
}

// An open menu, a menu bar's titles and its shortcuts follow what is changed anywhere below.
void BMenu::_Changed() {
    for (BMenu* menu = this; menu != nullptr; menu = menu->Supermenu()) {
        if (MenuSession::IsOpen(menu))
            server::UpdateMenu(Private::SnapshotOf(menu));
        if (menu->Supermenu() != nullptr || menu->Window() == nullptr)
            continue;
        menu->Invalidate();
        BWindow::Private::Of(menu->Window()).RemoveMenuShortcuts(menu);
        Private::AddShortcuts(menu->Window(), menu, menu);
    }
}

int32 BMenu::Private::IndexOfMarked(const BMenu* menu) {
    for (int32 i = 0; const BMenuItem* item = menu->ItemAt(i); i++) {
        if (item->IsMarked())
            return i;
    }
    return -1;
}

void BMenu::Private::Choose(BMenuItem* item, BWindow* fallback) {
    if (!item->IsEnabled())
        return;
    if (item->Menu() != nullptr && item->Menu()->IsRadioMode())
        item->SetMarked(true);
    BMenuItem::Private::Invoke(item, fallback);
}

void BMenu::Private::AddShortcuts(BWindow* window, const BMenu* root, const BMenu* menu) {
    for (int32 i = 0; BMenuItem* item = menu->ItemAt(i); i++) {
        uint32 modifiers = 0;
        const char character = item->Shortcut(&modifiers);
        // MenusBeginning comes first and may take the item away: it is looked up again.
        const auto choose = [root, window, token = BMenuItem::Private::TokenOf(item)] {
            if (BMenuItem* chosen = BMenuItem::Private::Find(root, token))
                Choose(chosen, window);
        };
        if (character != 0)
            BWindow::Private::Of(window).AddMenuShortcut(root, static_cast<uchar>(character),
                                                         modifiers, choose);
        if (item->Submenu() != nullptr)
            AddShortcuts(window, root, item->Submenu());
    }
}

namespace {

// As the desktop writes it: "Ctrl+Shift+N".
std::string ShortcutText(const BMenuItem* item) {
    uint32 modifiers = 0;
    const char character = item->Shortcut(&modifiers);
    if (character == 0)
        return std::string();
    std::string text;
    if (modifiers & B_COMMAND_KEY)
        text += "Ctrl+";
    if (modifiers & (B_CONTROL_KEY | B_OPTION_KEY))
        text += "Alt+";
    if (modifiers & B_SHIFT_KEY)
        text += "Shift+";
    const bool lower = character >= 'a' && character <= 'z';
    text += static_cast<char>(lower ? character - 'a' + 'A' : character);
    return text;
}

} // namespace

server::MenuSnapshot BMenu::Private::SnapshotOf(const BMenu* menu) {
    server::MenuSnapshot lines;
    for (int32 i = 0; const BMenuItem* item = menu->ItemAt(i); i++) {
        server::MenuLine line;
        line.separator = dynamic_cast<const BSeparatorItem*>(item) != nullptr;
        line.label = item->Label();
        line.shortcut = ShortcutText(item);
        line.enabled = item->IsEnabled();
        line.marked = item->IsMarked();
        line.radio = menu->IsRadioMode();
        if (item->Submenu() == nullptr || item->Message() != nullptr)
            line.token = BMenuItem::Private::TokenOf(item);
        if (item->Submenu() != nullptr) {
            line.hasSubmenu = true;
            line.submenu = SnapshotOf(item->Submenu());
        }
        lines.push_back(std::move(line));
    }
    return lines;
}
