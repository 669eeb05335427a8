#include <ListItem.h>

#include <Font.h>
#include <InterfaceDefs.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kPadding = 4;
constexpr float kLowestRow = 20;

} // namespace

BListItem::BListItem(uint32 outlineLevel, bool expanded)
    : fOutlineLevel(outlineLevel), fExpanded(expanded) {}

BListItem::~BListItem() = default;

float BListItem::Height() const {
    return fHeight;
}

float BListItem::Width() const {
    return fWidth;
}

void BListItem::SetHeight(float height) {
    fHeight = height;
}

void BListItem::SetWidth(float width) {
    fWidth = width;
}

bool BListItem::IsSelected() const {
    return fSelected;
}

void BListItem::Select() {
    fSelected = fEnabled;
}

void BListItem::Deselect() {
    fSelected = false;
}

void BListItem::SetEnabled(bool enabled) {
    fEnabled = enabled;
}

bool BListItem::IsEnabled() const {
    return fEnabled;
}

uint32 BListItem::OutlineLevel() const {
    return fOutlineLevel;
}

bool BListItem::IsExpanded() const {
    return fExpanded;
}

void BListItem::SetExpanded(bool expanded) {
    fExpanded = expanded;
}

void BListItem::Update(BView* owner, const BFont* font) {
    font_height height;
    font->GetHeight(&height);
    const float line = std::ceil(height.ascent) + std::ceil(height.descent);
    SetHeight(std::max(kLowestRow, line + kPadding) - 1);
    SetWidth(owner->Bounds().Width());
}

BStringItem::BStringItem(const char* text, uint32 outlineLevel, bool expanded)
    : BListItem(outlineLevel, expanded), fText(text) {}

BStringItem::~BStringItem() = default;

void BStringItem::DrawItem(BView* owner, BRect frame, bool) {
    owner->PushState();
    owner->SetHighColor(
        ui_color(IsSelected() ? B_LIST_SELECTED_ITEM_TEXT_COLOR : B_LIST_ITEM_TEXT_COLOR));
    if (!IsEnabled())
        owner->SetHighColor(tint_color(owner->HighColor(), 0.5F));
    owner->SetDrawingMode(B_OP_OVER);
    owner->DrawString(fText.String(), BPoint(frame.left + kPadding, frame.top + fBaselineOffset));
    owner->PopState();
}

void BStringItem::Update(BView* owner, const BFont* font) {
    BListItem::Update(owner, font);
    font_height height;
    font->GetHeight(&height);
    const float ascent = std::ceil(height.ascent);
    const float room = Height() + 1 - ascent - std::ceil(height.descent);
    fBaselineOffset = std::floor(room / 2) + ascent;
    SetWidth(std::ceil(font->StringWidth(fText.String())) + 2 * kPadding);
}

void BStringItem::SetText(const char* text) {
    fText = text;
}

const char* BStringItem::Text() const {
    return fText.String();
}
