#include "widgets/SplitPane.h"

#include "support/InputWindow.h"

#include "widgets/PrefilledBitmap.h"

#include <cstring>

namespace {

using namespace server::testing;

BView* Plain() {
    return new BView(BRect(0, 0, 9, 9), "plain", B_FOLLOW_NONE, B_WILL_DRAW);
}

class SplitPaneTest : public testing::Test {
protected:
    SplitPaneTest() {
        window.Do([&] {
            pane = new SplitPane(BRect(0, 0, 399, 299), "split", one, two, B_FOLLOW_ALL);
            pane->SetAlignment(SplitPane::kSideBySide);
            pane->SetBarThickness(4);
            pane->SetMinSizeOne(50);
            pane->SetMinSizeTwo(100);
            pane->SetBarPosition(150);
            window->AddChild(pane);
        });
        window.Settle();
    }

    float WidthOf(BView* view) {
        float width = 0;
        window.Do([&] { width = view->Frame().Width() + 1; });
        return width;
    }

    InputWindow window;
    BView* one = Plain();
    BView* two = Plain();
    SplitPane* pane = nullptr;
};

TEST_F(SplitPaneTest, BothViewsAndTheBarFillThePane) {
    EXPECT_EQ(WidthOf(one), 150);
    EXPECT_EQ(WidthOf(two), 400 - 150 - 4);
    window.Do([&] { pane->SetAlignment(SplitPane::kStacked); });
    EXPECT_EQ(WidthOf(one), 400);
    window.Do([&] { EXPECT_EQ(two->Frame().top, 154); });
}

TEST_F(SplitPaneTest, DraggingTheBarStopsAtTheLeastSizes) {
    window.Drag(BPoint(151, 100), BPoint(201, 100));
    EXPECT_EQ(WidthOf(one), 200);
    window.Drag(BPoint(201, 100), BPoint(2, 100));
    EXPECT_EQ(WidthOf(one), 50);
    window.Drag(BPoint(51, 100), BPoint(399, 100));
    EXPECT_EQ(WidthOf(two), 100);
}

TEST_F(SplitPaneTest, ResizingKeepsTheFirstViewWhileThereIsRoom) {
    ResizeByUser(window.Get(), 599, 299);
    EXPECT_TRUE(WaitUntil([&] { return WidthOf(two) == 446; }));
    EXPECT_EQ(WidthOf(one), 150);
    ResizeByUser(window.Get(), 199, 299);
    EXPECT_TRUE(WaitUntil([&] { return WidthOf(two) == 100; }));
    EXPECT_EQ(WidthOf(one), 96);
    ResizeByUser(window.Get(), 399, 299);
    EXPECT_TRUE(WaitUntil([&] { return WidthOf(one) == 150; }));
    window.Do([&] { EXPECT_EQ(pane->GetBarPosition(), 150); });
}

TEST(PrefilledBitmap, HoldsTheGivenPixels) {
    uint8 pixels[256];
    for (int i = 0; i < 256; i++)
        pixels[i] = static_cast<uint8>(i);
    const PrefilledBitmap bitmap(BRect(0, 0, 15, 15), pixels);
    ASSERT_TRUE(bitmap.IsValid());
    for (int32 row = 0; row < 16; row++)
        EXPECT_EQ(memcmp(static_cast<const uint8*>(bitmap.Bits()) + row * bitmap.BytesPerRow(),
                         pixels + row * 16, 16),
                  0);
}

} // namespace
