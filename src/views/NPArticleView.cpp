#include "views/NPArticleView.h"

#include "browser/BrowserWindow.h"
#include "cache/NPCache.h"
#include "messages/Messages.h"
#include "net/NPUrl.h"
#include "net/lines.h"
#include "noise/NoiseStore.h"
#include "post/PostTarget.h"
#include "posts/ThreadEnd.h"
#include "text/html.h"
#include "views/Icons.h"
#include "views/NPBitmapButton.h"
#include "views/NPStringView.h"
#include "views/NPTextView.h"
#include "views/TickScrollView.h"
#include "widgets/Alerts.h"

#include <Application.h>
#include <Font.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Messenger.h>
#include <ScrollBar.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

namespace {

constexpr float kHeadHeight = 48;
constexpr float kInset = 8;
constexpr float kButtonSize = 24;
constexpr float kButtonStep = kButtonSize + 4;
constexpr float kButtonTop = 12;
constexpr int kButtonCount = 3;
constexpr float kTextInset = 8;

void DecodeReferences(BString* text) {
    if (text->FindFirst("&") >= 0)
        ReplaceHTMLEscapeString(text);
}

} // namespace

NPArticleView::NPArticleView(BRect frame)
    : BView(frame, "article pane", B_FOLLOW_ALL_SIDES, B_WILL_DRAW) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    const BRect bounds = Bounds();
    const float right = bounds.right - kInset - kButtonCount * kButtonStep;
    fTitleLabel =
        new BStringView(BRect(kInset, 4, right, 24), "title", "",
                        B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE);
    fTitleLabel->SetFont(be_bold_font);
    // The count of posts stands at the end.
    fTitleLabel->SetTruncation(B_TRUNCATE_MIDDLE);
    AddChild(fTitleLabel);
    fUrlLabel = new NPStringView(BRect(kInset, 25, right, 44));
    AddChild(fUrlLabel);
    _AddButtons();
    _AddText(BRect(0, kHeadHeight, bounds.right, bounds.bottom));
}

NPArticleView::~NPArticleView() {
    WriteBarPosition();
}

void NPArticleView::_AddButtons() {
    fReloadIcon = MakeIcon(Icon::kReload);
    fScratchIcon = MakeIcon(Icon::kReloadFromScratch);
    fWriteIcon = MakeIcon(Icon::kWrite);
    const struct {
        const char* name;
        const BBitmap* icon;
        uint32 message;
    } buttons[kButtonCount] = {
        {"reload", fReloadIcon.get(), kMsgReloadThread},
        {"reload from scratch", fScratchIcon.get(), kMsgReloadFromScratch},
        {"write", fWriteIcon.get(), kMsgOpenWriteWindow},
    };
    float left = Bounds().right - kInset - kButtonCount * kButtonStep + 4;
    for (const auto& button : buttons) {
        const BRect frame(left, kButtonTop, left + kButtonSize, kButtonTop + kButtonSize);
        AddChild(new NPBitmapButton(frame, button.name, button.icon, new BMessage(button.message),
                                    B_FOLLOW_RIGHT | B_FOLLOW_TOP));
        left += kButtonStep;
    }
}

void NPArticleView::_AddText(BRect frame) {
    BRect text = frame;
    text.right -= B_V_SCROLL_BAR_WIDTH + 1;
    BRect textRect = text.OffsetToCopy(0, 0);
    textRect.InsetBy(kTextInset, kTextInset);
    fTextView = new NPTextView(text, textRect);
    fScrollView = new TickScrollView(fTextView);
    fScrollView->MoveTo(frame.LeftTop());
    fScrollView->ResizeTo(frame.Width(), frame.Height());
    AddChild(fScrollView);
}

void NPArticleView::AttachedToWindow() {
    BView::AttachedToWindow();
    for (const char* name : {"reload", "reload from scratch", "write"})
        static_cast<BControl*>(FindView(name))->SetTarget(this);
}

void NPArticleView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgReloadThread: _Reload(Reload::kNew); break;
    case kMsgReloadFromScratch: _Reload(Reload::kFromScratch); break;
    case kMsgOpenWriteWindow: _OpenWriteWindow(); break;
    case kMsgFontChanged: _ChangeFont(message); break;
    case kMsgNoiseChanged: _UseNoise(); break;
    default: BView::MessageReceived(message);
    }
}

