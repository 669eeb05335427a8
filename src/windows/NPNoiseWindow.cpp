#include "windows/NPNoiseWindow.h"

#include "messages/Messages.h"
#include "noise/NoiseStore.h"
#include "noise/Pattern.h"
#include "settings/ReplaceFile.h"
#include "widgets/CLVContainerView.h"
#include "windows/NoiseListView.h"
#include "windows/WindowSlot.h"

#include <Application.h>
#include <Button.h>
#include <CheckBox.h>
#include <FindDirectory.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <Path.h>
#include <PopUpMenu.h>
#include <StringView.h>
#include <TextControl.h>

#include <algorithm>

namespace {

// The window's own controls.
constexpr uint32 kMsgAdd = 'mNGA';
constexpr uint32 kMsgChange = 'mNGE';
constexpr uint32 kMsgRemove = 'mNGD';
constexpr uint32 kMsgAnswers = 'mNGR';
constexpr uint32 kMsgExport = 'mNGX';
constexpr uint32 kMsgImport = 'mNGI';

const BRect kFrame(80, 80, 879, 519);
constexpr float kInset = 8;
constexpr float kRowHeight = 24;
constexpr float kRowStep = kRowHeight + 6;
constexpr float kButtonWidth = 88;
constexpr float kKindWidth = 96;
constexpr float kPatternWidth = 96;
constexpr float kBoardWidth = 240;
constexpr int kRowCount = 4; // below the list
constexpr uint32 kFollow = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM;

WindowSlot& Slot() {
    static WindowSlot& slot = *new WindowSlot;
    return slot;
}

BString DefaultFile() {
    BPath path;
    if (find_directory(B_USER_DIRECTORY, &path) != B_OK)
        return "NG.txt";
    path.Append("NG.txt");
    return path.Path();
}

BRect Right(BRect row, float width, int place) {
    row.right -= static_cast<float>(place) * (width + kInset);
    row.left = row.right - width + 1;
    return row;
}

BTextControl* AddText(BView* base, BRect frame, const char* name, const char* label, float divider,
                      uint32 follow) {
    BTextControl* control = new BTextControl(frame, name, label, "", nullptr, follow);
    control->SetDivider(divider);
    base->AddChild(control);
    return control;
}

void AddButton(BView* base, BRect frame, const char* name, const char* label, uint32 code) {
    base->AddChild(
        new BButton(frame, name, label, new BMessage(code), B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM));
}

} // namespace

void NPNoiseWindow::Open() {
    Slot().Open([] { return new NPNoiseWindow; });
}

bool NPNoiseWindow::QuitRequested() {
    Slot().Leave(BMessenger(this));
    return true;
}

NPNoiseWindow::NPNoiseWindow()
    : OnceWindow(kFrame, "NG", B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE) {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(base);
    SetSizeLimits(640, 4000, 320, 4000);
    BRect list = base->Bounds().InsetByCopy(kInset, kInset);
    list.bottom -= kRowCount * kRowStep;
    _AddList(base, list);
    BRect row = list;
    row.top = list.bottom + kInset;
    row.bottom = row.top + kRowHeight - 1;
    _AddRuleFields(base, row);
    _AddFileFields(base, row.OffsetByCopy(0, 2 * kRowStep));
    _ShowRules();
    fText->MakeFocus(true);
}

void NPNoiseWindow::_AddList(BView* base, BRect frame) {
    fList = new NoiseListView(frame);
    base->AddChild(new CLVContainerView(frame, fList));
}

void NPNoiseWindow::_AddRuleFields(BView* base, BRect row) {
    BMenu* kinds = new BPopUpMenu("kind");
    for (const char* label : {"ID", "名前", "語"})
        kinds->AddItem(new BMenuItem(label, nullptr));
    kinds->ItemAt(2)->SetMarked(true);
    BRect frame = row;
    frame.right = frame.left + kKindWidth - 1;
    fKind = new BMenuField(frame, "kind", nullptr, kinds, true, B_FOLLOW_LEFT | B_FOLLOW_BOTTOM);
    fKind->SetDivider(0);
    base->AddChild(fKind);
    frame.left = frame.right + kInset;
    frame.right = row.right - kPatternWidth - kInset;
    fText = AddText(base, frame, "text", nullptr, 0, kFollow);
    fPattern = new BCheckBox(Right(row, kPatternWidth, 0), "pattern", "正規表現", nullptr,
                             B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
    base->AddChild(fPattern);

    row.OffsetBy(0, kRowStep);
    frame = row;
    frame.right = frame.left + kBoardWidth - 1;
    fBoard = AddText(base, frame, "board", "板：", 32, B_FOLLOW_LEFT | B_FOLLOW_BOTTOM);
    frame.left = frame.right + kInset;
    frame.right = row.right - 3 * (kButtonWidth + kInset);
    fStatus = new BStringView(frame, "status", "", kFollow, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    base->AddChild(fStatus);
    AddButton(base, Right(row, kButtonWidth, 2), "add", "追加", kMsgAdd);
    AddButton(base, Right(row, kButtonWidth, 1), "change", "変更", kMsgChange);
    AddButton(base, Right(row, kButtonWidth, 0), "remove", "削除", kMsgRemove);
}

void NPNoiseWindow::_AddFileFields(BView* base, BRect row) {
    fAnswers = new BCheckBox(row, "answers", "隠したレスへの返信も隠す", new BMessage(kMsgAnswers),
                             B_FOLLOW_LEFT | B_FOLLOW_BOTTOM);
    base->AddChild(fAnswers);
    row.OffsetBy(0, kRowStep);
    BRect frame = row;
    frame.right -= 2 * (kButtonWidth + kInset);
    fFile = AddText(base, frame, "file", "ファイル：", 64, kFollow);
    fFile->SetText(DefaultFile().String());
    AddButton(base, Right(row, kButtonWidth, 1), "export", "書き出す", kMsgExport);
    AddButton(base, Right(row, kButtonWidth, 0), "import", "読み込む", kMsgImport);
}

void NPNoiseWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgAdd: _Add(); break;
    case kMsgChange: _Change(); break;
    case kMsgRemove: _Remove(); break;
    case kMsgAnswers: _HideAnswers(); break;
    case kMsgExport: _Export(); break;
    case kMsgImport: _Import(); break;
    case NoiseListView::kMsgRuleChosen: _ShowRule(); break;
    case kMsgNoiseChanged: _ShowRules(); break;
    default: OnceWindow::MessageReceived(message);
    }
}

