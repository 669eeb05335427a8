#pragma once

#include <GraphicsDefs.h>
#include <SupportDefs.h>

// The system palette of B_CMAP8: 32 greys, then a colour cube, then 255 for transparent.
rgb_color PaletteColor(uint8 index);
uint8 NearestPaletteIndex(uint8 red, uint8 green, uint8 blue);
