#include <MenuItem.h>

#include "interface/menus/MenuPrivate.h"

#include <Message.h>
#include <OS.h>
#include <Window.h>

#include <atomic>

namespace {

int32 NextToken() {
    static std::atomic<uint32> sToken{0};
    // After two billion items a number comes again, but never 0 or below.
    return static_cast<int32>(sToken.fetch_add(1, std::memory_order_relaxed) % 0x7FFFFFFFu) + 1;
}

} // namespace

BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : BInvoker(message, nullptr), fToken(NextToken()), fLabel(label),
      fModifiers(shortcut != 0 ? modifiers | B_COMMAND_KEY : 0), fShortcut(shortcut) {}

BMenuItem::BMenuItem(BMenu* menu, BMessage* message)
    : BInvoker(message, nullptr), fToken(NextToken()),
      fLabel(menu != nullptr ? menu->Name() : nullptr), fSubmenu(menu) {
    if (menu != nullptr)
        menu->fSuperitem = this;
}

BMenuItem::~BMenuItem() {
    if (fSubmenu != nullptr) {
        fSubmenu->fSuperitem = nullptr;
        delete fSubmenu;
    }
}

void BMenuItem::SetLabel(const char* name) {
    if (fLabel == name)
        return;
    fLabel = name;
    if (fMarked && fSuper != nullptr && fSuper->fLabelFromMarked && fSuper->fSuperitem != nullptr)
        fSuper->fSuperitem->SetLabel(name);
    if (fSuper != nullptr)
        fSuper->_Changed();
}

void BMenuItem::SetEnabled(bool enable) {
    if (enable == fEnabled)
        return;
    fEnabled = enable;
    if (fSuper != nullptr)
        fSuper->_Changed();
}

void BMenuItem::SetMarked(bool mark) {
    if (mark && fSuper != nullptr && fSuper->fRadioMode) {
        for (int32 i = 0; BMenuItem* other = fSuper->ItemAt(i); i++) {
            if (other != this)
                other->fMarked = false;
        }
    }
    fMarked = mark;
    if (fSuper == nullptr)
        return;
    if (mark && fSuper->fLabelFromMarked && fSuper->fSuperitem != nullptr)
        fSuper->fSuperitem->SetLabel(Label());
    fSuper->_Changed();
}

void BMenuItem::SetShortcut(char character, uint32 modifiers) {
    fShortcut = character;
    fModifiers = character != 0 ? modifiers | B_COMMAND_KEY : 0;
    if (fSuper != nullptr)
        fSuper->_Changed();
}

const char* BMenuItem::Label() const {
    return fLabel.String();
}

bool BMenuItem::IsEnabled() const {
    return fEnabled && (fSubmenu == nullptr || fSubmenu->IsEnabled()) &&
           (fSuper == nullptr || fSuper->IsEnabled());
}

bool BMenuItem::IsMarked() const {
    return fMarked;
}

char BMenuItem::Shortcut(uint32* modifiers) const {
    if (modifiers != nullptr)
        *modifiers = fModifiers;
    return fShortcut;
}

BMenu* BMenuItem::Submenu() const {
    return fSubmenu;
}

BMenu* BMenuItem::Menu() const {
    return fSuper;
}

status_t BMenuItem::Invoke(BMessage* message) {
    const BMessage* sent = message != nullptr ? message : Message();
    if (sent == nullptr)
        return B_BAD_VALUE;
    BMessage copy(*sent);
    copy.AddInt64("when", system_time());
    copy.AddPointer("source", this);
    copy.AddInt32("index", fSuper != nullptr ? fSuper->IndexOf(this) : -1);
    return BInvoker::Invoke(&copy);
}

BMenuItem* BMenuItem::Private::Find(const BMenu* root, int32 token) {
    for (int32 i = 0; BMenuItem* item = root->ItemAt(i); i++) {
        if (item->fToken == token)
            return item;
        BMenuItem* found = item->fSubmenu != nullptr ? Find(item->fSubmenu, token) : nullptr;
        if (found != nullptr)
            return found;
    }
    return nullptr;
}

void BMenuItem::Private::Invoke(BMenuItem* item, BWindow* fallback) {
    if (!item->Messenger().IsValid() && fallback != nullptr)
        item->SetTarget(fallback);
    item->Invoke();
}

BSeparatorItem::BSeparatorItem() : BMenuItem("", nullptr) {
    BMenuItem::SetEnabled(false);
}

BSeparatorItem::~BSeparatorItem() = default;

// A separator stays what it is.
void BSeparatorItem::SetEnabled(bool) {}
