#pragma once

#include <Bitmap.h>

// A small picture made from a table in the program: a byte a pixel, row by row, indexes into the
// system's palette (B_CMAP8, 255 is transparent).
class PrefilledBitmap : public BBitmap {
public:
    // The pixels are copied; there are as many as the bounds hold.
    PrefilledBitmap(BRect bounds, const uint8* pixels);
};
