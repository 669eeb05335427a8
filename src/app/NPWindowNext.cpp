// The thread that goes on where the one on show ends.
#include "app/NPWindow.h"
#include "cache/NPBookmark.h"
#include "messages/Messages.h"
#include "text/Utf8Cut.h"
#include "views/NPArticleView.h"
#include "views/NPThreadView.h"
#include "widgets/Alerts.h"
#include "workers/WorkerThread.h"

#include <Alert.h>
#include <Invoker.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <string>
#include <vector>

namespace {

constexpr size_t kMostOffered = 3;
constexpr size_t kLongestLabel = 150; // bytes of a title
constexpr float kMenuReach = 5; // pixels around the pointer in which releasing keeps the menu open
constexpr int32 kMove = 1;      // the alert's button

std::string LabelOf(const ListedThread& thread) {
    std::string title = CutAtCharacter(thread.title.c_str(), kLongestLabel);
    if (title.size() < thread.title.size())
        title += "…";
    title.erase(title.find_last_not_of(' ') + 1); // lists leave one behind a title
    return title + " (" + std::to_string(thread.posts) + ")";
}

// What the menu's items and the alert say of a move from one thread to the next.
struct Step {
    BString url;
    BString dat;
    BString title;
    BString oldDat;

    bool Find(const BMessage* message) {
        return message->FindString("url", &url) == B_OK &&
               message->FindString("dat", &dat) == B_OK &&
               message->FindString("title", &title) == B_OK &&
               message->FindString("old_dat", &oldDat) == B_OK;
    }
};

} // namespace

void NPWindow::AddThreadItems(BMenu* menu) {
    if (!fArticleView->IsThreadAtItsEnd())
        return;
    menu->AddSeparatorItem();
    BMenuItem* item = new BMenuItem("次スレを探す", new BMessage(kMsgFindNextThread));
    item->SetTarget(this);
    menu->AddItem(item);
}

// In the list on show, if it is that of the thread's board. A list may be older than the thread
// that is looked for: the server knows better.
void NPWindow::_FindNextThread() {
    if (!fArticleView->IsThreadAtItsEnd())
        return;
    const ListedThread thread = {fArticleView->ThreadTitle(), fArticleView->Dat(),
                                 fArticleView->CountPosts()};
    std::vector<ListedThread> next;
    if (fThreadView != nullptr && fThreadView->ListsBoard(NPUrl(fArticleView->Url().c_str()))) {
        const std::vector<ListedThread> listed = fThreadView->ListedThreads();
        for (const size_t index : RankNextThreads(thread, listed, kMostOffered))
            next.push_back(listed[index]);
    }
    if (!next.empty())
        _OfferThreads(next);
    else if (GetOnlineMode())
        _FetchNextThreads(thread);
    else
        PostProgressData("次スレは見つかりませんでした（オフライン）", 0);
}

void NPWindow::_FetchNextThreads(const ListedThread& thread) {
    auto job = std::make_unique<NextThreadJob>();
    if (!_ReadProxy(&job->proxy))
        return;
    job->url = fArticleView->Url();
    job->thread = thread;
    job->window = fLink;
    job->control = std::make_shared<WorkerControl>("next_port");
    if (!_Replace(&fNextWorker, job->control))
        return;
    fNextFor = thread.dat;
    if (!SpawnWorker(getNextThreads, "getNextThreads", &job))
        fNextWorker.reset();
}

// The reader may have gone on to another thread meanwhile.
void NPWindow::_NextThreadsFound(const BMessage* message) {
    if (!_EndWorker(&fNextWorker, message) || fNextFor != fArticleView->Dat())
        return;
    std::vector<ListedThread> threads;
    BString title;
    BString dat;
    int32 count = 0;
    for (int32 i = 0; message->FindString("title", i, &title) == B_OK &&
                      message->FindString("dat", i, &dat) == B_OK &&
                      message->FindInt32("count", i, &count) == B_OK;
         i++)
        threads.push_back({title.String(), dat.String(), count});
    if (threads.empty())
        PostProgressData("次スレは見つかりませんでした", 0);
    else
        _OfferThreads(threads);
}

// At the pointer, unless that is elsewhere.
void NPWindow::_OfferThreads(const std::vector<ListedThread>& threads) {
    BPopUpMenu* menu = new BPopUpMenu("next threads", false, false);
    for (const ListedThread& thread : threads) {
        BMessage* message = new BMessage(kMsgOpenNextThread);
        message->AddString("url", fArticleView->Url().c_str());
        message->AddString("dat", thread.dat.c_str());
        message->AddString("title", thread.title.c_str());
        message->AddString("old_dat", fArticleView->Dat().c_str());
        menu->AddItem(new BMenuItem(LabelOf(thread).c_str(), message));
    }
    menu->SetTargetForItems(this);
    menu->SetAsyncAutoDestruct(true);
    BPoint where;
    uint32 buttons = 0;
    fArticleView->GetMouse(&where, &buttons);
    const BPoint inWindow = fArticleView->ConvertToWindow(where);
    const BPoint screen =
        ConvertToScreen(Bounds().Contains(inWindow)
                            ? inWindow
                            : fArticleView->ConvertToWindow(fArticleView->Bounds().LeftTop()));
    const BPoint reach(kMenuReach, kMenuReach);
    menu->Go(screen, true, true, BRect(screen - reach, screen + reach), true);
}

void NPWindow::_OpenNextThread(const BMessage* message) {
    Step step;
    if (!step.Find(message))
        return;
    BMessage selection(GetOnlineMode() ? kMsgThreadSelected : kMsgThreadSelectedCached);
    selection.AddString("url", step.url);
    selection.AddString("dat", step.dat);
    selection.AddString("title", step.title);
    PostMessage(&selection);
    const NPUrl url(step.url.String());
    if (fThreadView != nullptr && fThreadView->ListsBoard(url))
        fThreadView->SelectThread(url, step.dat.String());
    if (url.Status() == 0 && NPBookmark::HasBookmark(url.Host(), url.Board(), step.oldDat.String()))
        _AskForBookmark(*message);
}

// Nothing waits for the answer: the thread comes meanwhile.
void NPWindow::_AskForBookmark(const BMessage& step) {
    BString title;
    step.FindString("title", &title);
    const std::string text = "ブックマークを次のスレッドに移しますか？\n\n" +
                             CutAtCharacter(title.String(), kLongestLabel);
    BAlert* alert = new BAlert("", text.c_str(), "移さない", "移す");
    alert->SetShortcut(0, B_ESCAPE);
    BindAlert(alert, this);
    BMessage* answer = new BMessage(step);
    answer->what = kMsgMoveBookmark;
    BInvoker invoker(answer, this);
    alert->Go(&invoker);
}

void NPWindow::_MoveBookmark(const BMessage* message) {
    Step step;
    int32 which = -1;
    if (!step.Find(message) || message->FindInt32("which", &which) != B_OK || which != kMove)
        return;
    const NPUrl url(step.url.String());
    std::string trouble;
    const status_t status =
        NPBookmark::Make(step.url.String(), step.dat.String(), step.title.String(), &trouble);
    if (!trouble.empty())
        ShowAlert(this, trouble);
    // The old one goes only when the new one stands.
    if (status != B_OK || NPBookmark::Remove(url.Host(), url.Board(), step.oldDat.String()) != B_OK)
        return;
    if (fThreadView == nullptr)
        return;
    fThreadView->MarkThread(url, step.oldDat.String(), false);
    fThreadView->MarkThread(url, step.dat.String(), true);
}
