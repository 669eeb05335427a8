// Keys: shortcuts, navigation, the default button, then the focused view.
#include "interface/windows/WindowPrivate.h"

#include <Application.h>
#include <Button.h>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

const uint32 kShortcutModifiers = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
const int32 kMenuKey = 0x68;

uint32 Lowered(uint32 key) {
    return key < 0x80 ? static_cast<uint32>(tolower(int(key))) : key;
}

uint32 ShortcutModifiers(uint32 modifiers) {
    return (modifiers & kShortcutModifiers) | B_COMMAND_KEY;
}

struct KeyFields {
    const char* bytes = "";
    int32 key = 0;
    int32 rawChar = 0;
    int32 modifiers = 0;

    bool Has(uint32 mask) const { return (static_cast<uint32>(modifiers) & mask) != 0; }
    bool IsPlain() const { return !Has(kShortcutModifiers); }
    bool IsMenuBarKey() const { return rawChar == B_FUNCTION_KEY && key == B_F10_KEY && IsPlain(); }
    // The menu key's one byte is 0.
    int32 Count() const { return key == kMenuKey ? 1 : static_cast<int32>(strlen(bytes)); }
};

KeyFields FieldsOf(const BMessage* message) {
    KeyFields fields;
    message->FindString("bytes", &fields.bytes);
    message->FindInt32("key", &fields.key);
    message->FindInt32("raw_char", &fields.rawChar);
    message->FindInt32("modifiers", &fields.modifiers);
    return fields;
}

// A Ctrl+letter that no shortcut claimed is told as its control byte.
void TurnIntoControl(BMessage* message, KeyFields& fields) {
    const uint32 commands = B_COMMAND_KEY | B_LEFT_COMMAND_KEY | B_RIGHT_COMMAND_KEY;
    const char bytes[] = {static_cast<char>(toupper(fields.rawChar) - '@'), 0};
    fields.modifiers = static_cast<int32>((static_cast<uint32>(fields.modifiers) & ~commands) |
                                          B_CONTROL_KEY | B_LEFT_CONTROL_KEY);
    message->ReplaceInt32("modifiers", fields.modifiers);
    message->ReplaceString("bytes", bytes);
    message->ReplaceData("byte", B_INT8_TYPE, bytes, 1);
    message->FindString("bytes", &fields.bytes);
}

} // namespace

void BWindow::Private::KeyPressed(BMessage* message, BHandler* handler) {
    KeyFields fields = FieldsOf(message);
    if (fields.Has(B_COMMAND_KEY)) {
        if (HandleShortcut(static_cast<uint32>(fields.rawChar),
                           static_cast<uint32>(fields.modifiers)))
            return;
        if (isalpha(fields.rawChar))
            TurnIntoControl(message, fields);
    }
    if (openKeyMenuBar && fields.IsMenuBarKey())
        return openKeyMenuBar();
    if (fields.bytes[0] == B_ESCAPE && fields.IsPlain() && (flags & B_CLOSE_ON_ESCAPE)) {
        window->PostMessage(B_QUIT_REQUESTED);
        return;
    }
    BView* target = dynamic_cast<BView*>(handler);
    if (target == nullptr)
        target = focus;
    if (fields.bytes[0] == B_ENTER && fields.IsPlain() && defaultButton != nullptr)
        target = defaultButton;
    _KeyTold(message, target, fields.Count());
}

void BWindow::Private::_KeyTold(BMessage* message, BView* target, int32 count) {
    const KeyFields fields = FieldsOf(message);
    _TellWatchers(B_KEYBOARD_EVENTS, target,
                  [&](BView* view) { view->KeyDown(fields.bytes, count); });
    if (target != nullptr)
        target->KeyDown(fields.bytes, count);
    else if (fields.bytes[0] == B_TAB)
        NavigateFocus(fields.Has(B_SHIFT_KEY));
    else
        window->MessageReceived(message);
}

