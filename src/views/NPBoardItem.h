#pragma once

#include "widgets/CLVListItem.h"

#include <string>

// A row of the board list: a category, which opens and closes, or a board below it.
class NPBoardItem : public CLVEasyItem {
public:
    // A null URL makes a category. The icon is borrowed.
    NPBoardItem(const BBitmap* icon, const char* title, const char* url, bool expanded)
        : CLVEasyItem(url != nullptr ? 1 : 0, url == nullptr, expanded), fTitle(title),
          fUrl(url != nullptr ? url : ""), fIsBoard(url != nullptr) {
        SetIcon(icon);
        SetColumnContent(2, title);
    }

    void SetIcon(const BBitmap* icon) { SetColumnContent(1, icon); }
    bool IsBoard() const { return fIsBoard; }
    const char* Title() const { return fTitle.c_str(); }
    // Empty for a category.
    const char* Url() const { return fUrl.c_str(); }

private:
    const std::string fTitle;
    const std::string fUrl;
    const bool fIsBoard;
};
