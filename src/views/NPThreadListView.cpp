#include "views/NPThreadListView.h"

#include "browser/BrowserWindow.h"
#include "cache/NPBookmark.h"
#include "cache/NPCache.h"
#include "messages/Messages.h"
#include "net/ThreadAddress.h"
#include "text/PathNames.h"
#include "views/Icons.h"
#include "views/OpenInBrowser.h"
#include "widgets/Alerts.h"

#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <cstring>

NPThreadListView::NPThreadListView(BRect frame)
    : ClickListView(frame, "thread list", Hierarchy::kFlat),
      fNotFetchedIcon(MakeIcon(Icon::kThreadNotFetched)), fBookmarkIcon(MakeIcon(Icon::kBookmark)) {
    SetSortFunction(NPThreadItem::CompareItems);
    // The title stays: a list without any column would show nothing to bring it back by.
    const uint32 title = CLVColumn::kSortable;
    const uint32 sorts = CLVColumn::kSortable | CLVColumn::kHideable;
    const uint32 fixed = sorts | CLVColumn::kNotResizable;
    const CLVSortMode unsorted = CLVSortMode::kNone;
    // In the order of ThreadColumn
    AddColumn({"No.", 35, 20, sorts, CLVSortMode::kAscending});
    AddColumn({"S", 20, 20, fixed, unsorted, true, "S（状態）"});
    AddColumn({"スレッド", 250, 20, title});
    AddColumn({"レス", 45, 20, sorts});
    AddColumn({"既得", 45, 20, sorts});
    AddColumn({"更新日時", 150, 20, sorts});
    AddColumn({".dat", 100, 20, sorts});
    AddColumn({"B", 20, 20, fixed, unsorted, true, "B（ブックマーク）"});
    AddColumn({"勢い", 45, 20, sorts, unsorted, false});
}

void NPThreadListView::SetUrl(const char* url) {
    fUrl = url;
    fParsedUrl.SetTo(url);
}

void NPThreadListView::ClearAllItems() {
    if (!LockLooper())
        return;
    MakeEmpty();
    UnlockLooper();
}

const char* NPThreadListView::UrlOf(const NPThreadItem& item) const {
    if (fMode == kBoardList)
        return fUrl.c_str();
    return fMode == kBookmarkList ? item.Url() : nullptr;
}

int32 NPThreadListView::GetThreadUrl(char** out, const char* url, const char* dat) {
    const std::string address = MakeThreadAddress(url, dat);
    if (address.empty())
        return -1;
    *out = strdup(address.c_str());
    return 0;
}

void NPThreadListView::AddItemData(BMessage* message, const NPThreadItem& item) const {
    message->AddString("dat", item.Dat());
    message->AddInt32("res", item.Gotten());
    if (UrlOf(item) != nullptr)
        message->AddString("url", UrlOf(item));
}

void NPThreadListView::ColumnWidthChanged(int32 column, float width) {
    ClickListView::ColumnWidthChanged(column, width);
    Invalidate();
}

void NPThreadListView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgThreadInBrowser: _OpenInBrowser(message); break;
    case kMsgAddBookmark: _AddBookmark(message); break;
    case kMsgRemoveBookmark: _RemoveBookmark(message); break;
    case kMsgDeleteCached: _DeleteCached(message); break;
    default: ClickListView::MessageReceived(message);
    }
}

void NPThreadListView::SendThreadSelectMessage(int32 index) {
    const NPThreadItem* item = ThreadAt(index);
    if (item == nullptr)
        return;
    const bool online = Browser() == nullptr || Browser()->GetOnlineMode();
    BMessage select(online ? kMsgThreadSelected : kMsgThreadSelectedCached);
    AddItemData(&select, *item);
    Window()->PostMessage(&select);
}

void NPThreadListView::_OpenInBrowser(const BMessage* message) {
    BString url;
    BString dat;
    if (message->FindString("url", &url) != B_OK || message->FindString("dat", &dat) != B_OK)
        return;
    const std::string address = MakeThreadAddress(url.String(), dat.String());
    if (!address.empty())
        OpenInBrowser(address.c_str());
}

// The row of a thread, wherever sorting has put it; null when it no longer stands in the list.
NPThreadItem* NPThreadListView::_FindThread(const char* dat, const char* url) {
    for (int32 i = 0; i < FullListCountItems(); i++) {
        NPThreadItem* item = ThreadAt(i);
        const char* itemUrl = UrlOf(*item);
        if (itemUrl != nullptr && strcmp(item->Dat(), dat) == 0 && strcmp(itemUrl, url) == 0)
            return item;
    }
    return nullptr;
}

