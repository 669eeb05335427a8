#include "app/Messages.h"
#include "net/NPHttp.h"
#include "text/cp932.h"
#include "text/html.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

namespace {

constexpr size_t kLongestLine = 8191;

std::string ToUtf8(const char* line, int32 length) {
    std::string utf8(static_cast<size_t>(length) * 3, '\0');
    int32 written = 0;
    cp932_conv_to_utf8(line, &length, utf8.data(), &written);
    utf8.resize(static_cast<size_t>(RemoveNulls(utf8.data(), written)));
    return utf8;
}

} // namespace

// Whatever the request for this thread says: a wrong start would leave posts out or double them.
int32 CgiDownload::_CountCached() const {
    if (!fHasCache)
        return 0;
    NPCache cache(fUrl.Host(), fUrl.Board(), fJob.dat.c_str(), NPCache::Open::kExisting);
    char line[kLongestLine];
    int32 count = 0;
    while (cache.Status() == 0 && cache.ReadLine(line, sizeof(line)) > 0)
        count++;
    return count;
}

void CgiDownload::PrepareRequest(NPHttp* http) {
    std::string board = fUrl.Board();
    std::string prefix;
    const size_t slash = board.find('/');
    if (slash != board.npos) {
        prefix = "/" + board.substr(0, slash);
        board.erase(0, slash + 1);
    }
    const std::string key = fJob.dat.substr(0, fJob.dat.find('.'));
    http->SetPath((prefix + "/bbs/read.cgi?BBS=" + board + "&KEY=" + key +
                   "&START=" + std::to_string(_CountCached() + 1))
                      .c_str());
}

// The end of the attempt is told as a board's, which leaves the thread list's row as it is.
Progress CgiDownload::CheckStatus(NPHttp* http) {
    const NPHttp::StatusRecord* status = http->Status();
    if (status->code == 200)
        return Progress::kGoOn;
    ShowAlert("%ld %s", static_cast<long>(status->code), status->reason.c_str());
    return Fail(kMsgBoardComplete);
}

Progress CgiDownload::ReadLines(NPHttp* http) {
    ShowProgress("%sから受信中", fUrl.Host());
    Progress progress = fHasCache ? _ReplayCache() : Progress::kGoOn;
    if (progress == Progress::kGoOn) {
        BeginAppending();
        progress = _ReadPage(http);
    }
    if (progress == Progress::kStopped) {
        AbandonCache();
        return progress;
    }
    FinishCache(http, fPage.HasEnded() ||
                          IsWholeBody(http->FindHeader("Content-Length"), fReceived, fLastResult));
    return progress;
}

Progress CgiDownload::_ReplayCache() {
    char line[kLongestLine + 1];
    for (;;) {
        const int32 length = fCache->ReadLine(line, kLongestLine);
        if (MustStop())
            return Progress::kStopped;
        if (length <= 0)
            break;
        ShowOrCount(line, length, Encoding::kUtf8);
    }
    fSkipsNext = true;
    fprintf(stderr, "Reading cache finished.\n");
    return Progress::kGoOn;
}

Progress CgiDownload::_ReadPage(NPHttp* http) {
    char line[kLongestLine];
    while (!fPage.HasEnded()) {
        const int32 length = http->ReadLine(line, sizeof(line));
        if (MustStop())
            return Progress::kStopped;
        if (length <= 0) {
            if (fLastResult == 0)
                fLastResult = length;
            break;
        }
        fReceived += length;
        if (fPage.TakeLine(ToUtf8(line, length)))
            _TakePost(fPage.TakeDatLine());
    }
    return Progress::kGoOn;
}

void CgiDownload::_TakePost(std::string line) {
    if (fSkipsNext) {
        fSkipsNext = false;
        return;
    }
    const int32 length = static_cast<int32>(line.size());
    AppendToCache(line.data(), length);
    ShowOrCount(line.data(), length, Encoding::kUtf8);
}
