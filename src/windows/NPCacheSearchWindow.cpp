#include "windows/NPCacheSearchWindow.h"

#include "messages/Messages.h"
#include "widgets/CLVContainerView.h"
#include "windows/MatchListView.h"
#include "windows/WindowSlot.h"
#include "workers/CacheSearchWorker.h"
#include "workers/WorkerThread.h"

#include <Button.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>
#include <TextView.h>

namespace {

constexpr uint32 kMsgGo = 'mCSG'; // the window's own button

const BRect kFrame(100, 100, 899, 539);
constexpr float kInset = 8;
constexpr float kRowHeight = 24;
constexpr float kButtonWidth = 88;
constexpr float kLabelWidth = 48;

WindowSlot& Slot() {
    static WindowSlot& slot = *new WindowSlot;
    return slot;
}

} // namespace

void NPCacheSearchWindow::Open() {
    Slot().Open([] { return new NPCacheSearchWindow; });
}

NPCacheSearchWindow::NPCacheSearchWindow()
    : OnceWindow(kFrame, "キャッシュから探す", B_TITLED_WINDOW,
                 B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE) {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(base);
    SetSizeLimits(400, 4000, 200, 4000);
    BRect row = base->Bounds().InsetByCopy(kInset, kInset);
    row.bottom = row.top + kRowHeight - 1;
    BRect text = row;
    text.right -= kButtonWidth + kInset;
    fText =
        new BTextControl(text, "text", "検索：", "", nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    fText->SetDivider(kLabelWidth);
    base->AddChild(fText);
    BRect button = row;
    button.left = row.right - kButtonWidth + 1;
    fButton =
        new BButton(button, "search", "検索", new BMessage(kMsgGo), B_FOLLOW_RIGHT | B_FOLLOW_TOP);
    base->AddChild(fButton);
    fButton->MakeDefault(true);
    BRect list = base->Bounds().InsetByCopy(kInset, kInset);
    list.top = row.bottom + kInset;
    list.bottom -= kRowHeight;
    fList = new MatchListView(list);
    base->AddChild(new CLVContainerView(list, fList));
    BRect status = list;
    status.top = list.bottom + 4;
    status.bottom = status.top + kRowHeight - 4;
    fStatus = new BStringView(status, "status", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
                              B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    base->AddChild(fStatus);
    fText->MakeFocus(true);
}

void NPCacheSearchWindow::ComeToFront() {
    OnceWindow::ComeToFront();
    fText->MakeFocus(true);
    fText->TextView()->SelectAll();
}

void NPCacheSearchWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgGo: _StartOrStop(); break;
    case kMsgCacheMatches: _AddMatches(message); break;
    case kMsgCacheSearched: _Ended(message); break;
    default: OnceWindow::MessageReceived(message);
    }
}

bool NPCacheSearchWindow::QuitRequested() {
    _Stop();
    Slot().Leave(BMessenger(this));
    return true;
}

void NPCacheSearchWindow::_StartOrStop() {
    if (fWorker == nullptr) {
        _Start();
        return;
    }
    _Stop();
    fStatus->SetText("中止しました。");
}

void NPCacheSearchWindow::_Start() {
    fList->MakeEmpty();
    fStatus->SetText("");
    auto job = std::make_unique<CacheSearchJob>();
    job->wanted = fText->Text();
    if (job->wanted.empty())
        return;
    job->window = BMessenger(this);
    job->control = std::make_shared<WorkerControl>("search_port");
    fWorker = job->control;
    if (SpawnWorker(searchCache, "searchCache", &job))
        fButton->SetLabel("中止");
    else
        fWorker.reset();
}

void NPCacheSearchWindow::_Stop() {
    if (fWorker != nullptr)
        fWorker->Stop();
    fWorker.reset();
    fButton->SetLabel("検索");
}

// What a search that was stopped still sends is dropped.
bool NPCacheSearchWindow::_IsOfWorker(const BMessage* message) const {
    int32 port = -1;
    return fWorker != nullptr && message->FindInt32("port", &port) == B_OK &&
           port == fWorker->Port();
}

void NPCacheSearchWindow::_AddMatches(const BMessage* message) {
    if (!_IsOfWorker(message))
        return;
    fList->AddMatches(message);
    _ShowCount(message, "…");
}

void NPCacheSearchWindow::_Ended(const BMessage* message) {
    if (!_IsOfWorker(message))
        return;
    bool limited = false;
    message->FindBool("limited", &limited);
    _ShowCount(message, limited ? "（これより多いので、ここまで）" : "");
    fWorker.reset();
    fButton->SetLabel("検索");
}

void NPCacheSearchWindow::_ShowCount(const BMessage* message, const char* end) {
    int32 files = 0;
    message->FindInt32("files", &files);
    const std::string text = std::to_string(fList->FullListCountItems()) + "件 — " +
                             std::to_string(files) + "スレッドを調べました" + end;
    fStatus->SetText(text.c_str());
}
