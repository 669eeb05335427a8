#include "app/Messages.h"
#include "net/NPHttp.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

namespace {
constexpr size_t kLongestLine = 8191;
// How often a download starts over because its cache file changed under it.
constexpr int kMostAttempts = 3;
} // namespace

ArticleDownload::ArticleDownload(const ThreadJob& job) : ArticleReader(job) {}

int32 ArticleDownload::Run() {
    if (fUrl.Status() != 0) {
        BMessage complete(kMsgThreadComplete);
        Complete(&complete);
        return -1;
    }
    for (int i = 0; i < kMostAttempts; i++) {
        const Attempt attempt = _Attempt();
        if (attempt == Attempt::kDone || attempt == Attempt::kStopped)
            return 0;
        if (attempt == Attempt::kFailed)
            return -1;
    }
    Fail(kMsgThreadComplete);
    return -1;
}

ArticleDownload::Attempt ArticleDownload::_Attempt() {
    const auto ending = [](Progress progress) {
        return progress == Progress::kStopped ? Attempt::kStopped : Attempt::kFailed;
    };
    NPHttp http(fUrl.Host(), "80");
    _OpenCache();
    _PrepareRequest(&http);
    ShowProgress("%sへ接続中", fUrl.Host());
    if (MustStop())
        return Attempt::kStopped;
    Progress progress = Connect(&http, kMsgThreadComplete);
    if (progress == Progress::kGoOn)
        progress = Exchange(&http, kMsgThreadComplete);
    if (progress == Progress::kGoOn)
        progress = _CheckStatus(&http);
    if (progress != Progress::kGoOn)
        return ending(progress);
    if (fCache != nullptr && !_LockCache())
        return ending(Fail(kMsgThreadComplete));
    if (fCache != nullptr && !_IsAsAsked())
        return Attempt::kCacheChanged;
    progress = _ReadLines(&http);
    if (progress != Progress::kGoOn)
        return ending(progress);
    http.Close();
    if (MustStop())
        return Attempt::kStopped;
    _Complete();
    return Attempt::kDone;
}

void ArticleDownload::_OpenCache() {
    fHasCache = false;
    fAskedSize = 0;
    fCache.reset();
    if (!fJob.cacheEnabled)
        return;
    fCache = std::make_unique<NPCache>(fUrl.Host(), fUrl.Board(), fJob.dat.c_str(),
                                       NPCache::Open::kCreate);
    if (fCache->Status() != 0)
        return;
    // A crash may have left a part of a line; what another download is writing is left alone.
    if (fCache->IsUnfinished() && fCache->Lock() == B_OK) {
        fCache->CutToWholeLines();
        fCache->Unlock();
    }
    fAskedSize = fCache->GetSize();
    fHasCache = fAskedSize > 0;
}

void ArticleDownload::_PrepareRequest(NPHttp* http) {
    if (fJob.proxy.use)
        http->SetProxy(fJob.proxy.host.c_str(), fJob.proxy.port.c_str());
    http->SetPath(("/" + std::string(fUrl.Board()) + "/dat/" + fJob.dat).c_str());
    http->AddHeader("Host", fUrl.Host());
    http->AddHeader("User-Agent", get_user_agent());
    http->AddHeader("Connection: close");
    if (!fHasCache)
        return;
    http->AddHeader("If-Modified-Since", fCache->GetModificationTime());
    http->AddHeader("Range", ("bytes=" + std::to_string(fAskedSize) + "-").c_str());
    http->method = NPHttp::kGet;
}

Progress ArticleDownload::_CheckStatus(NPHttp* http) {
    const NPHttp::StatusRecord* status = http->Status();
    DownloadAnswer answer;
    answer.hasCache = fHasCache;
    answer.unfinished = fHasCache && fCache->IsUnfinished();
    answer.cachedSize = fAskedSize;
    answer.status = status->code;
    answer.contentRange = http->FindHeader("Content-Range");
    fMode = PlanReading(answer);
    if (fMode != ReadMode::kError)
        return Progress::kGoOn;
    fprintf(stderr, "%ld %s\n", static_cast<long>(status->code), status->reason.c_str());
    ShowAlert("%ld %s", static_cast<long>(status->code), status->reason.c_str());
    return Fail(kMsgThreadComplete);
}

