#include "support/TestWindow.h"

#include <Bitmap.h>
#include <Region.h>

#include <algorithm>
#include <functional>

namespace {

const rgb_color kWhite = make_color(255, 255, 255);
const rgb_color kRed = make_color(255, 0, 0);
const rgb_color kBlue = make_color(0, 0, 255);

using Drawing = std::function<void(BView&)>;

// Draws by a function, and notes what it was asked for.
class Canvas : public BView {
public:
    Canvas(BRect frame, Drawing drawing)
        : BView(frame, "canvas", B_FOLLOW_ALL, B_WILL_DRAW), fDrawing(std::move(drawing)) {}

    void Draw(BRect updateRect) override {
        fUpdates.push_back(updateRect);
        if (fDrawing)
            fDrawing(*this);
    }

    std::vector<BRect> fUpdates; // window's lock

private:
    Drawing fDrawing;
};

// The picture of a canvas of 40 by 30 pixels.
server::testing::Picture Drawn(const Drawing& drawing) {
    TestWindow<> window(39, 29);
    window.Add(new Canvas(BRect(0, 0, 39, 29), [&](BView& view) {
        view.SetHighColor(kRed);
        drawing(view);
    }));
    window.Show();
    return server::testing::Snapshot(window);
}

int Count(const server::testing::Picture& picture, rgb_color color) {
    return static_cast<int>(std::count(picture.pixels.begin(), picture.pixels.end(), color));
}

} // namespace

TEST(Drawing, RectanglesIncludeTheirRightAndBottom) {
    const auto picture = Drawn([](BView& view) { view.FillRect(BRect(2, 3, 5, 7)); });
    EXPECT_EQ(4 * 5, Count(picture, kRed));
    EXPECT_EQ(kRed, picture.At(2, 3));
    EXPECT_EQ(kRed, picture.At(5, 7));
    EXPECT_EQ(kWhite, picture.At(6, 7));
}

TEST(Drawing, AFrameIsOnePixelThick) {
    const auto picture = Drawn([](BView& view) { view.StrokeRect(BRect(2, 2, 11, 9)); });
    EXPECT_EQ(2 * 10 + 2 * 6, Count(picture, kRed));
}

TEST(Drawing, LinesIncludeBothEnds) {
    const auto picture = Drawn([](BView& view) {
        view.StrokeLine(BPoint(2, 2), BPoint(11, 2));
        view.StrokeLine(BPoint(2, 20), BPoint(2, 15));
        view.MovePenTo(20, 20);
        view.StrokeLine(BPoint(20, 20));
    });
    EXPECT_EQ(10 + 6 + 1, Count(picture, kRed));
    EXPECT_EQ(kRed, picture.At(20, 20));
}

TEST(Drawing, AlphaOfAColourCountsInAlphaModeOnly) {
    const auto picture = Drawn([](BView& view) {
        view.SetHighColor(255, 0, 0, 0);
        view.FillRect(BRect(0, 0, 4, 4));
        view.SetDrawingMode(B_OP_ALPHA);
        view.FillRect(BRect(10, 0, 14, 4));
        view.SetHighColor(255, 0, 0, 128);
        view.FillRect(BRect(20, 0, 24, 4));
    });
    EXPECT_EQ(kRed, picture.At(0, 0));
    EXPECT_EQ(kWhite, picture.At(10, 0));
    EXPECT_NEAR(127, picture.At(20, 0).green, 2);
}

TEST(Drawing, InvertingTwiceChangesNothing) {
    const auto picture = Drawn([](BView& view) {
        view.FillRect(BRect(0, 0, 9, 9));
        view.InvertRect(BRect(0, 0, 19, 9));
        view.InvertRect(BRect(0, 0, 4, 9));
    });
    EXPECT_EQ(kRed, picture.At(0, 0));
    EXPECT_EQ(make_color(0, 255, 255), picture.At(5, 0));
    EXPECT_EQ(make_color(0, 0, 0), picture.At(15, 0));
}

