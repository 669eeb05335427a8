#include "support/ThreadFixture.h"

#include "server/Screens.h"

#include <Screen.h>

using server::testing::MouseLeave;
using server::testing::MouseMove;

namespace {

// Four posts: the third refers to the ones before it, the fourth is what makes the third known.
class ReferencePopUps : public ThreadFixture {
protected:
    void AddThread() {
        AddPost(1, "最初");
        AddPost(2, Anchor(">>1") + "\nhttp://www.example/");
        AddPost(3, Anchor(">>2") + "\n" + Anchor(">>1-2") + "\n" + Anchor(">>4"));
        AddPost(4, "最後");
    }
    // Behind the third post's beginning.
    int32 AnchorAt(const std::string& text) { return OffsetOf(text, Text().find("3 名前")) + 1; }
    static BPoint MiddleOf(PopUpWindow* popUp) {
        popUp->Lock();
        const BRect bounds = popUp->Bounds();
        popUp->Unlock();
        return BPoint(bounds.Width() / 2, bounds.Height() / 2);
    }
    static BPoint InPopUp(PopUpWindow* popUp, const std::string& part) {
        popUp->Lock();
        const PopUpTextView* text = popUp->TextView();
        float height = 0;
        const auto offset = static_cast<int32>(std::string(text->Text()).find(part)) + 1;
        const BPoint point = text->PointAt(offset, &height) + BPoint(1, height / 2);
        popUp->Unlock();
        return point;
    }
    // The pop-up that a click in another opens; both know of each other then.
    PopUpWindow* OpenIn(PopUpWindow* first, const std::string& anchor) {
        const BPoint point = InPopUp(first, anchor);
        MouseMove(first, point);
        server::testing::Click(first, point);
        EXPECT_TRUE(server::testing::WaitUntilIdle(first));
        Settle();
        if (CountPopUps() != 2)
            return nullptr;
        PopUpWindow* second = PopUps()[0] == first ? PopUps()[1] : PopUps()[0];
        EXPECT_TRUE(server::testing::WaitUntilIdle(first));
        EXPECT_TRUE(server::testing::WaitUntilIdle(second));
        return second;
    }
};

} // namespace

TEST_F(ReferencePopUps, ShowsThePostsThatAReferenceNames) {
    AddThread();
    const std::string text = Text();
    const size_t second = text.find("2 名前");
    const size_t third = text.find("3 名前");
    const struct {
        const char* anchor;
        std::string shown;
    } kCases[] = {{">>2", text.substr(second, third - 1 - second)},
                  {">>1-2", text.substr(0, third - 1)}};
    for (const auto& item : kCases) {
        PopUpWindow* popUp = OpenAt(AnchorAt(item.anchor));
        ASSERT_NE(popUp, nullptr);
        EXPECT_EQ(TextOf(popUp), item.shown);
        EXPECT_FALSE(popUp->Scrolls());
        ClickAt(0);
        EXPECT_TRUE(WaitForPopUps(0));
    }
}

TEST_F(ReferencePopUps, OpensBetweenTheReferencesStrictEdges) {
    AddThread();
    const int32 first = AnchorAt(">>2") - 1;
    for (const int32 offset : {first - 1, first + 3}) {
        ClickAt(offset);
        EXPECT_TRUE(CountPopUps() == 0) << offset - first;
    }
    EXPECT_NE(OpenAt(first), nullptr);
    ClickAt(0);
    EXPECT_TRUE(WaitForPopUps(0));
    EXPECT_NE(OpenAt(first + 2), nullptr);
}

TEST_F(ReferencePopUps, BadReferencesOpenNothing) {
    const char* const kAnchors[] = {">>0",         ">>99999999999999999999",
                                    ">>1-1000000", ">>-",
                                    ">>5-3",       ">>3-1",
                                    ">>2-",        ">>4",
                                    ">>",          "&gt"};
    AddThread(); // >>4 is the last: what would end it is not there
    std::string body;
    for (const char* anchor : kAnchors)
        body += Anchor(anchor) + "\n";
    Do([&] { fView->addArticleItem(body.c_str()); });
    Settle();
    const auto references = Ask([this] { return fView->References(); });
    for (const LinkTextView::Link& link : references) {
        if (link.start < OffsetOf("最後"))
            continue;
        ClickAt(link.end - 1);
        EXPECT_TRUE(CountPopUps() == 0) << link.text;
    }
}

