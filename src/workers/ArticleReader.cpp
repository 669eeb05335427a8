#include "app/NPWindow.h"
#include "text/html.h"
#include "workers/ArticleWorkers.h"

#include <cstdio>

ArticleReader::ArticleReader(const ThreadJob& job)
    : Worker(job.window, job.control), fJob(job), fUrl(job.url.c_str()) {}

ArticleReader::~ArticleReader() {
    ReleaseArticle(&fArticle);
}

bool ArticleReader::ShowLine(char* line, int32 length, Encoding encoding) {
    fCount++;
    line[length] = '\0';
    TruncateNullChar(line, static_cast<uint32>(length));
    const bool parsed = parseArticle(line, &fArticle, encoding == Encoding::kCp932) == 0;
    // A line that was made of a page shows by this where the page was another than expected.
    if (!parsed && encoding == Encoding::kUtf8)
        printf("parseArticle() error\n");
    const bool hasTitle = parsed && fArticle.title != nullptr;
    if (hasTitle)
        fTitle = fArticle.title;
    if (parsed)
        NPWindow::addArticleItem(&Window(), Request(), fTitle.c_str(), fCount, fArticle);
    ReleaseArticle(&fArticle);
    return hasTitle;
}

void ArticleReader::EndArticles() {
    NPWindow::addArticleItem(&Window(), Request(), fTitle.c_str(), fCount, _ArticleOut{});
}