void NPNoiseWindow::_ShowRules() {
    fRules = NoiseStore::Shared().Rules();
    fList->ShowRules(fRules);
    fAnswers->SetValue(fRules.hidesAnswers ? B_CONTROL_ON : B_CONTROL_OFF);
}

void NPNoiseWindow::_ShowRule() {
    const int32 index = fList->SelectedRule();
    if (index < 0)
        return;
    const NoiseRule& rule = fRules.list[static_cast<size_t>(index)];
    fKind->Menu()->ItemAt(static_cast<int32>(rule.kind))->SetMarked(true);
    fText->SetText(rule.text.c_str());
    fPattern->SetValue(rule.isPattern ? B_CONTROL_ON : B_CONTROL_OFF);
    fBoard->SetText(rule.board.c_str());
    _Say(rule.failure);
}

void NPNoiseWindow::_Say(const std::string& text) {
    fStatus->SetText(text.c_str());
}

// False after saying why it is none.
bool NPNoiseWindow::_RuleInFields(NoiseRule* rule) {
    rule->kind = static_cast<NoiseKind>(fKind->Menu()->IndexOf(fKind->Menu()->FindMarked()));
    rule->isPattern = fPattern->Value() == B_CONTROL_ON;
    rule->text = fText->Text();
    rule->board = fBoard->Text();
    std::string error;
    if (rule->text.empty())
        error = "規則が空です。";
    else if (rule->isPattern && Pattern::Make(rule->text, &error) == nullptr)
        error = "正規表現が正しくありません。" + error;
    _Say(error);
    return error.empty();
}

void NPNoiseWindow::_Store(const NoiseRules& rules) {
    if (NoiseStore::Shared().SetRules(rules) != B_OK)
        _Say("ファイルに保存できません。終了するまでは効いています。");
    _ShowRules();
    be_app_messenger.SendMessage(kMsgNoiseChanged);
}

void NPNoiseWindow::_Add() {
    NoiseRule rule;
    if (!_RuleInFields(&rule))
        return;
    NoiseRules rules = NoiseStore::Shared().Rules();
    const bool isThere = std::ranges::any_of(
        rules.list, [&rule](const NoiseRule& other) { return other.IsSame(rule); });
    if (isThere)
        return _Say("同じ規則があります。");
    rules.list.push_back(rule);
    _Store(rules);
}

// A rule that was switched off gets another try.
void NPNoiseWindow::_Change() {
    const int32 index = fList->SelectedRule();
    NoiseRule fresh;
    if (index < 0)
        return _Say("規則を選んでください。");
    if (!_RuleInFields(&fresh))
        return;
    NoiseRules rules = NoiseStore::Shared().Rules();
    const NoiseRule& listed = fRules.list[static_cast<size_t>(index)];
    for (NoiseRule& rule : rules.list) {
        if (!rule.IsSame(listed))
            continue;
        const bool isOfSameId = fresh.kind == NoiseKind::kId && fresh.text == rule.text;
        fresh.day = isOfSameId ? rule.day : "";
        fresh.hits = rule.hits;
        fresh.lastHit = rule.lastHit;
        rule = fresh;
        return _Store(rules);
    }
}

void NPNoiseWindow::_Remove() {
    const int32 index = fList->SelectedRule();
    if (index < 0)
        return _Say("規則を選んでください。");
    NoiseRules rules = NoiseStore::Shared().Rules();
    const NoiseRule& listed = fRules.list[static_cast<size_t>(index)];
    std::erase_if(rules.list, [&listed](const NoiseRule& rule) { return rule.IsSame(listed); });
    _Say("");
    _Store(rules);
}

void NPNoiseWindow::_HideAnswers() {
    NoiseRules rules = NoiseStore::Shared().Rules();
    rules.hidesAnswers = fAnswers->Value() == B_CONTROL_ON;
    _Store(rules);
}

void NPNoiseWindow::_Export() {
    const status_t status =
        ReplaceFile(fFile->Text(), WriteNoiseRules(NoiseStore::Shared().Rules()));
    _Say(status == B_OK ? "書き出しました。" : "このファイルには書き出せません。");
}

// What is there already stays.
void NPNoiseWindow::_Import() {
    std::string text;
    std::string error;
    NoiseRules read;
    size_t skipped = 0;
    if (ReadWholeFile(fFile->Text(), &text) != B_OK)
        return _Say("このファイルは読めません。");
    if (!ReadNoiseRules(text, &read, &skipped, &error))
        return _Say(error);
    NoiseRules rules = NoiseStore::Shared().Rules();
    size_t added = 0;
    for (const NoiseRule& rule : read.list) {
        const bool isThere = std::ranges::any_of(
            rules.list, [&rule](const NoiseRule& other) { return other.IsSame(rule); });
        if (isThere)
            continue;
        rules.list.push_back(rule);
        added++;
    }
    _Store(rules);
    _Say(std::to_string(added) + "件を読み込みました。" +
         (skipped > 0 ? std::to_string(skipped) + "行は規則ではありません。" : ""));
}
