#include "app/Messages.h"
#include "net/NPHttp.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

namespace {
// How often a download starts over because its cache file changed under it.
constexpr int kMostAttempts = 3;
} // namespace

ThreadDownload::ThreadDownload(const ThreadJob& job) : ArticleReader(job) {}

int32 ThreadDownload::Run() {
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

ThreadDownload::Attempt ThreadDownload::_Attempt() {
    const auto ending = [](Progress progress) {
        return progress == Progress::kStopped ? Attempt::kStopped : Attempt::kFailed;
    };
    NPHttp http(fUrl.Host(), "80");
    _OpenCache();
    _BeginRequest(&http);
    PrepareRequest(&http);
    ShowProgress("%sへ接続中", fUrl.Host());
    if (MustStop())
        return Attempt::kStopped;
    Progress progress = Connect(&http, kMsgThreadComplete);
    if (progress == Progress::kGoOn)
        progress = Exchange(&http, kMsgThreadComplete);
    if (progress == Progress::kGoOn)
        progress = CheckStatus(&http);
    if (progress != Progress::kGoOn)
        return ending(progress);
    if (fCache != nullptr && !_LockCache())
        return ending(Fail(kMsgThreadComplete));
    if (fCache != nullptr && !_IsAsAsked())
        return Attempt::kCacheChanged;
    progress = ReadLines(&http);
    if (progress != Progress::kGoOn)
        return ending(progress);
    http.Close();
    if (MustStop())
        return Attempt::kStopped;
    _Complete();
    return Attempt::kDone;
}

void ThreadDownload::_OpenCache() {
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

void ThreadDownload::_BeginRequest(NPHttp* http) {
    if (fJob.proxy.use)
        http->SetProxy(fJob.proxy.host.c_str(), fJob.proxy.port.c_str());
    http->AddHeader("Host", fUrl.Host());
    http->AddHeader("User-Agent", get_user_agent());
    http->AddHeader("Connection: close");
}

bool ThreadDownload::_LockCache() {
    return fCache->Status() == 0 && fCache->Lock() == B_OK;
}

// Between the request and the lock another window may have grown, replaced or removed the file:
// what the server sends would not belong behind what is there now.
bool ThreadDownload::_IsAsAsked() {
    if (fCache->IsCurrent() && fCache->GetSize() == fAskedSize)
        return true;
    fCache->Unlock();
    return false;
}

void ThreadDownload::BeginAppending() {
    fAppends = fCache != nullptr && fCache->MarkUnfinished() == B_OK;
    if (fAppends)
        fCache->SeekLast();
}

void ThreadDownload::AppendToCache(const char* line, int32 length) {
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

void ThreadDownload::ShowOrCount(char* line, int32 length, Encoding encoding) {
    if (fJob.bookmark)
        fCount++;
    else if (ShowLine(line, length, encoding) && fCache != nullptr)
        fCache->WriteAttr("title", B_STRING_TYPE, fTitle.data(), fTitle.size());
}

void ThreadDownload::_WriteCount() {
    const int32 count = fCount;
    fCache->WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
}

void ThreadDownload::AbandonCache() {
    if (fCache == nullptr)
        return;
    if (fAppends)
        _WriteCount();
    fCache->Unlock();
}

void ThreadDownload::FinishCache(NPHttp* http, bool isWhole) {
    if (fCache == nullptr)
        return;
    fCache->Sync();
    if (fAppends) {
        _WriteCount();
        fCache->SetMimeType("text/plain");
    }
    if (fAppends && isWhole) {
        const char* modified = http->FindHeader("Last-Modified");
        if (modified != nullptr)
            fCache->SetModificationTime(modified);
        fCache->MarkFinished();
    }
    fCache->Unlock();
}

void ThreadDownload::_Complete() {
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
