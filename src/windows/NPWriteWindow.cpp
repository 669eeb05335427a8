#include "windows/NPWriteWindow.h"

#include "messages/Messages.h"
#include "net/NPUrl.h"
#include "post/PostForm.h"
#include "post/PostWorker.h"
#include "text/Utf8Cut.h"
#include "views/OwnPostStore.h"
#include "widgets/Alerts.h"
#include "windows/WriteWindowSlots.h"
#include "workers/WorkerThread.h"

#include <Alert.h>
#include <Button.h>
#include <MenuField.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <Screen.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <StringView.h>
#include <TextControl.h>

#include <cstring>
#include <ctime>

namespace {

constexpr float kInset = 8;
constexpr float kRowHeight = 24;
constexpr float kRowStep = kRowHeight + 4;
constexpr float kMenuWidth = 72;
constexpr float kLabelWidth = 60;
constexpr float kButtonWidth = 96;
constexpr float kFooterHeight = kRowHeight + 2 * kInset;
constexpr float kDefaultWidth = 520;
constexpr float kDefaultHeight = 380;
constexpr float kLeastWidth = 360;
constexpr float kLeastHeight = 240;

constexpr const char* kNotKept = "下書きを保存できません。";
constexpr bigtime_t kKeepAfter = 3000000; // microseconds after the last key

constexpr float kHeadHeight = 20;
constexpr size_t kLongestTitle = 255; // bytes
constexpr size_t kLongestLabel = 90;  // bytes; about 30 characters
const BRect kAnyScreen(-100000, -100000, 100000, 100000);

// Where a window of a kept frame stands: in the middle of the screen without one, or with one whose
// head could not be reached there.
BRect UsableFrame(BRect frame) {
    const BRect screen = BScreen().Frame();
    const BRect head(frame.left, frame.top, frame.right, frame.top + kHeadHeight);
    if (frame != BRect(0, 0, 0, 0) && frame.IsValid() && kAnyScreen.Contains(frame) &&
        screen.Intersects(head))
        return frame;
    const float left = (screen.left + screen.right - kDefaultWidth) / 2;
    const float top = (screen.top + screen.bottom - kDefaultHeight) / 2;
    return BRect(left, top, left + kDefaultWidth, top + kDefaultHeight);
}

std::string LabelOf(const std::string& entry) {
    if (entry.size() <= kLongestLabel)
        return entry;
    return CutAtCharacter(entry.c_str(), kLongestLabel) + "…";
}

// The newest entry stands first.
BMenu* MakeHistoryMenu(const PostHistory& history, uint32 what) {
    BPopUpMenu* menu = new BPopUpMenu("履歴", false, false);
    const std::vector<std::string>& entries = history.Entries();
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        BMessage* message = new BMessage(what);
        message->AddString("text", entry->c_str());
        menu->AddItem(new BMenuItem(LabelOf(*entry).c_str(), message));
    }
    return menu;
}

} // namespace

void NPWriteWindow::Open(const WriteWindowSetup& setup) {
    WriteWindowSlotOf(setup.target).Open([&] { return new NPWriteWindow(setup); });
}

NPWriteWindow::NPWriteWindow(const WriteWindowSetup& setup)
    : OnceWindow(UsableFrame(setup.frame),
                 CutAtCharacter(("書き込み - " + setup.title).c_str(), kLongestTitle).c_str(),
                 B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS),
      fTarget(setup.target), fRes(setup.res), fProxy(setup.proxy), fBrowser(setup.browser),
      fKeepFrame(setup.keepFrame), fDraft(setup.target), fNames("Name.log"), fMails("Mail.log") {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(base);
    _AddFields(base);
    _AddEditor(base, setup.font, setup.bindings);
    _AddButtons(base);
    AddShortcut(B_ENTER, 0, new BMessage(kMsgSendPost));
    const BRect screen = BScreen(this).Frame();
    SetSizeLimits(kLeastWidth, screen.Width(), kLeastHeight, screen.Height());
    _ShowDraft();
    SetPulseRate(0); // no timer runs while nothing is typed
    fMessage->MakeFocus(true);
}

NPWriteWindow::~NPWriteWindow() {
    if (fWorker != nullptr)
        fWorker->Stop();
}

void NPWriteWindow::_AddFields(BView* base) {
    fName = _AddField(base, kInset, "name", "名前：", fNames, kMsgNameChosen);
    fMail = _AddField(base, kInset + kRowStep, "mail", "E-mail：", fMails, kMsgMailChosen);
}

