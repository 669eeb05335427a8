#include "app/NPWindow.h"
#include "cache/NPBookmark.h"
#include "messages/Messages.h"
#include "views/NPThreadView.h"
#include "widgets/Alerts.h"
#include "windows/NPPatrolWindow.h"
#include "windows/PatrolPlan.h"

#include <AppDefs.h>
#include <Application.h>
#include <Message.h>
#include <Roster.h>

namespace {
constexpr const char* kFolderType = "application/x-vnd.Be-directory";
}

void NPWindow::_ListBookmarks() {
    if (!fThreadOnly && !fPatrolling)
        BookmarkSelected();
}

void NPWindow::OpenBookmarkFolder() {
    const std::string path = NPBookmark::FolderPath();
    const char* const arguments[] = {path.c_str()};
    std::string trouble;
    if (NPBookmark::InitDir(path.c_str(), &trouble) == 0)
        be_roster->Launch(kFolderType, 1, arguments);
    else
        ShowAlert(this, trouble);
}

void NPWindow::_StartPatrol() {
    if (fThreadOnly)
        return;
    BLooper* running = nullptr;
    if (fPatrolling) {
        if (fPatrolWindow.LockTarget()) {
            fPatrolWindow.Target(&running);
            static_cast<BWindow*>(running)->Activate(true);
            running->Unlock();
        }
        return;
    }
    ProxySetting proxy;
    if (!_ReadProxy(&proxy))
        return;
    NPPatrolWindow* patrol = new NPPatrolWindow(BMessenger(this), Frame());
    fPatrolWindow = BMessenger(patrol);
    patrol->Show();
    fPatrolling = true;
    fAsksPatrol = false;
    // A patrol always downloads.
    if (!GetOnlineMode())
        be_app_messenger.SendMessage(kMsgToggleOnline);
    BookmarkSelected();
    if (fSubjectWorker == nullptr)
        fPatrolWindow.SendMessage(B_QUIT_REQUESTED);
}

// Once, until it has answered: a second answer would count a visit twice.
void NPWindow::_AskPatrolForNext() {
    if (!fPatrolling || fAsksPatrol)
        return;
    fPatrolWindow.SendMessage(kMsgStepEnded);
    fAsksPatrol = true;
}

void NPWindow::_VisitNext(const BMessage* message) {
    int32 visits = 0;
    fAsksPatrol = false;
    // What is under way asks again as it ends: the list, or a thread that the user has chosen.
    if (!fPatrolling || fSubjectWorker != nullptr || fArticleWorker != nullptr ||
        message->FindInt32("index", &visits) != B_OK)
        return;
    ProxySetting proxy;
    if (!_ReadProxy(&proxy)) {
        fPatrolWindow.SendMessage(B_QUIT_REQUESTED);
        return;
    }
    const PatrolStep step = NextPatrolStep(fThreadView->BookmarkNumbers(), visits);
    switch (step.kind) {
    case PatrolStep::Kind::kVisit: _Visit(fThreadView->List()->ThreadAt(step.row)); break;
    case PatrolStep::Kind::kFinish: fPatrolWindow.SendMessage(B_QUIT_REQUESTED); break;
    case PatrolStep::Kind::kHalt: break;
    }
}

void NPWindow::_Visit(NPThreadItem* item) {
    BMessage selection;
    selection.AddString("dat", item->Dat());
    selection.AddString("url", item->Url());
    selection.AddInt32("res", item->Gotten());
    selection.AddBool("bookmark", true);
    ThreadSelected(&selection);
    fVisit = fArticleWorker;
    fThreadView->SelectNumber(item->Number());
    BMessage visiting(kMsgVisiting);
    visiting.AddPointer("item", item);
    visiting.AddString("title", item->ColumnText(kColumnTitle));
    fPatrolWindow.SendMessage(&visiting);
    // A thread that can't even be asked for holds up nothing.
    if (fArticleWorker == nullptr)
        _AskPatrolForNext();
}

// The visit under way ends with the patrol, without an alert. A thread that the user has chosen
// meanwhile goes on.
void NPWindow::_EndPatrol() {
    if (!fPatrolling)
        return;
    fPatrolling = false;
    fPatrolWindow = BMessenger();
    if (fArticleWorker != nullptr && fArticleWorker == fVisit) {
        _StopWorker(&fArticleWorker);
        PostProgressData("", 0);
    }
    fVisit.reset();
    BMessage sort(kMsgBoardComplete);
    sort.AddBool("sort_modification", true);
    PostMessage(&sort, fThreadView);
}
