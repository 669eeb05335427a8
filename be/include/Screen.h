#pragma once

#include <GraphicsDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

class BWindow;

// The screen that most of a window is on, or any other one. Any thread.
class BScreen {
public:
    explicit BScreen(screen_id id = B_MAIN_SCREEN_ID);
    explicit BScreen(BWindow* window);

    // The next one; B_ERROR after the last.
    status_t SetToNext();

    bool IsValid() const { return fFrame.IsValid(); }
    screen_id ID() const { return fId; }
    color_space ColorSpace() const { return B_RGB32; }
    BRect Frame() const { return fFrame; }

    // Index of the system palette's nearest colour; B_TRANSPARENT_MAGIC_CMAP8 for the transparent
    // one.
    uint8 IndexForColor(rgb_color color) const;
    uint8 IndexForColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255) const;
    rgb_color ColorForIndex(uint8 index) const;

private:
    screen_id fId;
    BRect fFrame;
};