TEST(Drawing, PatternsTakeBothColours) {
    const auto picture = Drawn([](BView& view) {
        view.SetLowColor(kBlue);
        view.FillRect(BRect(0, 0, 7, 7), B_MIXED_COLORS);
        view.FillRect(BRect(10, 0, 17, 7), B_SOLID_LOW);
    });
    EXPECT_EQ(32, Count(picture, kRed));
    EXPECT_EQ(32 + 64, Count(picture, kBlue));
}

TEST(Drawing, StatesNest) {
    const auto picture = Drawn([](BView& view) {
        view.PushState();
        view.SetHighColor(kBlue);
        view.SetOrigin(10, 10);
        BRegion clip(BRect(0, 0, 1, 1));
        view.ConstrainClippingRegion(&clip);
        view.FillRect(BRect(0, 0, 9, 9));
        view.PopState();
        view.FillRect(BRect(0, 0, 0, 0));
    });
    EXPECT_EQ(4, Count(picture, kBlue));
    EXPECT_EQ(kBlue, picture.At(11, 11));
    EXPECT_EQ(1, Count(picture, kRed));
}

TEST(Drawing, BitmapsAreDrawnByMode) {
    const auto picture = Drawn([](BView& view) {
        BBitmap bitmap(BRect(0, 0, 1, 0), B_RGBA32);
        const uint8 bits[] = {255, 0, 0, 255, 255, 0, 0, 0};
        bitmap.SetBits(bits, sizeof(bits), 0, B_RGBA32);
        view.DrawBitmap(&bitmap, BPoint(0, 0));
        view.SetDrawingMode(B_OP_ALPHA);
        view.DrawBitmap(&bitmap, BPoint(10, 0));
        view.DrawBitmap(&bitmap, BRect(20, 0, 23, 1));
    });
    EXPECT_EQ(kBlue, picture.At(1, 0));
    EXPECT_EQ(kBlue, picture.At(10, 0));
    EXPECT_EQ(kWhite, picture.At(11, 0));
    EXPECT_EQ(2 + 1 + 4, Count(picture, kBlue));
}

TEST(Drawing, TextStaysWithinItsWidthAndHeight) {
    float width = 0;
    font_height height{};
    const auto picture = Drawn([&](BView& view) {
        view.SetHighColor(0, 0, 0);
        view.GetFontHeight(&height);
        width = view.StringWidth("Hij漢");
        view.DrawString("Hij漢", BPoint(1, height.ascent));
        EXPECT_FLOAT_EQ(1 + width, view.PenLocation().x);
    });
    const int right = static_cast<int>(width) + 2;
    const int bottom = static_cast<int>(height.ascent + height.descent) + 1;
    int inside = 0;
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++) {
            const bool isInked = picture.At(x, y) != kWhite;
            inside += isInked;
            EXPECT_FALSE(isInked && (x > right || y > bottom)) << x << " " << y;
        }
    }
    EXPECT_GT(inside, 20);
}

TEST(Drawing, AParentDoesNotDrawOverItsChildren) {
    TestWindow<> window(39, 29);
    auto* parent = window.Add(new Canvas(BRect(0, 0, 39, 29), [](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(view.Bounds());
    }));
    auto* child = new BView(BRect(10, 10, 19, 19), "child", B_FOLLOW_NONE, 0);
    child->SetViewColor(kBlue);
    parent->AddChild(child);
    window.Show();
    EXPECT_EQ(kBlue, window.PixelAt(10, 10));
    EXPECT_EQ(kRed, window.PixelAt(9, 10));
    window.Locked([&] { child->Hide(); });
    window.Settle();
    EXPECT_EQ(kRed, window.PixelAt(10, 10));
}

