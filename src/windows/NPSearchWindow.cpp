#include "windows/NPSearchWindow.h"

#include "messages/Messages.h"

#include <Button.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <RadioButton.h>
#include <TextControl.h>
#include <TextView.h>
#include <View.h>

#include <cmath>

namespace {

constexpr uint32 kMsgGo = 'mSGO'; // the window's own button

const BRect kFrame(50, 50, 250, 135);
constexpr float kInset = 5;
constexpr float kRow = 25;
constexpr float kRowHeight = 23;
constexpr float kLabelWidth = 40;

} // namespace

NPSearchWindow::NPSearchWindow(const BMessenger& browser)
    : OnceWindow(kFrame, "検索", B_TITLED_WINDOW,
                 B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS | B_CLOSE_ON_ESCAPE),
      fBrowser(browser) {
    BView* base = new BView(Bounds(), "base", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    base->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    AddChild(base);
    _AddViews(base);
    fText->MakeFocus(true);
}

void NPSearchWindow::_AddViews(BView* base) {
    BRect row = base->Bounds();
    row.InsetBy(kInset, kInset);
    row.bottom = row.top + kRowHeight;
    fText = new BTextControl(row, "text", "検索：", "", nullptr);
    fText->SetDivider(kLabelWidth);
    base->AddChild(fText);

    row.OffsetBy(0, kRow);
    const float middle = std::floor((row.left + row.right) / 2);
    fThread =
        new BRadioButton(BRect(row.left, row.top, middle, row.bottom), "thread", "スレ", nullptr);
    fThread->SetValue(B_CONTROL_ON);
    base->AddChild(fThread);
    fArticle = new BRadioButton(BRect(middle + 1, row.top, row.right, row.bottom), "article",
                                "レス", nullptr);
    base->AddChild(fArticle);

    row.OffsetBy(0, kRow);
    BButton* search = new BButton(row, "search", "検索", new BMessage(kMsgGo));
    base->AddChild(search);
    search->MakeDefault(true);
}

void NPSearchWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgGo: _Search(); break;
    default: OnceWindow::MessageReceived(message);
    }
}

void NPSearchWindow::ComeToFront() {
    OnceWindow::ComeToFront();
    fText->MakeFocus(true);
    fText->TextView()->SelectAll();
}

void NPSearchWindow::_Search() {
    BMessage step(kMsgSearchStep);
    step.AddBool("thread", fThread->Value() == B_CONTROL_ON);
    step.AddBool("article", fArticle->Value() == B_CONTROL_ON);
    step.AddString("text", fText->Text());
    fBrowser.SendMessage(&step);
}

bool NPSearchWindow::QuitRequested() {
    BMessage closed(kMsgSearchClosed);
    closed.AddMessenger("window", BMessenger(this));
    fBrowser.SendMessage(&closed);
    return true;
}
