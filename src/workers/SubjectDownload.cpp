#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "net/lines.h"
#include "text/html.h"
#include "workers/SubjectWorkers.h"

#include <cstdio>

int32 SubjectDownload::Run() {
    if (fUrl.Status() != 0) {
        Fail(kMsgBoardComplete);
        return -1;
    }
    NPHttp http(fUrl.Host(), "80");
    Progress progress = _Request(&http);
    if (progress == Progress::kGoOn)
        progress = _CheckStatus(&http);
    if (progress == Progress::kGoOn)
        progress = _ReadLines(&http);
    if (progress != Progress::kGoOn)
        return progress == Progress::kStopped ? 0 : -1;
    Finish();
    return 0;
}

void SubjectDownload::BeginList() {
    SetTitle(fJob.board);
    SubjectReader::BeginList();
}

void SubjectDownload::Finish() {
    ShowCount();
    BMessage complete(kMsgBoardComplete);
    complete.AddString("url", fJob.url.c_str());
    Complete(&complete);
    ClearProgress();
}

Progress SubjectDownload::_Request(NPHttp* http) {
    http->SetPath(("/" + std::string(fUrl.Board()) + "/subject.txt").c_str());
    BeginReading(http, fJob.proxy, fUrl.Host());
    return Ask(http, fUrl.Host(), kMsgBoardComplete);
}

Progress SubjectDownload::_CheckStatus(NPHttp* http) {
    http->PrintAllHeader();
    if (MustStop())
        return Progress::kStopped;
    const NPHttp::StatusRecord* status = http->Status();
    if (status->code == 200)
        return Progress::kGoOn;
    ShowRefusal(*status);
    return Fail(kMsgBoardComplete);
}

Progress SubjectDownload::_ReadLines(NPHttp* http) {
    BeginList();
    ShowProgress(std::string(fUrl.Host()) + "から受信中");
    ServerLine line;
    _SubjectOut subject;
    for (;;) {
        const int32 length = http->ReadLine(line, kLongestServerLine);
        if (length <= 0)
            break;
        line[length] = '\0';
        fCount++;
        TruncateNullChar(line, static_cast<uint32>(length));
        if (MustStop())
            return Progress::kStopped;
        if (parseSubject(line, &subject) == 0)
            AddThread(fCount, subject.title, subject.count, subject.dat);
    }
    http->Close();
    return MustStop() ? Progress::kStopped : Progress::kGoOn;
}
