#include "workers/CacheSearchWorker.h"

#include "cache/CacheSearch.h"
#include "messages/Messages.h"
#include "workers/WorkerThread.h"

#include <Message.h>

namespace {

constexpr bigtime_t kPause = 100000; // microseconds between two messages
constexpr int32 kMostMatches = 10000;

// Puts matches together for the window; the first goes out at once.
class Reporter {
public:
    explicit Reporter(const CacheSearchJob& job) : fJob(job) {}

    bool Add(const CacheMatch& match) {
        fMatches.AddString("host", match.host.c_str());
        fMatches.AddString("board", match.board.c_str());
        fMatches.AddString("dat", match.dat.c_str());
        fMatches.AddString("title", match.title.c_str());
        fMatches.AddString("line", match.line.c_str());
        fMatches.AddInt32("number", match.number);
        fMatches.AddInt64("modified", match.modified);
        fCount++;
        _SendIfDue();
        return fCount < kMostMatches && !fJob.control->MustStop();
    }
    // Before the next of the files; false when the search must end.
    bool GoOn(int32 files) {
        fFiles = files + 1;
        _SendIfDue();
        return !fJob.control->MustStop();
    }
    void End() {
        _Send(kMsgCacheMatches);
        fMatches.AddBool("limited", fCount >= kMostMatches);
        _Send(kMsgCacheSearched);
    }

private:
    void _SendIfDue() {
        if (system_time() >= fSent + kPause)
            _Send(kMsgCacheMatches);
    }
    void _Send(uint32 what) {
        fMatches.what = what;
        fMatches.AddInt32("port", fJob.control->Port());
        fMatches.AddInt32("files", fFiles);
        fJob.window.SendMessage(&fMatches);
        fMatches.MakeEmpty();
        fSent = system_time();
    }

    const CacheSearchJob& fJob;
    BMessage fMatches;
    bigtime_t fSent = 0;
    int32 fCount = 0;
    int32 fFiles = 0;
};

} // namespace

int32 searchCache(void* data) {
    const CacheSearchJob& job = TakeOverJob<CacheSearchJob>(data, "searchCache");
    CacheSearch search(CacheSearch::CacheFolder(), job.wanted);
    Reporter reporter(job);
    const auto found = [&reporter](const CacheMatch& match) { return reporter.Add(match); };
    const auto goesOn = [&reporter](int32 files) { return reporter.GoOn(files); };
    if (search.SearchTitles(found, goesOn))
        search.SearchPosts(found, goesOn);
    reporter.End();
    return 0;
}
