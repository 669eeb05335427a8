#include "app/NPWindow.h"
#include "commands/Commands.h"
#include "messages/Messages.h"
#include "settings/SettingsFile.h"
#include "views/Icons.h"
#include "views/NPArticleView.h"
#include "views/NPBitmapButton.h"
#include "views/NPBoardView.h"
#include "views/NPProgressView.h"
#include "views/NPThreadView.h"
#include "widgets/SplitPane.h"

#include <Application.h>
#include <Bitmap.h>
#include <MenuBar.h>
#include <MenuItem.h>

#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

constexpr float kStatusHeight = 24;
constexpr float kBarThickness = 4;
constexpr float kPaneInset = 1;

constexpr const char* kWidthKeys[] = {"column_no",     "column_thread",   "column_res",
                                      "column_gotten", "column_modified", "column_dat"};
// Made by the first window that closes: what the header has beyond what all programs know.
constexpr const char* kSpeedWidth = "column_speed";
constexpr const char* kSpeedPlace = "column_speed_place";
constexpr const char* kHiddenColumns = "hidden_columns";
constexpr const char* kBoardColumn = "board_column"; // made by the first window that closes

std::string OrderKey(int32 column) {
    return "column_order" + std::to_string(column);
}

int32 Setting(const SettingsFile& settings, const char* key, int32 fallback) {
    settings.Get(key, &fallback);
    return fallback;
}

} // namespace

void NPWindow::AddMenuBar() {
    if (fThreadOnly)
        return;
    fMenuBar = new BMenuBar(BRect(0, 0, Bounds().Width(), 20), "menubar");
    BMenu* menu = nullptr;
    for (const Command& command : Commands()) {
        if (command.place != Command::Place::kMenu)
            continue;
        if (menu == nullptr || strcmp(menu->Name(), command.menu) != 0) {
            menu = new BMenu(command.menu);
            fMenuBar->AddItem(menu);
        }
        if (command.id == nullptr) {
            menu->AddSeparatorItem();
            continue;
        }
        const KeyChord key = KeyOf(*fSettings, command);
        BMenuItem* item =
            new BMenuItem(command.label, new BMessage(command.code), key.character, key.modifiers);
        menu->AddItem(item);
        if (command.target == Command::Target::kApplication)
            item->SetTarget(be_app);
        else
            item->SetTarget(this);
    }
    AddChild(fMenuBar);
}

void NPWindow::MenusBeginning() {
    if (fThreadOnly)
        return;
    bool online = true;
    int8 mode = 0;
    BMenuItem* offlineItem = fMenuBar->FindItem(kMsgToggleOnline);
    BMenuItem* clickItem = fMenuBar->FindItem(kMsgToggleClick);
    if (fSettings->Get("online_mode", &online) == B_OK && offlineItem != nullptr)
        offlineItem->SetMarked(!online);
    if (fSettings->Get("click_mode", &mode) == B_OK && (mode == 1 || mode == 2) &&
        clickItem != nullptr)
        clickItem->SetMarked(mode == 1);
    if (BMenuItem* nextItem = fMenuBar->FindItem(kMsgFindNextThread))
        nextItem->SetEnabled(fArticleView->IsThreadAtItsEnd());
}

