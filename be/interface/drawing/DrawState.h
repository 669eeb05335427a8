#pragma once

#include <Font.h>
#include <InterfaceDefs.h>
#include <Region.h>

#include <optional>

// What drawing calls draw with; PushState keeps one, PopState brings it back.
struct DrawState {
    rgb_color high{0, 0, 0, 255};
    rgb_color low{255, 255, 255, 255};
    drawing_mode mode = B_OP_COPY;
    source_alpha sourceAlpha = B_PIXEL_ALPHA;
    alpha_function alphaFunction = B_ALPHA_OVERLAY;
    float penSize = 1;
    BPoint penLocation;
    BPoint origin;
    cap_mode cap = B_BUTT_CAP;
    join_mode join = B_MITER_JOIN;
    float miterLimit = B_DEFAULT_MITER_LIMIT;
    bool aliased = false;
    BFont font;
    std::optional<BRegion> clipping; // view coordinates
};
