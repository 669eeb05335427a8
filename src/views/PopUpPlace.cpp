#include "views/PopUpPlace.h"

#include <Screen.h>

#include <algorithm>

namespace {

constexpr float kGap = 5;

// From `left` or `top` on; the right and bottom edges of a rectangle belong to it.
struct Span {
    float from;
    float to;
};

Span PlaceAcross(float x, float width, float left, float right) {
    if (x + kGap + width - 1 <= right)
        return {x + kGap, x + kGap + width - 1};
    if (x - kGap - width + 1 >= left)
        return {x - kGap - width + 1, x - kGap};
    const float from = std::max(left, right - width + 1);
    return {from, std::min(right, from + width - 1)};
}

Span PlaceDown(float y, float height, float top, float bottom) {
    const float above = y - kGap - top + 1;
    const float below = bottom - (y + kGap) + 1;
    if (height <= above || (height > below && above >= below))
        return {y - kGap - std::min(height, above) + 1, y - kGap};
    return {y + kGap, y + kGap + std::min(height, below) - 1};
}

} // namespace

BRect ScreenUnder(BPoint point) {
    BScreen screen;
    do {
        if (screen.Frame().Contains(point))
            return screen.Frame();
    } while (screen.SetToNext() == B_OK);
    return BScreen().Frame();
}

PopUpPlace PlacePopUp(BPoint point, float width, float height, BRect screen) {
    const float x = std::clamp(point.x, screen.left, screen.right);
    const float y = std::clamp(point.y, screen.top, screen.bottom);
    const Span across = PlaceAcross(x, width, screen.left, screen.right);
    const Span down = PlaceDown(y, height, screen.top, screen.bottom);
    const BRect frame(across.from, down.from, across.to, down.to);
    return {frame, frame.Width() + 1 < width || frame.Height() + 1 < height};
}
