#include "windows/NPKeysWindow.h"

#include "commands/Commands.h"
#include "messages/Messages.h"
#include "views/ClickListView.h"
#include "widgets/CLVContainerView.h"
#include "windows/WindowSlot.h"

#include <Application.h>
#include <Button.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>

namespace {

// The window's own controls.
constexpr uint32 kMsgChosen = 'mKYS';
constexpr uint32 kMsgChange = 'mKYE';
constexpr uint32 kMsgRestore = 'mKYR';

const BRect kFrame(120, 120, 559, 559);
constexpr float kInset = 8;
constexpr float kRowHeight = 24;
constexpr float kButtonWidth = 88;
constexpr uint32 kFollowRight = B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM;

WindowSlot& Slot() {
    static WindowSlot& slot = *new WindowSlot;
    return slot;
}

class Row : public CLVEasyItem {
public:
    Row(const Command& command, const std::string& key)
        : CLVEasyItem(0, false, false), fCommand(command) {
        SetColumnContent(0, command.menu);
        SetColumnContent(1, command.label);
        SetColumnContent(2, key.c_str());
    }
    const Command& What() const { return fCommand; }

private:
    const Command& fCommand;
};

} // namespace

class CommandListView : public ClickListView {
public:
    explicit CommandListView(BRect frame) : ClickListView(frame, "commands", Hierarchy::kFlat) {
        SetClickMode(kSingleClick);
        AddColumn({"メニュー", 100, 40});
        AddColumn({"コマンド", 190, 40});
        AddColumn({"キー", 100, 40});
    }
    void Show(const SettingsFile& settings) {
        const int32 selected = FullListCurrentSelection();
        MakeEmpty();
        for (const Command& command : Commands()) {
            if (command.id != nullptr)
                AddItem(new Row(command, KeyText(settings, command)));
        }
        FinishAdding();
        FullListSelect(selected);
    }
    // Null without one.
    const Command* Selected() {
        const int32 index = FullListCurrentSelection();
        return index < 0 ? nullptr : &static_cast<Row*>(FullListItemAt(index))->What();
    }

protected:
    void RowChosen(int32) override { Window()->PostMessage(kMsgChosen); }
    void OpenPopUpMenu(int32, BPoint) override {}
};

void NPKeysWindow::Open(SettingsFile* settings) {
    Slot().Open([settings] { return new NPKeysWindow(settings); });
}

bool NPKeysWindow::QuitRequested() {
    Slot().Leave(BMessenger(this));
    return true;
}

NPKeysWindow::NPKeysWindow(SettingsFile* settings)
    : OnceWindow(kFrame, kTitle, B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE),
      fSettings(settings) {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(base);
    SetSizeLimits(400, 4000, 240, 4000);
    BRect list = base->Bounds().InsetByCopy(kInset, kInset);
    list.bottom -= 2 * (kRowHeight + kInset);
    fList = new CommandListView(list);
    base->AddChild(new CLVContainerView(list, fList));
    BRect row = list;
    row.top = list.bottom + kInset;
    row.bottom = row.top + kRowHeight - 1;
    BRect key = row;
    key.right -= 2 * (kButtonWidth + kInset);
    fKey =
        new BTextControl(key, "key", "キー：", "", nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    fKey->SetDivider(40);
    base->AddChild(fKey);
    BRect button = row;
    button.left = row.right - kButtonWidth + 1;
    base->AddChild(
        new BButton(button, "restore", "元に戻す", new BMessage(kMsgRestore), kFollowRight));
    button.OffsetBy(-kButtonWidth - kInset, 0);
    BButton* change = new BButton(button, "change", "変更", new BMessage(kMsgChange), kFollowRight);
    base->AddChild(change);
    change->MakeDefault(true);
    row.OffsetBy(0, kRowHeight + kInset);
    fStatus = new BStringView(row, "status", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
                              B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    base->AddChild(fStatus);
    fList->Show(*fSettings);
    fList->MakeFocus(true);
}

void NPKeysWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgChosen: _ShowKey(); break;
    case kMsgChange: _Change(fKey->Text()); break;
    case kMsgRestore: _Restore(); break;
    default: OnceWindow::MessageReceived(message);
    }
}

void NPKeysWindow::_ShowKey() {
    if (const Command* command = fList->Selected())
        fKey->SetText(KeyText(*fSettings, *command).c_str());
    fStatus->SetText("");
}

void NPKeysWindow::_Change(const char* text) {
    const Command* command = fList->Selected();
    const std::string refusal =
        command == nullptr ? "コマンドを選んでください。" : SetKey(fSettings, *command, text);
    fStatus->SetText(refusal.c_str());
    if (!refusal.empty())
        return;
    fList->Show(*fSettings);
    fKey->SetText(KeyText(*fSettings, *command).c_str());
    be_app_messenger.SendMessage(kMsgKeysChanged);
}

void NPKeysWindow::_Restore() {
    const Command* command = fList->Selected();
    _Change(command != nullptr ? command->key : "");
}