TEST(Drawing, OnlyWhatIsInvalidIsDrawn) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), nullptr));
    window.Show();
    window.Locked([&] {
        canvas->fUpdates.clear();
        canvas->Invalidate(BRect(3, 4, 5, 6));
        canvas->Invalidate(BRect(4, 5, 7, 8));
        canvas->Invalidate(BRect(-10, -10, -1, -1));
    });
    window.Settle();
    EXPECT_EQ(std::vector<BRect>{BRect(3, 4, 7, 8)},
              window.Locked([&] { return canvas->fUpdates; }));
}

TEST(Drawing, ManyInvalidationsCostFewDrawings) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), nullptr));
    window.Show();
    for (int i = 0; i < 1000; i++)
        window.Locked([&] { canvas->Invalidate(); });
    window.Settle();
    EXPECT_LT(window.Locked([&] { return canvas->fUpdates.size(); }), 100U);
}

TEST(Drawing, ScrollingDrawsOnlyWhatComesIntoView) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), [](BView& view) {
        for (int y = 0; y < 200; y += 10) {
            view.SetHighColor(make_color(static_cast<uint8>(y), 0, 0));
            view.FillRect(BRect(0, static_cast<float>(y), 39, static_cast<float>(y) + 9));
        }
    }));
    window.Show();
    window.Locked([&] {
        canvas->fUpdates.clear();
        canvas->ScrollBy(0, 10);
        canvas->ScrollBy(0, 2);
    });
    window.Settle();
    EXPECT_EQ(std::vector<BRect>{BRect(0, 30, 39, 41)},
              window.Locked([&] { return canvas->fUpdates; }));
    for (int y = 0; y < 30; y++)
        EXPECT_EQ(static_cast<uint8>((y + 12) / 10 * 10), window.PixelAt(20, y).red) << y;
}

TEST(Drawing, ScrollingBackAndForthKeepsInvalidPartsInPlace) {
    TestWindow<> window(39, 29);
    rgb_color color = kRed;
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), [&](BView& view) {
        view.SetHighColor(color);
        view.FillRect(BRect(0, 15, 39, 15));
    }));
    window.Show();
    window.Locked([&] {
        color = kBlue;
        canvas->Invalidate(BRect(0, 15, 39, 15));
        canvas->ScrollBy(0, 5);
        canvas->ScrollBy(0, -3);
    });
    window.Settle();
    EXPECT_EQ(kBlue, window.PixelAt(5, 13));
    EXPECT_EQ(kWhite, window.PixelAt(5, 15));
}

TEST(Drawing, BetweenUpdatesDrawingShowsAtOnce) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), nullptr));
    window.Show();
    window.Locked([&] {
        canvas->SetHighColor(kBlue);
        canvas->FillRect(BRect(5, 5, 6, 6));
    });
    EXPECT_EQ(kBlue, window.PixelAt(5, 5));
}

TEST(Drawing, NothingIsDrawnWhileUpdatesAreDisabled) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), nullptr));
    window.Show();
    window.Locked([&] {
        canvas->fUpdates.clear();
        window->DisableUpdates();
        canvas->Invalidate();
        window->UpdateIfNeeded();
        EXPECT_TRUE(canvas->fUpdates.empty());
        EXPECT_TRUE(window->NeedsUpdate());
        window->EnableUpdates();
        window->UpdateIfNeeded();
        EXPECT_EQ(1U, canvas->fUpdates.size());
    });
}

TEST(Drawing, CopiedBitsAppearAtTheirNewPlace) {
    TestWindow<> window(39, 29);
    auto* canvas = window.Add(new Canvas(BRect(0, 0, 39, 29), [](BView& view) {
        view.SetHighColor(kRed);
        view.FillRect(BRect(0, 0, 4, 4));
    }));
    window.Show();
    window.Locked([&] { canvas->CopyBits(BRect(0, 0, 4, 4), BRect(20, 10, 24, 14)); });
    window.Settle();
    EXPECT_EQ(kRed, window.PixelAt(20, 10));
    EXPECT_EQ(kRed, window.PixelAt(24, 14));
    EXPECT_EQ(kRed, window.PixelAt(0, 0));
    EXPECT_EQ(kWhite, window.PixelAt(25, 14));
}
