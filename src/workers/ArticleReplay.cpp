#include "messages/Messages.h"
#include "widgets/Alerts.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

ArticleReplay::ArticleReplay(const ThreadJob& job) : ArticleReader(job) {}

int32 ArticleReplay::Run() {
    if (fUrl.Status() != 0) {
        BMessage complete(kMsgThreadComplete);
        Complete(&complete);
        return -1;
    }
    NPCache cache(fUrl.Host(), fUrl.Board(), fJob.dat.c_str(), NPCache::Open::kExisting);
    if (cache.Status() != 0 || cache.GetSize() == 0) {
        ShowAlert(this, std::string("読み込み失敗：") + fUrl.Host() + "/" + fUrl.Board() + "/" +
                            fJob.dat);
        Fail(kMsgThreadComplete);
        return -1;
    }
    if (MustStop() || _Replay(&cache) == Progress::kStopped)
        return 0;
    EndArticles();
    BMessage complete(kMsgThreadComplete);
    Complete(&complete);
    ClearProgress();
    return 0;
}

Progress ArticleReplay::_Replay(NPCache* cache) {
    ShowProgress("%s/%s/%sを読み込み中", fUrl.Host(), fUrl.Board(), fJob.dat.c_str());
    fprintf(stderr, "reading: %s/%s/%s\n", fUrl.Host(), fUrl.Board(), fJob.dat.c_str());
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
