#include "messages/Messages.h"
#include "net/NPHttp.h"
#include "text/ToUtf8.h"
#include "workers/ArticleWorkers.h"

#include <string_view>

// Whatever the request for this thread says of its posts, the cached ones count: a wrong start
// would leave posts out or double them.
void CgiDownload::PrepareRequest(NPHttp* http) {
    const std::string key = fJob.dat.substr(0, fJob.dat.find('.'));
    const int32 start = Extends() ? fCount + 1 : 1;
    http->SetPath((MakeReadCgiPath(fUrl.Board(), key) + "&START=" + std::to_string(start)).c_str());
    fPage = CgiPage();
    fSkipsNext = Extends();
}

AnswerKind CgiDownload::Judge(NPHttp* http) {
    const NPHttp::StatusRecord* status = http->Status();
    if (status->code == 200)
        return AnswerKind::kBody;
    ShowRefusal(*status);
    return AnswerKind::kRefusal;
}

// It is told as a board's, which leaves the thread list's row as it is.
uint32 CgiDownload::RefusalCompletion() const {
    return kMsgBoardComplete;
}

void CgiDownload::TakePart(char* part, int32 length) {
    const LinePart kind = fOverlong.Take(part, length);
    if (kind == LinePart::kInside)
        return;
    const std::string beginning = fOverlong.TakeBeginning();
    const std::string line = kind == LinePart::kLine
                                 ? ToUtf8(std::string_view(part, static_cast<size_t>(length)))
                                 : EndPageLine(ToUtf8(beginning));
    if (fPage.TakeLine(line))
        _TakePost(fPage.TakeDatLine());
}

// Many a page has no line feed behind its last tag.
bool CgiDownload::EndsInsideLine(NPHttp* http) const {
    ServerLine rest;
    const int32 length = http->ReadReceived(rest, kLongestServerLine);
    if (length <= 0)
        return http->IsInsideLine();
    const std::string_view line(rest, static_cast<size_t>(length));
    return line.find("</html>") == line.npos && line.find("</HTML>") == line.npos;
}

void CgiDownload::_TakePost(std::string line) {
    if (fSkipsNext)
        fSkipsNext = false;
    else
        Keep(line.data(), static_cast<int32>(line.size()));
}
