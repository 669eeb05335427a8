// Where a view is: moving, resizing, scrolling, coordinates.
#include "interface/windows/ViewPrivate.h"
#include "interface/windows/WindowPrivate.h"
#include "server/WindowLink.h"

#include <Message.h>
#include <ScrollBar.h>

#include <cmath>

namespace {

// The four sides' rules, as resizing modes hold them.
uint32 TopRule(uint32 mode) {
    return mode >> 12 & 0xf;
}
uint32 LeftRule(uint32 mode) {
    return mode >> 8 & 0xf;
}
uint32 BottomRule(uint32 mode) {
    return mode >> 4 & 0xf;
}
uint32 RightRule(uint32 mode) {
    return mode & 0xf;
}

// How far a side that follows goes when the parent has grown by `change`.
float Follow(uint32 rule, uint32 farSide, float change, float halfChange) {
    if (rule == farSide)
        return change;
    return rule == B_VIEW_CENTER ? halfChange : 0;
}

} // namespace

BRect BView::Bounds() const {
    BRect bounds = fPrivate->frame;
    return bounds.OffsetToCopy(fPrivate->scroll.x, fPrivate->scroll.y);
}

BRect BView::Frame() const {
    return fPrivate->frame;
}

BPoint BView::LeftTop() const {
    return fPrivate->scroll;
}

void BView::MoveBy(float dx, float dy) {
    MoveTo(fPrivate->frame.left + dx, fPrivate->frame.top + dy);
}

void BView::MoveTo(BPoint where) {
    MoveTo(where.x, where.y);
}

void BView::MoveTo(float x, float y) {
    const BPoint to(std::round(x), std::round(y));
    if (to == fPrivate->frame.LeftTop())
        return;
    fPrivate->InvalidateInWindow(fPrivate->VisibleFrame());
    fPrivate->frame.OffsetTo(to);
    fPrivate->InvalidateInWindow(fPrivate->VisibleFrame());
    if (Window() != nullptr && (Flags() & B_FRAME_EVENTS))
        FrameMoved(to);
}

void BView::ResizeBy(float dx, float dy) {
    ResizeTo(fPrivate->frame.Width() + dx, fPrivate->frame.Height() + dy);
}

void BView::ResizeTo(float width, float height) {
    fPrivate->SetSize(std::round(width), std::round(height));
}

void BView::Private::SetSize(float width, float height) {
    const float dx = width - frame.Width();
    const float dy = height - frame.Height();
    if (dx == 0 && dy == 0)
        return;
    const BRect before = VisibleFrame();
    frame.right += dx;
    frame.bottom += dy;
    for (size_t i = 0; i < children.size(); i++)
        Of(children[i]).ParentResized(dx, dy);
    if (window == nullptr)
        return;
    // Without a full update only what is new is drawn, and what the parent shows again.
    const BRect after = VisibleFrame();
    if (flags & B_FULL_UPDATE_ON_RESIZE) {
        InvalidateInWindow(before.IsValid() ? (after.IsValid() ? before | after : before) : after);
    } else {
        BRegion changed(after);
        changed.Exclude(before);
        BRegion gone(before);
        gone.Exclude(after);
        changed.Include(&gone);
        for (int32 i = 0; i < changed.CountRects(); i++)
            InvalidateInWindow(changed.RectAt(i));
    }
    if (flags & B_FRAME_EVENTS)
        view->FrameResized(width, height);
}

void BView::Private::ParentResized(float dx, float dy) {
    const float halfX = std::floor(dx / 2);
    const float halfY = std::floor(dy / 2);
    const BRect old = frame;
    BRect to = frame;
    to.left += Follow(LeftRule(resizingMode), B_VIEW_RIGHT, dx, halfX);
    to.right += Follow(RightRule(resizingMode), B_VIEW_RIGHT, dx, halfX);
    to.top += Follow(TopRule(resizingMode), B_VIEW_BOTTOM, dy, halfY);
    to.bottom += Follow(BottomRule(resizingMode), B_VIEW_BOTTOM, dy, halfY);
    if (to.LeftTop() != old.LeftTop())
        view->MoveTo(to.LeftTop());
    SetSize(to.Width(), to.Height());
}

void BView::ScrollBy(float dx, float dy) {
    ScrollTo(BPoint(fPrivate->scroll.x + dx, fPrivate->scroll.y + dy));
}

void BView::ScrollTo(float x, float y) {
    ScrollTo(BPoint(x, y));
}

void BView::ScrollTo(BPoint where) {
    const BPoint to(std::round(where.x), std::round(where.y));
    const BPoint delta = to - fPrivate->scroll;
    if (delta == BPoint())
        return;
    fPrivate->scroll = to;
    if (fPrivate->IsOverlapped())
        Invalidate();
    else if (fPrivate->IsVisible())
        BWindow::Private::Of(Window()).Scroll(fPrivate->VisibleFrame(), -delta.x, -delta.y);
    fPrivate->ViewportChanged();
}

void BView::Private::ViewportChanged() {
    if (horizontalBar != nullptr)
        horizontalBar->SetValue(scroll.x);
    if (verticalBar != nullptr)
        verticalBar->SetValue(scroll.y);
}