void NPWindow::AddView() {
    BRect bounds = Bounds();
    if (fMenuBar != nullptr)
        bounds.top = fMenuBar->Frame().bottom + 1;
    BView* base = new BView(bounds, "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    BRect panes = base->Bounds();
    panes.bottom -= kStatusHeight;
    if (!fThreadOnly)
        panes.InsetBy(kPaneInset, kPaneInset);
    base->AddChild(_MakePanes(panes));
    _AddStatusLine(base);
    AddChild(base);
    float barPosition = 0;
    float boardColumn = 0;
    if (fThreadOnly)
        return;
    SetColumn();
    _RestoreHeader();
    if (fSettings->Get("board_barpos", &barPosition) == B_OK)
        fBoardView->SetScrollBarPosition(barPosition);
    if (fSettings->Get(kBoardColumn, &boardColumn) == B_OK)
        fBoardView->SetColumnWidth(boardColumn);
}

BView* NPWindow::_MakePanes(BRect bounds) {
    if (fThreadOnly) {
        fArticleView = new NPArticleView(bounds);
        return fArticleView;
    }
    fThreadView = new NPThreadView(bounds);
    fArticleView = new NPArticleView(bounds);
    fThreadSplit = new SplitPane(bounds.OffsetToCopy(0, 0), "thread split", fThreadView,
                                 fArticleView, B_FOLLOW_ALL_SIDES);
    fThreadSplit->SetAlignment(Setting(*fSettings, "sp_align", 0));
    fThreadSplit->SetMinSizeOne(120);
    fThreadSplit->SetMinSizeTwo(120);
    fThreadSplit->SetBarThickness(kBarThickness);
    fThreadSplit->SetBarPosition(static_cast<float>(Setting(*fSettings, "bar_position", 150)));
    fBoardView = new NPBoardView(bounds);
    fBoardSplit =
        new SplitPane(bounds, "board split", fBoardView, fThreadSplit, B_FOLLOW_ALL_SIDES);
    fBoardSplit->SetAlignment(Setting(*fSettings, "msp_align", 1));
    fBoardSplit->SetMinSizeOne(0);
    fBoardSplit->SetMinSizeTwo(100);
    fBoardSplit->SetBarThickness(kBarThickness);
    fBoardSplit->SetBarPosition(static_cast<float>(Setting(*fSettings, "mbar_position", 120)));
    return fBoardSplit;
}

void NPWindow::_AddStatusLine(BView* base) {
    BRect line = base->Bounds();
    line.top = line.bottom - kStatusHeight + 1;
    fProgressView = new NPProgressView(line);
    base->AddChild(fProgressView);
    fOnlineBitmap = MakeIcon(Icon::kOnline);
    fOfflineBitmap = MakeIcon(Icon::kOffline);
    const BRect button(line.right - 27, 1, line.right - 5, kStatusHeight - 1);
    fNetworkButton =
        new NPBitmapButton(BRect(button.left, 1, button.right, kStatusHeight - 2), "network",
                           GetOnlineMode() ? fOnlineBitmap.get() : fOfflineBitmap.get(),
                           new BMessage(kMsgToggleOnline), B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
    fProgressView->AddChild(fNetworkButton);
    fNetworkButton->SetTarget(be_app);
}

int32 NPWindow::SetColumn() {
    float widths[std::size(kWidthKeys)];
    for (size_t i = 0; i < std::size(kWidthKeys); i++) {
        const status_t status = fSettings->Get(kWidthKeys[i], &widths[i]);
        if (status != B_OK)
            return status;
    }
    fThreadView->SetColumnWidth(widths);
    int32 order[kOrderedColumnCount];
    for (int32 i = 0; i < kOrderedColumnCount; i++)
        order[i] = Setting(*fSettings, OrderKey(i).c_str(), i);
    fThreadView->SetColumnOrder(order);
    return B_OK;
}

void NPWindow::_RestoreHeader() {
    ThreadHeader header = fThreadView->GetHeader();
    BString hidden;
    float width = 0;
    int32 place = 0;
    if (fSettings->Get(kSpeedWidth, &width) == B_OK)
        header.speedWidth = width;
    if (fSettings->Get(kSpeedPlace, &place) == B_OK)
        header.speedPlace = place;
    if (fSettings->Get(kHiddenColumns, &hidden) == B_OK)
        header.hidden = hidden.String();
    fThreadView->SetHeader(header);
}

void NPWindow::_SaveHeader() {
    const ThreadHeader header = fThreadView->GetHeader();
    fSettings->PutAt(kSpeedWidth, 0, header.speedWidth);
    fSettings->PutAt(kSpeedPlace, 0, header.speedPlace);
    fSettings->PutAt(kHiddenColumns, 0, header.hidden.c_str());
}

void NPWindow::_SaveLayout() {
    fSettings->Replace("window_frame", Frame());
    fSettings->Replace("bar_position", static_cast<int32>(fThreadSplit->GetBarPosition()));
    fSettings->Replace("sp_align", static_cast<int32>(fThreadSplit->GetAlignment()));
    fSettings->Replace("msp_align", static_cast<int32>(fBoardSplit->GetAlignment()));
    fSettings->Replace("mbar_position", static_cast<int32>(fBoardSplit->GetBarPosition()));
    float widths[std::size(kWidthKeys)];
    fThreadView->GetColumnWidth(widths);
    for (size_t i = 0; i < std::size(kWidthKeys); i++)
        fSettings->Replace(kWidthKeys[i], widths[i]);
    int32 order[kOrderedColumnCount];
    fThreadView->GetColumnOrder(order);
    for (int32 i = 0; i < kOrderedColumnCount; i++)
        fSettings->Replace(OrderKey(i).c_str(), order[i]);
    _SaveHeader();
    _SaveCategories();
    fSettings->PutAt(kBoardColumn, 0, fBoardView->GetColumnWidth());
    fSettings->Replace("board_barpos", fBoardView->GetScrollBarPosition());
}

void NPWindow::_SaveCategories() {
    for (int32 i = 0; i < fBoardView->CountCategories(); i++) {
        fSettings->PutAt("category_expand", i, fBoardView->CategoryExpanded(i));
        fSettings->PutAt("category_name", i, fBoardView->CategoryItemAt(i));
    }
}