void NPThreadListView::_DeleteCached(const BMessage* message) {
    BString dat;
    BString url;
    message->FindString("dat", &dat);
    message->FindString("url", &url);
    NPThreadItem* item = _FindThread(dat.String(), url.String());
    if (item == nullptr)
        return;
    const NPUrl parsed(url.String());
    BDirectory folder;
    BEntry entry;
    const bool removed =
        parsed.Status() == 0 && IsGoodComponent(dat.String()) &&
        NPCache::FindDatDirectory(parsed.Host(), parsed.Board(), &folder) == B_OK &&
        folder.FindEntry(dat.String(), &entry) == B_OK && entry.Remove() == B_OK;
    if (!removed) {
        ShowAlert(Window(), dat.String() + std::string("の削除に失敗しました。"));
        return;
    }
    item->SetNotFetched(fNotFetchedIcon.get());
    RowChanged(item);
}

void NPThreadListView::_AddBookmark(const BMessage* message) {
    BString dat;
    BString url;
    BString title;
    int32 selection = -1;
    if (message->FindString("dat", &dat) != B_OK || message->FindString("url", &url) != B_OK ||
        message->FindString("title", &title) != B_OK ||
        message->FindInt32("selection", &selection) != B_OK)
        return;
    NPThreadItem* item = _FindThread(dat.String(), url.String());
    if (item == nullptr)
        return;
    std::string trouble;
    const status_t status = NPBookmark::Make(url.String(), dat.String(), title.String(), &trouble);
    if (!trouble.empty())
        ShowAlert(Window(), trouble);
    if (status != B_OK)
        return;
    item->SetMark(fBookmarkIcon.get());
    RowChanged(item);
}

// The row stays, as its number does, but without its mark.
void NPThreadListView::_RemoveBookmark(const BMessage* message) {
    void* row = nullptr;
    BString dat;
    BString url;
    message->FindString("dat", &dat);
    message->FindString("url", &url);
    const NPUrl parsed(url.String());
    if (fMode != kBookmarkList || message->FindPointer("item", &row) != B_OK)
        return;
    NPThreadItem* item = static_cast<NPThreadItem*>(row);
    const bool stands = FullListIndexOf(item) >= 0 && dat == item->Dat() && url == item->Url();
    if (!stands || parsed.Status() != 0 ||
        NPBookmark::RemovePlain(parsed.Host(), parsed.Board(), dat.String()) != B_OK)
        return;
    item->SetMark(nullptr);
    RowChanged(item);
}

BMenuItem* NPThreadListView::_Entry(const char* label, uint32 code, int32 index) {
    BMessage* message = new BMessage(code);
    AddItemData(message, *ThreadAt(index));
    if (code == kMsgThreadInWindow || code == kMsgThreadInWindowCached)
        message->AddBool("no_parent", false);
    if (code == kMsgDeleteCached) {
        message->AddInt32("selection", index);
        message->AddInt32("mode", fMode);
    }
    if (code == kMsgAddBookmark) {
        message->AddString("title", ThreadAt(index)->ColumnText(kColumnTitle));
        message->AddInt32("selection", index);
    }
    if (code == kMsgRemoveBookmark)
        message->AddPointer("item", ThreadAt(index));
    return new BMenuItem(label, message);
}

// Null in a list that offers none.
BMenuItem* NPThreadListView::_BookmarkEntry(int32 index) {
    if (fMode == kBoardList)
        return _Entry("ブックマークに追加", kMsgAddBookmark, index);
    if (fMode == kBookmarkList)
        return _Entry("ブックマークを消去", kMsgRemoveBookmark, index);
    return nullptr;
}

void NPThreadListView::OpenPopUpMenu(int32 index, BPoint screen) {
    const NPThreadItem* item = ThreadAt(index);
    if (item == nullptr)
        return;
    BPopUpMenu* menu = new BPopUpMenu("thread", false, false);
    BMenu* inWindow = new BMenu("新規ウィンドウ");
    inWindow->AddItem(_Entry("受信", kMsgThreadInWindow, index));
    inWindow->AddItem(_Entry("キャッシュ", kMsgThreadInWindowCached, index));
    menu->AddItem(inWindow);
    menu->AddSeparatorItem();
    menu->AddItem(_Entry("受信", kMsgThreadSelected, index));
    menu->AddItem(_Entry("キャッシュ", kMsgThreadSelectedCached, index));
    menu->AddSeparatorItem();
    BMenuItem* browser = _Entry("Webブラウザで開く", kMsgThreadInBrowser, index);
    menu->AddItem(browser);
    menu->AddSeparatorItem();
    BMenuItem* bookmark = _BookmarkEntry(index);
    if (bookmark != nullptr)
        menu->AddItem(bookmark);
    menu->AddSeparatorItem();
    BMenuItem* remove = _Entry("キャッシュを消去", kMsgDeleteCached, index);
    remove->SetEnabled(item->IsCached());
    menu->AddItem(remove);
    inWindow->SetTargetForItems(Window());
    menu->SetTargetForItems(Window());
    browser->SetTarget(this);
    if (bookmark != nullptr)
        bookmark->SetTarget(this);
    remove->SetTarget(this);
    ShowMenu(menu, screen);
}