BPoint BView::Private::WindowOrigin() const {
    BPoint origin;
    for (const BView* one = view; one != nullptr; one = Of(one).parent)
        origin += Of(one).frame.LeftTop() - Of(one).scroll;
    return origin;
}

BRect BView::Private::WindowFrame() const {
    const BPoint origin = WindowOrigin() + scroll;
    return frame.OffsetToCopy(origin.x, origin.y);
}

BRect BView::Private::VisibleFrame() const {
    BRect visible = WindowFrame();
    for (const BView* one = parent; one != nullptr && visible.IsValid(); one = Of(one).parent)
        visible = visible & Of(one).WindowFrame();
    return visible;
}

bool BView::Private::IsOverlapped() const {
    const BRect mine = VisibleFrame();
    for (const BView* one = view; Of(one).parent != nullptr; one = Of(one).parent) {
        const std::vector<BView*>& siblings = Of(Of(one).parent).children;
        for (size_t i = siblings.size(); i > 0 && siblings[i - 1] != one; i--) {
            const Private& above = Of(siblings[i - 1]);
            if (above.hidden == 0 && above.WindowFrame().Intersects(mine))
                return true;
        }
    }
    return false;
}

BRegion BView::Private::VisibleRegion() const {
    if (!IsVisible())
        return BRegion();
    BRegion region(VisibleFrame());
    if (flags & B_DRAW_ON_CHILDREN)
        return region;
    for (const BView* child : children) {
        if (Of(child).hidden == 0)
            region.Exclude(Of(child).WindowFrame());
    }
    return region;
}

BRect BView::VisibleBounds() const {
    BRect visible = fPrivate->VisibleFrame();
    const BPoint origin = fPrivate->WindowOrigin();
    return visible.OffsetByCopy(-origin.x, -origin.y);
}

BPoint BView::ConvertToParent(BPoint point) const {
    return point + fPrivate->frame.LeftTop() - fPrivate->scroll;
}

BPoint BView::ConvertFromParent(BPoint point) const {
    return point - fPrivate->frame.LeftTop() + fPrivate->scroll;
}

BPoint BView::ConvertToWindow(BPoint point) const {
    return point + fPrivate->WindowOrigin();
}

BPoint BView::ConvertFromWindow(BPoint point) const {
    return point - fPrivate->WindowOrigin();
}

BPoint BView::ConvertToScreen(BPoint point) const {
    const BPoint inWindow = ConvertToWindow(point);
    return Window() != nullptr ? Window()->ConvertToScreen(inWindow) : inWindow;
}

BPoint BView::ConvertFromScreen(BPoint point) const {
    return ConvertFromWindow(Window() != nullptr ? Window()->ConvertFromScreen(point) : point);
}

namespace {

BRect Moved(BRect rect, BPoint leftTop) {
    return rect.OffsetToCopy(leftTop.x, leftTop.y);
}

} // namespace

BRect BView::ConvertToParent(BRect rect) const {
    return Moved(rect, ConvertToParent(rect.LeftTop()));
}
BRect BView::ConvertFromParent(BRect rect) const {
    return Moved(rect, ConvertFromParent(rect.LeftTop()));
}
BRect BView::ConvertToWindow(BRect rect) const {
    return Moved(rect, ConvertToWindow(rect.LeftTop()));
}
BRect BView::ConvertFromWindow(BRect rect) const {
    return Moved(rect, ConvertFromWindow(rect.LeftTop()));
}
BRect BView::ConvertToScreen(BRect rect) const {
    return Moved(rect, ConvertToScreen(rect.LeftTop()));
}
BRect BView::ConvertFromScreen(BRect rect) const {
    return Moved(rect, ConvertFromScreen(rect.LeftTop()));
}

void BView::ConvertToParent(BPoint* point) const {
    *point = ConvertToParent(*point);
}
void BView::ConvertFromParent(BPoint* point) const {
    *point = ConvertFromParent(*point);
}
void BView::ConvertToWindow(BPoint* point) const {
    *point = ConvertToWindow(*point);
}
void BView::ConvertFromWindow(BPoint* point) const {
    *point = ConvertFromWindow(*point);
}
void BView::ConvertToScreen(BPoint* point) const {
    *point = ConvertToScreen(*point);
}
void BView::ConvertFromScreen(BPoint* point) const {
    *point = ConvertFromScreen(*point);
}
void BView::ConvertToParent(BRect* rect) const {
    *rect = ConvertToParent(*rect);
}
void BView::ConvertFromParent(BRect* rect) const {
    *rect = ConvertFromParent(*rect);
}
void BView::ConvertToWindow(BRect* rect) const {
    *rect = ConvertToWindow(*rect);
}
void BView::ConvertFromWindow(BRect* rect) const {
    *rect = ConvertFromWindow(*rect);
}
void BView::ConvertToScreen(BRect* rect) const {
    *rect = ConvertToScreen(*rect);
}
void BView::ConvertFromScreen(BRect* rect) const {
    *rect = ConvertFromScreen(*rect);
}
