#include <Box.h>

#include "interface/controls/ControlLook.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kLabelLeft = 12;
constexpr float kLabelPadding = 4;

} // namespace

BBox::BBox(BRect frame, const char* name, uint32 resizeMask, uint32 flags, border_style border)
    : BView(frame, name, resizeMask, flags), fBorder(border), fDrawnBounds(Bounds()) {}

BBox::~BBox() = default;

void BBox::AttachedToWindow() {
    BView::AttachedToWindow();
    if (Parent() != nullptr) {
        SetViewColor(Parent()->ViewColor());
        SetLowColor(ViewColor());
    }
    fDrawnBounds = Bounds();
}

void BBox::Draw(BRect) {
    BRect frame = Bounds();
    if (fLabelView != nullptr)
        frame.top = std::floor(fLabelView->Frame().Height() / 2);
    else if (!fLabel.IsEmpty())
        frame.top = std::floor(control_look::LineHeight(this) / 2);
    PushState();
    if (fBorder != B_NO_BORDER) {
        SetHighColor(ui_color(B_CONTROL_BORDER_COLOR));
        StrokeRoundRect(frame, control_look::kRadius, control_look::kRadius);
    }
    if (!fLabel.IsEmpty()) {
        BRect label(kLabelLeft, 0, frame.right - kLabelLeft, control_look::LineHeight(this) - 1);
        label.right =
            std::min(label.right, label.left + control_look::LabelWidth(this, fLabel.String()) - 1);
        SetHighColor(ViewColor());
        FillRect(label.InsetByCopy(-kLabelPadding, 0));
        control_look::DrawLabel(this, fLabel.String(), label, B_ALIGN_LEFT, true);
    }
    PopState();
}

void BBox::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    // Only the old and the new edges look different.
    const BRect bounds = Bounds();
    for (const BRect& old : {fDrawnBounds, bounds}) {
        Invalidate(BRect(old.right - 4, old.top, old.right, old.bottom));
        Invalidate(BRect(old.left, old.bottom - 4, old.right, old.bottom));
    }
    const float top = control_look::LineHeight(this);
    Invalidate(BRect(bounds.left, bounds.top, bounds.right, bounds.top + top));
    fDrawnBounds = bounds;
}

void BBox::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = Bounds().Width();
    if (height != nullptr)
        *height = Bounds().Height();
}

void BBox::SetBorder(border_style style) {
    fBorder = style;
    Invalidate();
}

border_style BBox::Border() const {
    return fBorder;
}

void BBox::SetLabel(const char* label) {
    if (fLabelView != nullptr) {
        RemoveChild(fLabelView);
        delete fLabelView;
        fLabelView = nullptr;
    }
    fLabel = label;
    Invalidate();
}

status_t BBox::SetLabel(BView* view) {
    SetLabel(static_cast<const char*>(nullptr));
    fLabelView = view;
    if (view != nullptr) {
        view->MoveTo(kLabelLeft, 0);
        AddChild(view, ChildAt(0));
    }
    return B_OK;
}

const char* BBox::Label() const {
    return fLabel.IsEmpty() ? nullptr : fLabel.String();
}

BView* BBox::LabelView() const {
    return fLabelView;
}
