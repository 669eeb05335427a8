#pragma once

#include "interface/drawing/Painter.h"
#include "interface/windows/ViewPrivate.h"
#include "interface/windows/WindowPrivate.h"
#include "server/Drawing.h"

#include <optional>

// The way from a view to the painter of its window's pixels, for one drawing call. While the window
// updates it is the update's painter; else one for this call, and the server is told at its end.
// False if nothing of the view shows.
class DrawSession {
public:
    explicit DrawSession(BView::Private& view);
    ~DrawSession();
    DrawSession(const DrawSession&) = delete;
    DrawSession& operator=(const DrawSession&) = delete;

    explicit operator bool() const { return fPainter != nullptr; }
    Painter* operator->() const { return fPainter; }

private:
    Painter* fPainter = nullptr;
    std::optional<server::Drawing> fDrawing; // outlives the painter
    std::optional<Painter> fOwn;
};
