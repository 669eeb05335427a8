// Clicks in the article: threads, the browser, pop-ups.
#include "views/NPTextView.h"

#include "messages/Messages.h"
#include "net/ThreadAddress.h"
#include "views/OpenInBrowser.h"
#include "views/PopUpMessages.h"
#include "views/PopUpPlace.h"
#include "views/PopUpTextView.h"
#include "views/PopUpWindow.h"
#include "views/ReferenceRange.h"

#include <Message.h>
#include <Messenger.h>
#include <ScrollBar.h>

#include <cstdio>
#include <memory>

namespace {

constexpr int32 kLongestPart = 64; // of a thread's address, with its terminator
// Of a pop-up, the first and every other one above it.
constexpr rgb_color kGround = {239, 239, 239, 0};
constexpr rgb_color kOtherGround = {228, 230, 234, 0};

// Whether a link leads to a thread that can be read here; fills in its "url" and "dat".
bool FindThread(const char* link, BMessage* open) {
    char host[kLongestPart];
    char board[kLongestPart];
    char key[kLongestPart];
    if (!Is2ch(link, host, board, key, kLongestPart))
        return false;
    const std::string url = std::string("http://") + host + "/" + board + "/index.html";
    const std::string dat = std::string(key) + ".dat";
    if (url.size() > kLongestUrl || dat.size() > kLongestDat)
        return false;
    open->AddString("url", url.c_str());
    open->AddString("dat", dat.c_str());
    fprintf(stderr, "host: %s bbs: %s key: %s\n", host, board, key);
    return true;
}

// With its scroll bar; below what is not to be covered, if above it is no room.
PopUpPlace PlaceBeside(const PopUpTextView& text, BPoint point, float height) {
    const BRect screen = ScreenUnder(point);
    const float width = text.PreferredWidth();
    PopUpPlace place = PlacePopUp(point, width, text.PreferredHeight(), screen);
    if (height > 0 && place.frame.top > point.y)
        place = PlacePopUp(point + BPoint(0, height), width, text.PreferredHeight(), screen);
    if (place.isClipped)
        place = PlacePopUp(point, width + B_V_SCROLL_BAR_WIDTH + 1, text.PreferredHeight(), screen);
    return place;
}

} // namespace

void NPTextView::MouseDown(BPoint where) {
    BPoint point;
    uint32 buttons = 0;
    int32 clicks = 1;
    GetMouse(&point, &buttons);
    if (const BMessage* message = Window()->CurrentMessage())
        message->FindInt32("clicks", &clicks);
    _ClosePopUps();
    // While a pop-up is open, clicks on the window's other views are told here too.
    if (!Bounds().Contains(where))
        return;
    if ((buttons & B_PRIMARY_MOUSE_BUTTON) != 0) {
        const Link* url = LinkAt(fUrls, OffsetUnder(where));
        if (url == nullptr)
            showPopUpWindow(where);
        else if (clicks <= 1) // a double click opens it once
            _FollowUrl(url->text.c_str());
    }
    if ((buttons & B_SECONDARY_MOUSE_BUTTON) == 0)
        LinkTextView::MouseDown(where);
    else
        _OpenMenu(OffsetAt(where), {ConvertToScreen(where)});
}

void NPTextView::_FollowUrl(const char* url) {
    BMessage open(kMsgThreadInWindow);
    if (!FindThread(url, &open)) {
        OpenInBrowser(url);
        return;
    }
    open.AddString("title", url);
    open.AddBool("no_parent", true);
    Window()->PostMessage(&open);
}

void NPTextView::showPopUpWindow(BPoint where) {
    const Link* reference = LinkAt(fReferences, OffsetUnder(where));
    if (reference == nullptr)
        return;
    SetAnchor(*reference);
    _OpenPopUp(reference->text.c_str(), {ConvertToScreen(where)});
}

// A reference to the last post opens nothing: its end is known by the post behind it.
void NPTextView::_OpenPopUp(const char* anchor, const PopUpOrigin& origin) {
    ReferenceRange range;
    if (_OpenHidden(anchor, origin) || !ParseReference(anchor, &range))
        return;
    const Stretch posts{ArticleAt(range.first), ArticleAt(range.last + 1) - 1};
    if (posts.start >= 0 && posts.end > posts.start)
        _ShowPopUp(*this, {posts}, "", origin);
}

void NPTextView::_ShowPopUp(const LinkTextView& from, const std::vector<Stretch>& stretches,
                            const std::string& note, const PopUpOrigin& origin) {
    const bool isOdd = fPopUps.DepthAbove(origin.opener) % 2 != 0;
    auto text =
        std::make_unique<PopUpTextView>(from, stretches, note, isOdd ? kOtherGround : kGround);
    const PopUpPlace place = PlaceBeside(*text, origin.screen, origin.height);
    PopUpStack::PopUp popUp{fPopUps.NextId(), BMessenger(), origin.end,
                            !text->Urls().empty() || !text->References().empty()};
    PopUpWindow* window = new PopUpWindow(place.frame, text.release(), place.isClipped,
                                          BMessenger(this), popUp.id, origin.end);
    popUp.messenger = BMessenger(window);
    window->Show();
    fPopUps.Push(origin.opener, popUp);
    // Clicks anywhere in the window close it.
    SetEventMask(B_POINTER_EVENTS);
}

void NPTextView::_ClosePopUps() {
    if (fPopUps.IsEmpty())
        return;
    fPopUps.CloseAll();
    SetEventMask(0);
}

void NPTextView::_PopUpClicked(const BMessage* message) {
    int32 id = -1;
    BPoint where;
    const char* text = nullptr;
    if (message->FindInt32("id", &id) != B_OK || message->FindPoint("where", &where) != B_OK ||
        !fPopUps.Holds(id))
        return;
    int32 menuAt = 0;
    PopUpOrigin origin{where, id};
    if (message->FindFloat("by_key", &origin.height) == B_OK)
        origin.end = PopUpEnd::kByKey;
    fPopUps.CloseAbove(id);
    if (message->FindString("url", &text) == B_OK)
        _FollowUrl(text);
    else if (message->FindString("reference", &text) == B_OK)
        _OpenPopUp(text, origin);
    else if (message->FindInt32("menu_at", &menuAt) == B_OK)
        _OpenMenu(menuAt, origin);
}

void NPTextView::_PopUpGone(const BMessage* message) {
    int32 id = -1;
    if (message->FindInt32("id", &id) != B_OK)
        return;
    fPopUps.HasClosed(id);
    if (fPopUps.IsEmpty())
        SetEventMask(0);
}

void NPTextView::AnchorPointed(bool isOn) {
    fPopUps.AnchorPointed(isOn);
}

void NPTextView::MakeFocus(bool focused) {
    if (!focused)
        _ClosePopUps();
    LinkTextView::MakeFocus(focused);
}

void NPTextView::WindowActivated(bool active) {
    if (!active)
        _ClosePopUps();
    LinkTextView::WindowActivated(active);
}

void NPTextView::ScrollTo(BPoint where) {
    if (where != Bounds().LeftTop())
        _ClosePopUps();
    if (!fLaysOut && where != Bounds().LeftTop()) {
        fPlace.reset();
        fHasMoved = true;
    }
    LinkTextView::ScrollTo(where);
}
