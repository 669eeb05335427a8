// Commands by keys that no menu has: function keys, and all keys of a window without menus.
#include "app/NPWindow.h"
#include "commands/Commands.h"
#include "messages/Messages.h"
#include "settings/SettingsFile.h"
#include "views/NPArticleView.h"
#include "views/NPThreadItem.h"
#include "views/NPThreadView.h"

#include <AppDefs.h>
#include <Application.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>

namespace {

// In a window for one thread.
bool IsForThreads(const Command& command) {
    return command.code == kMsgReloadThread || command.code == kMsgNextWindow;
}

bool IsHeld(const BMessage& keyDown) {
    int32 repeat = 0;
    return keyDown.FindInt32("be:key_repeat", &repeat) == B_OK && repeat > 0;
}

} // namespace

void NPWindow::DispatchMessage(BMessage* message, BHandler* handler) {
    if (message->what != B_KEY_DOWN || !_PerformKey(*message))
        BrowserWindow::DispatchMessage(message, handler);
}

// Keys of menu lines are the menu bar's own business.
bool NPWindow::_PerformKey(const BMessage& keyDown) {
    const KeyChord chord = ChordOf(keyDown);
    const Command* command = FindCommand(*fSettings, chord);
    if (command == nullptr || (fThreadOnly && !IsForThreads(*command)))
        return false;
    const bool isMenus =
        fMenuBar != nullptr && command->place == Command::Place::kMenu && chord.character != 0;
    if (isMenus)
        return false;
    if (IsHeld(keyDown))
        return true;
    if (command->target == Command::Target::kApplication)
        be_app_messenger.SendMessage(command->code);
    else
        PostMessage(command->code);
    return true;
}

void NPWindow::_UseKeys() {
    if (fMenuBar == nullptr)
        return;
    for (const Command& command : Commands()) {
        if (command.id == nullptr || command.isFixed || command.place != Command::Place::kMenu)
            continue;
        const KeyChord key = KeyOf(*fSettings, command);
        if (BMenuItem* item = fMenuBar->FindItem(command.code))
            item->SetShortcut(key.character, key.modifiers);
    }
}

// As the list stands, from the selected row on and then from the top.
void NPWindow::_OpenNextNews() {
    if (fThreadView == nullptr)
        return;
    const int32 row = fThreadView->FindNews();
    if (row < 0) {
        PostProgressData("新着のあるスレッドはありません", 0);
        return;
    }
    fThreadView->SelectItem(row);
    fThreadView->List()->InvokeRow(row);
}
