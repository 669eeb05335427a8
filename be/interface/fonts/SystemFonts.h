#pragma once

class QFont;

// Server thread, once it is connected and before any window: the desktop's fonts, with their sizes
// in pixels.
void InitSystemFonts(const QFont& plain, float plainSize, const QFont& fixed, float fixedSize);
