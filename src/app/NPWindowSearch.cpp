#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "views/NPArticleView.h"
#include "views/NPThreadView.h"
#include "windows/NPPrefsWindow.h"
#include "windows/NPSearchWindow.h"
#include "windows/SearchSteps.h"

#include <Message.h>
#include <String.h>

#include <cstring>

void NPWindow::OpenPrefsWindow() {
    NPPrefsWindow::Open(fSettings);
}

void NPWindow::_OpenSearch() {
    if (!fThreadOnly)
        fSearchWindow.Open([this] { return new NPSearchWindow(BMessenger(this)); });
}

void NPWindow::_FilterThreads() {
    if (!fThreadOnly)
        fThreadView->OpenFilter();
}

// The next window searches the titles from the top, but goes on in the article.
void NPWindow::_SearchClosed(const BMessage* message) {
    BMessenger closed;
    if (message->FindMessenger("window", &closed) == B_OK && fSearchWindow.Leave(closed))
        fSearchPosition = -1;
}

void NPWindow::_SearchStep(const BMessage* message) {
    bool titles = false;
    bool article = false;
    BString text;
    if (fThreadOnly || message->FindBool("thread", &titles) != B_OK ||
        message->FindBool("article", &article) != B_OK ||
        message->FindString("text", &text) != B_OK)
        return;
    Search(text.String(),
           static_cast<uint8>((titles ? kSearchTitles : 0) | (article ? kSearchArticle : 0)));
}

void NPWindow::Search(const char* text, uint8 where) {
    if (where == kSearchTitles)
        _SearchTitles(text);
    else if (where == kSearchArticle)
        _SearchArticle(text);
}

NPThreadItem* NPWindow::GetNextThreadItem(int32 index) const {
    return fThreadView != nullptr ? fThreadView->GetNextItem(index) : nullptr;
}

int32 NPWindow::GetCurrentArticleLength() const {
    return fArticleView->TextLength();
}

int32 NPWindow::GetCurrentThreadNumber() const {
    return fThreadView != nullptr ? fThreadView->CountItems() : 0;
}

void NPWindow::_SearchTitles(const char* text) {
    const auto titleAt = [this](int32 row) -> const char* {
        const NPThreadItem* item = GetNextThreadItem(row - 1);
        return item != nullptr ? item->ColumnText(kColumnTitle) : nullptr;
    };
    const int32 row = NextTitleMatch(titleAt, text, &fSearchPosition);
    if (row < 0)
        return;
    fThreadView->SelectItem(row);
    if (!fThreadView->List()->IsShown(fThreadView->List()->ThreadAt(row)))
        PostProgressData("見つかったスレッドは絞り込みで隠れています", 0);
}

void NPWindow::_SearchArticle(const char* text) {
    const int32 start =
        NextTextMatch(fArticleView->GetText(), GetCurrentArticleLength(), text, &fSearchIndex);
    if (start >= 0)
        fArticleView->SelectText(start, start + static_cast<int32>(strlen(text)));
}
