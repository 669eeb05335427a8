#include "app/Messages.h"
#include "net/NPHttp.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

namespace {
constexpr size_t kLongestLine = 8191;
} // namespace

void ArticleDownload::PrepareRequest(NPHttp* http) {
    http->SetPath(("/" + std::string(fUrl.Board()) + "/dat/" + fJob.dat).c_str());
    if (!fHasCache)
        return;
    http->AddHeader("If-Modified-Since", fCache->GetModificationTime());
    http->AddHeader("Range", ("bytes=" + std::to_string(fAskedSize) + "-").c_str());
    http->method = NPHttp::kGet;
}

Progress ArticleDownload::CheckStatus(NPHttp* http) {
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

Progress ArticleDownload::ReadLines(NPHttp* http) {
    ShowProgress("%sから受信中", fUrl.Host());
    if (fMode == ReadMode::kNetwork)
        BeginAppending();
    char line[kLongestLine + 1];
    for (;;) {
        const int32 length = _ReadLine(http, line);
        if (MustStop()) {
            AbandonCache();
            return Progress::kStopped;
        }
        if (length <= 0 && _SwitchToNetwork(length))
            continue;
        if (length <= 0)
            break;
        if (fMode == ReadMode::kNetwork) {
            fReceived += length;
            AppendToCache(line, length);
        }
        ShowOrCount(line, length, Encoding::kCp932);
    }
    if (fMode == ReadMode::kCacheOnly && http->Status()->code == 416)
        fCache->MarkFinished();
    FinishCache(http, IsWholeBody(http->FindHeader("Content-Length"), fReceived, fLastResult));
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
        BeginAppending();
        fprintf(stderr, "Reading cache finished.\n");
        return true;
    }
    if (fLastResult == 0)
        fLastResult = result;
    return false;
}
