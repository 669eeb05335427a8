#pragma once

#include "widgets/CLVListItem.h"

#include <ctime>
#include <string>

// What is known of a thread, for its icon and for sorting.
enum thread_status {
    kNotFetched = 0, // no cached copy
    kCached = 1,     // the cached copy has all posts that the list names
    kRead = 2,       // read in this session
    kNewPosts = 3,   // the server has more than the cached copy
};

// The thread list's columns. Settings files know the order of the first eight as one list, which
// other programs read too: what is added later has settings of its own.
enum ThreadColumn : int32 {
    kColumnNumber,
    kColumnState,
    kColumnTitle,
    kColumnRes,
    kColumnGotten,
    kColumnModified,
    kColumnDat,
    kColumnMark,
    kOrderedColumnCount,
    kColumnSpeed = kOrderedColumnCount,
    kThreadColumnCount,
};

// A row of the thread list: one thread.
class NPThreadItem : public CLVEasyItem {
public:
    // Texts are copied, bitmaps borrowed; without a mark, the thread has no bookmark.
    struct Info {
        int32 number = 0;
        const BBitmap* stateIcon = nullptr;
        const BBitmap* markIcon = nullptr;
        thread_status state = kNotFetched;
        const char* title = "";
        const char* res = ""; // the server's count of posts, as text
        const char* dat = "";
        bool cached = false;
        int32 gotten = 0;    // posts in the cached copy
        time_t modified = 0; // of the cached copy
        time_t listed = 0;   // when the server's count was this
    };
    explicit NPThreadItem(const Info& info);

    // What a finished download knows of the cached copy.
    void SetFetched(int32 gotten, time_t modified, thread_status state, const BBitmap* stateIcon);
    // The same after a patrol's visit: new posts change the icon, not the state that rows sort by.
    void SetVisited(int32 gotten, time_t modified, const BBitmap* newPostsIcon);
    void SetNotFetched(const BBitmap* stateIcon);
    // Null takes the mark away.
    void SetMark(const BBitmap* markIcon);
    void SetUrl(const char* url) { fUrl = url; }

    // The thread's own board; empty in a board's list.
    const char* Url() const { return fUrl.c_str(); }
    const char* Dat() const;
    int32 Number() const { return fNumber; }
    int32 Gotten() const { return fGotten; }
    bool IsCached() const { return fCached; }
    thread_status State() const { return fState; }
    // On the server, when the row was listed.
    int32 CountPosts() const;
    // Posts a day since the thread was begun.
    double Speed() const;
    // As titles are compared; folded when it is first asked for.
    const std::string& FoldedTitle() const;

    void DrawItemColumn(BView* owner, BRect cell, int32 column) override;
    const char* ColumnText(int32 column) const override;

    // Below 0 when a comes first in ascending order; higher states come first.
    static int32 CompareItems(const CLVListItem* a, const CLVListItem* b, int32 column);

private:
    void _ShowCounts();

    const int32 fNumber;
    std::string fUrl;
    thread_status fState;
    bool fCached;
    bool fMarked;
    int32 fGotten;
    time_t fModified;
    const time_t fListed;
    mutable std::string fSpeedText; // written when it is shown
    mutable std::string fFoldedTitle;
};