TEST_F(ReferencePopUps, HasTheColoursOfThePane) {
    AddThread();
    PopUpWindow* popUp = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(popUp, nullptr);
    const int32 second = OffsetOf("2 名前");
    const std::string text = TextOf(popUp);
    for (size_t at = 0; at < text.size(); at++) {
        rgb_color color;
        rgb_color same;
        popUp->Lock();
        popUp->TextView()->GetFontAndColor(static_cast<int32>(at), nullptr, &color);
        popUp->Unlock();
        Do([&] { fView->GetFontAndColor(second + static_cast<int32>(at), nullptr, &same); });
        EXPECT_EQ(color.red + color.green * 256 + color.blue * 65536,
                  same.red + same.green * 256 + same.blue * 65536)
            << at;
    }
    const rgb_color ground = server::testing::Snapshot(popUp).At(3, 3);
    EXPECT_EQ(ground.red, 239);
}

TEST_F(ReferencePopUps, StandsBesideThePointerInEveryCornerOfTheScreen) {
    AddThread();
    const BRect screen = BScreen().Frame();
    const BPoint kCorners[] = {screen.LeftTop(), BPoint(screen.right, screen.top),
                               BPoint(screen.left, screen.bottom), screen.RightBottom()};
    for (const BPoint& corner : kCorners) {
        const int32 offset = AnchorAt(">>2");
        BPoint pointer = PointOf(offset);
        Do([&] {
            const float right = std::min(corner.x, screen.right - 40);
            fWindow->MoveTo(right - pointer.x + 20,
                            std::clamp(corner.y - pointer.y, -100.0f, screen.bottom - 200));
        });
        Settle();
        pointer = Ask([&] { return fWindow->ConvertToScreen(pointer); });
        PopUpWindow* popUp = OpenAt(offset);
        ASSERT_NE(popUp, nullptr);
        const BRect frame = popUp->Frame();
        EXPECT_TRUE(screen.Contains(frame)) << corner.x << "," << corner.y;
        EXPECT_FALSE(frame.Contains(pointer));
        ClickAt(0);
        EXPECT_TRUE(WaitForPopUps(0));
    }
}

TEST_F(ReferencePopUps, StandsOnThePointersScreenWhenTheWindowSpansTwo) {
    AddThread();
    const std::vector<server::ScreenInfo> real = server::AllScreens();
    const BRect first(0, 0, 304, 1079); // mirrored on another
    const BRect second(305, 0, 1919, 1079);
    server::PretendScreens({{first, first, 1}, {first, first, 1}, {second, second, 1}});
    PopUpWindow* popUp = OpenAt(AnchorAt(">>2"));
    server::PretendScreens(real);
    ASSERT_NE(popUp, nullptr);
    EXPECT_TRUE(second.Contains(popUp->Frame()));
}

