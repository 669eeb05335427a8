#include "windows/NPPrefsWindow.h"

#include "messages/Messages.h"
#include "settings/Habits.h"
#include "settings/SettingsFile.h"
#include "text/Utf8Cut.h"
#include "windows/NPFontMenu.h"
#include "windows/NPKeysWindow.h"
#include "windows/WindowSlot.h"
#include "workers/Jobs.h"

#include <Application.h>
#include <Box.h>
#include <Button.h>
#include <CheckBox.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <StringView.h>
#include <TabView.h>
#include <TextControl.h>

#include <cstdio>
#include <cstdlib>

namespace {

// The window's own controls.
constexpr uint32 kMsgEnableProxy = 'mPEN';
constexpr uint32 kMsgSizeChosen = 'mPSZ';
constexpr uint32 kMsgAccept = 'mPOK';
constexpr uint32 kMsgCancel = 'mPCC';

constexpr const char* kSizes[] = {"10", "12", "14", "16", "20", "24"};
constexpr const char* kBindings[] = {"Default", "Emacs"}; // by the setting's value

constexpr float kWidth = 380;
constexpr float kHeight = 308;
constexpr float kInset = 8;
constexpr float kTabHeight = 28;
constexpr float kBoxTop = 24; // below a box's label
constexpr float kBoxInset = 12;
constexpr float kRowHeight = 24;
constexpr float kRowStep = kRowHeight + 8;
constexpr float kLabelWidth = 108;
constexpr float kSampleHeight = 40;
constexpr float kButtonWidth = 88;

// The row number `index` in a box.
BRect Row(const BBox* box, int32 index) {
    BRect row = box->Bounds();
    row.left += kBoxInset;
    row.right -= kBoxInset;
    row.top = kBoxTop + static_cast<float>(index) * kRowStep;
    row.bottom = row.top + kRowHeight - 1;
    return row;
}

// The one to mark is found by its label; what is no choice is only shown.
template <size_t kCount>
BMenu* MakeMenu(const char* const (&labels)[kCount], const char* current, uint32 what) {
    BMenu* menu = new BPopUpMenu(current);
    for (const char* label : labels) {
        BMenuItem* item = new BMenuItem(label, new BMessage(what));
        menu->AddItem(item);
        item->SetMarked(BString(label) == current);
    }
    return menu;
}

void AddField(BBox* box, int32 row, const char* name, const char* label, BMenu* menu) {
    BMenuField* field = new BMenuField(Row(box, row), name, label, menu, true);
    field->SetDivider(label != nullptr ? kLabelWidth : 0);
    box->AddChild(field);
}

BTextControl* AddText(BBox* box, int32 row, const char* name, const char* label,
                      const BString& text) {
    BTextControl* control = new BTextControl(Row(box, row), name, label, text.String(), nullptr);
    control->SetDivider(kLabelWidth);
    box->AddChild(control);
    return control;
}

BView* MakeTab(BRect frame) {
    BView* base = new BView(frame, "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    return base;
}

WindowSlot& Slot() {
    static WindowSlot& slot = *new WindowSlot;
    return slot;
}

} // namespace

void NPPrefsWindow::Open(SettingsFile* settings) {
    Slot().Open([settings] { return new NPPrefsWindow(settings); });
}

bool NPPrefsWindow::QuitRequested() {
    Slot().Leave(BMessenger(this));
    return true;
}

NPPrefsWindow::NPPrefsWindow(SettingsFile* settings)
    : OnceWindow(BRect(0, 0, kWidth - 1, kHeight - 1), "設定", B_TITLED_WINDOW,
                 B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE),
      fSettings(settings) {
    BView* view = new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    view->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(view);
    BRect frame = view->Bounds().InsetByCopy(kInset, kInset);
    frame.bottom -= kRowHeight + kInset;
    BTabView* tabs = new BTabView(frame, "tab_view");
    tabs->SetTabHeight(kTabHeight);
    const BRect page = tabs->ContainerView()->Bounds();
    const auto addTab = [tabs](BView* contents, const char* label) {
        BTab* tab = new BTab;
        tabs->AddTab(contents, tab);
        tab->SetLabel(label);
    };
    addTab(_MakeGeneralTab(page), "一般");
    addTab(_MakeNetworkTab(page), "ネットワーク");
    addTab(_MakeReadingTab(page), "読み方");
    view->AddChild(tabs);
    _AddButtons(view);
    for (BMenu* menu : {static_cast<BMenu*>(fFontMenu), fSizeMenu, fKeyMenu})
        menu->SetTargetForItems(this);
    _ShowSample();
    _EnableProxy();
    FindView("font")->MakeFocus(true);
    CenterOnScreen();
}

BString NPPrefsWindow::_Setting(const char* key) const {
    BString text;
    fSettings->Get(key, &text);
    return text;
}

BView* NPPrefsWindow::_MakeGeneralTab(BRect frame) {
    BView* base = MakeTab(frame);
    BRect font = frame.OffsetToCopy(0, 0).InsetByCopy(kInset, kInset);
    font.bottom = font.top + kBoxTop + 2 * kRowStep + kSampleHeight + kBoxInset;
    base->AddChild(_MakeFontBox(font));
    BRect editor = font;
    editor.top = font.bottom + kInset;
    editor.bottom = editor.top + kBoxTop + kRowStep;
    base->AddChild(_MakeEditorBox(editor));
    return base;
}

NPFontMenu* NPPrefsWindow::GetFontMenu() const {
    return new NPFontMenu(_Setting("font_family").String(), _Setting("font_style").String());
}

BBox* NPPrefsWindow::_MakeFontBox(BRect frame) {
    BBox* box = new BBox(frame);
    box->SetLabel("フォント");
    fFontMenu = GetFontMenu();
    AddField(box, 0, "font", nullptr, fFontMenu);
    float size = 0;
    char label[16];
    fSettings->Get("font_size", &size);
    snprintf(label, sizeof(label), "%g", size);
    fSizeMenu = MakeMenu(kSizes, label, kMsgSizeChosen);
    AddField(box, 1, "size", "大きさ：", fSizeMenu);
    BRect sample = Row(box, 2);
    sample.bottom = sample.top + kSampleHeight - 1;
    fSample = new BStringView(sample, "sample", "あいう 漢字 Abc 123");
    box->AddChild(fSample);
    return box;
}

BBox* NPPrefsWindow::_MakeEditorBox(BRect frame) {
    BBox* box = new BBox(frame);
    box->SetLabel("書き込み");
    int32 binding = 0;
    fSettings->Get("key_binding", &binding);
    const bool isKnown = binding == 0 || binding == 1;
    fKeyMenu = MakeMenu(kBindings, isKnown ? kBindings[binding] : "", 0);
    AddField(box, 0, "key", "Key Bindings：", fKeyMenu);
    return box;
}

BView* NPPrefsWindow::_MakeNetworkTab(BRect frame) {
    BView* base = MakeTab(frame);
    BRect proxy = frame.OffsetToCopy(0, 0).InsetByCopy(kInset, kInset);
    proxy.bottom = proxy.top + kBoxTop + 3 * kRowStep;
    BBox* box = new BBox(proxy);
    box->SetLabel("プロキシ");
    bool use = false;
    fSettings->Get("proxy", &use);
    fProxy =
        new BCheckBox(Row(box, 0), "enable", "プロキシを有効にする", new BMessage(kMsgEnableProxy));
    fProxy->SetValue(use ? B_CONTROL_ON : B_CONTROL_OFF);
    box->AddChild(fProxy);
    fHost = AddText(box, 1, "host", "ホスト：", _Setting("proxy_host"));
    fPort = AddText(box, 2, "port", "ポート：", _Setting("proxy_port"));
    base->AddChild(box);
    return base;
}

BView* NPPrefsWindow::_MakeReadingTab(BRect frame) {
    BView* base = MakeTab(frame);
    BRect habits = frame.OffsetToCopy(0, 0).InsetByCopy(kInset, kInset);
    habits.bottom = habits.top + kBoxTop + 3 * kRowStep;
    BBox* box = new BBox(habits);
    box->SetLabel("読み方");
    fSpaceFetches =
        _AddHabit(box, 0, kSpaceFetches, "スペースキーで最後まで読んだら、新着を取得する");
    fReopens = _AddHabit(box, 1, kReopensWindows, "起動したとき、前に開いていたウィンドウを開く");
    box->AddChild(new BButton(Row(box, 2).InsetByCopy(0, 0), "keys", "キーの一覧と変更",
                              new BMessage(kMsgOpenKeys)));
    base->AddChild(box);
    return base;
}

BCheckBox* NPPrefsWindow::_AddHabit(BBox* box, int32 row, const char* key, const char* label) {
    bool isOn = false;
    fSettings->Get(key, &isOn);
    BCheckBox* habit = new BCheckBox(Row(box, row), key, label, nullptr);
    habit->SetValue(isOn ? B_CONTROL_ON : B_CONTROL_OFF);
    box->AddChild(habit);
    return habit;
}

void NPPrefsWindow::_AddButtons(BView* view) {
    BRect frame = view->Bounds().InsetByCopy(kInset, kInset);
    frame.top = frame.bottom - kRowHeight + 1;
    frame.left = frame.right - kButtonWidth + 1;
    const BRect cancel = frame.OffsetByCopy(-kButtonWidth - kInset, 0);
    view->AddChild(new BButton(cancel, "cancel", "Cancel", new BMessage(kMsgCancel)));
    BButton* ok = new BButton(frame, "ok", "OK", new BMessage(kMsgAccept));
    view->AddChild(ok);
    ok->MakeDefault(true);
}

void NPPrefsWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgFontChosen: _ChooseFont(message); break;
    case kMsgSizeChosen: _ShowSample(); break;
    case kMsgEnableProxy: _EnableProxy(); break;
    case kMsgOpenKeys: NPKeysWindow::Open(fSettings); break;
    case kMsgAccept: _Accept(); break;
    case kMsgCancel: PostMessage(B_QUIT_REQUESTED); break;
    default: OnceWindow::MessageReceived(message);
    }
}

