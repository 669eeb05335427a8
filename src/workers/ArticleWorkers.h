#pragma once

#include "cache/NPCache.h"
#include "net/CgiPage.h"
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

// What the downloads of a thread share: the cached copy that they replay and append to, which stays
// locked meanwhile, and the order of the steps.
class ThreadDownload : public ArticleReader {
public:
    explicit ThreadDownload(const ThreadJob& job);
    int32 Run();

protected:
    // The proxy and the headers of all requests are there, and the cached copy is open.
    virtual void PrepareRequest(NPHttp* http) = 0;
    virtual Progress CheckStatus(NPHttp* http) = 0;
    // Ends with FinishCache, or AbandonCache when it is stopped.
    virtual Progress ReadLines(NPHttp* http) = 0;

    // The network's lines go to the cache from here on.
    void BeginAppending();
    void AppendToCache(const char* line, int32 length);
    void ShowOrCount(char* line, int32 length, Encoding encoding);
    // What has arrived stays, with its mark.
    void AbandonCache();
    // The mark goes when the whole thread has come.
    void FinishCache(NPHttp* http, bool isWhole);

    std::unique_ptr<NPCache> fCache; // null with the cache off
    bool fHasCache = false;          // it holds posts
    int32 fAskedSize = 0;            // bytes that it held when the request went out
    bool fAppends = false;
    int32 fLastResult = 0; // of reading the network, or of writing

private:
    enum class Attempt { kDone, kStopped, kFailed, kCacheChanged };

    Attempt _Attempt();
    void _OpenCache();
    void _BeginRequest(NPHttp* http);
    bool _LockCache();
    bool _IsAsAsked();
    void _WriteCount();
    void _Complete();
};

// Brings a thread as a dat file: asks the server for the bytes behind the cached ones, appends
// those to the cache and shows them.
class ArticleDownload : public ThreadDownload {
public:
    using ThreadDownload::ThreadDownload;

private:
    void PrepareRequest(NPHttp* http) override;
    Progress CheckStatus(NPHttp* http) override;
    Progress ReadLines(NPHttp* http) override;
    int32 _ReadLine(NPHttp* http, char* line);
    bool _SwitchToNetwork(int32 result);

    ReadMode fMode = ReadMode::kNetwork;
    int64 fReceived = 0;
};

// Brings a thread that its server shows as HTML alone: asks for the posts behind the cached ones,
// turns them into dat lines, in UTF-8, and goes on as with a dat file.
class CgiDownload : public ThreadDownload {
public:
    using ThreadDownload::ThreadDownload;

private:
    void PrepareRequest(NPHttp* http) override;
    Progress CheckStatus(NPHttp* http) override;
    Progress ReadLines(NPHttp* http) override;
    int32 _CountCached() const;
    Progress _ReplayCache();
    Progress _ReadPage(NPHttp* http);
    void _TakePost(std::string line);

    CgiPage fPage;
    int64 fReceived = 0;
    bool fSkipsNext = false; // the page begins with the first post, which the cache has
};

// Shows a thread from the cache alone.
class ArticleReplay : public ArticleReader {
public:
    explicit ArticleReplay(const ThreadJob& job);
    int32 Run();

private:
    Progress _Replay(NPCache* cache);
};
