#include "windows/NPFontMenu.h"

#include <MenuItem.h>
#include <Message.h>

#include <memory>

namespace {

BMessage* ChoiceOf(const char* family, const char* style) {
    BMessage* message = new BMessage(kMsgFontChosen);
    message->AddString("family", family);
    message->AddString("style", style);
    return message;
}

// Labels are not unique over menus and their submenus: FindItem would take the first of either.
BMenuItem* ItemIn(const BMenu* menu, const char* label) {
    for (int32 i = 0; BMenuItem* item = menu->ItemAt(i); i++) {
        if (BString(label) == item->Label())
            return item;
    }
    return nullptr;
}

} // namespace

NPFontMenu::NPFontMenu(const char* family, const char* style) : BPopUpMenu(family) {
    font_family name;
    update_font_families(false);
    const int32 count = count_font_families();
    for (int32 i = 0; i < count; i++) {
        if (get_font_family(i, &name) == B_OK)
            _AddFamily(name);
    }
    Choose(family, style);
}

void NPFontMenu::_AddFamily(font_family family) {
    auto menu = std::make_unique<BMenu>(family);
    font_style style;
    const int32 count = count_font_styles(family);
    for (int32 i = 0; i < count; i++) {
        if (get_font_style(family, i, &style) == B_OK)
            menu->AddItem(new BMenuItem(style, ChoiceOf(family, style)));
    }
    if (const BMenuItem* first = menu->ItemAt(0)) {
        const BString label(first->Label());
        AddItem(new BMenuItem(menu.release(), ChoiceOf(family, label.String())));
    }
}

void NPFontMenu::Choose(const char* family, const char* style) {
    BMenuItem* item = ItemIn(this, family);
    if (item == nullptr)
        return;
    item->SetMarked(true);
    BMenuItem* chosen = ItemIn(item->Submenu(), style);
    if (chosen == nullptr)
        return;
    if (fChosen != nullptr)
        fChosen->SetMarked(false);
    fChosen = chosen;
    fChosen->SetMarked(true);
}

bool NPFontMenu::GetChosen(BString* family, BString* style) const {
    if (fChosen == nullptr)
        return false;
    *style = fChosen->Label();
    *family = fChosen->Menu()->Superitem()->Label();
    return true;
}

status_t NPFontMenu::SetTargetForItems(BHandler* target) {
    for (int32 i = 0; BMenu* styles = SubmenuAt(i); i++)
        styles->SetTargetForItems(target);
    return BPopUpMenu::SetTargetForItems(target);
}
