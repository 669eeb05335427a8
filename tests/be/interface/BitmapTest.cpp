#include <Bitmap.h>
#include <Screen.h>

#include <gtest/gtest.h>

namespace {

const uint8* Row(const BBitmap& bitmap, int32 y) {
    return static_cast<const uint8*>(bitmap.Bits()) + y * bitmap.BytesPerRow();
}

} // namespace

struct BadBitmap {
    BRect bounds;
    color_space space;
    status_t status;
};

class BadBitmaps : public testing::TestWithParam<BadBitmap> {};

TEST_P(BadBitmaps, SayWhatIsWrong) {
    const BBitmap bitmap(GetParam().bounds, GetParam().space);
    EXPECT_EQ(GetParam().status, bitmap.InitCheck());
    EXPECT_EQ(nullptr, bitmap.Bits());
    EXPECT_EQ(0, bitmap.BitsLength());
}

INSTANTIATE_TEST_SUITE_P(All, BadBitmaps,
                         testing::Values(BadBitmap{BRect(), B_RGB32, B_BAD_VALUE},
                                         BadBitmap{BRect(0, 0, 9, 9), B_NO_COLOR_SPACE,
                                                   B_BAD_VALUE},
                                         BadBitmap{BRect(0, 0, 9, 9), B_RGB16, B_BAD_VALUE},
                                         BadBitmap{BRect(0, 0, 1e9F, 1), B_RGB32, B_NO_MEMORY}));

TEST(Bitmap, RowsAreMultiplesOfFourBytes) {
    EXPECT_EQ(40, BBitmap(BRect(0, 0, 9, 0), B_RGBA32).BytesPerRow());
    EXPECT_EQ(12, BBitmap(BRect(0, 0, 9, 0), B_CMAP8).BytesPerRow());
    EXPECT_EQ(4, BBitmap(BRect(0, 0, 9, 0), B_GRAY1).BytesPerRow());
}

TEST(Bitmap, BytesOfItsOwnSpaceAreKeptAsTheyAre) {
    const BBitmap source(BRect(0, 0, 1, 1), B_RGBA32);
    BBitmap bitmap(&source);
    const uint8 bits[] = {1, 2, 3, 4, 5, 6, 7, 8};
    bitmap.SetBits(bits, sizeof(bits), 8, B_RGBA32);
    EXPECT_EQ(0xff, Row(bitmap, 0)[0]);
    EXPECT_EQ(1, Row(bitmap, 1)[0]);
    EXPECT_EQ(8, Row(bitmap, 1)[7]);
}

TEST(Bitmap, PaletteIndexesBecomeColours) {
    const uint8 red = BScreen().IndexForColor(255, 0, 0);
    BBitmap bitmap(BRect(0, 0, 1, 0), B_RGBA32);
    const uint8 bits[] = {red, B_TRANSPARENT_MAGIC_CMAP8};
    bitmap.SetBits(bits, sizeof(bits), 0, B_CMAP8);
    EXPECT_EQ(255, Row(bitmap, 0)[2]);
    EXPECT_EQ(255, Row(bitmap, 0)[3]);
    EXPECT_EQ(0, Row(bitmap, 0)[7]);
}

TEST(Bitmap, TooManyBytesStopAtItsEnd) {
    BBitmap bitmap(BRect(0, 0, 0, 0), B_CMAP8);
    const std::vector<uint8> bits(1000, 7);
    bitmap.SetBits(bits.data(), 1000, 2, B_CMAP8);
    EXPECT_EQ(7, Row(bitmap, 0)[3]);
    bitmap.SetBits(bits.data(), 1000, 4000, B_CMAP8);
    EXPECT_EQ(B_BAD_VALUE, bitmap.ImportBits(bits.data(), -1, 4, 0, B_CMAP8));
    EXPECT_EQ(B_BAD_VALUE, bitmap.ImportBits(bits.data(), 4, 0, 0, B_CMAP8));
}

TEST(Screen, PaletteColoursAreTheirOwnNearest) {
    const BScreen screen;
    for (int index = 0; index < 248; index++) {
        const rgb_color color = screen.ColorForIndex(static_cast<uint8>(index));
        EXPECT_EQ(color, screen.ColorForIndex(screen.IndexForColor(color)));
    }
    EXPECT_EQ(B_TRANSPARENT_MAGIC_CMAP8, screen.IndexForColor(B_TRANSPARENT_COLOR));
}

TEST(Screen, IsAsLargeAsOneThatWindowsFitOn) {
    EXPECT_TRUE(BScreen().IsValid());
    EXPECT_GE(BScreen().Frame().Width(), 1279);
}
