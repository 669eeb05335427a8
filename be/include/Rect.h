#pragma once

#include <Point.h>

// A rectangle in pixels. All four sides belong to it: BRect(0, 0, 9, 9) is 10 pixels wide, its
// Width() is 9. The default rectangle is empty: IsValid() is false.
class BRect {
public:
    BRect() = default;
    BRect(float rectLeft, float rectTop, float rectRight, float rectBottom)
        : left(rectLeft), top(rectTop), right(rectRight), bottom(rectBottom) {}
    BRect(BPoint leftTop, BPoint rightBottom)
        : left(leftTop.x), top(leftTop.y), right(rightBottom.x), bottom(rightBottom.y) {}

    void Set(float rectLeft, float rectTop, float rectRight, float rectBottom) {
        *this = BRect(rectLeft, rectTop, rectRight, rectBottom);
    }
    bool IsValid() const { return left <= right && top <= bottom; }
    float Width() const { return right - left; }
    float Height() const { return bottom - top; }
    int32 IntegerWidth() const;  // rounded up
    int32 IntegerHeight() const; // rounded up
    void PrintToStream() const;

    BPoint LeftTop() const { return BPoint(left, top); }
    BPoint RightTop() const { return BPoint(right, top); }
    BPoint LeftBottom() const { return BPoint(left, bottom); }
    BPoint RightBottom() const { return BPoint(right, bottom); }
    void SetLeftTop(const BPoint point);
    void SetRightTop(const BPoint point);
    void SetLeftBottom(const BPoint point);
    void SetRightBottom(const BPoint point);

    void InsetBy(BPoint inset) { InsetBy(inset.x, inset.y); }
    void InsetBy(float dx, float dy);
    void OffsetBy(BPoint delta) { OffsetBy(delta.x, delta.y); }
    void OffsetBy(float dx, float dy);
    void OffsetTo(BPoint leftTop) { OffsetTo(leftTop.x, leftTop.y); }
    void OffsetTo(float x, float y);
    BRect& InsetBySelf(BPoint inset);
    BRect& InsetBySelf(float dx, float dy);
    BRect InsetByCopy(BPoint inset) const;
    BRect InsetByCopy(float dx, float dy) const;
    BRect& OffsetBySelf(BPoint delta);
    BRect& OffsetBySelf(float dx, float dy);
    BRect OffsetByCopy(BPoint delta) const;
    BRect OffsetByCopy(float dx, float dy) const;
    BRect& OffsetToSelf(BPoint leftTop);
    BRect& OffsetToSelf(float x, float y);
    BRect OffsetToCopy(BPoint leftTop) const;
    BRect OffsetToCopy(float x, float y) const;

    bool operator==(BRect other) const;
    bool operator!=(BRect other) const { return !(*this == other); }
    BRect operator&(BRect other) const; // what both cover; may be invalid
    BRect operator|(BRect other) const; // the smallest that covers both
    bool Intersects(BRect other) const;
    bool Contains(BPoint point) const;
    bool Contains(BRect other) const;

    float left = 0;
    float top = 0;
    float right = -1;
    float bottom = -1;
};
