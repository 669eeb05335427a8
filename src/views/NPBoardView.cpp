#include "views/NPBoardView.h"

#include "browser/BrowserWindow.h"
#include "messages/Messages.h"
#include "views/BoardFiles.h"
#include "widgets/CLVContainerView.h"

#include <Alert.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <ScrollBar.h>

#include <cstring>

NPBoardView::NPBoardView(BRect frame) : BView(frame, "board", B_FOLLOW_ALL_SIDES, B_WILL_DRAW) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    fList = new NPBoardListView(Bounds());
    AddChild(new CLVContainerView(Bounds(), fList));
}

void NPBoardView::AttachedToWindow() {
    BView::AttachedToWindow();
    _Fill();
    if (BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window()))
        SetClickMode(static_cast<click_mode>(window->GetClickMode()));
}

void NPBoardView::UpdateBBSMenu() {
    const float position = GetScrollBarPosition();
    _KeepExpansion();
    fList->CleanUp();
    _Fill();
    _RestoreExpansion();
    SetScrollBarPosition(position);
}

void NPBoardView::_KeepExpansion() {
    for (int32 i = 0; i < CountCategories(); i++)
        fExpansion[CategoryItemAt(i)] = CategoryExpanded(i);
}

void NPBoardView::_RestoreExpansion() {
    for (int32 i = 0; i < CountCategories(); i++) {
        const auto kept = fExpansion.find(CategoryItemAt(i));
        if (kept != fExpansion.end())
            fList->SetCategoryExpanded(i, kept->second);
    }
}

// Nothing waits for the alert: the window goes on.
void NPBoardView::_Fill() {
    if (getBBSMenu() == 0)
        return;
    BAlert* alert = new BAlert("", "bbs/newbbsmenu.htmlの読み込みに失敗しました。", "OK");
    alert->Go(nullptr);
}

int32 NPBoardView::getBBSMenu() {
    const std::string folder = BbsFolder();
    std::vector<BBSTable::Category> categories;
    if (ReadBoardMenu(folder, &categories) != 0)
        return -1;
    std::erase_if(categories, [](const BBSTable::Category& category) {
        return MatchNonBBS(category.name.c_str());
    });
    for (BBSTable::Category& extra : ReadExtraBoards(folder))
        categories.push_back(std::move(extra));
    for (const BBSTable::Category& category : categories) {
        fList->AddBoardItem(category.name.c_str(), nullptr);
        for (const BBSTable::Board& board : category.boards)
            fList->AddBoardItem(board.title.c_str(), board.url.c_str());
    }
    return 0;
}

bool NPBoardView::MatchNonBBS(const char* name) {
    for (const char* other :
         {"チャット", "運営", "ツール類", "お絵かき", "他のサイト", "まちＢＢＳ"}) {
        if (strcmp(name, other) == 0)
            return true;
    }
    return false;
}

void NPBoardView::SetScrollBarPosition(float position) {
    fList->FinishAdding();
    fList->ScrollBar(B_VERTICAL)->SetValue(position);
}

float NPBoardView::GetScrollBarPosition() const {
    return fList->ScrollBar(B_VERTICAL)->Value();
}

void NPBoardView::SetColumnWidth(float width) {
    fList->SetColumnWidth(NPBoardListView::kNameColumn, width);
}

float NPBoardView::GetColumnWidth() const {
    return fList->ColumnWidth(NPBoardListView::kNameColumn);
}

void NPBoardView::MessageReceived(BMessage* message) {
    const char* url = nullptr;
    if (message->what != kMsgBoardComplete) {
        BView::MessageReceived(message);
    } else if (message->FindString("url", &url) == B_OK) {
        const int32 index = fList->FindBoard(url);
        if (index > 0)
            fList->ChangeState(index, true);
    }
}
