#include <Rect.h>

#include <gtest/gtest.h>

TEST(BRect, BothEndsBelongToIt) {
    BRect rect(0, 0, 9, 4);
    EXPECT_EQ(9, rect.Width());
    EXPECT_TRUE(rect.Contains(BPoint(9, 4)));
    EXPECT_FALSE(rect.Contains(BPoint(9.5, 4)));
    EXPECT_TRUE(BRect(0, 0, 0, 0).IsValid());
    EXPECT_FALSE(BRect().IsValid());
}

TEST(BRect, TouchingEdgesIntersect) {
    EXPECT_TRUE(BRect(0, 0, 5, 5).Intersects(BRect(5, 5, 9, 9)));
    EXPECT_FALSE(BRect(0, 0, 5, 5).Intersects(BRect(6, 0, 9, 9)));
    EXPECT_FALSE(BRect().Intersects(BRect(-10, -10, 10, 10)));
}

TEST(BRect, MovesAndResizes) {
    BRect rect(1, 2, 11, 22);
    EXPECT_EQ(BRect(3, 4, 13, 24), rect.OffsetByCopy(2, 2));
    EXPECT_EQ(BRect(0, 0, 10, 20), rect.OffsetToCopy(B_ORIGIN));
    EXPECT_EQ(BRect(2, 4, 10, 20), rect.InsetByCopy(1, 2));
    EXPECT_EQ(BRect(1, 2, 11, 22), rect);
    EXPECT_EQ(BRect(0, 2, 11, 30), rect | BRect(0, 10, 5, 30));
    EXPECT_EQ(BRect(5, 10, 11, 22), rect & BRect(5, 10, 50, 30));
}

TEST(BPoint, IsConstrainedToARect) {
    BPoint point(20, -3);
    point.ConstrainTo(BRect(0, 0, 9, 9));
    EXPECT_EQ(BPoint(9, 0), point);
}
