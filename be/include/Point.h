#pragma once

#include <SupportDefs.h>

class BRect;

// A point in pixels.
class BPoint {
public:
    BPoint() = default;
    BPoint(float pointX, float pointY) : x(pointX), y(pointY) {}

    void Set(float pointX, float pointY) {
        x = pointX;
        y = pointY;
    }
    void ConstrainTo(BRect rect);
    void PrintToStream() const;

    BPoint operator-() const { return BPoint(-x, -y); }
    BPoint operator+(const BPoint& other) const { return BPoint(x + other.x, y + other.y); }
    BPoint operator-(const BPoint& other) const { return BPoint(x - other.x, y - other.y); }
    BPoint& operator+=(const BPoint& other) { return *this = *this + other; }
    BPoint& operator-=(const BPoint& other) { return *this = *this - other; }
    bool operator==(const BPoint& other) const { return x == other.x && y == other.y; }
    bool operator!=(const BPoint& other) const { return !(*this == other); }

    float x = 0;
    float y = 0;
};

extern const BPoint B_ORIGIN; // (0, 0)
