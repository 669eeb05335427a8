#include <InterfaceDefs.h>

#include <gtest/gtest.h>

TEST(Color, TintsRunFromWhiteToBlack) {
    const rgb_color color = make_color(100, 50, 200, 77);
    EXPECT_EQ(make_color(255, 255, 255, 77), tint_color(color, B_LIGHTEN_MAX_TINT));
    EXPECT_EQ(color, tint_color(color, B_NO_TINT));
    EXPECT_EQ(make_color(0, 0, 0, 77), tint_color(color, B_DARKEN_MAX_TINT));
    EXPECT_GT(color.red, tint_color(color, B_DARKEN_2_TINT).red);
}

TEST(Color, AReplacedColourIsTheOneThatIsGiven) {
    const rgb_color before = ui_color(B_LINK_TEXT_COLOR);
    set_ui_color(B_LINK_TEXT_COLOR, make_color(1, 2, 3));
    EXPECT_EQ(make_color(1, 2, 3), ui_color(B_LINK_TEXT_COLOR));
    set_ui_color(B_LINK_TEXT_COLOR, before);
    EXPECT_EQ(make_color(0, 0, 0), ui_color(B_NO_COLOR));
}
