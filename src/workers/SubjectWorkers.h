#pragma once

#include "net/NPUrl.h"
#include "posts/ThreadTitles.h"
#include "workers/Worker.h"

#include <vector>

class BEntry;
class BMessage;

// What both listings of a board's threads share. A list begins with an item of number 0; lines that
// don't parse use up their number.
class SubjectReader : public Worker {
public:
    explicit SubjectReader(const SubjectJob& job);

protected:
    // In the window, which shows them.
    virtual void BeginList() { AddThread(0, fJob.url.c_str(), nullptr, nullptr); }
    // In the window's title, behind the board's name.
    void ShowCount() { SetTitle(fJob.board + " (" + std::to_string(fCount) + ")"); }
    virtual void AddThread(int32 number, const char* title, const char* count, const char* dat);

    const SubjectJob& fJob;
    NPUrl fUrl;
    int32 fCount = 0;
};

// Downloads the board's subject.txt.
class SubjectDownload : public SubjectReader {
public:
    using SubjectReader::SubjectReader;
    int32 Run();

protected:
    void BeginList() override;
    // All has come.
    virtual void Finish();

private:
    Progress _Request(class NPHttp* http);
    Progress _CheckStatus(class NPHttp* http);
    Progress _ReadLines(class NPHttp* http);
};

// Downloads the board's subject.txt to find the threads that may follow one of it; shows nothing.
class NextThreadSearch : public SubjectDownload {
public:
    explicit NextThreadSearch(const NextThreadJob& job)
        : SubjectDownload(job), fThread(job.thread) {}

protected:
    void BeginList() override {}
    void AddThread(int32 number, const char* title, const char* count, const char* dat) override;
    void Finish() override;

private:
    const ListedThread& fThread;
    std::vector<ListedThread> fThreads;
};

// Reads the board's cache folder.
class SubjectCacheListing : public SubjectReader {
public:
    using SubjectReader::SubjectReader;
    int32 Run();

private:
    void _AddFile(const BEntry& entry);
};
