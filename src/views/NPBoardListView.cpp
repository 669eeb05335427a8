#include "views/NPBoardListView.h"

#include "browser/BrowserWindow.h"
#include "messages/Messages.h"
#include "views/Icons.h"
#include "views/NPBoardItem.h"
#include "views/OpenInBrowser.h"

#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>

#include <cstring>

NPBoardListView::NPBoardListView(BRect frame)
    : ClickListView(frame, "board list", Hierarchy::kOutline),
      fCategoryIcon(MakeIcon(Icon::kCategory)), fBoardIcon(MakeIcon(Icon::kBoard)),
      fCurrentIcon(MakeIcon(Icon::kCurrentBoard)) {
    AddColumn({"", 20, 20, CLVColumn::kExpander | CLVColumn::kNotResizable});
    AddColumn({"", 20, 20, CLVColumn::kNotResizable});
    AddColumn({"板一覧", 100, 50});
}

void NPBoardListView::AddBoardItem(const char* title, const char* url) {
    bool expanded = false;
    if (url == nullptr) {
        fCategories.push_back(FullListCountItems());
        expanded = Browser() != nullptr && Browser()->GetBoardExpand(title);
    }
    const BBitmap* icon = url == nullptr ? fCategoryIcon.get() : fBoardIcon.get();
    AddItem(new NPBoardItem(icon, title, url, expanded));
}

void NPBoardListView::CleanUp() {
    if (!LockLooper())
        return;
    MakeEmpty();
    fCategories.clear();
    fCurrent = -1;
    UnlockLooper();
}

NPBoardItem* NPBoardListView::_BoardAt(int32 index) {
    NPBoardItem* item = static_cast<NPBoardItem*>(FullListItemAt(index));
    return item != nullptr && item->IsBoard() && Superitem(item) != nullptr ? item : nullptr;
}

int32 NPBoardListView::FindBoard(const char* url) {
    for (int32 i = 0; i < FullListCountItems(); i++) {
        const NPBoardItem* item = static_cast<NPBoardItem*>(FullListItemAt(i));
        if (item->IsBoard() && strcmp(item->Url(), url) == 0)
            return i;
    }
    return -1;
}

void NPBoardListView::ChangeState(int32 index, bool current) {
    NPBoardItem* item = static_cast<NPBoardItem*>(FullListItemAt(index));
    if (item == nullptr)
        return;
    item->SetIcon(current ? fCurrentIcon.get() : fBoardIcon.get());
    InvalidateItem(item);
    if (!current || index == fCurrent)
        return;
    NPBoardItem* previous = static_cast<NPBoardItem*>(FullListItemAt(fCurrent));
    fCurrent = index;
    if (previous == nullptr)
        return;
    previous->SetIcon(fBoardIcon.get());
    InvalidateItem(previous);
}

const char* NPBoardListView::CategoryNameAt(int32 category) {
    return static_cast<NPBoardItem*>(FullListItemAt(fCategories[category]))->Title();
}

bool NPBoardListView::CategoryExpandedAt(int32 category) {
    return FullListItemAt(fCategories[category])->IsExpanded();
}

void NPBoardListView::SetCategoryExpanded(int32 category, bool expanded) {
    SetExpanded(FullListItemAt(fCategories[category]), expanded);
}

void NPBoardListView::MessageReceived(BMessage* message) {
    const char* url = nullptr;
    if (message->what != kMsgBoardInBrowser)
        ClickListView::MessageReceived(message);
    else if (message->FindString("url", &url) == B_OK)
        OpenInBrowser(url);
}

void NPBoardListView::SendBoardSelectMessage(int32 index) {
    const NPBoardItem* item = _BoardAt(index);
    if (item == nullptr)
        return;
    const bool online = Browser() == nullptr || Browser()->GetOnlineMode();
    BMessage select(online ? kMsgBoardSelected : kMsgBoardSelectedCached);
    select.AddString("url", item->Url());
    select.AddString("board", item->Title());
    Window()->PostMessage(&select);
}

void NPBoardListView::OpenPopUpMenu(int32 index, BPoint screen) {
    const NPBoardItem* item = _BoardAt(index);
    if (item == nullptr)
        return;
    const auto entry = [item](const char* label, uint32 code) {
        BMessage* message = new BMessage(code);
        message->AddString("board", item->Title());
        message->AddString("url", item->Url());
        return new BMenuItem(label, message);
    };
    BPopUpMenu* menu = new BPopUpMenu("board", false, false);
    BMenu* inWindow = new BMenu("新規ウィンドウ");
    inWindow->AddItem(entry("受信", kMsgBoardInWindow));
    inWindow->AddItem(entry("キャッシュ", kMsgBoardInWindowCached));
    menu->AddItem(inWindow);
    menu->AddSeparatorItem();
    menu->AddItem(entry("受信", kMsgBoardSelected));
    menu->AddItem(entry("キャッシュ", kMsgBoardSelectedCached));
    menu->AddSeparatorItem();
    BMenuItem* browser = entry("Webブラウザで開く", kMsgBoardInBrowser);
    menu->AddItem(browser);
    inWindow->SetTargetForItems(Window());
    menu->SetTargetForItems(Window());
    browser->SetTarget(this);
    ShowMenu(menu, screen);
}