BTextControl* NPWriteWindow::_AddField(BView* base, float top, const char* name, const char* label,
                                       const PostHistory& history, uint32 chosen) {
    const float right = base->Bounds().right - kInset;
    const float menuLeft = right - kMenuWidth;
    BTextControl* field = new BTextControl(BRect(kInset, top, menuLeft - 4, top + kRowHeight), name,
                                           label, "", nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    field->SetDivider(kLabelWidth);
    field->SetModificationMessage(new BMessage(kMsgTextChanged));
    base->AddChild(field);
    BMenu* menu = MakeHistoryMenu(history, chosen);
    BMenuField* menuField = new BMenuField(BRect(menuLeft, top, right, top + kRowHeight),
                                           (std::string(name) + " menu").c_str(), nullptr, menu,
                                           true, B_FOLLOW_RIGHT | B_FOLLOW_TOP);
    menuField->SetDivider(0);
    menuField->SetEnabled(menu->CountItems() > 0);
    base->AddChild(menuField);
    menu->SetTargetForItems(this);
    return field;
}

void NPWriteWindow::_AddEditor(BView* base, const BFont& font, NPWriteTextView::Bindings bindings) {
    BRect frame = base->Bounds();
    frame.top += kInset + 2 * kRowStep + 4;
    frame.bottom -= kFooterHeight;
    frame.left += kInset;
    frame.right -= kInset;
    BRect text = frame;
    text.right -= B_V_SCROLL_BAR_WIDTH + 1;
    fMessage = new NPWriteTextView(text.OffsetToCopy(0, 0), bindings);
    fMessage->SetFontAndColor(&font);
    BScrollView* scroll =
        new BScrollView("scroll", fMessage, B_FOLLOW_ALL_SIDES, 0, false, true, B_PLAIN_BORDER);
    scroll->MoveTo(frame.LeftTop());
    scroll->ResizeTo(frame.Width(), frame.Height());
    base->AddChild(scroll);
}

void NPWriteWindow::_AddButtons(BView* base) {
    const BRect bounds = base->Bounds();
    const float top = bounds.bottom - kInset - kRowHeight;
    const float right = bounds.right - kInset;
    const BRect send(right - kButtonWidth, top, right, top + kRowHeight);
    const BRect cancel = send.OffsetByCopy(-kButtonWidth - 8, 0);
    fStatus = new BStringView(BRect(kInset, top, cancel.left - 8, top + kRowHeight), "status", "",
                              B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
                              B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    base->AddChild(fStatus);
    const uint32 follow = B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM;
    base->AddChild(new BButton(cancel, "cancel", "取り消し", new BMessage(kMsgCancelPost), follow));
    fSendButton = new BButton(send, "send", "書き込む", new BMessage(kMsgSendPost), follow);
    base->AddChild(fSendButton);
}

void NPWriteWindow::_ShowDraft() {
    WrittenPost draft;
    const status_t status = fDraft.Load(&draft);
    if (status != B_OK) {
        fStatus->SetText(status == B_ENTRY_NOT_FOUND ? "" : "下書きを読み込めませんでした。");
        return;
    }
    fName->SetText(draft.name.c_str());
    fMail->SetText(draft.mail.c_str());
    fMessage->SetText(draft.message.c_str());
    fMessage->Select(fMessage->TextLength(), fMessage->TextLength());
}

WrittenPost NPWriteWindow::_Text() const {
    return {fName->Text(), fMail->Text(),
            std::string(fMessage->Text(), static_cast<size_t>(fMessage->TextLength()))};
}

void NPWriteWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgSendPost: _Send(); break;
    case kMsgCancelPost: PostMessage(B_QUIT_REQUESTED); break;
    case kMsgNameChosen: _SetText(fName, message); break;
    case kMsgMailChosen: _SetText(fMail, message); break;
    case kMsgTextChanged: _KeepSoon(); break;
    case kMsgTextRests: _KeepNow(); break;

    // From the worker
    case kMsgPostProgress: _ShowProgress(message); break;
    case kMsgPostFailed: _PostFailed(message); break;
    case kMsgPostDone: _PostDone(message); break;

    default: OnceWindow::MessageReceived(message);
    }
}

void NPWriteWindow::_SetText(BTextControl* field, const BMessage* message) {
    BString text;
    if (!field->IsEnabled() || message->FindString("text", &text) != B_OK)
        return;
    field->SetText(text.String());
    _KeepSoon();
}

// The pulse comes that long after the last change.
void NPWriteWindow::_KeepSoon() {
    SetPulseRate(kKeepAfter);
}

// A crash then loses no more than was typed since.
void NPWriteWindow::_KeepNow() {
    SetPulseRate(0);
    if (fFinish != Finish::kNone)
        return;
    const bool isKept = fDraft.Save(_Text()) == B_OK;
    if (!isKept)
        fStatus->SetText(kNotKept);
    else if (strcmp(fStatus->Text(), kNotKept) == 0)
        fStatus->SetText("");
}

