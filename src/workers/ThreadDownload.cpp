#include "browser/BrowserWindow.h"
#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

namespace {
// How often a download starts over because its cache file changed under it.
constexpr int kMostAttempts = 3;
// No post comes near it: such a line never ends.
constexpr int64 kLongestKeptLine = 1024 * 1024; // bytes
constexpr const char* kCutWords = "途中で切れました";
constexpr const char* kNotKeptWords = "キャッシュに書き込めません";
} // namespace

ThreadDownload::ThreadDownload(const ThreadJob& job) : ArticleReader(job) {}

int32 ThreadDownload::Run() {
    if (fUrl.Status() != 0)
        return EndWithoutBoard();
    DownloadEnd end = DownloadEnd::kCacheChanged;
    for (int i = 0; i < kMostAttempts && end == DownloadEnd::kCacheChanged; i++)
        end = _Attempt();
    return _Finish(end);
}

DownloadEnd ThreadDownload::_Attempt() {
    NPHttp http(fUrl.Host(), "80");
    _OpenCache();
    _StartOver();
    Progress progress = _ShowCached();
    if (progress == Progress::kGoOn)
        progress = _Ask(&http);
    if (progress != Progress::kGoOn)
        return progress == Progress::kStopped ? DownloadEnd::kStopped : DownloadEnd::kFailed;
    const DownloadEnd end = _Receive(&http);
    http.Close();
    return MustStop() ? DownloadEnd::kStopped : end;
}

void ThreadDownload::_OpenCache() {
    fHasCache = false;
    fCachedSize = 0;
    fCache.reset();
    if (!fJob.cacheEnabled)
        return;
    _MakeCache(NPCache::Open::kCreate);
    if (fCache->Status() != 0)
        return;
    // A crash may have left a part of a line; what another download is writing is left alone.
    if (fCache->IsUnfinished() && fCache->Lock() == B_OK) {
        fCache->CutToWholeLines();
        fCache->Unlock();
    }
    fCachedSize = fCache->GetSize();
    fHasCache = fCachedSize > 0;
}

void ThreadDownload::_MakeCache(NPCache::Open how) {
    fCache = std::make_unique<NPCache>(fUrl.Host(), fUrl.Board(), fJob.dat.c_str(), how);
    if (!fCache->FolderTrouble().empty())
        ShowAlert(this, fCache->FolderTrouble());
}

// What an attempt or a body that came to nothing has shown goes.
void ThreadDownload::_StartOver() {
    if (fCount > 0)
        Window().CallForArticle(
            [this](BrowserWindow* window) { window->restartArticles(Request()); });
    ForgetLines();
    fKept = 0;
}

Progress ThreadDownload::_ShowCached() {
    if (!fHasCache)
        return Progress::kGoOn;
    ServerLine part;
    // Another download may be appending.
    for (int64 read = 0; read < fCachedSize;) {
        const int32 length = fCache->ReadPart(part, kLongestServerLine);
        if (MustStop())
            return Progress::kStopped;
        if (length <= 0)
            break;
        read += length;
        _Show(part, length);
    }
    fKept = fCount;
    Window().CallForArticle([this](BrowserWindow* window) { window->returnToPlace(Request()); });
    fprintf(stderr, "Reading cache finished.\n");
    return Progress::kGoOn;
}

Progress ThreadDownload::_Ask(NPHttp* http) {
    BeginReading(http, fJob.proxy, fUrl.Host());
    PrepareRequest(http);
    return Ask(http, fUrl.Host(), kMsgThreadComplete);
}

DownloadEnd ThreadDownload::_Receive(NPHttp* http) {
    const AnswerKind kind = Judge(http);
    if (kind == AnswerKind::kRefusal || (fCache != nullptr && !_LockCache())) {
        Fail(kind == AnswerKind::kRefusal ? RefusalCompletion() : kMsgThreadComplete);
        return DownloadEnd::kFailed;
    }
    if (fCache != nullptr && !_IsAsAsked())
        return DownloadEnd::kCacheChanged;
    DownloadEnd end = DownloadEnd::kUnchanged;
    if (kind != AnswerKind::kUnchanged)
        end = kind == AnswerKind::kBody ? _ReadBody(http) : DownloadEnd::kFoundWhole;
    if (end == DownloadEnd::kCut || end == DownloadEnd::kNotKept)
        fEnding = end == DownloadEnd::kCut ? kCutWords : kNotKeptWords;
    return _UpdateCache(end, http->FindHeader("Last-Modified"));
}

bool ThreadDownload::_LockCache() {
    return fCache->Status() == 0 && fCache->Lock() == B_OK;
}

// Between the request and the lock another window may have grown, replaced or removed the file:
// what the server sends would not belong behind what is there now.
bool ThreadDownload::_IsAsAsked() {
    if (fCache->IsCurrent() && fCache->GetSize() == fCachedSize) {
        NPCache::RemoveBeside(fUrl.Host(), fUrl.Board(), fJob.dat.c_str());
        return true;
    }
    fCache->Unlock();
    return false;
}

