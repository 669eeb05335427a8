#include "app/NPWindow.h"
#include "cache/NPBookmark.h"
#include "messages/Messages.h"
#include "views/NPThreadView.h"
#include "widgets/Alerts.h"
#include "windows/NPPatrolWindow.h"
#include "windows/PatrolPlan.h"

#include <Application.h>
#include <Message.h>
#include <Roster.h>

namespace {
constexpr const char* kFolderType = "application/x-vnd.Be-directory";
}

void NPWindow::_ListBookmarks() {
    if (!fThreadOnly && !fPatrol.IsRunning())
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
    ProxySetting proxy;
    if (fPatrol.IsRunning())
        fPatrol.BringToFront();
    else if (!fThreadOnly && _ReadProxy(&proxy))
        _BeginPatrol();
}

void NPWindow::_BeginPatrol() {
    NPPatrolWindow* window = new NPPatrolWindow(BMessenger(this), Frame());
    fPatrol.Begin(BMessenger(window));
    window->Show();
    // A patrol always downloads.
    if (!GetOnlineMode())
        be_app_messenger.SendMessage(kMsgToggleOnline);
    BookmarkSelected();
    if (fSubjectWorker == nullptr)
        fPatrol.Stop();
}

void NPWindow::_VisitNext(const BMessage* message) {
    int32 visits = 0;
    ProxySetting proxy;
    // What is under way asks again as it ends: the list, or a thread that the user has chosen.
    if (!fPatrol.TakeAnswer() || fSubjectWorker != nullptr || fArticleWorker != nullptr ||
        message->FindInt32("index", &visits) != B_OK)
        return;
    if (!_ReadProxy(&proxy)) {
        fPatrol.Stop();
        return;
    }
    const PatrolStep step = NextPatrolStep(fThreadView->BookmarkNumbers(), visits);
    switch (step.kind) {
    case PatrolStep::Kind::kVisit: _Visit(fThreadView->List()->ThreadAt(step.row)); break;
    case PatrolStep::Kind::kFinish: fPatrol.Stop(); break;
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
    fThreadView->SelectNumber(item->Number());
    fPatrol.Visit(*item, fArticleWorker);
    // A thread that can't even be asked for holds up nothing.
    if (fArticleWorker == nullptr)
        fPatrol.StepEnded();
}

// The visit under way ends with the patrol, without an alert. A thread that the user has chosen
// meanwhile goes on.
void NPWindow::_EndPatrol() {
    if (!fPatrol.IsRunning())
        return;
    if (fPatrol.End(fArticleWorker)) {
        _StopWorker(&fArticleWorker);
        PostProgressData("", 0);
    }
    BMessage sort(kMsgBoardComplete);
    sort.AddBool("sort_modification", true);
    PostMessage(&sort, fThreadView);
}
