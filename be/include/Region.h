#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <vector>

// A set of pixels, as rectangles that do not overlap. Sides are inclusive, so rectangles that stand
// side by side (right + 1 == left) leave no gap. A value; any thread, one at a time.
class BRegion {
public:
    BRegion() = default;
    explicit BRegion(BRect rect);
    BRegion(const BRegion& region) = default;
    BRegion& operator=(const BRegion& from) = default;
    bool operator==(const BRegion& other) const;

    BRect Frame() const; // an invalid rectangle if empty
    BRect RectAt(int32 index) const;
    int32 CountRects() const { return static_cast<int32>(fRects.size()); }

    void Set(BRect rect);
    void MakeEmpty() { fRects.clear(); }
    bool IsEmpty() const { return fRects.empty(); }

    bool Intersects(BRect rect) const;
    bool Contains(BPoint point) const;
    void OffsetBy(float x, float y);
    void OffsetBy(const BPoint& point) { OffsetBy(point.x, point.y); }

    void Include(BRect rect);
    void Include(const BRegion* region);
    void Exclude(BRect rect);
    void Exclude(const BRegion* region);
    void IntersectWith(const BRegion* region);
    void ExclusiveInclude(const BRegion* region);

private:
    std::vector<BRect> fRects;
};
