#include <Region.h>

#include <gtest/gtest.h>

namespace {

int Area(const BRegion& region) {
    int area = 0;
    for (int32 i = 0; i < region.CountRects(); i++)
        area += (region.RectAt(i).IntegerWidth() + 1) * (region.RectAt(i).IntegerHeight() + 1);
    return area;
}

} // namespace

TEST(Region, AHoleLeavesTheRest) {
    BRegion region(BRect(0, 0, 9, 9));
    region.Exclude(BRect(3, 3, 5, 5));
    EXPECT_EQ(100 - 9, Area(region));
    EXPECT_FALSE(region.Contains(BPoint(4, 4)));
    EXPECT_TRUE(region.Contains(BPoint(2, 4)));
    EXPECT_TRUE(region.Contains(BPoint(6, 4)));
    EXPECT_EQ(BRect(0, 0, 9, 9), region.Frame());
}

TEST(Region, OverlapsCountOnce) {
    BRegion region(BRect(0, 0, 9, 9));
    region.Include(BRect(5, 5, 14, 14));
    EXPECT_EQ(100 + 100 - 25, Area(region));
}

TEST(Region, NeighboursBecomeOneRectangle) {
    BRegion region(BRect(0, 0, 9, 9));
    region.Include(BRect(10, 0, 19, 9));
    EXPECT_EQ(1, region.CountRects());
    EXPECT_EQ(BRect(0, 0, 19, 9), region.RectAt(0));
}

TEST(Region, IntersectionAndDifferenceMakeTheWhole) {
    const BRegion whole(BRect(0, 0, 19, 19));
    BRegion part(BRect(-5, 4, 7, 40));
    part.Include(BRect(10, 10, 12, 12));
    BRegion common(whole);
    common.IntersectWith(&part);
    BRegion rest(whole);
    rest.Exclude(&part);
    EXPECT_EQ(400, Area(common) + Area(rest));
    common.Include(&rest);
    EXPECT_TRUE(common == whole);
}

TEST(Region, AnInvalidRectangleIsNothing) {
    BRegion region(BRect(5, 5, 4, 4));
    EXPECT_TRUE(region.IsEmpty());
    region.Include(BRect());
    EXPECT_EQ(0, region.CountRects());
    EXPECT_FALSE(region.Frame().IsValid());
    EXPECT_FALSE(region.RectAt(3).IsValid());
}
