#include "app/TimeCursors.h"

namespace {

struct Step {
    int32 x;
    int32 y;
};

// Where the hand points, a sixth of a turn apart, in halves of a pixel for each pixel of its
// length.
constexpr Step kHand[kTimeCursorCount] = {{0, -2}, {2, -1}, {2, 1}, {0, 2}, {-2, 1}, {-2, -1}};
constexpr int32 kCentre = 7;
constexpr int32 kHandLength = 4;
constexpr int32 kInkRows = 4;
constexpr int32 kMaskRows = kInkRows + 32;

constexpr void Set(CursorData* cursor, int32 rows, int32 x, int32 y) {
    uint8& byte = (*cursor)[rows + y * 2 + x / 8];
    byte = static_cast<uint8>(byte | (0x80 >> (x % 8)));
}

constexpr CursorData Draw(Step hand) {
    CursorData cursor{16, 1, kCentre, kCentre};
    for (int32 y = 0; y < 15; y++) {
        for (int32 x = 0; x < 15; x++) {
            const int32 distance = (x - kCentre) * (x - kCentre) + (y - kCentre) * (y - kCentre);
            if (distance <= 52)
                Set(&cursor, kMaskRows, x, y);
            if (distance <= 52 && distance >= 36)
                Set(&cursor, kInkRows, x, y);
        }
    }
    for (int32 i = 0; i <= kHandLength; i++)
        Set(&cursor, kInkRows, kCentre + hand.x * i / 2, kCentre + hand.y * i / 2);
    return cursor;
}

constexpr std::array<CursorData, kTimeCursorCount> DrawAll() {
    std::array<CursorData, kTimeCursorCount> cursors{};
    for (int32 i = 0; i < kTimeCursorCount; i++)
        cursors[i] = Draw(kHand[i]);
    return cursors;
}

} // namespace

constexpr std::array<CursorData, kTimeCursorCount> time_cursors = DrawAll();
