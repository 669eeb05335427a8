#include "views/NPThreadView.h"

#include "browser/BrowserWindow.h"
#include "cache/NPBookmark.h"
#include "cache/NPCache.h"
#include "messages/Messages.h"
#include "text/html.h"
#include "views/Icons.h"
#include "views/ThreadFilterBar.h"
#include "widgets/CLVContainerView.h"

#include <Directory.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <parsedate.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// What a finished download tells of a thread.
struct Refresh {
    BString dat;
    BString modified;
    int32 count = 0;
    bool cut = false; // the server has more

    bool Find(const BMessage* message) {
        message->FindBool("cut", &cut);
        return message->FindString("dat", &dat) == B_OK &&
               message->FindString("last_modified", &modified) == B_OK &&
               message->FindInt32("res_num", &count) == B_OK;
    }
    time_t Time() const { return parsedate(modified.String(), -1); }
};

} // namespace

NPThreadView::NPThreadView(BRect frame)
    : BView(frame, "thread", B_FOLLOW_ALL_SIDES, B_WILL_DRAW),
      fBookmarkIcon(MakeIcon(Icon::kBookmark)) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    fStateIcons[kNotFetched] = MakeIcon(Icon::kThreadNotFetched);
    fStateIcons[kCached] = MakeIcon(Icon::kThreadCached);
    fStateIcons[kRead] = MakeIcon(Icon::kThreadRead);
    fStateIcons[kNewPosts] = MakeIcon(Icon::kThreadNew);
    fList = new NPThreadListView(Bounds());
    fContainer = new CLVContainerView(Bounds(), fList);
    AddChild(fContainer);
}

void NPThreadView::AttachedToWindow() {
    BView::AttachedToWindow();
    if (BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window()))
        SetClickMode(static_cast<click_mode>(window->GetClickMode()));
}

void NPThreadView::addThreadItem(port_id request, int32 number, const char* title,
                                 const char* count, const char* dat) {
    if (number == 0) {
        BDirectory bookmarks;
        fHasBookmarks = NPBookmark::GetBookmarkDirectory(&bookmarks) == B_OK;
        fList->ClearAllItems();
        fList->SetUrl(title);
        fList->SetMode(NPThreadListView::kBoardList);
        fRequest = request;
        fListed = time(nullptr);
        return;
    }
    if (request != fRequest)
        return;
    BString decoded(title);
    if (decoded.FindFirst("&") >= 0)
        ReplaceHTMLEscapeString(&decoded);
    NPThreadItem::Info info;
    info.number = number;
    info.title = decoded.String();
    info.res = count;
    info.dat = dat;
    info.listed = fListed;
    info.markIcon = IsBookmarked(dat) ? fBookmarkIcon.get() : nullptr;
    info.cached = FindDat(dat, &info.gotten, &info.modified);
    if (info.cached)
        info.state = strtol(count, nullptr, 10) > info.gotten ? kNewPosts : kCached;
    else
        info.gotten = 0;
    info.stateIcon = _StateIcon(info.state);
    fList->AddItem(new NPThreadItem(info));
}

void NPThreadView::addBookmarkItem(port_id request, int32 number, const char* title,
                                   const char* count, const char* dat, const char* server,
                                   const char* board, time_t modified) {
    if (number == 0) {
        fList->ClearAllItems();
        fList->SetMode(NPThreadListView::kBookmarkList);
        fRequest = request;
        fListed = time(nullptr);
        return;
    }
    if (request != fRequest)
        return;
    NPThreadItem::Info info;
    info.number = number;
    info.title = title;
    info.res = count;
    info.dat = dat;
    info.listed = fListed;
    info.markIcon = fBookmarkIcon.get();
    info.gotten = static_cast<int32>(strtol(count, nullptr, 10));
    info.modified = modified;
    info.cached = info.gotten != 0 || modified != 0;
    info.state = info.cached ? kCached : kNotFetched;
    info.stateIcon = _StateIcon(info.state);
    NPThreadItem* item = new NPThreadItem(info);
    item->SetUrl(("http://" + std::string(server) + "/" + board + "/index.html").c_str());
    fList->AddItem(item);
}

int32 NPThreadView::FindNews() const {
    const int32 count = fList->FullListCountItems();
    const int32 from = fList->FullListCurrentSelection();
    for (int32 step = 1; step <= count; step++) {
        const int32 row = (from + step) % count;
        if (fList->ThreadAt(row)->GetColumnContentBitmap(kColumnState) == _StateIcon(kNewPosts))
            return row;
    }
    return -1;
}

