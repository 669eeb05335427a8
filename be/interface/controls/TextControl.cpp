#include <TextControl.h>

#include "interface/controls/ControlPrivate.h"
#include "interface/controls/TextField.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLabelGap = 4;

} // namespace

BTextControl::BTextControl(BRect frame, const char* name, const char* label,
                           const char* initialText, BMessage* message, uint32 resizeMask,
                           uint32 flags)
    : BControl(frame, name, label, message, resizeMask, (flags & ~B_NAVIGABLE) | B_FRAME_EVENTS),
      fTextView(new TextField(this, flags & B_NAVIGABLE)), fCommittedText(initialText) {
    fTextView->SetText(initialText);
    // Half for the label, unless there is none.
    fDivider = label != nullptr && label[0] != '\0' ? std::floor(frame.Width() / 2) : 0;
    AddChild(fTextView);
    _LayoutField();
}

BTextControl::~BTextControl() = default;

void BTextControl::AttachedToWindow() {
    BControl::AttachedToWindow();
    fTextView->BView::SetViewColor(
        ui_color(IsEnabled() ? B_CONTROL_BACKGROUND_COLOR : B_PANEL_BACKGROUND_COLOR));
    _LayoutField();
}

void BTextControl::DetachedFromWindow() {
    BControl::DetachedFromWindow();
}

void BTextControl::AllAttached() {
    BControl::AllAttached();
}

void BTextControl::Draw(BRect) {
    control_look::State state = Private::StateOf(this);
    state.focused = fTextView->IsFocus() && Window()->IsActive();
    control_look::DrawField(this, _FieldFrame(), state);
    BRect label = Bounds();
    label.right = fDivider - kLabelGap;
    control_look::DrawLabel(this, Label(), label, fLabelAlignment, IsEnabled());
}

void BTextControl::MouseDown(BPoint) {
    if (IsEnabled() && !fTextView->IsFocus())
        MakeFocus(true);
}

void BTextControl::FrameResized(float width, float height) {
    BControl::FrameResized(width, height);
    _LayoutField();
    Invalidate();
}

void BTextControl::MakeFocus(bool focused) {
    if (focused && !IsEnabled())
        return;
    fTextView->MakeFocus(focused);
    if (focused)
        fTextView->SelectAll();
}

void BTextControl::SetEnabled(bool enabled) {
    if (enabled == IsEnabled())
        return;
    if (!enabled && fTextView->IsFocus())
        fTextView->MakeFocus(false);
    BControl::SetEnabled(enabled);
    static_cast<TextField*>(fTextView)->SetUsable(enabled);
}

void BTextControl::SetLabel(const char* label) {
    BControl::SetLabel(label);
}

void BTextControl::WindowActivated(bool active) {
    BControl::WindowActivated(active);
    Invalidate(_FieldFrame());
}

void BTextControl::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = fDivider + 120;
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(this) + 6) - 1;
}

void BTextControl::SetText(const char* text) {
    fTextView->SetText(text);
    fCommittedText = fTextView->Text();
}

const char* BTextControl::Text() const {
    return fTextView->Text();
}

BTextView* BTextControl::TextView() const {
    return fTextView;
}

void BTextControl::SetModificationMessage(BMessage* message) {
    fModificationMessage.reset(message);
}

BMessage* BTextControl::ModificationMessage() const {
    return fModificationMessage.get();
}

void BTextControl::SetAlignment(alignment forLabel, alignment forText) {
    fLabelAlignment = forLabel;
    fTextView->SetAlignment(forText);
    Invalidate();
}

void BTextControl::GetAlignment(alignment* forLabel, alignment* forText) const {
    if (forLabel != nullptr)
        *forLabel = fLabelAlignment;
    if (forText != nullptr)
        *forText = fTextView->Alignment();
}

void BTextControl::SetDivider(float dividingLine) {
    fDivider = std::floor(std::clamp(dividingLine, 0.0F, Bounds().Width()));
    _LayoutField();
    Invalidate();
}

float BTextControl::Divider() const {
    return fDivider;
}

BRect BTextControl::_FieldFrame() const {
    BRect frame = Bounds();
    frame.left = fDivider;
    return frame;
}

void BTextControl::_LayoutField() {
    const BRect inside = _FieldFrame().InsetByCopy(2, 2);
    fTextView->MoveTo(inside.LeftTop());
    fTextView->ResizeTo(std::max(0.0F, inside.Width()), std::max(0.0F, inside.Height()));
    const float room = fTextView->Bounds().Height() + 1 - control_look::LineHeight(fTextView);
    const float top = std::max(0.0F, std::floor(room / 2));
    BRect text = fTextView->Bounds();
    fTextView->SetTextRect(BRect(3, top, text.Width() - 3, text.Height()));
}

// The user has pressed Enter or left the field.
void BTextControl::_Commit() {
    if (fCommittedText == fTextView->Text())
        return;
    fCommittedText = fTextView->Text();
    Invoke();
}

void BTextControl::_TextModified() {
    if (fModificationMessage != nullptr)
        Invoke(fModificationMessage.get());
}

void BTextControl::_FieldFocusChanged() {
    Invalidate(_FieldFrame());
}
