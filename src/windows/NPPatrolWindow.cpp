#include "windows/NPPatrolWindow.h"

#include "app/Messages.h"

#include <AppDefs.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <StringView.h>
#include <View.h>

namespace {

constexpr float kWidth = 420;
constexpr float kHeight = 36;
constexpr float kInset = 5;
constexpr float kButtonWidth = 72;
constexpr float kGap = 8;

} // namespace

NPPatrolWindow::NPPatrolWindow(const BMessenger& browser, BRect browserFrame)
    : BWindow(BRect(0, 0, kWidth - 1, kHeight - 1), "ブックマークの巡回中…", B_TITLED_WINDOW,
              B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS),
      fBrowser(browser) {
    _AddViews();
    CenterIn(browserFrame);
}

void NPPatrolWindow::_AddViews() {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    BRect content = base->Bounds();
    content.InsetBy(kInset, kInset);
    BRect button = content;
    button.left = button.right - kButtonWidth + 1;
    BRect status = content;
    status.left += kInset;
    status.right = button.left - kGap;
    fStatus = new BStringView(status, "status", "");
    base->AddChild(fStatus);
    base->AddChild(new BButton(button, "stop", "中止", new BMessage(B_QUIT_REQUESTED)));
    AddChild(base);
}

void NPPatrolWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgStepEnded: _AskForNext(); break;
    case kMsgVisiting: _ShowVisit(message); break;
    default: BWindow::MessageReceived(message);
    }
}

void NPPatrolWindow::_AskForNext() {
    BMessage request(kMsgVisitNext);
    request.AddInt32("index", fVisits);
    fBrowser.SendMessage(&request);
}

// The row is the browser's: only what it sends of it is shown.
void NPPatrolWindow::_ShowVisit(const BMessage* message) {
    void* item = nullptr;
    const char* title = nullptr;
    if (message->FindPointer("item", &item) == B_OK && item != nullptr &&
        message->FindString("title", &title) == B_OK)
        fStatus->SetText(title);
    fVisits++;
}

bool NPPatrolWindow::QuitRequested() {
    fBrowser.SendMessage(kMsgPatrolEnded);
    return true;
}