TEST_F(ReferencePopUps, ClosesAsThePointerLeavesIt) {
    AddThread();
    PopUpWindow* popUp = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(popUp, nullptr);
    MouseMove(popUp, MiddleOf(popUp));
    MouseMove(fWindow, PointOf(0)); // off the reference, which no longer counts
    Settle();
    EXPECT_TRUE(server::testing::WaitUntilIdle(popUp));
    EXPECT_EQ(CountPopUps(), 1u);
    MouseLeave(popUp);
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(ReferencePopUps, ClosesWhenThePointerLeavesTheReferenceAndDoesNotCome) {
    AddThread();
    const int32 anchor = AnchorAt(">>2");
    ASSERT_NE(OpenAt(anchor), nullptr);
    MouseMove(fWindow, PointOf(anchor + 1));
    MouseMove(fWindow, PointOf(0));
    EXPECT_TRUE(WaitForPopUps(0));
    ASSERT_NE(OpenAt(anchor), nullptr);
    MouseLeave(fWindow);
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(ReferencePopUps, NoneIsLeftBehind) {
    AddThread();
    for (int32 i = 5; i < 60; i++)
        AddPost(i, "x");
    const int32 anchor = AnchorAt(">>2");
    const std::function<void()> kEnds[] = {
        [this] { server::testing::Key(fWindow, B_ESCAPE); },
        [this] { server::testing::Wheel(fWindow, BPoint(50, 50), 0, 1); },
        [this] { server::testing::Click(fWindow, BPoint(fWindow->Bounds().right - 5, 60)); },
        [this] { server::testing::Activate(fWindow, false); },
        [this] { server::testing::ResizeByUser(fWindow, 500, 420); },
        [this] { Do([this] { fView->MakeFocus(false); }); },
        [this] { Do([this] { fView->SetArticleFont("", "", 20); }); },
        [this] { Do([this] { fView->clearText(); }); },
    };
    for (const auto& end : kEnds) {
        ASSERT_NE(OpenAt(anchor), nullptr);
        end();
        EXPECT_TRUE(WaitForPopUps(0));
        server::testing::Activate(fWindow, true);
        Do([this] { fView->ScrollBar(B_VERTICAL)->SetValue(0); });
        Settle();
    }
}

TEST_F(ReferencePopUps, GoesWithItsWindow) {
    AddThread();
    ASSERT_NE(OpenAt(AnchorAt(">>2")), nullptr);
}

TEST_F(ReferencePopUps, StaysWhilePostsArrive) {
    AddThread();
    PopUpWindow* popUp = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(popUp, nullptr);
    AddPost(5, "新しい");
    EXPECT_EQ(CountPopUps(), 1u);
}

TEST_F(ReferencePopUps, AReferenceInAPopUpOpensAnother) {
    AddThread();
    PopUpWindow* first = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(first, nullptr);
    PopUpWindow* second = OpenIn(first, ">>1");
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(TextOf(second).find("最初") != std::string::npos);

    // Over the second one, the first waits; left, the second closes, and the first with it.
    MouseMove(second, MiddleOf(second));
    MouseLeave(first);
    EXPECT_TRUE(server::testing::WaitUntilIdle(first));
    EXPECT_EQ(CountPopUps(), 2u);
    MouseLeave(second);
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(ReferencePopUps, ThePointerComesBackFromTheSecondToTheFirst) {
    AddThread();
    PopUpWindow* first = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(first, nullptr);
    ASSERT_NE(OpenIn(first, ">>1"), nullptr);
    MouseMove(first, BPoint(2, 2)); // off the reference, and not to the second
    ASSERT_TRUE(WaitForPopUps(1));
    EXPECT_EQ(PopUps()[0], first);
    MouseLeave(first);
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(ReferencePopUps, AUrlInAPopUpOpensToo) {
    AddThread();
    PopUpWindow* popUp = OpenAt(AnchorAt(">>2"));
    ASSERT_NE(popUp, nullptr);
    const BPoint point = InPopUp(popUp, "http:");
    MouseMove(popUp, point);
    EXPECT_TRUE(server::testing::WaitUntilIdle(popUp));
    EXPECT_EQ(server::testing::ShapeOf(popUp), server::testing::PointerShape::kLink);
    server::testing::Click(popUp, point);
    EXPECT_TRUE(server::testing::WaitUntilIdle(popUp));
    Settle();
    EXPECT_EQ(server::testing::Launches(), std::vector<std::string>{"http://www.example/"});
}

TEST_F(ReferencePopUps, TheWheelScrollsOneThatIsTooTall) {
    AddPost(1, "短い");
    std::string tall;
    for (int i = 0; i < 200; i++)
        tall += "行\n";
    AddPost(2, Anchor(">>1") + " " + Anchor(">>3") + "\n");
    AddPost(3, tall);
    AddPost(4, "x");
    const auto scroll = [](PopUpWindow* popUp) {
        server::testing::Wheel(popUp, BPoint(20, 20), 0, 2);
        EXPECT_TRUE(server::testing::WaitUntilIdle(popUp));
        popUp->Lock();
        const float top = popUp->TextView()->Bounds().top;
        popUp->Unlock();
        return top;
    };
    const size_t from = Text().find("2 名前");
    PopUpWindow* small = OpenAt(OffsetOf(">>1", from) + 1);
    ASSERT_NE(small, nullptr);
    EXPECT_EQ(scroll(small), 0);
    ClickAt(0);
    EXPECT_TRUE(WaitForPopUps(0));
    PopUpWindow* large = OpenAt(OffsetOf(">>3", from) + 1);
    ASSERT_NE(large, nullptr);
    EXPECT_TRUE(large->Scrolls());
    EXPECT_EQ(scroll(large), 60);
}
