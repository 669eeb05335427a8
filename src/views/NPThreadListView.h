#pragma once

#include "net/NPUrl.h"
#include "views/ClickListView.h"
#include "views/NPThreadItem.h"

#include <Bitmap.h>

#include <memory>
#include <string>

class BMenu;
class BMessage;

// The thread list: a board's threads, or the bookmarked ones. Choosing a row asks the window for
// its posts.
class NPThreadListView : public ClickListView {
public:
    // Where a row's board URL comes from.
    enum ListMode : int32 { kBoardList = 0, kBookmarkList = 1 };

    explicit NPThreadListView(BRect frame);

    void SetMode(int32 mode) { fMode = mode; }
    int32 Mode() const { return fMode; }
    // The board URL of a board's list.
    void SetUrl(const char* url);
    const std::string& Url() const { return fUrl; }
    const NPUrl& ParsedUrl() const { return fParsedUrl; }
    // Removes every row; locks the window itself.
    void ClearAllItems();

    NPThreadItem* ThreadAt(int32 index) {
        return static_cast<NPThreadItem*>(FullListItemAt(index));
    }
    // The row's board URL: the list's, the row's own, or none.
    const char* UrlOf(const NPThreadItem& item) const;
    // The thread's address in a browser: 0 and a string that the caller frees, or −1.
    static int32 GetThreadUrl(char** out, const char* url, const char* dat);
    // Adds "dat", "res" and, where there is one, "url".
    void AddItemData(BMessage* message, const NPThreadItem& item) const;

    void ColumnWidthChanged(int32 column, float width) override;
    void MessageReceived(BMessage* message) override;

protected:
    void RowChosen(int32 index) override { SendThreadSelectMessage(index); }
    void OpenPopUpMenu(int32 index, BPoint screen) override;

private:
    void SendThreadSelectMessage(int32 index);
    void _OpenInBrowser(const BMessage* message);
    void _DeleteCached(const BMessage* message);
    void _AddBookmark(const BMessage* message);
    void _RemoveBookmark(const BMessage* message);
    NPThreadItem* _FindThread(const char* dat, const char* url);
    class BMenuItem* _Entry(const char* label, uint32 code, int32 index);
    class BMenuItem* _BookmarkEntry(int32 index);

    std::string fUrl;
    NPUrl fParsedUrl;
    int32 fMode = kBoardList;
    std::unique_ptr<BBitmap> fNotFetchedIcon;
    std::unique_ptr<BBitmap> fBookmarkIcon;
};
