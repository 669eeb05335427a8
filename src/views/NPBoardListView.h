#pragma once

#include "views/ClickListView.h"

#include <Bitmap.h>

#include <memory>
#include <vector>

class NPBoardItem;

// The board list: category rows that open and close, board rows below them. Choosing a board asks
// the window for its threads.
class NPBoardListView : public ClickListView {
public:
    static constexpr int32 kNameColumn = 2;

    explicit NPBoardListView(BRect frame);

    // Appends a category (without a URL) or a board of the category added last.
    void AddBoardItem(const char* title, const char* url);
    // Removes every row; locks the window itself.
    void CleanUp();
    // The full index of the first board with this URL, or −1.
    int32 FindBoard(const char* url);
    // Gives a row the icon of the board on show, or takes it away.
    void ChangeState(int32 index, bool current);

    int32 CountCategories() const { return static_cast<int32>(fCategories.size()); }
    const char* CategoryNameAt(int32 category);
    bool CategoryExpandedAt(int32 category);
    void SetCategoryExpanded(int32 category, bool expanded);

    void MessageReceived(BMessage* message) override;

protected:
    void RowChosen(int32 index) override { SendBoardSelectMessage(index); }
    void OpenPopUpMenu(int32 index, BPoint screen) override;

private:
    void SendBoardSelectMessage(int32 index);
    NPBoardItem* _BoardAt(int32 index);

    std::unique_ptr<BBitmap> fCategoryIcon;
    std::unique_ptr<BBitmap> fBoardIcon;
    std::unique_ptr<BBitmap> fCurrentIcon;
    std::vector<int32> fCategories; // full indexes of the category rows
    int32 fCurrent = -1;            // full index of the row with the current-board icon
};
