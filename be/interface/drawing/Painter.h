#pragma once

#include "interface/drawing/DrawState.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <functional>

class BBitmap;

// Draws into a window's pixels. Takes view coordinates (pixels with inclusive right and bottom) and
// puts every edge on a device pixel, so that lines are crisp and neighbours meet at every scale.
// One painter serves a whole update; the thread that made it, with the window locked.
class Painter {
public:
    Painter(QImage& image, float scale);

    // From now on coordinates are those of a view: its (0, 0) stands at `origin` of the window, and
    // only `clip` (window coordinates) is drawn into.
    void SetView(BPoint origin, const BRegion& clip);
    const QRegion& Changed() const { return fChanged; } // device pixels

    void Fill(BRect rect, rgb_color color); // plain, for backgrounds; window coordinates
    void FillRect(const DrawState& state, BRect rect, ::pattern pattern);
    void StrokeRect(const DrawState& state, BRect rect, ::pattern pattern);
    void InvertRect(BRect rect);
    void StrokeLine(const DrawState& state, BPoint from, BPoint to, ::pattern pattern);
    void StrokeLine(const DrawState& state, BPoint from, BPoint to, rgb_color color);
    void RoundRect(const DrawState& state, BRect rect, float xRadius, float yRadius, bool fill,
                   ::pattern pattern);
    // Degrees, counter-clockwise from three o'clock; 360 for a whole ellipse.
    void Arc(const DrawState& state, BRect rect, float start, float span, bool fill,
             ::pattern pattern);
    void Polygon(const DrawState& state, const BPoint* points, int32 count, bool fill, bool closed,
                 ::pattern pattern);
    // Returns the width, in pixels.
    float DrawString(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                     const escapement_delta* delta);
    void DrawBitmap(const DrawState& state, const BBitmap& bitmap, BRect source, BRect target);

    // The painter's own coordinates are the view's while draw runs.
    void DrawNatively(const DrawState& state, BRect area,
                      const std::function<void(QPainter&)>& draw);

    // Moves pixels; window coordinates. The caller makes sure that the move is one of whole device
    // pixels.
    void Move(BRect area, float dx, float dy);
    bool IsWholeMove(float dx, float dy) const;

private:
    QRect _Device(BRect windowRect) const;
    QRect _DeviceOf(const DrawState& state, BRect viewRect) const;
    QPointF _CenterOf(const DrawState& state, BPoint point) const;
    QBrush _Brush(const DrawState& state, ::pattern pattern) const;
    QPen _Pen(const DrawState& state, const QBrush& brush) const;
    void _Begin(const DrawState& state);
    void _ClipTo(const DrawState& state);
    void _Touch(const QRect& rect);
    void _StrokeSlanted(const DrawState& state, BPoint from, BPoint to, const QBrush& brush);
    void _FillDevice(const QRect& rect, const QBrush& brush);
    bool _IsInvisible(const DrawState& state, ::pattern pattern) const;
    void _DrawGlyphs(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                     const escapement_delta* delta, float& width);
    void _DrawShaped(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                     float& width);
    void _Underline(const DrawState& state, BPoint baseline, float width);

    QImage& fImage;
    QPainter fPainter;
    const float fScale;
    BPoint fOrigin;
    QRegion fClip; // of the view, device pixels
    QRect fClipBounds;
    bool fClippedByState = false;
    QRegion fChanged;
};