void NPWriteWindow::_Send() {
    if (fWorker != nullptr || fFinish != Finish::kNone)
        return;
    auto form = std::make_unique<PostForm>();
    switch (MakePostForm(fTarget, _Text(), time(nullptr), form.get())) {
    case PostCheck::kNoMessage: ShowAlert(this, "メッセージが入力されていません。"); return;
    case PostCheck::kNotEncodable: ShowAlert(this, "使用できない文字が含まれている？"); return;
    case PostCheck::kGood: _Start(std::move(form));
    }
}

// The draft is written first: neither a crash nor a lost answer loses the text.
void NPWriteWindow::_Start(std::unique_ptr<PostForm> form) {
    fDraft.Save(_Text());
    auto job = std::make_unique<PostJob>();
    job->target = fTarget;
    job->form = std::move(*form);
    job->proxy = fProxy;
    job->window = BMessenger(this);
    job->control = fWorker = std::make_shared<WorkerControl>("post_port");
    if (SpawnWorker(postMessage, "postMessage", &job))
        _SetUsable(false);
    else
        _EndWorker();
}

// What is disabled loses the focus; it gets it back.
void NPWriteWindow::_SetUsable(bool usable) {
    if (!usable)
        fFocus = CurrentFocus();
    fName->SetEnabled(usable);
    fMail->SetEnabled(usable);
    for (const char* menu : {"name menu", "mail menu"}) {
        BMenuField* field = static_cast<BMenuField*>(FindView(menu));
        field->SetEnabled(usable && field->Menu()->CountItems() > 0);
    }
    fMessage->MakeUsable(usable);
    fSendButton->SetEnabled(usable);
    if (usable && fFocus != nullptr && CurrentFocus() == nullptr)
        fFocus->MakeFocus(true);
}

void NPWriteWindow::_EndWorker() {
    if (fWorker == nullptr)
        return;
    fWorker->DeletePort();
    fWorker->ReleaseCursor();
    fWorker.reset();
}

void NPWriteWindow::_ShowProgress(const BMessage* message) {
    BString text;
    if (message->FindString("message", &text) == B_OK)
        fStatus->SetText(text.String());
}

void NPWriteWindow::_PostFailed(const BMessage* message) {
    bool hasBeenTold = false;
    _EndWorker();
    _SetUsable(true);
    if (message->FindBool("dialog", &hasBeenTold) != B_OK)
        ShowAlert(this, "書き込み失敗！");
}

// A lost answer counts as done, as the post may have arrived; its draft stays until one of it is
// known to have. Nothing can be used any more: a second press of a key sends nothing twice.
void NPWriteWindow::_PostDone(const BMessage* message) {
    bool isUnconfirmed = false;
    if (fWorker == nullptr)
        return;
    message->FindBool("unconfirmed", &isUnconfirmed);
    _EndWorker();
    fFinish = isUnconfirmed ? Finish::kUnconfirmed : Finish::kConfirmed;
    fNames.Add(fName->Text());
    fMails.Add(fMail->Text());
    const NPUrl url(fTarget.BoardUrl().c_str());
    if (url.Status() == 0)
        RememberSent(url.Host(), url.Board(), fTarget.DatName().c_str(), fMessage->Text());
    _ReloadThread();
    PostMessage(B_QUIT_REQUESTED);
}

void NPWriteWindow::_ReloadThread() {
    BMessage select(kMsgThreadSelected);
    select.AddString("dat", fTarget.DatName().c_str());
    select.AddString("url", fTarget.BoardUrl().c_str());
    if (fTarget.family == PostFamily::kWriteCgi)
        select.AddInt32("res", fRes);
    fBrowser.SendMessage(&select);
}

// False when the text can't be kept and the user would rather go on.
bool NPWriteWindow::_KeepDraft() {
    if (fFinish == Finish::kConfirmed) {
        fDraft.Remove();
        return true;
    }
    if (fDraft.Save(_Text()) == B_OK)
        return true;
    const std::string text = std::string(kNotKept) + "\n閉じると書いた文章は失われます。";
    BAlert* alert =
        new BAlert("", text.c_str(), "戻る", "閉じる", nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT);
    BindAlert(alert, this);
    return alert->Go() == 1;
}

bool NPWriteWindow::QuitRequested() {
    if (!_KeepDraft()) {
        if (fFinish != Finish::kNone)
            _SetUsable(true);
        fFinish = Finish::kNone;
        return false;
    }
    if (fWorker != nullptr)
        fWorker->Stop();
    fWorker.reset();
    if (fKeepFrame)
        fKeepFrame(Frame());
    WriteWindowSlotOf(fTarget).Leave(BMessenger(this));
    return true;
}
