#pragma once

#include "cache/NPCache.h"
#include "net/DownloadPlan.h"
#include "net/NPUrl.h"
#include "net/lines.h"
#include "workers/Worker.h"

#include <memory>
#include <string>

class NPHttp;

// What the readers of a thread share: lines become posts in the window, numbered by their line.
class ArticleReader : public Worker {
public:
    explicit ArticleReader(const ThreadJob& job);
    ~ArticleReader() override;

protected:
    enum class Encoding { kCp932, kUtf8 };

    // Counts the line and shows it if it parses; a title that it brings is kept in Title().
    // Returns whether it brought one. The line is terminated here and needs room for that.
    bool ShowLine(char* line, int32 length, Encoding encoding);
    // Tells the pane that all posts have come.
    void EndArticles();

    const ThreadJob& fJob;
    NPUrl fUrl;
    int32 fCount = 0; // lines so far
    std::string fTitle;

private:
    _ArticleOut fArticle = {};
};

// Brings a thread: replays the cached lines, asks the server for the bytes behind them, appends
// those to the cache and shows them.
class ArticleDownload : public ArticleReader {
public:
    explicit ArticleDownload(const ThreadJob& job);
    int32 Run();

private:
    enum class Attempt { kDone, kStopped, kFailed, kCacheChanged };

    Attempt _Attempt();
    void _OpenCache();
    void _PrepareRequest(NPHttp* http);
    Progress _CheckStatus(NPHttp* http);
    bool _LockCache();
    bool _IsAsAsked();
    Progress _ReadLines(NPHttp* http);
    int32 _ReadLine(NPHttp* http, char* line);
    bool _SwitchToNetwork(int32 result);
    void _AppendToCache(const char* line, int32 length);
    void _WriteCount();
    void _AbandonCache();
    void _FinishCache(NPHttp* http);
    void _Complete();

    std::unique_ptr<NPCache> fCache;
    bool fHasCache = false;
    bool fAppends = false; // the network's lines go to the cache
    int32 fAskedSize = 0;
    ReadMode fMode = ReadMode::kNetwork;
    int64 fReceived = 0;
    int32 fLastResult = 0;
};

// Shows a thread from the cache alone.
class ArticleReplay : public ArticleReader {
public:
    explicit ArticleReplay(const ThreadJob& job);
    int32 Run();

private:
    Progress _Replay(NPCache* cache);
};
