#include <Region.h>

#include <algorithm>

namespace {

// What is left of `rect` without `hole`, which it meets: up to four rectangles.
void AddWithout(BRect rect, BRect hole, std::vector<BRect>& result) {
    if (hole.top > rect.top)
        result.push_back(BRect(rect.left, rect.top, rect.right, hole.top - 1));
    if (hole.bottom < rect.bottom)
        result.push_back(BRect(rect.left, hole.bottom + 1, rect.right, rect.bottom));
    const float top = std::max(rect.top, hole.top);
    const float bottom = std::min(rect.bottom, hole.bottom);
    if (hole.left > rect.left)
        result.push_back(BRect(rect.left, top, hole.left - 1, bottom));
    if (hole.right < rect.right)
        result.push_back(BRect(hole.right + 1, top, rect.right, bottom));
}

// Joins the last two if they make one rectangle, as long as that goes on.
void JoinTail(std::vector<BRect>& rects) {
    while (rects.size() >= 2) {
        BRect& before = rects[rects.size() - 2];
        const BRect& last = rects.back();
        const bool sideBySide = before.top == last.top && before.bottom == last.bottom &&
                                (before.right + 1 == last.left || last.right + 1 == before.left);
        const bool stacked = before.left == last.left && before.right == last.right &&
                             (before.bottom + 1 == last.top || last.bottom + 1 == before.top);
        if (!sideBySide && !stacked)
            return;
        before = before | last;
        rects.pop_back();
    }
}

} // namespace

BRegion::BRegion(BRect rect) {
    Set(rect);
}

bool BRegion::operator==(const BRegion& other) const {
    BRegion rest(*this);
    rest.Exclude(&other);
    BRegion otherRest(other);
    otherRest.Exclude(this);
    return rest.IsEmpty() && otherRest.IsEmpty();
}

BRect BRegion::Frame() const {
    BRect frame;
    for (const BRect& rect : fRects)
        frame = frame.IsValid() ? frame | rect : rect;
    return frame;
}

BRect BRegion::RectAt(int32 index) const {
    return index >= 0 && index < CountRects() ? fRects[static_cast<size_t>(index)] : BRect();
}

void BRegion::Set(BRect rect) {
    fRects.clear();
    if (rect.IsValid())
        fRects.push_back(rect);
}

bool BRegion::Intersects(BRect rect) const {
    return std::any_of(fRects.begin(), fRects.end(),
                       [&](const BRect& one) { return one.Intersects(rect); });
}

bool BRegion::Contains(BPoint point) const {
    return std::any_of(fRects.begin(), fRects.end(),
                       [&](const BRect& one) { return one.Contains(point); });
}

void BRegion::OffsetBy(float x, float y) {
    for (BRect& rect : fRects)
        rect.OffsetBy(x, y);
}

void BRegion::Include(BRect rect) {
    if (!rect.IsValid())
        return;
    for (const BRect& one : fRects) {
        if (one.Contains(rect))
            return;
    }
    Exclude(rect);
    fRects.push_back(rect);
    JoinTail(fRects);
}

void BRegion::Include(const BRegion* region) {
    const std::vector<BRect> added = region->fRects;
    for (const BRect& rect : added)
        Include(rect);
}

void BRegion::Exclude(BRect rect) {
    if (!rect.IsValid() || !Intersects(rect))
        return;
    std::vector<BRect> rest;
    for (const BRect& one : fRects) {
        if (one.Intersects(rect))
            AddWithout(one, rect, rest);
        else
            rest.push_back(one);
    }
    fRects = std::move(rest);
}

void BRegion::Exclude(const BRegion* region) {
    const std::vector<BRect> removed = region->fRects;
    for (const BRect& rect : removed)
        Exclude(rect);
}

void BRegion::IntersectWith(const BRegion* region) {
    std::vector<BRect> common;
    for (const BRect& one : fRects) {
        for (const BRect& other : region->fRects) {
            const BRect both = one & other;
            if (both.IsValid())
                common.push_back(both);
        }
    }
    fRects = std::move(common);
}

void BRegion::ExclusiveInclude(const BRegion* region) {
    BRegion added(*region);
    added.Exclude(this);
    Exclude(region);
    Include(&added);
}
