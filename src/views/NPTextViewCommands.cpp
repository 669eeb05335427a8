// The article's context menu, its commands, its keys.
#include "views/NPTextView.h"

#include "browser/BrowserWindow.h"
#include "messages/Messages.h"
#include "net/SearchAddress.h"
#include "settings/Services.h"
#include "text/html.h"
#include "views/BoardFiles.h"
#include "views/OpenInBrowser.h"
#include "views/PopUpMessages.h"
#include "widgets/MenuKey.h"

#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <MenuItem.h>
#include <Message.h>
#include <Messenger.h>
#include <PopUpMenu.h>
#include <ScrollBar.h>
#include <Window.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr float kOpenReach = 5; // pixels around the click in which releasing keeps the menu open

BMenuItem* RangeItem(const char* label, uint32 code, int32 start, int32 finish) {
    BMessage* message = new BMessage(code);
    message->AddInt32("start", start);
    message->AddInt32("finish", finish);
    return new BMenuItem(label, message);
}

// Tells the text when it goes, chosen from or not: the choice's message has been sent then.
class PostMenu : public BPopUpMenu {
public:
    explicit PostMenu(const BMessenger& text) : BPopUpMenu("menu", false, false), fText(text) {}
    ~PostMenu() override { fText.SendMessage(kMsgMenuClosed); }

private:
    const BMessenger fText;
};

bool FindRange(const BMessage* message, int32 length, int32* start, int32* finish) {
    if (message->FindInt32("start", start) != B_OK || message->FindInt32("finish", finish) != B_OK)
        return false;
    *start = std::clamp(*start, int32(0), length);
    *finish = std::clamp(*finish, int32(0), length);
    return true;
}

} // namespace

void NPTextView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgSearchWeb: _SearchWeb(message); break;
    case kMsgJumpToPost: _JumpTo(message); break;
    case kMsgCopyRange: _CopyRange(message); break;
    case kMsgAddNoise: _AddNoise(message); break;
    case kMsgShowPosts: _ShowPosts(message); break;
    case kMsgMenuClosed: fPopUps.Tell(fMenuOrigin.opener, *message); break;
    case kMsgPopUpClicked: _PopUpClicked(message); break;
    case kMsgPopUpGone: _PopUpGone(message); break;
    default: LinkTextView::MessageReceived(message);
    }
}

void NPTextView::_OpenMenu(int32 offset, const PopUpOrigin& origin) {
    MakeFocus();
    fMenuOrigin = origin;
    BPopUpMenu* menu = new PostMenu(BMessenger(this));
    GetRightClickMenu(menu, offset);
    menu->SetTargetForItems(this);
    if (BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window()))
        window->AddThreadItems(menu);
    menu->SetAsyncAutoDestruct(true);
    const BPoint screen = origin.screen;
    const BRect open(screen.x - kOpenReach, screen.y - kOpenReach, screen.x + kOpenReach,
                     screen.y + kOpenReach);
    menu->Go(screen, true, true, open, true);
}

// At the chosen link, or at the selection, if it is in sight, else in the corner of what is.
void NPTextView::_OpenMenuByKey() {
    int32 start = 0;
    int32 end = 0;
    float height = 0;
    GetSelection(&start, &end);
    for (const Link* link : {ChosenUrl(), ChosenReference()})
        start = link != nullptr ? link->start + 1 : start;
    BPoint where = PointAt(start, &height);
    where.y += height / 2;
    if (!Bounds().Contains(where))
        where = Bounds().LeftTop() + BPoint(TextRect().left, TextRect().left);
    _OpenMenu(OffsetAt(where), {ConvertToScreen(where), PopUpStack::kText, PopUpEnd::kByKey});
}

void NPTextView::GetRightClickMenu(BPopUpMenu* menu, int32 offset) {
    int32 start = 0;
    int32 end = 0;
    GetSelection(&start, &end);
    BMenuItem* copy = new BMenuItem("コピー", new BMessage(B_COPY));
    copy->SetEnabled(start < end);
    menu->AddItem(copy);
    const int32 number = GetArticleOffset(offset, &start, &end);
    if (number >= 0) {
        const std::string label = std::to_string(number) + " をコピー";
        menu->AddItem(RangeItem(label.c_str(), kMsgCopyRange, start, end));
    }
    if (const Link* url = LinkAt(fUrls, offset))
        menu->AddItem(RangeItem("リンクをコピー", kMsgCopyRange, url->start + 1, url->end - 1));
    menu->AddItem(new BMenuItem("全て選択", new BMessage(B_SELECT_ALL)));
    _AddSearchMenu(menu);
    _AddPeopleItems(menu, number);
    _AddNoiseMenu(menu, offset);
}

