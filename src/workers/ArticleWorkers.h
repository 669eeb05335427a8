#pragma once

#include "cache/NPCache.h"
#include "net/CgiPage.h"
#include "net/DownloadPlan.h"
#include "net/NPUrl.h"
#include "net/OverlongLine.h"
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
    // A line, or a part of one that is longer. A complete line is counted, and shown if it parses;
    // of an overlong one its beginning is. The part is terminated here and needs room for that.
    void ShowPart(char* part, int32 length);
    // The job names no board: the result of its thread, with the completion posted.
    int32 EndWithoutBoard();
    // Tells the pane that all posts have come.
    void EndArticles();
    // The next part begins the first line of a thread again.
    void ForgetLines();

    const ThreadJob& fJob;
    NPUrl fUrl;
    int32 fCount = 0; // lines so far
    std::string fTitle;

private:
    void _ShowLine(char* line, int32 length, bool convert);
    void _ShowBeginning(const std::string& beginning);
    void _AddItem(const _ArticleOut& article);

    // A thread that was read from the server's pages is kept in UTF-8.
    const bool fIsUtf8;
    OverlongLine fOverlong;
    _ArticleOut fArticle = {};
};

// What the downloads of a thread share. The cached posts are shown first, at the reader's place:
// whatever comes of the request, they are there. Then the server is asked for what is missing, the
// copy is locked, and what comes is appended to it and shown.
//
// From scratch the server is asked for everything, and that goes to a file beside the copy, which
// it replaces once it is whole; else the copy is shown again.
class ThreadDownload : public ArticleReader {
public:
    explicit ThreadDownload(const ThreadJob& job);
    int32 Run();

protected:
    // The proxy and the headers of all requests are there, and the cached posts are counted.
    virtual void PrepareRequest(NPHttp* http) = 0;
    // Of a refusal the user has been told; the code is that of the completion.
    virtual AnswerKind Judge(NPHttp* http) = 0;
    virtual uint32 RefusalCompletion() const = 0;
    // A line of the body, or a part of one.
    virtual void TakePart(char* part, int32 length) = 0;
    // Whether requests name the copy's time, so that it must be the server's.
    virtual bool AsksByTime() const = 0;
    // Whether nothing of interest follows.
    virtual bool HasAll() const { return false; }
    // Whether the body has ended within a line of what is wanted.
    virtual bool EndsInsideLine(NPHttp* http) const;

    // Shows the reader what there is.
    Progress Fail(uint32 completion) override;
    // A part of a dat line goes to the cache and the window.
    void Keep(char* part, int32 length);
    bool Extends() const { return fHasCache && !fJob.fromScratch; }
    bool ReplacesCache() const { return fHasCache && fJob.fromScratch; }

    std::unique_ptr<NPCache> fCache; // null with the cache off
    int32 fCachedSize = 0;           // bytes that it held when the request went out

private:
    DownloadEnd _Attempt();
    void _OpenCache();
    void _MakeCache(NPCache::Open how);
    Progress _ShowCached();
    void _StartOver();
    Progress _Ask(NPHttp* http);
    bool _LockCache();
    bool _IsAsAsked();
    DownloadEnd _Receive(NPHttp* http);
    DownloadEnd _ReadBody(NPHttp* http);
    bool _ReadParts(NPHttp* http, DownloadBody* body);
    void _Append(const char* part, int32 length);
    void _Show(char* part, int32 length);
    DownloadEnd _UpdateCache(DownloadEnd end, const char* modified);
    void _WriteTitle();
    void _WriteFacts();
    DownloadEnd _Replace(DownloadEnd end);
    int32 _Finish(DownloadEnd end);
    void _Complete(DownloadEnd end);

    std::unique_ptr<NPCache> fReplaced; // the copy that waits for its successor
    bool fHasCache = false;             // it holds posts
    bool fAppends = false;
    int32 fKept = 0;          // whole lines in the cache
    const char* fEnding = ""; // the status line's last text
};

// Brings a thread as a dat file: asks the server for the bytes behind the cached ones.
class ArticleDownload : public ThreadDownload {
public:
    using ThreadDownload::ThreadDownload;

private:
    void PrepareRequest(NPHttp* http) override;
    AnswerKind Judge(NPHttp* http) override;
    uint32 RefusalCompletion() const override;
    void TakePart(char* part, int32 length) override { Keep(part, length); }
    bool AsksByTime() const override { return true; }
};

// Brings a thread that its server shows as HTML alone: asks for the posts behind the cached ones,
// turns them into dat lines, in UTF-8, and goes on as with a dat file.
class CgiDownload : public ThreadDownload {
public:
    using ThreadDownload::ThreadDownload;

private:
    void PrepareRequest(NPHttp* http) override;
    AnswerKind Judge(NPHttp* http) override;
    uint32 RefusalCompletion() const override;
    void TakePart(char* part, int32 length) override;
    bool AsksByTime() const override { return false; }
    bool HasAll() const override { return fPage.HasEnded(); }
    bool EndsInsideLine(NPHttp* http) const override;
    void _TakePost(std::string line);

    CgiPage fPage;
    OverlongLine fOverlong;
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
