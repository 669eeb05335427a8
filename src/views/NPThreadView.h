#pragma once

#include "posts/ThreadTitles.h"
#include "views/NPThreadListView.h"
#include "views/ThreadHeader.h"

#include <OS.h>
#include <View.h>

#include <ctime>
#include <memory>
#include <vector>

class CLVContainerView;
class ThreadFilterBar;

// The thread pane: holds the thread list and fills it with what the workers bring. Everything needs
// the window locked.
class NPThreadView : public BView {
public:
    explicit NPThreadView(BRect frame);

    // Number 0 begins a new list of that request, with the board's URL as the title; what another
    // request adds from then on is dropped.
    void addThreadItem(port_id request, int32 number, const char* title, const char* count,
                       const char* dat);

    // The same for the bookmarks of all boards; the number of cached posts is the count's. The time
    // is the cached copy's, 0 without one.
    void addBookmarkItem(port_id request, int32 number, const char* title, const char* count,
                         const char* dat, const char* server, const char* board, time_t modified);

    // Whether a thread of the listed board has a usable cached copy, with the number of its posts
    // and its time. Creates nothing; removes an empty copy.
    bool FindDat(const char* dat, int32* gotten, time_t* modified) const;
    bool IsBookmarked(const char* dat) const;

    void SelectItem(int32 index);
    // The next row with new posts on the server, behind the selected one and then from the top; −1
    // without one.
    int32 FindNews() const;
    // The row after this one, as they stand; null behind the last.
    NPThreadItem* GetNextItem(int32 index) { return fList->ThreadAt(index + 1); }
    int32 CountItems() const { return fList->FullListCountItems(); }
    // Selects the row with this number. Numbers stay whatever the sorting.
    void SelectNumber(int32 number);
    int32 MaxNumber();
    NPThreadItem* GetNextNumber(int32 number);
    // The numbers of the bookmarks as they stand; none while a board is listed.
    std::vector<int32> BookmarkNumbers();

    void SetMode(int32 mode) { fList->SetMode(mode); }
    void SetClickMode(click_mode mode) { fList->SetClickMode(mode); }
    // The widths of the six columns that every settings file knows: number, title, posts, gotten,
    // modified, dat.
    void GetColumnWidth(float* widths) const;
    void SetColumnWidth(const float* widths);
    // The eight columns that every settings file knows, from left to right, without the one of the
    // speed; setting them puts that to the right end.
    void GetColumnOrder(int32* order) const;
    void SetColumnOrder(const int32* order);
    // What else the header remembers. What can't be is ignored.
    ThreadHeader GetHeader() const;
    void SetHeader(const ThreadHeader& header);
    NPThreadListView* List() const { return fList; }

    // Whether the list is that of this thread's board.
    bool ListsBoard(const NPUrl& board) const;
    std::vector<ListedThread> ListedThreads() const;
    // Selects the thread's row, where there is one in a board's list.
    void SelectThread(const NPUrl& board, const char* dat);
    // Shows whether the thread has a bookmark.
    void MarkThread(const NPUrl& board, const char* dat, bool hasBookmark);

    // The field above the list that narrows it; a second time it is only gone to. It stays, for
    // whatever list comes, until it is closed, which shows all rows again.
    void OpenFilter();
    void CloseFilter();

    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;

private:
    void _Refresh(const BMessage* message);
    void ChangeState(const BMessage* message);
    void ChangeStateBookmark(const BMessage* message);
    void _SortByModification();
    void _FilterRows();
    void _ShowFilterCount();
    void _LeaveFilter();
    void _PlaceList(float top);
    std::vector<int32> _RowsOf(const NPUrl& board, const char* dat) const;
    const BBitmap* _StateIcon(thread_status state) const { return fStateIcons[state].get(); }

    NPThreadListView* fList = nullptr;
    CLVContainerView* fContainer = nullptr;
    ThreadFilterBar* fFilterBar = nullptr; // null while all rows are shown
    std::unique_ptr<BBitmap> fStateIcons[4];
    std::unique_ptr<BBitmap> fBookmarkIcon;
    port_id fRequest = -1;
    time_t fListed = 0;         // when the list began
    bool fHasBookmarks = false; // the bookmark folder stood when the list began
};
