#include "views/NPThreadView.h"

#include "app/Messages.h"
#include "app/NPWindow.h"
#include "cache/NPCache.h"
#include "text/html.h"
#include "views/Icons.h"
#include "widgets/CLVContainerView.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Path.h>
#include <parsedate.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

constexpr int32 kWidthColumns[] = {kColumnNumber, kColumnTitle,    kColumnRes,
                                   kColumnGotten, kColumnModified, kColumnDat};

status_t OpenBookmarkFolder(BDirectory* folder) {
    BPath path;
    status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &path);
    if (status == B_OK)
        status = path.Append("2ch/2chBookmark");
    return status == B_OK ? folder->SetTo(path.Path()) : status;
}

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
    AddChild(new CLVContainerView(Bounds(), fList));
}

void NPThreadView::AttachedToWindow() {
    BView::AttachedToWindow();
    if (NPWindow* window = dynamic_cast<NPWindow*>(Window()))
        SetClickMode(static_cast<click_mode>(window->GetClickMode()));
}

void NPThreadView::addThreadItem(port_id request, int32 number, const char* title,
                                 const char* count, const char* dat) {
    if (number == 0) {
        BDirectory bookmarks;
        fHasBookmarks = OpenBookmarkFolder(&bookmarks) == B_OK;
        fList->ClearAllItems();
        fList->SetUrl(title);
        fList->SetMode(NPThreadListView::kBoardList);
        fRequest = request;
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
    info.markIcon = IsBookmarked(dat) ? fBookmarkIcon.get() : nullptr;
    info.cached = FindDat(dat, &info.gotten, &info.modified);
    if (info.cached)
        info.state = strtol(count, nullptr, 10) > info.gotten ? kNewPosts : kCached;
    else
        info.gotten = 0;
    info.stateIcon = _StateIcon(info.state);
    fList->AddItem(new NPThreadItem(info));
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
    BDirectory folder;
    if (!fHasBookmarks || url.Status() != 0 || OpenBookmarkFolder(&folder) != B_OK)
        return false;
    const std::string name = std::string(url.Host()) + "." + url.Board() + "." + dat;
    return folder.Contains(name.c_str());
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

void NPThreadView::GetColumnWidth(float* widths) const {
    for (const int32 column : kWidthColumns)
        *widths++ = fList->ColumnWidth(column);
}

void NPThreadView::SetColumnWidth(const float* widths) {
    for (const int32 column : kWidthColumns)
        fList->SetColumnWidth(column, *widths++);
}

void NPThreadView::MessageReceived(BMessage* message) {
    bool sorts = false;
    switch (message->what) {
    case kMsgThreadComplete: ChangeState(message); break;
    case kMsgBoardComplete:
        if (message->FindBool("sort_modification", &sorts) == B_OK && sorts)
            _SortByModification();
        break;
    default: BView::MessageReceived(message);
    }
}

void NPThreadView::ChangeState(const BMessage* message) {
    BString dat;
    BString modified;
    int32 count = 0;
    if (message->FindString("dat", &dat) != B_OK ||
        message->FindString("last_modified", &modified) != B_OK ||
        message->FindInt32("res_num", &count) != B_OK)
        return;
    for (int32 i = 0; i < CountItems(); i++) {
        NPThreadItem* item = fList->ThreadAt(i);
        if (dat != item->Dat())
            continue;
        item->SetFetched(count, parsedate(modified.String(), -1), kRead, _StateIcon(kRead));
        fList->InvalidateItem(item);
    }
}

void NPThreadView::_SortByModification() {
    fprintf(stderr, "sort_modification\n");
    fList->SetSortMode(kColumnNumber, CLVSortMode::kNone);
    fList->SetSortMode(kColumnModified, CLVSortMode::kDescending);
}