bool ArticleDownload::_LockCache() {
    return fCache->Status() == 0 && fCache->Lock() == B_OK;
}

// Between the request and the lock another window may have grown, replaced or removed the file:
// what the server sends would not belong behind what is there now.
bool ArticleDownload::_IsAsAsked() {
    if (fCache->IsCurrent() && fCache->GetSize() == fAskedSize)
        return true;
    fCache->Unlock();
    return false;
}

Progress ArticleDownload::_ReadLines(NPHttp* http) {
    ShowProgress("%sから受信中", fUrl.Host());
    fAppends =
        fCache != nullptr && fMode != ReadMode::kCacheOnly && fCache->MarkUnfinished() == B_OK;
    if (fAppends && fMode == ReadMode::kNetwork)
        fCache->SeekLast();
    char line[kLongestLine + 1];
    for (;;) {
        const int32 length = _ReadLine(http, line);
        if (MustStop()) {
            _AbandonCache();
            return Progress::kStopped;
        }
        if (length <= 0 && _SwitchToNetwork(length))
            continue;
        if (length <= 0)
            break;
        if (fMode == ReadMode::kNetwork)
            _AppendToCache(line, length);
        if (fJob.bookmark)
            fCount++;
        else if (ShowLine(line, length, Encoding::kCp932) && fCache != nullptr)
            fCache->WriteAttr("title", B_STRING_TYPE, fTitle.data(), fTitle.size());
    }
    if (fCache != nullptr)
        _FinishCache(http);
    return Progress::kGoOn;
}

int32 ArticleDownload::_ReadLine(NPHttp* http, char* line) {
    return fMode == ReadMode::kNetwork ? http->ReadLine(line, kLongestLine)
                                       : fCache->ReadLine(line, kLongestLine);
}

// At the end of the cached lines the server's go on; at the end of those the loop ends.
bool ArticleDownload::_SwitchToNetwork(int32 result) {
    if (fMode == ReadMode::kCacheThenNetwork) {
        fMode = ReadMode::kNetwork;
        fCache->SeekLast();
        fprintf(stderr, "Reading cache finished.\n");
        return true;
    }
    fLastResult = result;
    return false;
}

void ArticleDownload::_AppendToCache(const char* line, int32 length) {
    fReceived += length;
    if (!fAppends)
        return;
    const status_t status = fCache->WriteLine(line, static_cast<size_t>(length));
    if (status == B_OK)
        return;
    // The mark stays: what could not be kept is asked for again.
    fprintf(stderr, "cache: can't write %s: error %lx\n", fJob.dat.c_str(),
            static_cast<unsigned long>(static_cast<uint32>(status)));
    fAppends = false;
    fLastResult = status;
}

void ArticleDownload::_WriteCount() {
    const int32 count = fCount;
    fCache->WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
}

// What has arrived stays, with its mark.
void ArticleDownload::_AbandonCache() {
    if (fCache == nullptr)
        return;
    if (fAppends && fMode == ReadMode::kNetwork)
        _WriteCount();
    fCache->Unlock();
}

void ArticleDownload::_FinishCache(NPHttp* http) {
    fCache->Sync();
    if (fAppends) {
        _WriteCount();
        fCache->SetMimeType("text/plain");
        if (IsWholeBody(http->FindHeader("Content-Length"), fReceived, fLastResult)) {
            const char* modified = http->FindHeader("Last-Modified");
            if (modified != nullptr)
                fCache->SetModificationTime(modified);
            fCache->MarkFinished();
        }
    } else if (fMode == ReadMode::kCacheOnly && http->Status()->code == 416) {
        fCache->MarkFinished();
    }
    fCache->Unlock();
}

void ArticleDownload::_Complete() {
    EndArticles();
    BMessage complete(kMsgThreadComplete);
    if (fCache != nullptr) {
        complete.AddInt32("res_num", fCount);
        complete.AddString("last_modified", fCache->GetModificationTime());
    }
    complete.AddString("dat", fJob.dat.c_str());
    complete.AddString("board", fUrl.Board());
    if (fJob.bookmark)
        complete.AddBool("bookmark", true);
    Complete(&complete);
    ClearProgress();
}
