#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "settings/SettingsFile.h"
#include "text/Utf8Cut.h"
#include "views/NPArticleView.h"
#include "views/NPBoardView.h"
#include "views/NPThreadView.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"
#include "workers/BookmarkListing.h"
#include "workers/SubjectWorkers.h"
#include "workers/WorkerThread.h"

#include <OS.h>

#include <cstdio>

namespace {

constexpr bigtime_t kStopTime = 10000; // microseconds an old worker gets to see its stop
constexpr size_t kLongestTitle = 255;  // bytes; a link's thread is called by the whole link

// A name that identifies something; false, with a trace, when it does not fit its format.
bool FindName(const BMessage* message, const char* field, size_t longest, std::string* name) {
    BString text;
    if (message->FindString(field, &text) != B_OK)
        return false;
    name->assign(text.String(), text.Length());
    if (name->size() <= longest)
        return true;
    fprintf(stderr, "refused a \"%s\" of %zu bytes\n", field, name->size());
    return false;
}

// A thread whose names can't be those of a file is not asked for: what came could not be kept.
bool CanBeKept(const ThreadJob& job) {
    const NPUrl url(job.url.c_str());
    return url.Status() != 0 || NPCache::CanHold(url.Host(), url.Board(), job.dat.c_str());
}

} // namespace

int32 NPWindow::getSubject(void* data) {
    return SubjectDownload(TakeOverJob<SubjectJob>(data, "getSubject")).Run();
}

int32 NPWindow::getSubjectCache(void* data) {
    return SubjectCacheListing(TakeOverJob<SubjectJob>(data, "getSubjectCache")).Run();
}

int32 NPWindow::getBookmark(void* data) {
    return BookmarkListing(TakeOverJob<SubjectJob>(data, "getBookmark")).Run();
}

int32 NPWindow::getNextThreads(void* data) {
    return NextThreadSearch(TakeOverJob<NextThreadJob>(data, "getNextThreads")).Run();
}

int32 NPWindow::getArticle(void* data) {
    return ArticleDownload(TakeOverJob<ThreadJob>(data, "getArticle")).Run();
}

int32 NPWindow::getArticle_cgi(void* data) {
    return CgiDownload(TakeOverJob<ThreadJob>(data, "getArticle_cgi")).Run();
}

int32 NPWindow::getArticleCache(void* data) {
    return ArticleReplay(TakeOverJob<ThreadJob>(data, "getArticleCache")).Run();
}

bool NPWindow::PortReader(port_id port) {
    const bool stops = IsToldToStop(port);
    if (stops) {
        close_port(port);
        delete_port(port);
        PostCursorMessage(false);
    }
    return stops;
}

void NPWindow::PostCursorMessage(bool busy) {
    ::PostCursorMessage(busy);
}

// A replaced worker may still be under way to its next look at its port: neither its rows nor the
// beginning of its list may touch the new one.
bool NPWindow::_ListsFor(port_id request) const {
    return fSubjectWorker != nullptr && fSubjectWorker->Port() == request;
}

void NPWindow::addThreadItem(port_id request, int32 number, const char* title, const char* count,
                             const char* dat) {
    if (_ListsFor(request))
        fThreadView->addThreadItem(request, number, title, count, dat);
}

void NPWindow::addBookmarkItem(port_id request, int32 number, const char* title, const char* server,
                               const char* board, const char* dat, const char* count,
                               time_t modified) {
    if (_ListsFor(request))
        fThreadView->addBookmarkItem(request, number, title, count, dat, server, board, modified);
}

void NPWindow::addArticleItem(port_id request, const char* title, int32 number,
                              const _ArticleOut& article) {
    fArticleView->addArticleItem(request, title, number, article);
}

void NPWindow::restartArticles(port_id request) {
    fArticleView->Restart(request);
}

void NPWindow::returnToPlace(port_id request) {
    fArticleView->ReturnToPlace(request);
}

// False after telling the user: before anything is stopped or sent.
bool NPWindow::_ReadProxy(ProxySetting* proxy) {
    const std::string refusal = FindProxy(*fSettings, proxy);
    if (!refusal.empty())
        ShowAlert(this, refusal);
    return refusal.empty();
}

void NPWindow::_StopWorker(std::shared_ptr<WorkerControl>* worker) {
    if (*worker != nullptr)
        (*worker)->Stop();
    worker->reset();
}

// Puts a worker in the place of the one of its kind, which is stopped only now that nothing else
// stands against the new one. False, with the old one going on, without a port to stop it by.
bool NPWindow::_Replace(std::shared_ptr<WorkerControl>* worker,
                        const std::shared_ptr<WorkerControl>& next) {
    if (next->Port() < 0)
        return false;
    if (*worker != nullptr) {
        _StopWorker(worker);
        snooze(kStopTime);
    }
    *worker = next;
    return true;
}

void NPWindow::BoardSelected(BMessage* message) {
    std::unique_ptr<SubjectJob> job = _MakeSubjectJob(message);
    if (job != nullptr && _ReadProxy(&job->proxy))
        _StartSubject(std::move(job), getSubject, "getSubject");
}

void NPWindow::BoardSelectedCache(BMessage* message) {
    std::unique_ptr<SubjectJob> job = _MakeSubjectJob(message);
    if (job != nullptr)
        _StartSubject(std::move(job), getSubjectCache, "getSubjectCache");
}

void NPWindow::BookmarkSelected() {
    auto job = std::make_unique<SubjectJob>();
    job->window = fLink;
    _StartSubject(std::move(job), getBookmark, "getBookmark");
}

