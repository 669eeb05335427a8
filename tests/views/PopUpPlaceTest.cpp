#include "views/PopUpPlace.h"

#include "views/ReferenceRange.h"

#include <gtest/gtest.h>

#include <string>

TEST(PlacePopUp, StaysBesideThePointAtEveryEdge) {
    const BRect screen(0, 0, 999, 699);
    const struct {
        BPoint point;
        float width;
        float height;
        BRect frame;
        bool isClipped;
    } kCases[] = {
        {{500, 400}, 200, 100, {505, 296, 704, 395}, false}, // above, to the right
        {{0, 0}, 200, 100, {5, 5, 204, 104}, false},         // the four corners
        {{999, 0}, 200, 100, {795, 5, 994, 104}, false},
        {{0, 699}, 200, 100, {5, 595, 204, 694}, false},
        {{999, 699}, 200, 100, {795, 595, 994, 694}, false},
        {{500, 104}, 200, 100, {505, 0, 704, 99}, false}, // just fits above
        {{500, 103}, 200, 100, {505, 108, 704, 207}, false},
        {{500, 300}, 200, 390, {505, 305, 704, 694}, false}, // only below
        {{500, 300}, 200, 500, {505, 305, 704, 699}, true},  // neither: the larger side
        {{500, 400}, 200, 500, {505, 0, 704, 395}, true},
        {{500, 400}, 700, 100, {300, 296, 999, 395}, false}, // wider than either side
        {{500, 400}, 1200, 100, {0, 296, 999, 395}, true},
        {{5000, -9}, 200, 100, {795, 5, 994, 104}, false}, // a point off the screen
    };
    for (const auto& item : kCases) {
        const PopUpPlace place = PlacePopUp(item.point, item.width, item.height, screen);
        EXPECT_EQ(place.frame, item.frame) << item.point.x << "," << item.point.y;
        EXPECT_EQ(place.isClipped, item.isClipped);
        EXPECT_TRUE(screen.Contains(place.frame));
        EXPECT_FALSE(place.frame.Contains(item.point));
    }
}

TEST(ParseReference, ReadsNumbersAndRangesAndRefusesTheRest) {
    const int32 highest = 0x7FFFFFFE;
    const struct {
        const char* anchor;
        bool isGood;
        int32 first;
        int32 last;
    } kCases[] = {
        {">>12", true, 12, 12},
        {">>12-15", true, 12, 15},
        {">>0", true, 0, 0},
        {">>5-3", true, 5, 3},
        {">>1-1000000", true, 1, 1000000},
        {">>99999999999999999999", true, highest, highest},
        {">>1-99999999999999999999", true, 1, highest},
        {">>12\n", true, 12, 12},
        {">>-", false, 0, 0},
        {">>-5", false, 0, 0},
        {">>3-", false, 0, 0},
        {">>", false, 0, 0},
        {">", false, 0, 0},
        {"", false, 0, 0},
        {">>x", false, 0, 0},
        {"あ12", false, 0, 0},
    };
    for (const auto& item : kCases) {
        ReferenceRange range;
        EXPECT_EQ(ParseReference(item.anchor, &range), item.isGood) << item.anchor;
        if (item.isGood) {
            EXPECT_EQ(range.first, item.first) << item.anchor;
            EXPECT_EQ(range.last, item.last) << item.anchor;
        }
    }
}
