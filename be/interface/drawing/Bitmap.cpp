#include "interface/drawing/BitmapPrivate.h"

#include "interface/drawing/Palette.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace {

const int32 kLargestSide = 16384;

int32 BitsPerPixel(color_space space) {
    switch (space) {
    case B_RGB32:
    case B_RGBA32: return 32;
    case B_RGB24: return 24;
    case B_CMAP8:
    case B_GRAY8: return 8;
    case B_GRAY1: return 1;
    default: return 0;
    }
}

int32 PackedRow(int32 width, color_space space) {
    return (width * BitsPerPixel(space) + 7) / 8;
}

rgb_color ReadPixel(const uint8* row, int32 x, color_space space) {
    switch (space) {
    case B_RGB32: return make_color(row[x * 4 + 2], row[x * 4 + 1], row[x * 4]);
    case B_RGBA32: return make_color(row[x * 4 + 2], row[x * 4 + 1], row[x * 4], row[x * 4 + 3]);
    case B_RGB24: return make_color(row[x * 3], row[x * 3 + 1], row[x * 3 + 2]);
    case B_CMAP8: return PaletteColor(row[x]);
    case B_GRAY8: return make_color(row[x], row[x], row[x]);
    default: {
        const uint8 value = (row[x / 8] >> (7 - x % 8) & 1) != 0 ? 0 : 255;
        return make_color(value, value, value);
    }
    }
}

void WritePixel(uint8* row, int32 x, color_space space, rgb_color color) {
    const uint8 grey =
        static_cast<uint8>((color.red * 77 + color.green * 150 + color.blue * 29) >> 8);
    switch (space) {
    case B_RGB32:
    case B_RGBA32:
        row[x * 4] = color.blue;
        row[x * 4 + 1] = color.green;
        row[x * 4 + 2] = color.red;
        row[x * 4 + 3] = space == B_RGBA32 ? color.alpha : 255;
        break;
    case B_CMAP8:
        row[x] = color.alpha == 0 ? B_TRANSPARENT_MAGIC_CMAP8
                                  : NearestPaletteIndex(color.red, color.green, color.blue);
        break;
    case B_GRAY8: row[x] = grey; break;
    default: {
        const uint8 bit = static_cast<uint8>(0x80 >> (x % 8));
        row[x / 8] = static_cast<uint8>(grey < 128 ? row[x / 8] | bit : row[x / 8] & ~bit);
    }
    }
}

} // namespace

BBitmap::Private::Private(BRect bitmapBounds, color_space colorSpace)
    : bounds(bitmapBounds), space(colorSpace) {
    if (!bounds.IsValid() || BitsPerPixel(space) == 0 || space == B_RGB24) {
        status = B_BAD_VALUE;
        return;
    }
    if (bounds.Width() >= kLargestSide || bounds.Height() >= kLargestSide) {
        status = B_NO_MEMORY;
        return;
    }
    width = bounds.IntegerWidth() + 1;
    height = bounds.IntegerHeight() + 1;
    bytesPerRow = (PackedRow(width, space) + 3) / 4 * 4;
    try {
        bits.assign(static_cast<size_t>(bytesPerRow) * static_cast<size_t>(height), 0xff);
    } catch (const std::bad_alloc&) {
        status = B_NO_MEMORY;
    }
}

BBitmap::BBitmap(BRect bounds, color_space colorSpace, bool, bool)
    : fPrivate(std::make_unique<Private>(bounds, colorSpace)) {}

BBitmap::BBitmap(const BBitmap* source, bool, bool)
    : fPrivate(source != nullptr ? std::make_unique<Private>(*source->fPrivate)
                                 : std::make_unique<Private>(BRect(), B_RGB32)) {}

BBitmap::BBitmap(const BBitmap& source) : BBitmap(&source) {}

BBitmap::~BBitmap() = default;

status_t BBitmap::InitCheck() const {
    return fPrivate->status;
}

bool BBitmap::IsValid() const {
    return InitCheck() == B_OK;
}

void* BBitmap::Bits() const {
    return IsValid() ? fPrivate->bits.data() : nullptr;
}

int32 BBitmap::BitsLength() const {
    return static_cast<int32>(fPrivate->bits.size());
}

int32 BBitmap::BytesPerRow() const {
    return fPrivate->bytesPerRow;
}

color_space BBitmap::ColorSpace() const {
    return fPrivate->space;
}

BRect BBitmap::Bounds() const {
    return fPrivate->bounds;
}

// Data in the bitmap's own color space are copied as they are, padding included.
void BBitmap::SetBits(const void* data, int32 length, int32 offset, color_space colorSpace) {
    if (!IsValid() || data == nullptr || length <= 0 || offset < 0)
        return;
    if (colorSpace != fPrivate->space) {
        ImportBits(data, length, PackedRow(fPrivate->width, colorSpace), offset, colorSpace);
        return;
    }
    if (offset >= BitsLength())
        return;
    const int32 count = std::min(length, BitsLength() - offset);
    memcpy(fPrivate->bits.data() + offset, data, static_cast<size_t>(count));
}

status_t BBitmap::ImportBits(const void* data, int32 length, int32 bytesPerRow, int32 offset,
                             color_space colorSpace) {
    if (!IsValid())
        return B_NO_INIT;
    const int32 packed = PackedRow(fPrivate->width, colorSpace);
    if (data == nullptr || length < 0 || offset < 0 || packed == 0 || bytesPerRow < packed)
        return B_BAD_VALUE;
    const int32 firstRow = offset / bytesPerRow;
    const int32 rows = std::min(length / bytesPerRow, fPrivate->height - firstRow);
    const uint8* source = static_cast<const uint8*>(data);
    for (int32 y = 0; y < rows; y++, source += bytesPerRow) {
        uint8* row = fPrivate->bits.data() + size_t(firstRow + y) * size_t(fPrivate->bytesPerRow);
        for (int32 x = 0; x < fPrivate->width; x++)
            WritePixel(row, x, fPrivate->space, ReadPixel(source, x, colorSpace));
    }
    return B_OK;
}

status_t BBitmap::ImportBits(const BBitmap* bitmap) {
    if (bitmap == nullptr || bitmap->InitCheck() != B_OK ||
        bitmap->Bounds().Width() != Bounds().Width())
        return B_BAD_VALUE;
    return ImportBits(bitmap->Bits(), bitmap->BitsLength(), bitmap->BytesPerRow(), 0,
                      bitmap->ColorSpace());
}