void NPArticleView::ShowThread(port_id request, const char* url, const char* dat) {
    WriteBarPosition();
    _Clear();
    fTextView->SetFirstNew(0);
    fUrlLabel->SetUrl(url, dat);
    fUrl = url;
    fDat = dat;
    fRequest = request;
    fGoTo = 0;
    _UseNoise();
}

void NPArticleView::_UseNoise() {
    const NPUrl url(fUrl.c_str());
    if (url.Status() != 0)
        return;
    const std::string board = std::string(url.Host()) + "/" + url.Board();
    fNoise = NoiseStore::Shared().FilterFor(board);
    fTextView->SetNoise(board, fNoise);
    fScrollView->TicksChanged();
    _NoteNoise();
}

// What the rules have found is counted; one that was switched off is named where the user looks,
// and what it has hidden comes back.
void NPArticleView::_NoteNoise() {
    if (fNoise == nullptr)
        return;
    BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window());
    const std::vector<std::string> stopped = NoiseStore::Shared().TakeFindingsOf(*fNoise);
    for (const std::string& rule : stopped) {
        if (window != nullptr)
            window->PostNotice(("NG「" + rule + "」は時間がかかりすぎたので止めました。").c_str());
    }
    if (!stopped.empty())
        be_app_messenger.SendMessage(kMsgNoiseChanged);
}

void NPArticleView::_Clear() {
    fTextView->clearText();
    fScrollView->TicksChanged();
    fHasTitle = fHasReturned = fHasEnded = false;
    fPosts = fCachedPosts = 0;
    _ShowTitle("");
    fThreadTitle.clear();
}

// The cached posts may be shown again: a reader who has gone on in them returns there.
void NPArticleView::Restart(port_id request) {
    if (request != fRequest)
        return;
    if (fHasReturned)
        WriteBarPosition();
    _Clear();
    fTextView->SetFirstNew(0);
}

void NPArticleView::ReturnToPlace(port_id request) {
    if (request != fRequest)
        return;
    ReadBarPosition();
    fHasReturned = true;
    fCachedPosts = fPosts;
    _ShowOwnPosts();
}

bool NPArticleView::IsThreadAtItsEnd() const {
    return fPosts > 0 && IsAtItsEnd(fPosts, fTextView->LastPost());
}

bool NPArticleView::_HasPlace() const {
    return fTextView->HasMoved() || (fHasReturned && fTextView->KeepsPlace());
}

const char* NPArticleView::GetTitle() const {
    return fTitle.c_str();
}
const char* NPArticleView::GetText() const {
    return fTextView->Text();
}
int32 NPArticleView::TextLength() const {
    return fTextView->TextLength();
}

void NPArticleView::SelectText(int32 start, int32 end) {
    fTextView->Select(start, end);
    const BRect view = fTextView->Bounds();
    float height = 0;
    const float top = fTextView->PointAt(start, &height).y;
    // What stands around it is shown with it.
    if (top < view.top || top + height > view.bottom)
        fScrollView->ScrollBar(B_VERTICAL)->SetValue(std::floor(top - view.Height() / 3));
}

void NPArticleView::_ShowTitle(const char* title) {
    fTitle = title;
    fTitleLabel->SetText(title);
}

void NPArticleView::addArticleItem(port_id request, const char* title, int32 number,
                                   const _ArticleOut& article) {
    if (request != fRequest)
        return;
    if (!fHasTitle && *title != '\0') {
        BString decoded(title);
        ReplaceHTMLEscapeString(&decoded);
        _ShowTitle(decoded.String());
        fThreadTitle = fTitle;
        fHasTitle = true;
    }
    if (article.name == nullptr && article.date == nullptr && article.message == nullptr &&
        article.mail == nullptr)
        _EndThread(number);
    else
        _AddPost(number, article);
}

