#include <Screen.h>

#include "interface/drawing/Palette.h"
#include "server/Screens.h"

#include <Window.h>

BScreen::BScreen(screen_id id) : fId(id), fFrame(server::MainScreen().frame) {}

BScreen::BScreen(BWindow* window)
    : fId(B_MAIN_SCREEN_ID), fFrame(window != nullptr ? server::ScreenOf(window->Frame()).frame
                                                      : server::MainScreen().frame) {}

// From its number on: mirrored screens have the same frame.
status_t BScreen::SetToNext() {
    const std::vector<server::ScreenInfo> screens = server::AllScreens();
    for (size_t i = static_cast<size_t>(fId.id); i + 1 < screens.size(); i++) {
        if (screens[i].frame != fFrame)
            continue;
        fFrame = screens[i + 1].frame;
        fId.id = static_cast<int32>(i + 1);
        return B_OK;
    }
    return B_ERROR;
}

uint8 BScreen::IndexForColor(rgb_color color) const {
    return IndexForColor(color.red, color.green, color.blue, color.alpha);
}

uint8 BScreen::IndexForColor(uint8 red, uint8 green, uint8 blue, uint8 alpha) const {
    if (make_color(red, green, blue, alpha) == B_TRANSPARENT_COLOR)
        return B_TRANSPARENT_MAGIC_CMAP8;
    return NearestPaletteIndex(red, green, blue);
}

rgb_color BScreen::ColorForIndex(uint8 index) const {
    return PaletteColor(index);
}
