#include "windows/StopWindow.h"

#include <AppDefs.h>
#include <Button.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <StringView.h>

namespace {

constexpr float kHeight = 36;
constexpr float kInset = 5;
constexpr float kButtonWidth = 72;
constexpr float kGap = 8;
constexpr uint32 kFlags =
    B_NOT_RESIZABLE | B_NOT_CLOSABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS;

} // namespace

StopWindow::StopWindow(const char* title, float width, uint32 moreFlags)
    : OnceWindow(BRect(0, 0, width - 1, kHeight - 1), title, B_TITLED_WINDOW, kFlags | moreFlags) {
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
    BButton* stop = new BButton(button, "stop", "中止", new BMessage(B_QUIT_REQUESTED));
    base->AddChild(stop);
    AddChild(base);
    stop->MakeFocus(true);
}

void StopWindow::ShowStatus(const char* text) {
    fStatus->SetText(text);
}
