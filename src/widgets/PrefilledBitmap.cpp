#include "widgets/PrefilledBitmap.h"

PrefilledBitmap::PrefilledBitmap(BRect bounds, const uint8* pixels) : BBitmap(bounds, B_CMAP8) {
    const int32 width = bounds.IntegerWidth() + 1;
    const int32 height = bounds.IntegerHeight() + 1;
    SetBits(pixels, width * height, 0, B_CMAP8);
}