void NPPrefsWindow::_ChooseFont(const BMessage* message) {
    BString family;
    BString style;
    if (message->FindString("family", &family) != B_OK ||
        message->FindString("style", &style) != B_OK)
        return;
    fFontMenu->Choose(family.String(), style.String());
    _ShowSample();
}

// The article as it will be.
void NPPrefsWindow::_ShowSample() {
    BFont font(be_plain_font);
    BString family;
    BString style;
    if (fFontMenu->GetChosen(&family, &style))
        font.SetFamilyAndStyle(family.String(), style.String());
    float size = 0;
    if (const BMenuItem* item = fSizeMenu->FindMarked())
        font.SetSize(strtof(item->Label(), nullptr));
    else if (fSettings->Get("font_size", &size) == B_OK && size > 0)
        font.SetSize(size);
    fSample->SetFont(&font);
    fSample->Invalidate();
}

void NPPrefsWindow::_EnableProxy() {
    const bool enabled = fProxy->Value() == B_CONTROL_ON;
    fHost->SetEnabled(enabled);
    fPort->SetEnabled(enabled);
}

void NPPrefsWindow::_Accept() {
    _StoreProxy();
    _StoreKeyBinding();
    _StoreHabits();
    _SendFont();
    PostMessage(B_QUIT_REQUESTED);
}

