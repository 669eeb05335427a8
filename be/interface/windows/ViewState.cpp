// The drawing state: colours, pen, font, clipping.
#include "interface/windows/ViewPrivate.h"

#include <Font.h>
#include <String.h>
#include <Window.h>

#include <algorithm>

rgb_color BView::ViewColor() const {
    return fPrivate->viewColor;
}
rgb_color BView::HighColor() const {
    return fPrivate->state.high;
}
rgb_color BView::LowColor() const {
    return fPrivate->state.low;
}

void BView::SetViewColor(rgb_color color) {
    if (color == fPrivate->viewColor)
        return;
    fPrivate->viewColor = color;
    Invalidate();
}

void BView::SetHighColor(rgb_color color) {
    fPrivate->state.high = color;
}
void BView::SetLowColor(rgb_color color) {
    fPrivate->state.low = color;
}

void BView::SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha) {
    SetViewColor(make_color(red, green, blue, alpha));
}

void BView::SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha) {
    SetHighColor(make_color(red, green, blue, alpha));
}

void BView::SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha) {
    SetLowColor(make_color(red, green, blue, alpha));
}

void BView::SetViewUIColor(color_which which, float tint) {
    SetViewColor(tint_color(ui_color(which), tint));
}

void BView::SetHighUIColor(color_which which, float tint) {
    SetHighColor(tint_color(ui_color(which), tint));
}

void BView::SetLowUIColor(color_which which, float tint) {
    SetLowColor(tint_color(ui_color(which), tint));
}

void BView::AdoptParentColors() {
    const BView* parent = Parent();
    if (parent == nullptr)
        return AdoptSystemColors();
    SetViewColor(parent->ViewColor());
    SetLowColor(parent->ViewColor());
    SetHighColor(parent->HighColor());
}

void BView::AdoptSystemColors() {
    SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    SetLowUIColor(B_PANEL_BACKGROUND_COLOR);
    SetHighUIColor(B_PANEL_TEXT_COLOR);
}

void BView::SetDrawingMode(drawing_mode mode) {
    fPrivate->state.mode = mode;
}
drawing_mode BView::DrawingMode() const {
    return fPrivate->state.mode;
}

void BView::SetBlendingMode(source_alpha sourceAlpha, alpha_function function) {
    fPrivate->state.sourceAlpha = sourceAlpha;
    fPrivate->state.alphaFunction = function;
}

void BView::GetBlendingMode(source_alpha* sourceAlpha, alpha_function* function) const {
    if (sourceAlpha != nullptr)
        *sourceAlpha = fPrivate->state.sourceAlpha;
    if (function != nullptr)
        *function = fPrivate->state.alphaFunction;
}

void BView::SetPenSize(float size) {
    fPrivate->state.penSize = std::max(0.0F, size);
}
float BView::PenSize() const {
    return fPrivate->state.penSize;
}

void BView::SetLineMode(cap_mode lineCap, join_mode lineJoin, float miterLimit) {
    fPrivate->state.cap = lineCap;
    fPrivate->state.join = lineJoin;
    fPrivate->state.miterLimit = miterLimit;
}

void BView::MovePenTo(BPoint point) {
    fPrivate->state.penLocation = point;
}
void BView::MovePenTo(float x, float y) {
    MovePenTo(BPoint(x, y));
}
void BView::MovePenBy(float x, float y) {
    fPrivate->state.penLocation += BPoint(x, y);
}
BPoint BView::PenLocation() const {
    return fPrivate->state.penLocation;
}

// Relative to the state below it, as documented for pushed states.
void BView::SetOrigin(BPoint where) {
    const BPoint base = fPrivate->saved.empty() ? BPoint() : fPrivate->saved.back().origin;
    fPrivate->state.origin = base + where;
}

void BView::SetOrigin(float x, float y) {
    SetOrigin(BPoint(x, y));
}

BPoint BView::Origin() const {
    const BPoint base = fPrivate->saved.empty() ? BPoint() : fPrivate->saved.back().origin;
    return fPrivate->state.origin - base;
}

void BView::PushState() {
    fPrivate->saved.push_back(fPrivate->state);
}

void BView::PopState() {
    if (fPrivate->saved.empty())
        return;
    fPrivate->state = fPrivate->saved.back();
    fPrivate->saved.pop_back();
}

void BView::ConstrainClippingRegion(BRegion* region) {
    const std::vector<DrawState>& saved = fPrivate->saved;
    std::optional<BRegion> clipping = saved.empty() ? std::nullopt : saved.back().clipping;
    if (region != nullptr) {
        if (clipping)
            clipping->IntersectWith(region);
        else
            clipping = *region;
    }
    fPrivate->state.clipping = clipping;
}

void BView::ClipToRect(BRect rect) {
    BRegion region(rect);
    ConstrainClippingRegion(&region);
}

void BView::GetClippingRegion(BRegion* region) const {
    if (region == nullptr)
        return;
    *region = fPrivate->VisibleRegion();
    const BPoint origin = fPrivate->WindowOrigin();
    region->OffsetBy(-origin.x, -origin.y);
    if (fPrivate->state.clipping)
        region->IntersectWith(&*fPrivate->state.clipping);
}

void BView::SetFont(const BFont* font, uint32 mask) {
    if (font == nullptr)
        return;
    BFont& mine = fPrivate->state.font;
    if (mask == B_FONT_ALL) {
        mine = *font;
        return;
    }
    if (mask & B_FONT_FAMILY_AND_STYLE)
        mine.SetFamilyAndStyle(font->FamilyAndStyle());
    if (mask & B_FONT_SIZE)
        mine.SetSize(font->Size());
    if (mask & B_FONT_FACE)
        mine.SetFace(font->Face());
    if (mask & B_FONT_SPACING)
        mine.SetSpacing(font->Spacing());
    if (mask & B_FONT_FLAGS)
        mine.SetFlags(font->Flags());
}

void BView::SetFontSize(float size) {
    fPrivate->state.font.SetSize(size);
}

void BView::GetFont(BFont* font) const {
    if (font != nullptr)
        *font = fPrivate->state.font;
}

void BView::GetFontHeight(font_height* height) const {
    fPrivate->state.font.GetHeight(height);
}

void BView::ForceFontAliasing(bool enable) {
    fPrivate->state.aliased = enable;
}

float BView::StringWidth(const char* string) const {
    return fPrivate->state.font.StringWidth(string);
}

float BView::StringWidth(const char* string, int32 length) const {
    return fPrivate->state.font.StringWidth(string, length);
}

void BView::GetStringWidths(char* stringArray[], int32 lengthArray[], int32 numStrings,
                            float widthArray[]) const {
    for (int32 i = 0; i < numStrings; i++)
        widthArray[i] = StringWidth(stringArray[i], lengthArray[i]);
}

void BView::TruncateString(BString* string, uint32 mode, float width) const {
    fPrivate->state.font.TruncateString(string, mode, width);
}
