#pragma once

#include <Point.h>
#include <Rect.h>

// Where a pop-up goes: beside the point that opened it, never over it, never off the screen.
struct PopUpPlace {
    BRect frame;
    bool isClipped; // the pop-up is larger than its place
};

// The screen that the pointer is on, whichever of them its window's parts are on.
BRect ScreenUnder(BPoint point);

// `width` and `height` count pixels; point, screen and frame are in screen coordinates. Above the
// point if there is room, else below; to its right if there is room, else to its left. With no room
// above or below it takes the larger of the two sides, cut to it.
PopUpPlace PlacePopUp(BPoint point, float width, float height, BRect screen);