bool NPThreadView::FindDat(const char* dat, int32* gotten, time_t* modified) const {
    const NPUrl& url = fList->ParsedUrl();
    if (url.Status() != 0)
        return false;
    NPCache cache(url.Host(), url.Board(), dat, NPCache::Open::kExisting);
    if (cache.Status() != 0)
        return false;
    if (cache.GetSize() == 0) {
        // A download that has just made the file holds its lock.
        if (cache.Lock() == B_OK)
            cache.RemoveFile();
        return false;
    }
    if (cache.ReadAttr("res_num", B_INT32_TYPE, gotten, sizeof(*gotten)) != sizeof(*gotten))
        return false;
    *modified = parsedate(cache.GetModificationTime(), -1);
    return true;
}

bool NPThreadView::IsBookmarked(const char* dat) const {
    const NPUrl& url = fList->ParsedUrl();
    return fHasBookmarks && url.Status() == 0 &&
           NPBookmark::HoldsPlain(url.Host(), url.Board(), dat);
}

void NPThreadView::SelectItem(int32 index) {
    fList->FullListSelect(index);
    fList->ScrollToSelection();
}

void NPThreadView::SelectNumber(int32 number) {
    for (int32 i = CountItems() - 1; i >= 0; i--) {
        if (fList->ThreadAt(i)->Number() == number)
            SelectItem(i);
    }
}

int32 NPThreadView::MaxNumber() {
    int32 most = 0;
    for (int32 i = 0; i < CountItems(); i++)
        most = std::max(most, fList->ThreadAt(i)->Number());
    return most;
}

NPThreadItem* NPThreadView::GetNextNumber(int32 number) {
    for (int32 i = CountItems() - 1; i >= 0; i--) {
        if (fList->ThreadAt(i)->Number() == number + 1)
            return fList->ThreadAt(i);
    }
    return nullptr;
}

std::vector<int32> NPThreadView::BookmarkNumbers() {
    std::vector<int32> numbers;
    for (int32 i = 0; fList->Mode() == NPThreadListView::kBookmarkList && i < CountItems(); i++)
        numbers.push_back(fList->ThreadAt(i)->Number());
    return numbers;
}

void NPThreadView::MessageReceived(BMessage* message) {
    bool sorts = false;
    switch (message->what) {
    case kMsgThreadComplete: _Refresh(message); break;
    case kMsgBoardComplete:
        if (message->FindBool("sort_modification", &sorts) == B_OK && sorts)
            _SortByModification();
        _ShowFilterCount();
        break;
    case ThreadFilterBar::kMsgTyped: _FilterRows(); break;
    case ThreadFilterBar::kMsgLeave: _LeaveFilter(); break;
    case ThreadFilterBar::kMsgClose: CloseFilter(); break;
    default: BView::MessageReceived(message);
    }
}

void NPThreadView::_Refresh(const BMessage* message) {
    bool bookmark = false;
    if (message->FindBool("bookmark", &bookmark) == B_OK && bookmark)
        ChangeStateBookmark(message);
    else
        ChangeState(message);
}

void NPThreadView::ChangeState(const BMessage* message) {
    Refresh refresh;
    if (!refresh.Find(message))
        return;
    for (int32 i = 0; i < CountItems(); i++) {
        NPThreadItem* item = fList->ThreadAt(i);
        if (refresh.dat != item->Dat())
            continue;
        const thread_status state = refresh.cut ? kNewPosts : kRead;
        item->SetFetched(refresh.count, refresh.Time(), state, _StateIcon(state));
        fList->RowChanged(item);
    }
}

void NPThreadView::ChangeStateBookmark(const BMessage* message) {
    Refresh refresh;
    BString board;
    if (!refresh.Find(message) || message->FindString("board", &board) != B_OK)
        return;
    for (int32 i = 0; i < CountItems(); i++) {
        NPThreadItem* item = fList->ThreadAt(i);
        if (refresh.dat != item->Dat() || strstr(item->Url(), board.String()) == nullptr)
            continue;
        item->SetVisited(refresh.count, refresh.Time(), _StateIcon(kNewPosts));
        fList->RowChanged(item);
    }
}

void NPThreadView::_SortByModification() {
    fprintf(stderr, "sort_modification\n");
    fList->SetSortMode(kColumnNumber, CLVSortMode::kNone);
    fList->SetSortMode(kColumnModified, CLVSortMode::kDescending);
}
