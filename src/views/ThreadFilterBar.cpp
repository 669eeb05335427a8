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

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

constexpr float kInset = 4;
constexpr float kButtonSize = 24;
constexpr float kCountWidth = 96;
constexpr float kGap = 8;
constexpr float kLeastField = 200; // with its label

} // namespace

ThreadFilterBar::ThreadFilterBar(BRect frame, BView* list)
    : BView(frame, "filter bar", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
            B_WILL_DRAW | B_FRAME_EVENTS | B_FULL_UPDATE_ON_RESIZE),
      fList(list), fCloseIcon(MakeIcon(Icon::kClose)) {
    SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    const BRect nowhere(0, 0, kButtonSize - 1, kButtonSize - 1);
    fField = new BTextControl(nowhere, "filter", "絞り込み：", "", nullptr);
    fField->SetModificationMessage(new BMessage(kMsgTyped));
    AddChild(fField);
    fCount = new BStringView(nowhere, "filter count", "");
    fCount->SetAlignment(B_ALIGN_RIGHT);
    AddChild(fCount);
    fButton = new NPBitmapButton(nowhere, "close filter", fCloseIcon.get(), new BMessage(kMsgClose),
                                 B_FOLLOW_LEFT | B_FOLLOW_TOP);
    AddChild(fButton);
    _Place();
}

ThreadFilterBar::~ThreadFilterBar() = default;

void ThreadFilterBar::AttachedToWindow() {
    BView::AttachedToWindow();
    fField->SetDivider(std::ceil(fField->StringWidth(fField->Label())) + kGap);
    fField->SetTarget(Parent());
    fButton->SetTarget(Parent());
    const BView* field = fField->TextView();
    fKeys = std::make_unique<KeyMessages>(
        Parent(), std::vector<KeyMessages::Key>{{field, B_ESCAPE, kMsgClose},
                                                {field, B_ENTER, kMsgLeave},
                                                {field, B_DOWN_ARROW, kMsgLeave},
                                                {fButton, B_ESCAPE, kMsgClose},
                                                {fList, B_ESCAPE, kMsgClose}});
    Window()->AddCommonFilter(fKeys.get());
}

void ThreadFilterBar::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    _Place();
}

// In a narrow pane the count gives way to the field.
void ThreadFilterBar::_Place() {
    float right = Bounds().right - kInset - kButtonSize;
    fButton->MoveTo(right, kInset);
    right -= kGap;
    const bool hasRoom = right > kLeastField + kCountWidth;
    fCount->MoveTo(hasRoom ? right - kCountWidth : Bounds().right + 1, kInset);
    fCount->ResizeTo(kCountWidth, kButtonSize - 1);
    if (hasRoom)
        right -= kCountWidth + kGap;
    fField->MoveTo(kGap, kInset);
    fField->ResizeTo(std::max(right - kGap, 0.0F), kButtonSize - 1);
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