void NPArticleView::_AddPost(int32 number, const _ArticleOut& article) {
    fPosts = number;
    fTextView->addNumItem(number);
    BString name(article.name);
    DecodeReferences(&name);
    fTextView->addNameItem(name.String());
    BString mail(article.mail);
    DecodeReferences(&mail);
    fTextView->addMailItem(article.mail != nullptr ? mail.String() : nullptr);
    fTextView->addDateItem(article.date != nullptr ? article.date : "");
    BString message(article.message);
    replaceBRtag(&message);
    DecodeReferences(&message);
    fTextView->addArticleItem(message.String());
    fTextView->addLineFeed();
    fTextView->PostHasCome();
    if (fCachedPosts > 0 && number == fCachedPosts + 1)
        fTextView->SetFirstNew(number);
}

void NPArticleView::_EndThread(int32 count) {
    _ShowTitle((fTitle + " (" + std::to_string(count) + ")").c_str());
    _ReturnOrGo();
    fHasEnded = true;
    _NoteNoise();
    _ShowOwnPosts();
}

void NPArticleView::_ReturnOrGo() {
    const int32 offset = fGoTo > 0 ? fTextView->ArticleAt(fGoTo) : -1;
    fGoTo = 0;
    if (offset >= 0)
        fTextView->RestorePlace(fTextView->PointAt(offset).y);
    else
        ReadBarPosition();
}

void NPArticleView::replaceBRtag(BString* text) {
    text->ReplaceAll(" <br> ", "\n");
    text->ReplaceAll("<br>", "\n");
}

void NPArticleView::_ChangeFont(const BMessage* message) {
    BString family;
    BString style;
    float size = 0;
    message->FindString("family", &family);
    message->FindString("style", &style);
    if (message->FindFloat("size", &size) != B_OK)
        size = 0;
    fTextView->SetArticleFont(family.String(), style.String(), size);
}

void NPArticleView::_Reload(Reload how) {
    if (fDat.empty())
        ShowAlert(Window(), "スレッドが選択されていません！");
    else
        ReloadRequest(how == Reload::kFromScratch);
}

void NPArticleView::_OpenWriteWindow() {
    const std::string& address = fUrlLabel->Address();
    if (address.empty()) {
        ShowAlert(Window(), "スレッドが選択されていません！");
        return;
    }
    const bool isCgi = fDat.find("cgi") != fDat.npos;
    const std::optional<PostTarget> target =
        ParsePostTarget(address, isCgi ? PostFamily::kWriteCgi : PostFamily::kBbsCgi);
    BrowserWindow* window = dynamic_cast<BrowserWindow*>(Window());
    if (!target)
        ShowAlert(Window(), "Invalid URL: " + address);
    else if (window != nullptr)
        window->OpenWriteWindow(*target, fTitle.c_str(), fPosts);
}

void NPArticleView::ReloadRequest(bool fromScratch) {
    BMessage select(kMsgThreadSelected);
    select.AddString("dat", fDat.c_str());
    select.AddString("url", fUrl.c_str());
    // The cached copy goes only when the whole thread has come anew.
    if (fromScratch)
        select.AddBool("from_scratch", true);
    Window()->PostMessage(&select);
}

// A reader who has moved while posts arrived is not thrown back. Nor is one whose line was kept
// through a new layout: the pixels that were written down are those of the old one.
void NPArticleView::ReadBarPosition() {
    if (_HasPlace())
        return;
    const NPUrl url(fUrl.c_str());
    NPCache cache;
    int32 position = 0;
    if (url.Status() != 0 ||
        cache.SetTo(url.Host(), url.Board(), fDat.c_str(), NPCache::Open::kExisting) != B_OK)
        return;
    if (cache.ReadAttr("bar_pos", B_INT32_TYPE, &position, sizeof(position)) == sizeof(position))
        fTextView->RestorePlace(static_cast<float>(position));
}

// A thread that is still arriving has not been scrolled to where it was left: that stays as it is,
// unless its reader has gone on already.
void NPArticleView::WriteBarPosition() {
    if (!fHasEnded && !_HasPlace())
        return;
    const NPUrl url(fUrl.c_str());
    NPCache cache;
    if (url.Status() != 0 ||
        cache.SetTo(url.Host(), url.Board(), fDat.c_str(), NPCache::Open::kExisting) != B_OK)
        return;
    const int32 position = static_cast<int32>(fScrollView->ScrollBar(B_VERTICAL)->Value());
    cache.WriteAttr("bar_pos", B_INT32_TYPE, &position, sizeof(position));
}
