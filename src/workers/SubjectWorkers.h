#pragma once

#include "net/NPUrl.h"
#include "workers/Worker.h"

class BEntry;
class BMessage;

// Lists a board's threads: downloads its subject.txt, or reads its cache folder. A list begins with
// an item of number 0; lines that don't parse use up their number.
class SubjectDownload : public Worker {
public:
    explicit SubjectDownload(const SubjectJob& job);
    int32 Run();

private:
    Progress _Request(class NPHttp* http);
    Progress _CheckStatus(class NPHttp* http);
    Progress _ReadLines(class NPHttp* http);
    void _AddItem(int32 number, const char* title, const char* count, const char* dat);

    const SubjectJob& fJob;
    NPUrl fUrl;
    int32 fCount = 0;
};

class SubjectCacheListing : public Worker {
public:
    explicit SubjectCacheListing(const SubjectJob& job);
    int32 Run();

private:
    void _AddFile(const BEntry& entry);

    const SubjectJob& fJob;
    NPUrl fUrl;
    int32 fCount = 0;
};
