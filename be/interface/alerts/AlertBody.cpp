#include "interface/alerts/AlertBody.h"

#include <Button.h>
#include <String.h>
#include <TextView.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

const float kPadding = 20;
const float kIconSize = 32;
const float kIconGap = 16;
const float kLeastText = 220;
const float kMostText = 400;
const float kButtonHeight = 25; // inclusive: 26 pixels
const float kLeastButton = 80;
const float kButtonPadding = 28;
const float kButtonGap = 8;

struct IconLook {
    rgb_color color;
    const char* sign;
};

IconLook LookOf(alert_type type) {
    switch (type) {
    case B_WARNING_ALERT: return {make_color(0xd9, 0x8e, 0x04), "!"};
    case B_STOP_ALERT: return {ui_color(B_FAILURE_COLOR), "\xc3\x97"};
    case B_IDEA_ALERT: return {make_color(0x2e, 0x8b, 0x57), "?"};
    default: return {ui_color(B_CONTROL_HIGHLIGHT_COLOR), "i"};
    }
}

// The longest line, as far as it may be shown without a break.
float WidestLine(const BFont& font, const char* text) {
    float widest = 0;
    for (const char* line = text; line != nullptr;) {
        const char* end = strchr(line, '\n');
        const size_t length = end != nullptr ? static_cast<size_t>(end - line) : strlen(line);
        widest = std::max(widest, font.StringWidth(line, static_cast<int32>(length)));
        line = end != nullptr ? end + 1 : nullptr;
    }
    return std::clamp(std::ceil(widest) + 4, kLeastText, kMostText);
}

} // namespace

AlertBody::AlertBody(alert_type type, const char* text)
    : BView(BRect(0, 0, 299, 99), "alert", B_FOLLOW_ALL_SIDES, B_WILL_DRAW), fType(type) {
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    const BRect frame(0, 0, kMostText, 20);
    fText = new BTextView(frame, "text", frame, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
    fText->SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    fText->MakeEditable(false);
    fText->MakeSelectable(false);
    fText->SetText(text);
    AddChild(fText);
}

float AlertBody::_TextLeft() const {
    return fType == B_EMPTY_ALERT ? kPadding : kPadding + kIconSize + kIconGap;
}

// The y below text and icon.
float AlertBody::_PlaceText() {
    const BFont font(be_plain_font);
    const float width = WidestLine(font, fText->Text());
    fText->MoveTo(_TextLeft(), kPadding);
    fText->ResizeTo(width, 20);
    fText->SetTextRect(BRect(0, 0, width, 20));
    const float height = std::ceil(fText->TextHeight(0, fText->CountLines() - 1));
    fText->ResizeTo(width, height);
    const float icon = fType == B_EMPTY_ALERT ? 0 : kIconSize;
    if (height < icon)
        fText->MoveBy(0, std::floor((icon - height) / 2));
    return kPadding + std::max(height, icon);
}

BPoint AlertBody::_PlaceButtons(const std::vector<BButton*>& buttons, button_width width,
                                float top) {
    const BFont font(be_plain_font);
    std::vector<float> widths;
    widths.reserve(buttons.size());
    for (BButton* button : buttons)
        widths.push_back(std::ceil(font.StringWidth(button->Label())) + kButtonPadding);
    const float widest = widths.empty() ? 0 : *std::max_element(widths.begin(), widths.end());
    for (float& one : widths) {
        if (width == B_WIDTH_AS_USUAL)
            one = std::max(one, kLeastButton);
        else if (width == B_WIDTH_FROM_WIDEST)
            one = widest;
    }
    float total = kButtonGap * static_cast<float>(widths.empty() ? 0 : widths.size() - 1);
    for (const float one : widths)
        total += one;
    const float right = std::max(fText->Frame().right, kPadding + total);
    float left = right - total;
    for (size_t i = 0; i < buttons.size(); i++) {
        buttons[i]->MoveTo(left, top);
        buttons[i]->ResizeTo(widths[i] - 1, kButtonHeight);
        if (buttons[i]->Parent() == nullptr)
            AddChild(buttons[i]);
        left += widths[i] + kButtonGap;
    }
    return BPoint(right, top + kButtonHeight);
}

BPoint AlertBody::Arrange(const std::vector<BButton*>& buttons, button_width width) {
    const float below = _PlaceText() + kPadding;
    const BPoint corner = _PlaceButtons(buttons, width, below);
    return corner + BPoint(kPadding, kPadding - 4);
}

void AlertBody::SetType(alert_type type) {
    fType = type;
    Invalidate();
}

void AlertBody::Draw(BRect) {
    if (fType == B_EMPTY_ALERT)
        return;
    const IconLook look = LookOf(fType);
    const BRect icon(kPadding, kPadding, kPadding + kIconSize - 1, kPadding + kIconSize - 1);
    SetHighColor(look.color);
    FillEllipse(icon);
    BFont font(be_bold_font);
    font.SetSize(20);
    SetFont(&font);
    SetHighColor(255, 255, 255);
    const float width = StringWidth(look.sign);
    DrawString(look.sign, BPoint(icon.left + (kIconSize - width) / 2, icon.top + 23));
}