// Null when no board may be listed, or the message names none.
std::unique_ptr<SubjectJob> NPWindow::_MakeSubjectJob(const BMessage* message) const {
    auto job = std::make_unique<SubjectJob>();
    BString board;
    if (fThreadOnly || fPatrol.IsRunning() || message->FindString("board", &board) != B_OK ||
        !FindName(message, "url", kLongestUrl, &job->url))
        return nullptr;
    job->board = CutAtCharacter(board.String(), kLongestBoardName);
    job->window = fLink;
    return job;
}

void NPWindow::_StartSubject(std::unique_ptr<SubjectJob> job, Entry entry, const char* name) {
    job->control = std::make_shared<WorkerControl>("subject_port");
    if (!_Replace(&fSubjectWorker, job->control))
        return;
    fBoardUrl = job->url;
    fBoardName = job->board;
    if (!SpawnWorker(entry, name, &job))
        fSubjectWorker.reset();
}

// Null when the message names no thread.
std::unique_ptr<ThreadJob> NPWindow::_MakeThreadJob(const BMessage* message) const {
    auto job = std::make_unique<ThreadJob>();
    if (!FindName(message, "url", kLongestUrl, &job->url) ||
        !FindName(message, "dat", kLongestDat, &job->dat))
        return nullptr;
    job->window = fLink;
    fSettings->Get("enable_cache", &job->cacheEnabled);
    message->FindBool("bookmark", &job->bookmark);
    message->FindBool("from_scratch", &job->fromScratch);
    return job;
}

void NPWindow::ThreadSelected(BMessage* message) {
    std::unique_ptr<ThreadJob> job = _MakeThreadJob(message);
    if (job == nullptr || !CanBeKept(*job)) {
        _RefuseName(message);
        return;
    }
    if (!_ReadProxy(&job->proxy))
        return;
    _NameWindow(message);
    if (job->dat.find("cgi") != job->dat.npos)
        _StartThread(std::move(job), getArticle_cgi, "getArticle_cgi");
    else
        _StartThread(std::move(job), getArticle, "getArticle");
}

void NPWindow::ThreadSelectedCache(BMessage* message) {
    std::unique_ptr<ThreadJob> job = _MakeThreadJob(message);
    if (job == nullptr)
        return;
    _NameWindow(message);
    _StartThread(std::move(job), getArticleCache, "getArticleCache");
    int32 post = 0;
    if (message->FindInt32("jump", &post) == B_OK)
        fArticleView->GoTo(post);
}

// What is on show, and what is under way, stays.
void NPWindow::_RefuseName(const BMessage* message) {
    if (message->HasString("url") && message->HasString("dat"))
        PostProgressData("この名前のスレッドは開けません", 0);
}

// A window for one thread is called by it.
void NPWindow::_NameWindow(const BMessage* message) {
    BString title;
    if (fThreadOnly && message->FindString("title", &title) == B_OK)
        SetTitle(CutAtCharacter(title.String(), kLongestTitle).c_str());
}

// The pane has turned to the new thread before its worker can add the first post. It keeps what it
// shows when a bookmark is visited.
void NPWindow::_StartThread(std::unique_ptr<ThreadJob> job, Entry entry, const char* name) {
    job->control = std::make_shared<WorkerControl>("article_port");
    if (!_Replace(&fArticleWorker, job->control))
        return;
    if (!job->bookmark)
        fArticleView->ShowThread(fArticleWorker->Port(), job->url.c_str(), job->dat.c_str());
    if (SpawnWorker(entry, name, &job))
        return;
    fArticleWorker.reset();
    fPatrol.StepEnded(); // the visit that had to go for this one tells it nothing any more
}

// Ends the present worker if the completion is its own: one of a replaced worker, or one that a
// thread-only window passed on, ends nothing here.
bool NPWindow::_EndWorker(std::shared_ptr<WorkerControl>* worker, const BMessage* completion) {
    port_id port = -1;
    if (*worker == nullptr || completion->FindInt32("port", &port) != B_OK ||
        port != (*worker)->Port())
        return false;
    (*worker)->DeletePort();
    (*worker)->ReleaseCursor();
    worker->reset();
    return true;
}

// A thread's worker that was refused by its server ends this way too, and one that looks for the
// next thread.
void NPWindow::_BoardComplete(BMessage* message) {
    if (_EndWorker(&fNextWorker, message))
        return;
    if (_EndWorker(&fArticleWorker, message)) {
        fPatrol.StepEnded();
        return;
    }
    if (fThreadOnly || !_EndWorker(&fSubjectWorker, message))
        return;
    PostMessage(message, fBoardView);
    PostMessage(message, fThreadView);
    fPatrol.StepEnded();
    fSearchPosition = -1;
}

void NPWindow::_ShowNews() {
    const int32 count = fArticleView->CountNew();
    if (fPatrol.IsRunning() || count <= 0)
        return;
    const std::string before = fNotice.empty() ? "" : fNotice + " ";
    const std::string news = before + "新着 " + std::to_string(count) + "件";
    PostProgressData(news.c_str(), 0);
    fNews = news;
}

void NPWindow::_ThreadComplete(BMessage* message) {
    const bool isOwn = _EndWorker(&fArticleWorker, message);
    if (!fThreadOnly)
        PostMessage(message, fThreadView);
    else
        fParent.SendMessage(message);
    if (!isOwn)
        return;
    if (!message->HasBool("told"))
        _ShowNews();
    fPatrol.StepEnded();
    fSearchIndex = 0;
}
