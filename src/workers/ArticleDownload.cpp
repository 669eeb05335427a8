#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

void ArticleDownload::PrepareRequest(NPHttp* http) {
    http->SetPath(("/" + std::string(fUrl.Board()) + "/dat/" + fJob.dat).c_str());
    if (!Extends())
        return;
    http->AddHeader("If-Modified-Since", fCache->GetModificationTime());
    http->AddHeader("Range", ("bytes=" + std::to_string(fCachedSize) + "-").c_str());
    http->method = NPHttp::kGet;
}

AnswerKind ArticleDownload::Judge(NPHttp* http) {
    const NPHttp::StatusRecord* status = http->Status();
    DownloadAnswer answer;
    answer.namesSize = Extends();
    answer.namesEpoch = Extends() && fCache->IsFromEpoch();
    answer.cachedSize = fCachedSize;
    answer.status = status->code;
    answer.contentRange = http->FindHeader("Content-Range");
    const AnswerKind kind = JudgeAnswer(answer);
    if (kind == AnswerKind::kRefusal) {
        fprintf(stderr, "%ld %s\n", static_cast<long>(status->code), status->reason.c_str());
        ShowRefusal(*status);
    }
    return kind;
}

uint32 ArticleDownload::RefusalCompletion() const {
    return kMsgThreadComplete;
}
