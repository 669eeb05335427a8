#include "browser/BrowserWindow.h"
#include "messages/Messages.h"
#include "text/ToUtf8.h"
#include "text/html.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

ArticleReader::ArticleReader(const ThreadJob& job)
    : Worker(job.window, job.control), fJob(job), fUrl(job.url.c_str()),
      fIsUtf8(job.dat.find("cgi") != job.dat.npos) {}

ArticleReader::~ArticleReader() {
    ReleaseArticle(&fArticle);
}

void ArticleReader::ShowPart(char* part, int32 length) {
    switch (fOverlong.Take(part, length)) {
    case LinePart::kLine: _ShowLine(part, length, !fIsUtf8); break;
    case LinePart::kEnd: _ShowBeginning(fOverlong.TakeBeginning()); break;
    case LinePart::kInside: break;
    }
}

void ArticleReader::_ShowBeginning(const std::string& beginning) {
    const std::string utf8 = fIsUtf8 ? beginning : ToUtf8(beginning);
    std::string line = EndDatLine(utf8, fCount == 0);
    _ShowLine(line.data(), static_cast<int32>(line.size()), false);
}

void ArticleReader::_ShowLine(char* line, int32 length, bool convert) {
    fCount++;
    line[length] = '\0';
    TruncateNullChar(line, static_cast<uint32>(length));
    const bool parsed = parseArticle(line, &fArticle, convert) == 0;
    // A line that was made of a page shows by this where the page was another than expected.
    if (!parsed && fIsUtf8)
        printf("parseArticle() error\n");
    if (parsed && fArticle.title != nullptr)
        fTitle = fArticle.title;
    if (parsed)
        _AddItem(fArticle);
    ReleaseArticle(&fArticle);
}

void ArticleReader::ForgetLines() {
    fCount = 0;
    fOverlong = OverlongLine(); // a cut may have left the beginning of one
}

int32 ArticleReader::EndWithoutBoard() {
    BMessage complete(kMsgThreadComplete);
    Complete(&complete);
    return -1;
}

void ArticleReader::EndArticles() {
    _AddItem(_ArticleOut{});
}

void ArticleReader::_AddItem(const _ArticleOut& article) {
    Window().CallForArticle([&](BrowserWindow* window) {
        window->addArticleItem(Request(), fTitle.c_str(), fCount, article);
    });
}
