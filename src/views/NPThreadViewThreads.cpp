// The rows of threads that are known by their board and their dat.
#include "views/NPThreadView.h"

#include <string_view>

bool NPThreadView::ListsBoard(const NPUrl& board) const {
    return fList->Mode() == NPThreadListView::kBoardList && board.IsSameBoard(fList->ParsedUrl());
}

std::vector<ListedThread> NPThreadView::ListedThreads() const {
    std::vector<ListedThread> threads;
    for (int32 i = 0; i < CountItems(); i++) {
        const NPThreadItem& item = *fList->ThreadAt(i);
        threads.push_back({item.ColumnText(kColumnTitle), item.Dat(), item.CountPosts()});
    }
    return threads;
}

std::vector<int32> NPThreadView::_RowsOf(const NPUrl& board, const char* dat) const {
    std::vector<int32> rows;
    for (int32 i = 0; i < CountItems(); i++) {
        const NPThreadItem& item = *fList->ThreadAt(i);
        if (std::string_view(item.Dat()) != dat)
            continue;
        const char* url = fList->UrlOf(item);
        if (url != nullptr && board.IsSameBoard(NPUrl(url)))
            rows.push_back(i);
    }
    return rows;
}

void NPThreadView::SelectThread(const NPUrl& board, const char* dat) {
    const std::vector<int32> rows = _RowsOf(board, dat);
    if (!rows.empty())
        SelectItem(rows.front());
}

void NPThreadView::MarkThread(const NPUrl& board, const char* dat, bool hasBookmark) {
    for (const int32 row : _RowsOf(board, dat)) {
        NPThreadItem* item = fList->ThreadAt(row);
        item->SetMark(hasBookmark ? fBookmarkIcon.get() : nullptr);
        fList->RowChanged(item);
    }
}