bool BWindow::Private::HandleShortcut(uint32 key, uint32 modifiers) {
    const uint32 wanted = ShortcutModifiers(modifiers);
    for (Shortcut& shortcut : shortcuts) {
        if (shortcut.key == Lowered(key) && shortcut.modifiers == wanted) {
            _ShortcutFound(shortcut);
            return true;
        }
    }
    if (wanted != B_COMMAND_KEY)
        return false;
    if (Lowered(key) == 'w' && !(flags & B_NOT_CLOSABLE))
        return window->PostMessage(B_QUIT_REQUESTED) == B_OK;
    if (Lowered(key) == 'q' && be_app != nullptr)
        return be_app->PostMessage(B_QUIT_REQUESTED) == B_OK;
    return false;
}

void BWindow::Private::_ShortcutFound(Shortcut& shortcut) {
    if (shortcut.invoke) {
        // The hooks may change the menu, and with it this entry.
        const std::function<void()> invoke = shortcut.invoke;
        window->MenusBeginning();
        invoke();
        window->MenusEnded();
        return;
    }
    if (shortcut.message == nullptr)
        return;
    BMessage message(*shortcut.message);
    message.AddInt64("when", system_time());
    if (shortcut.hasTarget)
        shortcut.target.SendMessage(&message);
    else
        window->PostMessage(&message);
}

void BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message) {
    AddShortcut(key, modifiers, message, nullptr);
}

void BWindow::AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target) {
    RemoveShortcut(key, modifiers);
    Private::Shortcut shortcut{Lowered(key),
                               ShortcutModifiers(modifiers),
                               std::unique_ptr<BMessage>(message),
                               target != nullptr,
                               target != nullptr ? BMessenger(target) : BMessenger(),
                               nullptr,
                               nullptr};
    fPrivate->shortcuts.push_back(std::move(shortcut));
}

bool BWindow::HasShortcut(uint32 key, uint32 modifiers) {
    return std::any_of(
        fPrivate->shortcuts.begin(), fPrivate->shortcuts.end(), [&](const Private::Shortcut& one) {
            return one.key == Lowered(key) && one.modifiers == ShortcutModifiers(modifiers);
        });
}

void BWindow::RemoveShortcut(uint32 key, uint32 modifiers) {
    std::erase_if(fPrivate->shortcuts, [&](const Private::Shortcut& one) {
        return one.key == Lowered(key) && one.modifiers == ShortcutModifiers(modifiers);
    });
}

void BWindow::Private::AddMenuShortcut(const void* owner, uint32 key, uint32 modifiers,
                                       std::function<void()> invoke) {
    window->RemoveShortcut(key, modifiers);
    shortcuts.push_back({Lowered(key), ShortcutModifiers(modifiers), nullptr, false, BMessenger(),
                         owner, std::move(invoke)});
}

void BWindow::Private::RemoveMenuShortcuts(const void* owner) {
    std::erase_if(shortcuts, [owner](const Shortcut& one) { return one.owner == owner; });
}

void BWindow::Private::_CollectNavigable(BView* from, std::vector<BView*>& found) const {
    const BView::Private& data = BView::Private::Of(from);
    if (data.hidden > 0)
        return;
    if (data.flags & B_NAVIGABLE)
        found.push_back(from);
    for (BView* child : data.children)
        _CollectNavigable(child, found);
}

void BWindow::Private::NavigateFocus(bool backwards) {
    std::vector<BView*> views;
    _CollectNavigable(top.get(), views);
    if (views.empty())
        return;
    const auto here = std::find(views.begin(), views.end(), focus);
    const size_t count = views.size();
    size_t index = 0;
    if (here != views.end())
        index = (static_cast<size_t>(here - views.begin()) + (backwards ? count - 1 : 1)) % count;
    else if (backwards)
        index = count - 1;
    views[index]->MakeFocus(true);
}