void NPTextView::_AddSearchMenu(BPopUpMenu* menu) {
    int32 start = 0;
    int32 end = 0;
    GetSelection(&start, &end);
    BMenu* search = new BMenu("Google™検索");
    for (const bool japanese : {true, false}) {
        BMenuItem* item =
            RangeItem(japanese ? "日本語ページ" : "ウェブ全体", kMsgSearchWeb, start, end);
        item->Message()->AddBool("ja", japanese);
        search->AddItem(item);
    }
    search->SetTargetForItems(this);
    search->SetEnabled(start < end);
    menu->AddItem(search);
}

void NPTextView::_SearchWeb(const BMessage* message) {
    int32 start = 0;
    int32 finish = 0;
    bool japaneseOnly = false;
    message->FindBool("ja", &japaneseOnly);
    if (!FindRange(message, TextLength(), &start, &finish) || start >= finish)
        return;
    BString query(Text() + start, finish - start);
    char* url = nullptr;
    if (UrlEncoded(&query) != 0 || GetUrlForGoogle(&url, query.String(), japaneseOnly) != 0)
        return;
    OpenInBrowser(url);
    free(url);
}

int32 NPTextView::GetUrlForGoogle(char** out, const char* query, bool japaneseOnly) {
    const Services services = ReadServices((BbsFolder() + "/services.txt").c_str());
    *out = strdup(MakeSearchAddress(services.searchPage, query, japaneseOnly).c_str());
    return *out != nullptr ? 0 : -1;
}

void NPTextView::_JumpTo(const BMessage* message) {
    int32 number = 0;
    if (message->FindInt32("jump", &number) == B_OK)
        _JumpToPost(number);
}

void NPTextView::_JumpToPost(int32 number) {
    if (ArticleAt(number) < 0)
        return;
    const float top = PointAt(ArticleAt(number)).y;
    if (BScrollBar* bar = ScrollBar(B_VERTICAL))
        bar->SetValue(top);
    else
        ScrollToOffset(ArticleAt(number));
}

void NPTextView::_CopyRange(const BMessage* message) {
    int32 start = 0;
    int32 finish = 0;
    if (!FindRange(message, TextLength(), &start, &finish) || start > finish)
        return;
    const int32 end = std::min(finish + 1, TextLength());
    if (start == end || !be_clipboard->Lock())
        return;
    be_clipboard->Clear();
    BMessage* data = be_clipboard->Data();
    data->AddData("text/plain", B_MIME_TYPE, Text() + start, end - start);
    text_run_array* runs = RunArray(start, end);
    int32 size = 0;
    if (void* flat = FlattenRunArray(runs, &size)) {
        data->AddData("application/x-vnd.Be-text_run_array", B_MIME_TYPE, flat, size);
        free(flat);
    }
    FreeRunArray(runs);
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

void NPTextView::KeyDown(const char* bytes, int32 numBytes) {
    if (numBytes != 1 || !_HandleKey(bytes[0]))
        LinkTextView::KeyDown(bytes, numBytes);
}

// True when the key is done with. Home and End share their bytes with Ctrl and a letter.
bool NPTextView::_HandleKey(char byte) {
    int32 raw = static_cast<uchar>(byte);
    if (const BMessage* message = Window()->CurrentMessage())
        message->FindInt32("raw_char", &raw);
    if (byte == B_ESCAPE && !fPopUps.IsEmpty()) {
        fPopUps.CloseByKey();
        return true;
    }
    if (_HandleLinkKey(byte, raw))
        return true;
    if (IsMenuKey(Window()->CurrentMessage())) {
        _OpenMenuByKey();
        return true;
    }
    if (byte == B_SPACE) {
        _ScrollPage((modifiers() & B_SHIFT_KEY) != 0);
        return true;
    }
    if (byte == B_HOME && raw == B_HOME)
        ScrollToOffset(0);
    else if (byte == B_END && raw == B_END)
        ScrollToOffset(TextLength());
    return false;
}
