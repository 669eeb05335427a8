#include "support/TestWindow.h"

#include <ScrollBar.h>
#include <ScrollView.h>

namespace {

struct Resizing {
    uint32 mode;
    BRect after;
};

class ResizingModes : public testing::TestWithParam<Resizing> {};

class FrameLog : public BView {
public:
    FrameLog(BRect frame, uint32 mode, Log& log)
        : BView(frame, "logged", mode, B_WILL_DRAW | B_FRAME_EVENTS), fLog(log) {}

    void FrameMoved(BPoint where) override {
        fLog.Add("moved " + Text(where.x) + " " + Text(where.y));
    }
    void FrameResized(float width, float height) override {
        fLog.Add("resized " + Text(width) + " " + Text(height));
    }

private:
    static std::string Text(float value) { return std::to_string(static_cast<int>(value)); }

    Log& fLog;
};

} // namespace

// A child at (20, 30) to (39, 59) of a parent that grows by 100 to the right and 50 downwards.
TEST_P(ResizingModes, FollowTheSidesTheyName) {
    BView parent(BRect(0, 0, 199, 99), "parent", B_FOLLOW_NONE, 0);
    auto* child = new BView(BRect(20, 30, 39, 59), "child", GetParam().mode, 0);
    parent.AddChild(child);
    parent.ResizeBy(100, 50);
    EXPECT_EQ(GetParam().after, child->Frame());
    parent.ResizeBy(-100, -50);
    EXPECT_EQ(BRect(20, 30, 39, 59), child->Frame());
}

INSTANTIATE_TEST_SUITE_P(
    All, ResizingModes,
    testing::Values(Resizing{B_FOLLOW_NONE, BRect(20, 30, 39, 59)},
                    Resizing{B_FOLLOW_LEFT | B_FOLLOW_TOP, BRect(20, 30, 39, 59)},
                    Resizing{B_FOLLOW_RIGHT | B_FOLLOW_TOP, BRect(120, 30, 139, 59)},
                    Resizing{B_FOLLOW_LEFT | B_FOLLOW_BOTTOM, BRect(20, 80, 39, 109)},
                    Resizing{B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, BRect(20, 30, 139, 59)},
                    Resizing{B_FOLLOW_LEFT | B_FOLLOW_TOP_BOTTOM, BRect(20, 30, 39, 109)},
                    Resizing{B_FOLLOW_ALL, BRect(20, 30, 139, 109)},
                    Resizing{B_FOLLOW_H_CENTER | B_FOLLOW_V_CENTER, BRect(70, 55, 89, 84)}));

TEST(ViewFrame, ChildrenOfChildrenFollow) {
    BView parent(BRect(0, 0, 99, 99), "parent", B_FOLLOW_NONE, 0);
    auto* child = new BView(BRect(10, 10, 89, 89), "child", B_FOLLOW_ALL, 0);
    auto* grandchild =
        new BView(BRect(60, 0, 79, 9), "grandchild", B_FOLLOW_RIGHT | B_FOLLOW_TOP, 0);
    parent.AddChild(child);
    child->AddChild(grandchild);
    parent.ResizeTo(199, 99);
    EXPECT_EQ(BRect(160, 0, 179, 9), grandchild->Frame());
}

TEST(ViewFrame, ScrollingMovesTheBoundsOnly) {
    BView view(BRect(10, 20, 59, 69), "view", B_FOLLOW_NONE, 0);
    view.ScrollTo(BPoint(5, 100));
    EXPECT_EQ(BRect(5, 100, 54, 149), view.Bounds());
    EXPECT_EQ(BRect(10, 20, 59, 69), view.Frame());
    EXPECT_EQ(BPoint(10, 20), view.ConvertToParent(BPoint(5, 100)));
    EXPECT_EQ(BPoint(5, 100), view.ConvertFromParent(BPoint(10, 20)));
}

TEST(ViewFrame, CoordinatesGoThroughEveryParentToTheScreen) {
    TestWindow<> window;
    auto* outer = window.Add(new BView(BRect(10, 10, 109, 109), "outer", B_FOLLOW_NONE, 0));
    auto* inner = new BView(BRect(20, 20, 59, 59), "inner", B_FOLLOW_NONE, 0);
    outer->AddChild(inner);
    outer->ScrollTo(0, 5);
    EXPECT_EQ(BPoint(31, 27), inner->ConvertToWindow(BPoint(1, 2)));
    EXPECT_EQ(BPoint(1, 2), inner->ConvertFromWindow(BPoint(31, 27)));
    EXPECT_EQ(BPoint(131, 127), inner->ConvertToScreen(BPoint(1, 2)));
    EXPECT_EQ(BRect(130, 125, 169, 164), inner->ConvertToScreen(inner->Bounds()));
    EXPECT_EQ(BPoint(1, 2), inner->ConvertFromScreen(BPoint(131, 127)));
}