void NPPrefsWindow::_StoreProxy() {
    fSettings->PutAt("proxy_host", 0, CutAtCharacter(fHost->Text(), kLongestProxyHost).c_str());
    fSettings->PutAt("proxy_port", 0, CutAtCharacter(fPort->Text(), kLongestProxyPort).c_str());
    fSettings->PutAt("proxy", 0, fProxy->Value() == B_CONTROL_ON);
}

void NPPrefsWindow::_StoreKeyBinding() {
    if (BMenuItem* item = fKeyMenu->FindMarked())
        fSettings->Replace("key_binding", fKeyMenu->IndexOf(item));
}

// Off is what nobody has to write down.
void NPPrefsWindow::_StoreHabits() {
    for (const BCheckBox* habit : {fSpaceFetches, fReopens}) {
        bool was = false;
        fSettings->Get(habit->Name(), &was);
        const bool isOn = habit->Value() == B_CONTROL_ON;
        if (isOn != was)
            fSettings->PutAt(habit->Name(), 0, isOn);
    }
}

void NPPrefsWindow::_SendFont() {
    BMessage font(kMsgFontChanged);
    BString family;
    BString style;
    if (fFontMenu->GetChosen(&family, &style)) {
        font.AddString("family", family);
        font.AddString("style", style);
    }
    if (const BMenuItem* item = fSizeMenu->FindMarked())
        font.AddFloat("size", strtof(item->Label(), nullptr));
    be_app_messenger.SendMessage(&font);
}
