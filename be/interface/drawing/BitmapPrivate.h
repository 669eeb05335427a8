#pragma once

#include <Bitmap.h>

#include <vector>

class BBitmap::Private {
public:
    static const Private& Of(const BBitmap& bitmap) { return *bitmap.fPrivate; }

    Private(BRect bitmapBounds, color_space colorSpace);

    status_t status = B_OK;
    BRect bounds;
    color_space space;
    int32 width = 0;
    int32 height = 0;
    int32 bytesPerRow = 0;
    mutable std::vector<uint8> bits; // Bits() of a const bitmap may be written, as documented
};