TEST(ViewFrame, AResizedWindowTellsItsViews) {
    Log log;
    TestWindow<> window(199, 149);
    window.Add(new FrameLog(BRect(100, 0, 199, 149), B_FOLLOW_RIGHT | B_FOLLOW_TOP_BOTTOM, log));
    window.Show();
    server::testing::ResizeByUser(window, 299, 199);
    window.Settle();
    EXPECT_EQ((Lines{"moved 200 0", "resized 99 199"}), log.Take());
    EXPECT_EQ(BRect(0, 0, 299, 199), window.Locked([&] { return window->Bounds(); }));
}

TEST(ViewFrame, ResizeToTakesEffectAtOnceAndWithinTheLimits) {
    TestWindow<> window(199, 149);
    window.Show();
    window.Locked([&] {
        window->SetSizeLimits(100, 400, 100, 400);
        window->ResizeTo(50, 1000);
        EXPECT_EQ(BRect(0, 0, 100, 400), window->Bounds());
    });
    window.Settle();
    EXPECT_EQ(BRect(0, 0, 100, 400), window.Locked([&] { return window->Bounds(); }));
}

TEST(ScrollView, HoldsTargetAndBarsWithoutOverlap) {
    auto* target = new BView(BRect(10, 10, 109, 59), "target", B_FOLLOW_ALL, 0);
    BScrollView scroll("scroll", target, B_FOLLOW_ALL, 0, true, true, B_PLAIN_BORDER);
    BScrollBar* vertical = scroll.ScrollBar(B_VERTICAL);
    BScrollBar* horizontal = scroll.ScrollBar(B_HORIZONTAL);
    EXPECT_EQ(BRect(9, 9, 125, 75), scroll.Frame());
    EXPECT_EQ(BRect(1, 1, 100, 50), target->Frame());
    EXPECT_EQ(101, vertical->Frame().left);
    EXPECT_EQ(target->Frame().bottom, vertical->Frame().bottom);
    EXPECT_EQ(51, horizontal->Frame().top);
    EXPECT_EQ(target->Frame().right, horizontal->Frame().right);
    EXPECT_EQ(vertical, target->ScrollBar(B_VERTICAL));
}

TEST(ScrollView, BarAndTargetMoveEachOther) {
    auto* target = new BView(BRect(0, 0, 99, 99), "target", B_FOLLOW_ALL, 0);
    BScrollView scroll("scroll", target, B_FOLLOW_ALL, 0, false, true);
    BScrollBar* bar = scroll.ScrollBar(B_VERTICAL);
    bar->SetRange(0, 500);
    bar->SetValue(120);
    EXPECT_EQ(BPoint(0, 120), target->LeftTop());
    target->ScrollTo(0, 300);
    EXPECT_FLOAT_EQ(300, bar->Value());
    bar->SetValue(9000);
    EXPECT_FLOAT_EQ(500, bar->Value());
    bar->SetRange(0, 50);
    EXPECT_EQ(BPoint(0, 50), target->LeftTop());
}

TEST(ScrollBar, ATargetThatGoesIsForgotten) {
    auto* target = new BView(BRect(0, 0, 99, 99), "target", B_FOLLOW_ALL, 0);
    BScrollBar bar(BRect(0, 0, 14, 99), "bar", target, 0, 100, B_VERTICAL);
    delete target;
    EXPECT_EQ(nullptr, bar.Target());
    bar.SetValue(50);
}

TEST(ScrollBar, DraggingTheKnobScrollsAndTheTroughPages) {
    TestWindow<> window(14, 199);
    auto* bar =
        window.Add(new BScrollBar(BRect(0, 0, 14, 199), "bar", nullptr, 0, 1000, B_VERTICAL));
    bar->SetProportion(0.5F);
    bar->SetSteps(10, 100);
    window.Show();
    server::testing::MouseDown(window, BPoint(7, 50));
    server::testing::MouseMove(window, BPoint(7, 100), 1);
    server::testing::MouseUp(window, BPoint(7, 100));
    window.Settle();
    EXPECT_FLOAT_EQ(500, window.Locked([&] { return bar->Value(); }));
    server::testing::Click(window, BPoint(7, 10));
    window.Settle();
    EXPECT_FLOAT_EQ(400, window.Locked([&] { return bar->Value(); }));
}

TEST(ScrollBar, TheWheelScrollsTheViewUnderThePointer) {
    TestWindow<> window(199, 149);
    auto* target = new BView(BRect(0, 0, 99, 99), "target", B_FOLLOW_ALL, B_WILL_DRAW);
    auto* scroll = window.Add(new BScrollView("scroll", target, B_FOLLOW_ALL, 0, false, true));
    scroll->ScrollBar(B_VERTICAL)->SetRange(0, 500);
    scroll->ScrollBar(B_VERTICAL)->SetSteps(10, 100);
    window.Show();
    server::testing::Wheel(window, BPoint(50, 50), 0, 1);
    server::testing::Wheel(window, BPoint(50, 50), 0, 0.5F);
    window.Settle();
    EXPECT_EQ(BPoint(0, 45), window.Locked([&] { return target->LeftTop(); }));
    for (int i = 0; i < 30; i++)
        server::testing::Wheel(window, BPoint(50, 50), 0, 1 / 120.0F);
    window.Settle();
    EXPECT_NEAR(52, window.Locked([&] { return target->LeftTop().y; }), 1);
}
