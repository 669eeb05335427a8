#include "messages/Messages.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

ArticleReplay::ArticleReplay(const ThreadJob& job) : ArticleReader(job) {}

int32 ArticleReplay::Run() {
    if (fUrl.Status() != 0)
        return EndWithoutBoard();
    const std::string place = std::string(fUrl.Host()) + "/" + fUrl.Board() + "/" + fJob.dat;
    NPCache cache(fUrl.Host(), fUrl.Board(), fJob.dat.c_str(), NPCache::Open::kExisting);
    if (cache.Status() != 0 || cache.GetSize() == 0) {
        ShowAlert(this, "読み込み失敗：" + place);
        Fail(kMsgThreadComplete);
        return -1;
    }
    if (MustStop())
        return 0;
    ShowProgress(place + "を読み込み中");
    fprintf(stderr, "reading: %s\n", place.c_str());
    if (_Replay(&cache) == Progress::kStopped)
        return 0;
    EndArticles();
    BMessage complete(kMsgThreadComplete);
    Complete(&complete);
    ClearProgress();
    return 0;
}

Progress ArticleReplay::_Replay(NPCache* cache) {
    ServerLine part;
    for (;;) {
        const int32 length = cache->ReadPart(part, kLongestServerLine);
        if (MustStop())
            return Progress::kStopped;
        if (length <= 0)
            return Progress::kGoOn;
        ShowPart(part, length);
    }
}
