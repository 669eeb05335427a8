#pragma once

#include <Rect.h>
#include <SupportDefs.h>

#include <vector>

class QRect;

namespace server {

struct ScreenInfo {
    BRect frame{0, 0, 1023, 767}; // all of it, in pixels
    BRect available{0, 0, 1023, 767};
    float scale = 1; // device pixels to a pixel
};

// Any thread; as the server last saw it. The first is the main screen.
ScreenInfo MainScreen();
ScreenInfo ScreenAt(BPoint where);
// The one that most of a rectangle lies on; the main screen if none of it lies on any.
ScreenInfo ScreenOf(BRect area);
std::vector<ScreenInfo> AllScreens(); // one at least
// For tests: they are these until the desktop tells of a change.
void PretendScreens(const std::vector<ScreenInfo>& screens);

// A rectangle whose right and bottom edges belong to it.
BRect Inclusive(const QRect& rect);

// Server thread: reads the desktop's screens and follows their changes.
void WatchScreens();

} // namespace server
