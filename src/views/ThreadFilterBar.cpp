#include "views/ThreadFilterBar.h"

#include "views/Icons.h"
#include "views/KeyMessages.h"
#include "views/NPBitmapButton.h"

#include <Bitmap.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>
#include <Window.h>

#include <cmath>

namespace {

constexpr float kInset = 4;
constexpr float kButtonSize = 24;
constexpr float kCountWidth = 96;
constexpr float kGap = 8;

} // namespace

ThreadFilterBar::ThreadFilterBar(BRect frame, BView* list)
    : BView(frame, "filter bar", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FULL_UPDATE_ON_RESIZE),
      fList(list), fCloseIcon(MakeIcon(Icon::kClose)) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    const BRect bounds = Bounds();
    const float button = bounds.right - kInset - kButtonSize;
    const float count = button - kGap - kCountWidth;
    fField = new BTextControl(BRect(kGap, kInset, count - kGap, kInset + kButtonSize - 1), "filter",
                              "絞り込み：", "", nullptr, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);
    fField->SetModificationMessage(new BMessage(kMsgTyped));
    AddChild(fField);
    fCount = new BStringView(BRect(count, kInset, button - kGap, kInset + kButtonSize - 1), "count",
                             "", B_FOLLOW_RIGHT | B_FOLLOW_TOP);
    fCount->SetAlignment(B_ALIGN_RIGHT);
    AddChild(fCount);
    AddChild(new NPBitmapButton(
        BRect(button, kInset, button + kButtonSize - 1, kInset + kButtonSize - 1), "close filter",
        fCloseIcon.get(), new BMessage(kMsgClose), B_FOLLOW_RIGHT | B_FOLLOW_TOP));
}

ThreadFilterBar::~ThreadFilterBar() = default;

void ThreadFilterBar::AttachedToWindow() {
    BView::AttachedToWindow();
    fField->SetDivider(std::ceil(fField->StringWidth(fField->Label())) + kGap);
    fField->SetTarget(Parent());
    static_cast<BControl*>(FindView("close filter"))->SetTarget(Parent());
    const BView* field = fField->TextView();
    const BView* button = FindView("close filter");
    fKeys = std::make_unique<KeyMessages>(
        Parent(), std::vector<KeyMessages::Key>{{field, B_ESCAPE, kMsgClose},
                                                {field, B_ENTER, kMsgLeave},
                                                {field, B_DOWN_ARROW, kMsgLeave},
                                                {button, B_ESCAPE, kMsgClose},
                                                {fList, B_ESCAPE, kMsgClose}});
    Window()->AddCommonFilter(fKeys.get());
}

void ThreadFilterBar::Draw(BRect) {
    const BRect bounds = Bounds();
    SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
    StrokeLine(bounds.LeftTop(), bounds.RightTop());
    StrokeLine(bounds.LeftTop(), bounds.LeftBottom());
    StrokeLine(bounds.RightTop(), bounds.RightBottom());
}

const char* ThreadFilterBar::Text() const {
    return fField->Text();
}

void ThreadFilterBar::ShowCount(int32 shown, int32 all) {
    fCount->SetText((std::to_string(shown) + " / " + std::to_string(all)).c_str());
}

void ThreadFilterBar::GoToField() {
    fField->MakeFocus(true);
}
