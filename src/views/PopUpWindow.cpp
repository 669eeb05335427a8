#include "views/PopUpWindow.h"

#include "views/PopUpMessages.h"
#include "views/PopUpScrollView.h"
#include "views/PopUpTextView.h"

#include <AppDefs.h>
#include <Message.h>
#include <ScrollBar.h>

namespace {

constexpr float kWheelStep = 30;        // pixels a notch
constexpr bigtime_t kPatience = 300000; // microseconds for the way from the reference to the pop-up

constexpr uint32 kFlags = B_NOT_MOVABLE | B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE |
                          B_AVOID_FOCUS | B_WILL_ACCEPT_FIRST_CLICK;

} // namespace

PopUpWindow::PopUpWindow(BRect frame, PopUpTextView* text, bool scrolls, const BMessenger& article,
                         int32 id, PopUpEnd end)
    : BWindow(frame, "", B_BORDERED_WINDOW_LOOK, B_NORMAL_WINDOW_FEEL, kFlags), fScrolls(scrolls),
      fArticle(article), fId(id), fText(text), fLife(end) {
    SetPulseRate(0);
    text->SetOwner(article, id);
    PopUpScrollView* view = new PopUpScrollView(text, scrolls);
    AddChild(view);
    view->MoveTo(0, 0);
    view->ResizeTo(Bounds().Width(), Bounds().Height());
    // Its text and its scroll bar lie over it: it hears of the pointer wherever that is.
    view->SetEventMask(B_POINTER_EVENTS);
}

PopUpWindow::~PopUpWindow() {
    BMessage gone(kMsgPopUpGone);
    gone.AddInt32("id", fId);
    fArticle.SendMessage(&gone);
}

void PopUpWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case B_MOUSE_WHEEL_CHANGED: _Scroll(message); break;
    case kMsgAnchorLeft: _Follow(fLife.AnchorPointed(false)); break;
    case kMsgAnchorEntered: _Follow(fLife.AnchorPointed(true)); break;
    case kMsgNextOpened: _NextOpened(message); break;
    case kMsgNextClosed: _NextClosed(); break;
    case kMsgMenuClosed: _Follow(fLife.MenuClosed()); break;
    case kMsgChooseLink: _ChooseLink(message); break;
    case kMsgOpenChosen: fText->OpenChosen(); break;
    default: BWindow::MessageReceived(message);
    }
}

// Its text hands the wheel on to here.
void PopUpWindow::_Scroll(const BMessage* wheel) {
    float notches = 0;
    BScrollBar* bar = fText->ScrollBar(B_VERTICAL);
    if (fScrolls && bar != nullptr && wheel->FindFloat("be:wheel_delta_y", &notches) == B_OK)
        bar->SetValue(bar->Value() + notches * kWheelStep);
}

void PopUpWindow::PointerIsOver(bool isOver) {
    _Follow(fLife.PointerIsOver(isOver));
}

void PopUpWindow::TimeIsUp() {
    _Follow(fLife.TimeIsUp());
}

void PopUpWindow::_Follow(bool closes) {
    if (closes)
        PostMessage(B_QUIT_REQUESTED);
    const bigtime_t rate = fLife.Waits() ? kPatience : 0;
    if (rate != PulseRate())
        SetPulseRate(rate);
}

void PopUpWindow::_NextOpened(const BMessage* message) {
    BMessenger next;
    if (message->FindMessenger("pop_up", &next) != B_OK)
        return;
    fText->SetNext(next);
    _Follow(fLife.NextOpened());
}

void PopUpWindow::_NextClosed() {
    fText->SetNext(BMessenger());
    _Follow(fLife.NextClosed());
}

void PopUpWindow::MenuOpens() {
    _Follow(fLife.MenuOpened());
}

void PopUpWindow::_ChooseLink(const BMessage* message) {
    bool isBack = false;
    message->FindBool("back", &isBack);
    fText->ChooseLink(isBack ? LinkTextView::Way::kBack : LinkTextView::Way::kForward);
}
