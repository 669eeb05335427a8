#include "interface/drawing/Palette.h"

namespace {

const uint8 kGreys = 32;
const uint8 kSteps = 6; // of each of red, green and blue
const uint8 kStep = 51;
const uint8 kTransparent = 255;

uint32 Distance(rgb_color color, uint8 red, uint8 green, uint8 blue) {
    const int32 dr = color.red - red;
    const int32 dg = color.green - green;
    const int32 db = color.blue - blue;
    return static_cast<uint32>(dr * dr + dg * dg + db * db);
}

uint8 CubeStep(uint8 value) {
    return static_cast<uint8>((value + kStep / 2) / kStep);
}

} // namespace

rgb_color PaletteColor(uint8 index) {
    if (index < kGreys) {
        const uint8 grey = static_cast<uint8>(index * 8);
        return make_color(grey, grey, grey);
    }
    const int cube = index - kGreys;
    if (cube < kSteps * kSteps * kSteps) {
        return make_color(static_cast<uint8>(cube / (kSteps * kSteps) * kStep),
                          static_cast<uint8>(cube / kSteps % kSteps * kStep),
                          static_cast<uint8>(cube % kSteps * kStep));
    }
    return make_color(255, 255, 255, index == kTransparent ? 0 : 255);
}

uint8 NearestPaletteIndex(uint8 red, uint8 green, uint8 blue) {
    const uint8 cube = static_cast<uint8>(kGreys + CubeStep(red) * kSteps * kSteps +
                                          CubeStep(green) * kSteps + CubeStep(blue));
    const int average = (red + green + blue) / 3;
    const uint8 grey = static_cast<uint8>(average >= 248 ? kGreys - 1 : (average + 4) / 8);
    const bool greyIsNearer = Distance(PaletteColor(grey), red, green, blue) <
                              Distance(PaletteColor(cube), red, green, blue);
    return greyIsNearer ? grey : cube;
}
