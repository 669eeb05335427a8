#include <GraphicsDefs.h>
#include <Rect.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

const BPoint B_ORIGIN(0, 0);

const pattern B_SOLID_HIGH = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
const pattern B_MIXED_COLORS = {{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}};
const pattern B_SOLID_LOW = {{0, 0, 0, 0, 0, 0, 0, 0}};

const rgb_color B_TRANSPARENT_COLOR = {0x77, 0x74, 0x77, 0x00};
const rgb_color B_TRANSPARENT_32_BIT = {0x77, 0x74, 0x77, 0x00};
const uint8 B_TRANSPARENT_MAGIC_CMAP8 = 0xFF;
const uint8 B_TRANSPARENT_8_BIT = 0xFF;
const uint32 B_TRANSPARENT_MAGIC_RGBA32 = 0x00777477;
const screen_id B_MAIN_SCREEN_ID = {0};

void BPoint::ConstrainTo(BRect rect) {
    x = max_c(rect.left, min_c(rect.right, x));
    y = max_c(rect.top, min_c(rect.bottom, y));
}

void BPoint::PrintToStream() const {
    printf("BPoint(x:%.0f, y:%.0f)\n", double(x), double(y));
}

int32 BRect::IntegerWidth() const {
    return static_cast<int32>(ceilf(right - left));
}

int32 BRect::IntegerHeight() const {
    return static_cast<int32>(ceilf(bottom - top));
}

void BRect::PrintToStream() const {
    printf("BRect(l:%.1f, t:%.1f, r:%.1f, b:%.1f)\n", double(left), double(top), double(right),
           double(bottom));
}

void BRect::SetLeftTop(const BPoint point) {
    left = point.x;
    top = point.y;
}

void BRect::SetRightTop(const BPoint point) {
    right = point.x;
    top = point.y;
}

void BRect::SetLeftBottom(const BPoint point) {
    left = point.x;
    bottom = point.y;
}

void BRect::SetRightBottom(const BPoint point) {
    right = point.x;
    bottom = point.y;
}

void BRect::InsetBy(float dx, float dy) {
    left += dx;
    top += dy;
    right -= dx;
    bottom -= dy;
}

void BRect::OffsetBy(float dx, float dy) {
    left += dx;
    top += dy;
    right += dx;
    bottom += dy;
}

void BRect::OffsetTo(float x, float y) {
    *this = BRect(x, y, x + Width(), y + Height());
}

BRect& BRect::InsetBySelf(BPoint inset) {
    return InsetBySelf(inset.x, inset.y);
}

BRect& BRect::InsetBySelf(float dx, float dy) {
    InsetBy(dx, dy);
    return *this;
}

BRect BRect::InsetByCopy(BPoint inset) const {
    return InsetByCopy(inset.x, inset.y);
}

BRect BRect::InsetByCopy(float dx, float dy) const {
    return BRect(*this).InsetBySelf(dx, dy);
}

BRect& BRect::OffsetBySelf(BPoint delta) {
    return OffsetBySelf(delta.x, delta.y);
}

BRect& BRect::OffsetBySelf(float dx, float dy) {
    OffsetBy(dx, dy);
    return *this;
}

BRect BRect::OffsetByCopy(BPoint delta) const {
    return OffsetByCopy(delta.x, delta.y);
}

BRect BRect::OffsetByCopy(float dx, float dy) const {
    return BRect(*this).OffsetBySelf(dx, dy);
}

BRect& BRect::OffsetToSelf(BPoint leftTop) {
    return OffsetToSelf(leftTop.x, leftTop.y);
}

BRect& BRect::OffsetToSelf(float x, float y) {
    OffsetTo(x, y);
    return *this;
}

BRect BRect::OffsetToCopy(BPoint leftTop) const {
    return OffsetToCopy(leftTop.x, leftTop.y);
}

BRect BRect::OffsetToCopy(float x, float y) const {
    return BRect(*this).OffsetToSelf(x, y);
}

bool BRect::operator==(BRect other) const {
    return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
}

BRect BRect::operator&(BRect other) const {
    return BRect(std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                 std::min(bottom, other.bottom));
}

BRect BRect::operator|(BRect other) const {
    return BRect(std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                 std::max(bottom, other.bottom));
}

bool BRect::Intersects(BRect other) const {
    return IsValid() && other.IsValid() && (*this & other).IsValid();
}

bool BRect::Contains(BPoint point) const {
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
}

bool BRect::Contains(BRect other) const {
    return other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom;
}