DownloadEnd ThreadDownload::_ReadBody(NPHttp* http) {
    ShowProgress(std::string(fUrl.Host()) + "から受信中");
    if (ReplacesCache()) {
        _StartOver();
        fReplaced = std::move(fCache);
        _MakeCache(NPCache::Open::kBeside);
    }
    fAppends = fCache != nullptr && fCache->MarkUnfinished() == B_OK;
    if (fAppends)
        fCache->SeekLast();
    DownloadBody body;
    if (!_ReadParts(http, &body))
        return DownloadEnd::kStopped;
    body.status = http->Status()->code;
    body.contentLength = http->FindHeader("Content-Length");
    body.contentRange = http->FindHeader("Content-Range");
    body.endsInsideLine = EndsInsideLine(http);
    if (!HasAll() && !IsWholeBody(body))
        return DownloadEnd::kCut;
    return fCache == nullptr || fAppends ? DownloadEnd::kWhole : DownloadEnd::kNotKept;
}

bool ThreadDownload::EndsInsideLine(NPHttp* http) const {
    return http->IsInsideLine();
}

// False when it must stop.
bool ThreadDownload::_ReadParts(NPHttp* http, DownloadBody* body) {
    ServerLine part;
    int64 lineStart = 0;
    while (!HasAll()) {
        const int32 length = http->ReadPart(part, kLongestServerLine);
        if (MustStop())
            return false;
        if (length <= 0 || body->received - lineStart > kLongestKeptLine) {
            body->lastResult = length <= 0 ? length : B_ERROR;
            break;
        }
        body->received += length;
        if (part[length - 1] == '\n')
            lineStart = body->received;
        TakePart(part, length);
    }
    return true;
}

void ThreadDownload::Keep(char* part, int32 length) {
    const bool hadTitle = !fTitle.empty();
    _Append(part, length);
    _Show(part, length);
    if (!hadTitle && fAppends)
        _WriteTitle();
}

void ThreadDownload::_Append(const char* part, int32 length) {
    if (!fAppends)
        return;
    const status_t status = fCache->WriteLine(part, static_cast<size_t>(length));
    if (status == B_OK) {
        fKept += part[length - 1] == '\n' ? 1 : 0;
        return;
    }
    // The mark stays: what could not be kept is asked for again.
    fprintf(stderr, "cache: can't write %s: error %lx\n", fJob.dat.c_str(),
            static_cast<unsigned long>(static_cast<uint32>(status)));
    fAppends = false;
}

void ThreadDownload::_Show(char* part, int32 length) {
    if (!fJob.bookmark)
        ShowPart(part, length);
    else if (part[length - 1] == '\n')
        fCount++;
}

// The one place that says what a download leaves: the lines that came are counted and named. When
// nothing is missing the copy has the server's time, or, if that is not known and would be asked
// for, the epoch, and the mark goes; else that stays.
DownloadEnd ThreadDownload::_UpdateCache(DownloadEnd end, const char* modified) {
    if (fCache == nullptr)
        return end;
    if (IsPartialEnd(end))
        fCache->CutToWholeLines();
    if (IsPartialEnd(end) || IsWholeEnd(end))
        _WriteFacts();
    if (end != DownloadEnd::kStopped)
        fCache->Sync();
    if (IsWholeEnd(end)) {
        if (!fCache->SetModificationTime(modified) && AsksByTime())
            fCache->SetModificationTimeToEpoch();
        fCache->MarkFinished();
    }
    if (fReplaced != nullptr)
        return _Replace(end);
    fCache->Unlock();
    return end;
}

void ThreadDownload::_WriteTitle() {
    if (!fTitle.empty())
        fCache->WriteAttr("title", B_STRING_TYPE, fTitle.data(), fTitle.size());
}

void ThreadDownload::_WriteFacts() {
    _WriteTitle();
    const int32 count = fKept;
    fCache->WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
    fCache->SetMimeType("text/plain");
}

// Whole, what came takes the place of the old copy. Else that is the one again, on the pane too.
DownloadEnd ThreadDownload::_Replace(DownloadEnd end) {
    const bool isReplaced = IsWholeEnd(end) && fCache->TakePlace() == B_OK;
    if (!isReplaced)
        fCache->RemoveFile();
    fReplaced.reset();
    if (isReplaced)
        return end;
    if (end == DownloadEnd::kStopped)
        return end;
    _OpenCache();
    _StartOver();
    if (_ShowCached() == Progress::kStopped)
        return DownloadEnd::kStopped;
    Fail(kMsgThreadComplete);
    return DownloadEnd::kFailed;
}

Progress ThreadDownload::Fail(uint32 completion) {
    if (fCount > 0)
        EndArticles();
    ShowProgress(fEnding);
    BMessage complete(completion);
    Complete(&complete);
    return Progress::kFailed;
}

int32 ThreadDownload::_Finish(DownloadEnd end) {
    switch (end) {
    case DownloadEnd::kStopped: return 0;
    case DownloadEnd::kCacheChanged: Fail(kMsgThreadComplete); return -1;
    case DownloadEnd::kFailed: return -1;
    default: _Complete(end); return 0;
    }
}

void ThreadDownload::_Complete(DownloadEnd end) {
    EndArticles();
    BMessage complete(kMsgThreadComplete);
    if (fCache != nullptr) {
        complete.AddInt32("res_num", fKept);
        complete.AddString("last_modified", fCache->GetModificationTime());
    }
    complete.AddString("dat", fJob.dat.c_str());
    complete.AddString("board", fUrl.Board());
    if (fJob.bookmark)
        complete.AddBool("bookmark", true);
    if (IsPartialEnd(end))
        complete.AddBool("cut", true);
    if (*fEnding != '\0')
        complete.AddBool("told", true);
    Complete(&complete);
    ShowProgress(fEnding);
}
