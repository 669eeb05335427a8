#include "interface/controls/ControlPrivate.h"

#include <algorithm>

namespace {
constexpr float kLabelGap = 7;
} // namespace

void BControl::Private::DrawMarked(BControl* control, bool pressed, MarkDrawer draw) {
    control_look::State state = StateOf(control);
    state.pressed = pressed;
    const BRect mark = control_look::MarkFrame(control->Bounds());
    draw(control, mark, control->Value() != B_CONTROL_OFF, state);
    BRect label = control->Bounds();
    label.left = mark.right + kLabelGap;
    control_look::DrawLabel(control, control->Label(), label, B_ALIGN_LEFT, control->IsEnabled());
}

void BControl::Private::GetMarkedSize(BControl* control, float* width, float* height) {
    if (width != nullptr)
        *width = control_look::MarkFrame(control->Bounds()).right + kLabelGap +
                 control_look::LabelWidth(control, control->Label());
    if (height != nullptr)
        *height = std::max(control_look::kFieldHeight, control_look::LineHeight(control) + 4) - 1;
}

void BControl::Private::BeginPress(BControl* control, bool* pressed) {
    if (!TakesPress(control))
        return;
    control->SetTracking(true);
    *pressed = true;
    control->Invalidate();
    control->SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
}

void BControl::Private::MovePress(BControl* control, BPoint where, bool* pressed) {
    if (!control->IsTracking() || *pressed == control->Bounds().Contains(where))
        return;
    *pressed = !*pressed;
    control->Invalidate();
}

bool BControl::Private::EndPress(BControl* control, BPoint where, bool* pressed) {
    if (!control->IsTracking())
        return false;
    control->SetTracking(false);
    *pressed = false;
    control->Invalidate();
    return control->Bounds().Contains(where);
}
