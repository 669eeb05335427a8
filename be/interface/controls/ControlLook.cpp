#include "interface/controls/ControlLook.h"

#include <String.h>
#include <View.h>

#include <algorithm>
#include <cmath>

namespace control_look {

namespace {

constexpr float kMarkSize = 16;

// Keeps a view's drawing state for the length of a block.
class Drawing {
public:
    explicit Drawing(BView* view) : fView(view) { fView->PushState(); }
    ~Drawing() { fView->PopState(); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

private:
    BView* fView;
};

rgb_color Mix(rgb_color a, rgb_color b, float share) {
    const auto mix = [share](uint8 from, uint8 to) {
        return static_cast<uint8>(
            std::lround(static_cast<float>(from) +
                        (static_cast<float>(to) - static_cast<float>(from)) * share));
    };
    return make_color(mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue));
}

rgb_color Accent() {
    return ui_color(B_CONTROL_HIGHLIGHT_COLOR);
}

rgb_color BorderColor(const State& state) {
    const rgb_color border = ui_color(B_CONTROL_BORDER_COLOR);
    if (!state.enabled)
        return Mix(border, ui_color(B_PANEL_BACKGROUND_COLOR), 0.5F);
    if (state.focused)
        return Accent();
    return state.hovered ? Mix(border, ui_color(B_CONTROL_TEXT_COLOR), 0.25F) : border;
}

rgb_color FillColor(const State& state) {
    const rgb_color fill = ui_color(B_CONTROL_BACKGROUND_COLOR);
    if (!state.enabled)
        return ui_color(B_PANEL_BACKGROUND_COLOR);
    if (state.pressed)
        return Mix(fill, Accent(), 0.22F);
    return state.hovered ? Mix(fill, Accent(), 0.06F) : fill;
}

void FillFrame(BView* view, BRect frame, float thickness, rgb_color border, rgb_color fill) {
    view->SetHighColor(border);
    view->FillRoundRect(frame, kRadius, kRadius);
    view->SetHighColor(fill);
    frame.InsetBy(thickness, thickness);
    const float radius = std::max(1.0F, kRadius - thickness);
    view->FillRoundRect(frame, radius, radius);
}

} // namespace

rgb_color LabelColor(bool enabled) {
    const rgb_color text = ui_color(B_PANEL_TEXT_COLOR);
    return enabled ? text : Mix(text, ui_color(B_PANEL_BACKGROUND_COLOR), 0.55F);
}

float LabelWidth(const BView* view, const char* text) {
    return text != nullptr ? std::ceil(view->StringWidth(text)) : 0;
}

float LineHeight(const BView* view) {
    font_height height;
    view->GetFontHeight(&height);
    return std::ceil(height.ascent) + std::ceil(height.descent + height.leading);
}

void DrawPlainLabel(BView* view, const char* text, BRect frame, alignment align) {
    if (text == nullptr || text[0] == '\0' || !frame.IsValid())
        return;
    BString label(text);
    view->TruncateString(&label, B_TRUNCATE_END, frame.Width() + 1);
    font_height height;
    view->GetFontHeight(&height);
    const float room = frame.Width() + 1 - LabelWidth(view, label.String());
    float x = frame.left;
    if (align == B_ALIGN_RIGHT)
        x += std::floor(room);
    else if (align == B_ALIGN_CENTER)
        x += std::floor(room / 2);
    const float ascent = std::ceil(height.ascent);
    const float line = ascent + std::ceil(height.descent);
    const float y = frame.top + std::floor((frame.Height() + 1 - line) / 2) + ascent;
    view->SetDrawingMode(B_OP_OVER);
    view->DrawString(label.String(), BPoint(x, y));
    view->SetDrawingMode(B_OP_COPY);
}

void DrawLabel(BView* view, const char* text, BRect frame, alignment align, bool enabled) {
    const Drawing drawing(view);
    view->SetHighColor(LabelColor(enabled));
    DrawPlainLabel(view, text, frame, align);
}

void DrawButton(BView* view, BRect frame, const State& state) {
    const Drawing drawing(view);
    const bool strong = state.enabled && (state.focused || state.isDefault);
    rgb_color border = BorderColor(state);
    if (state.isDefault && state.enabled && !state.focused)
        border = Mix(Accent(), ui_color(B_CONTROL_BACKGROUND_COLOR), 0.35F);
    FillFrame(view, frame, strong && state.focused ? 2 : 1, border, FillColor(state));
}

void DrawField(BView* view, BRect frame, const State& state) {
    const Drawing drawing(view);
    State still = state;
    still.pressed = false;
    rgb_color fill = FillColor(still);
    if (state.enabled)
        fill = ui_color(B_CONTROL_BACKGROUND_COLOR);
    FillFrame(view, frame, state.focused && state.enabled ? 2 : 1, BorderColor(state), fill);
}

void DrawCheckBox(BView* view, BRect box, bool on, const State& state) {
    const Drawing drawing(view);
    const rgb_color mark = state.enabled ? ui_color(B_CONTROL_MARK_COLOR) : BorderColor(state);
    FillFrame(view, box, 1, on ? mark : BorderColor(state), on ? mark : FillColor(state));
    if (on) {
        view->SetHighColor(255, 255, 255);
        view->SetPenSize(2);
        view->SetLineMode(B_ROUND_CAP, B_ROUND_JOIN);
        const BPoint middle(box.left + 6, box.top + 11);
        view->StrokeLine(BPoint(box.left + 3, box.top + 8), middle);
        view->StrokeLine(middle, BPoint(box.left + 12, box.top + 4));
    }
    if (state.focused)
        DrawFocusRing(view, box.InsetByCopy(-3, -3));
}

void DrawRadioButton(BView* view, BRect box, bool on, const State& state) {
    const Drawing drawing(view);
    const rgb_color mark = state.enabled ? ui_color(B_CONTROL_MARK_COLOR) : BorderColor(state);
    view->SetHighColor(on ? mark : BorderColor(state));
    view->FillEllipse(box);
    view->SetHighColor(on ? mark : FillColor(state));
    view->FillEllipse(box.InsetByCopy(1, 1));
    if (on) {
        view->SetHighColor(255, 255, 255);
        view->FillEllipse(box.InsetByCopy(5, 5));
    }
    if (!state.focused)
        return;
    view->SetHighColor(Accent());
    view->StrokeEllipse(box.InsetByCopy(-3, -3));
}

void DrawFocusRing(BView* view, BRect frame) {
    const Drawing drawing(view);
    view->SetHighColor(Accent());
    view->StrokeRoundRect(frame, kRadius, kRadius);
}

void DrawDropArrow(BView* view, BPoint center, bool enabled) {
    const Drawing drawing(view);
    view->SetHighColor(LabelColor(enabled));
    const float x = std::floor(center.x);
    const float y = std::floor(center.y);
    view->FillTriangle(BPoint(x - 4, y - 2), BPoint(x + 4, y - 2), BPoint(x, y + 2));
}

BRect MarkFrame(BRect bounds) {
    const float top = bounds.top + std::floor((bounds.Height() + 1 - kMarkSize) / 2);
    // Room for the focus ring at the left.
    const float left = bounds.left + 3;
    return BRect(left, top, left + kMarkSize - 1, top + kMarkSize - 1);
}

} // namespace control_look
