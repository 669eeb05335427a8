#include "interface/drawing/Painter.h"

#include "interface/drawing/BitmapPrivate.h"
#include "interface/drawing/Palette.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

QColor ColorOf(rgb_color color, bool withAlpha) {
    return QColor(color.red, color.green, color.blue, withAlpha ? color.alpha : 255);
}

bool Same(const ::pattern& a, const ::pattern& b) {
    return memcmp(a.data, b.data, 8) == 0;
}

bool UsesAlpha(const DrawState& state) {
    return state.mode == B_OP_ALPHA;
}

QPainter::CompositionMode CompositionOf(drawing_mode mode) {
    switch (mode) {
    case B_OP_INVERT: return QPainter::RasterOp_NotDestination;
    case B_OP_ADD: return QPainter::CompositionMode_Plus;
    case B_OP_SUBTRACT: return QPainter::CompositionMode_Difference;
    case B_OP_MIN: return QPainter::CompositionMode_Darken;
    case B_OP_MAX: return QPainter::CompositionMode_Lighten;
    default: return QPainter::CompositionMode_SourceOver;
    }
}

// Set bits take the first colour, clear bits the second.
QBrush PatternBrush(const ::pattern& pattern, const QColor& high, const QColor& low) {
    QImage tile(8, 8, QImage::Format_ARGB32);
    for (int y = 0; y < 8; y++) {
        for (int x = 0; x < 8; x++) {
            const bool set = (pattern.data[y] >> (7 - x) & 1) != 0;
            tile.setPixelColor(x, y, set ? high : low);
        }
    }
    return QBrush(tile);
}

QVector<QRgb> PaletteTable(bool withTransparent) {
    QVector<QRgb> table;
    for (int i = 0; i < 256; i++) {
        const rgb_color color = PaletteColor(static_cast<uint8>(i));
        const int alpha = withTransparent ? color.alpha : 255;
        table.append(qRgba(color.red, color.green, color.blue, alpha));
    }
    return table;
}

QImage::Format FormatOf(color_space space, bool withAlpha) {
    switch (space) {
    case B_RGBA32: return withAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    case B_CMAP8: return QImage::Format_Indexed8;
    case B_GRAY8: return QImage::Format_Grayscale8;
    case B_GRAY1: return QImage::Format_Mono;
    default: return QImage::Format_RGB32;
    }
}

// The bitmap's own bits, for as long as the call lasts.
QImage ImageOf(const BBitmap::Private& bitmap, const DrawState& state) {
    const bool withAlpha = state.mode != B_OP_COPY;
    QImage image(bitmap.bits.data(), bitmap.width, bitmap.height, bitmap.bytesPerRow,
                 FormatOf(bitmap.space, withAlpha));
    static const QVector<QRgb> sOpaque = PaletteTable(false);
    static const QVector<QRgb> sTransparent = PaletteTable(true);
    if (bitmap.space == B_CMAP8)
        image.setColorTable(withAlpha ? sTransparent : sOpaque);
    if (bitmap.space == B_GRAY1)
        image.setColorTable({withAlpha ? qRgba(0, 0, 0, 0) : ColorOf(state.low, false).rgba(),
                             ColorOf(state.high, false).rgba()});
    return image;
}

// The pixels of an upright or level line, the pen's breadth around it.
BRect StraightLine(BPoint from, BPoint to, float penSize) {
    const float before = std::floor((penSize - 1) / 2);
    const float after = std::max(0.0F, std::ceil((penSize - 1) / 2));
    BRect line(std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x),
               std::max(from.y, to.y));
    if (from.x == to.x) {
        line.left -= before;
        line.right += after;
    } else {
        line.top -= before;
        line.bottom += after;
    }
    return line;
}

} // namespace

Painter::Painter(QImage& image, float scale) : fImage(image), fPainter(&image), fScale(scale) {
    fPainter.setPen(Qt::NoPen);
    fClip = QRegion(image.rect());
    fClipBounds = image.rect();
}

QRect Painter::_Device(BRect rect) const {
    const int left = static_cast<int>(std::lround(std::round(rect.left) * fScale));
    const int top = static_cast<int>(std::lround(std::round(rect.top) * fScale));
    const int right = static_cast<int>(std::lround((std::round(rect.right) + 1) * fScale));
    const int bottom = static_cast<int>(std::lround((std::round(rect.bottom) + 1) * fScale));
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}

QRect Painter::_DeviceOf(const DrawState& state, BRect rect) const {
    rect.OffsetBy(fOrigin + state.origin);
    return _Device(rect);
}

// Points name pixels: lines run through their middles.
QPointF Painter::_CenterOf(const DrawState& state, BPoint point) const {
    const BPoint window = point + fOrigin + state.origin;
    return QPointF((window.x + 0.5F) * fScale, (window.y + 0.5F) * fScale);
}

void Painter::SetView(BPoint origin, const BRegion& clip) {
    fOrigin = origin;
    QRegion region;
    if (clip.CountRects() == 1) {
        region = _Device(clip.RectAt(0));
    } else {
        for (int32 i = 0; i < clip.CountRects(); i++)
            region += _Device(clip.RectAt(i));
    }
    fClip = region & fImage.rect();
    fClipBounds = fClip.boundingRect();
    fClippedByState = false;
    fPainter.setClipRegion(fClip);
}

void Painter::_ClipTo(const DrawState& state) {
    if (!state.clipping) {
        if (fClippedByState)
            fPainter.setClipRegion(fClip);
        fClippedByState = false;
        return;
    }
    QRegion region;
    for (int32 i = 0; i < state.clipping->CountRects(); i++)
        region += _DeviceOf(state, state.clipping->RectAt(i));
    fPainter.setClipRegion(fClip & region);
    fClippedByState = true;
}

void Painter::_Begin(const DrawState& state) {
    if (state.clipping || fClippedByState)
        _ClipTo(state);
    const QPainter::CompositionMode mode = CompositionOf(state.mode);
    if (fPainter.compositionMode() != mode)
        fPainter.setCompositionMode(mode);
}

void Painter::_Touch(const QRect& rect) {
    fChanged += rect & fClipBounds;
}

QBrush Painter::_Brush(const DrawState& state, ::pattern pattern) const {
    const bool alpha = UsesAlpha(state);
    const QColor low = ColorOf(state.low, alpha);
    const QColor high = state.mode == B_OP_ERASE ? low : ColorOf(state.high, alpha);
    if (Same(pattern, B_SOLID_HIGH))
        return QBrush(high);
    if (Same(pattern, B_SOLID_LOW))
        return QBrush(low);
    return PatternBrush(pattern, high, state.mode == B_OP_COPY ? low : QColor(0, 0, 0, 0));
}

bool Painter::_IsInvisible(const DrawState& state, ::pattern pattern) const {
    const bool onlySet = state.mode == B_OP_OVER || state.mode == B_OP_ERASE;
    return fClipBounds.isEmpty() ||
           (onlySet && (Same(pattern, B_SOLID_LOW) || state.high == B_TRANSPARENT_COLOR));
}

void Painter::_FillDevice(const QRect& rect, const QBrush& brush) {
    if (!rect.isValid() || !rect.intersects(fClipBounds))
        return;
    fPainter.fillRect(rect, brush);
    _Touch(rect);
}

void Painter::Fill(BRect rect, rgb_color color) {
    fPainter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    _FillDevice(_Device(rect), QBrush(ColorOf(color, false)));
}

void Painter::FillRect(const DrawState& state, BRect rect, ::pattern pattern) {
    if (!rect.IsValid() || _IsInvisible(state, pattern))
        return;
    _Begin(state);
    _FillDevice(_DeviceOf(state, rect), _Brush(state, pattern));
}

void Painter::StrokeRect(const DrawState& state, BRect rect, ::pattern pattern) {
    if (!rect.IsValid() || _IsInvisible(state, pattern))
        return;
    _Begin(state);
    const QBrush brush = _Brush(state, pattern);
    const QRect outer = _DeviceOf(state, rect);
    const int pen = std::max(1, static_cast<int>(std::lround(state.penSize * fScale)));
    const QRect inner = outer.adjusted(pen, pen, -pen, -pen);
    if (!inner.isValid())
        return _FillDevice(outer, brush);
    for (const QRect& side : QRegion(outer) - QRegion(inner))
        _FillDevice(side, brush);
}

void Painter::InvertRect(BRect rect) {
    DrawState state;
    state.mode = B_OP_INVERT;
    FillRect(state, rect, B_SOLID_HIGH);
}

QPen Painter::_Pen(const DrawState& state, const QBrush& brush) const {
    QPen pen(brush, std::max(1.0F, state.penSize * fScale));
    const cap_mode cap = state.cap;
    pen.setCapStyle(cap == B_ROUND_CAP    ? Qt::RoundCap
                    : cap == B_SQUARE_CAP ? Qt::SquareCap
                                          : Qt::FlatCap);
    pen.setJoinStyle(state.join == B_ROUND_JOIN   ? Qt::RoundJoin
                     : state.join == B_BEVEL_JOIN ? Qt::BevelJoin
                                                  : Qt::MiterJoin);
    pen.setMiterLimit(state.miterLimit);
    return pen;
}

void Painter::StrokeLine(const DrawState& state, BPoint from, BPoint to, rgb_color color) {
    DrawState colored(state);
    colored.high = color;
    StrokeLine(colored, from, to, B_SOLID_HIGH);
}

// Upright and level lines are filled pixel by pixel; both ends belong to the line.
void Painter::StrokeLine(const DrawState& state, BPoint from, BPoint to, ::pattern pattern) {
    if (_IsInvisible(state, pattern))
        return;
    _Begin(state);
    const QBrush brush = _Brush(state, pattern);
    if (from.x == to.x || from.y == to.y)
        _FillDevice(_DeviceOf(state, StraightLine(from, to, state.penSize)), brush);
    else
        _StrokeSlanted(state, from, to, brush);
}

void Painter::_StrokeSlanted(const DrawState& state, BPoint from, BPoint to, const QBrush& brush) {
    QPen pen = _Pen(state, brush);
    if (state.cap == B_BUTT_CAP)
        pen.setCapStyle(Qt::SquareCap);
    const QPointF a = _CenterOf(state, from);
    const QPointF b = _CenterOf(state, to);
    fPainter.setRenderHint(QPainter::Antialiasing, true);
    fPainter.setPen(pen);
    fPainter.drawLine(a, b);
    fPainter.setPen(Qt::NoPen);
    fPainter.setRenderHint(QPainter::Antialiasing, false);
    const int reach = static_cast<int>(pen.widthF()) + 2;
    _Touch(QRectF(a, b).normalized().toAlignedRect().adjusted(-reach, -reach, reach, reach));
}

void Painter::RoundRect(const DrawState& state, BRect rect, float xRadius, float yRadius, bool fill,
                        ::pattern pattern) {
    if (!rect.IsValid() || _IsInvisible(state, pattern))
        return;
    _Begin(state);
    const QBrush brush = _Brush(state, pattern);
    const QRect device = _DeviceOf(state, rect);
    QRectF outline(device);
    const double pen = std::max(1.0F, std::round(state.penSize * fScale));
    fPainter.setRenderHint(QPainter::Antialiasing, true);
    if (fill) {
        fPainter.setBrush(brush);
    } else {
        fPainter.setPen(QPen(brush, pen));
        fPainter.setBrush(Qt::NoBrush);
        outline.adjust(pen / 2, pen / 2, -pen / 2, -pen / 2);
    }
    fPainter.drawRoundedRect(outline, xRadius * fScale, yRadius * fScale);
    fPainter.setPen(Qt::NoPen);
    fPainter.setBrush(Qt::NoBrush);
    fPainter.setRenderHint(QPainter::Antialiasing, false);
    _Touch(device);
}

void Painter::Arc(const DrawState& state, BRect rect, float start, float span, bool fill,
                  ::pattern pattern) {
    if (!rect.IsValid() || _IsInvisible(state, pattern))
        return;
    _Begin(state);
    const QBrush brush = _Brush(state, pattern);
    const QRect device = _DeviceOf(state, rect);
    QRectF outline(device);
    fPainter.setRenderHint(QPainter::Antialiasing, true);
    if (fill) {
        fPainter.setBrush(brush);
    } else {
        const double pen = std::max(1.0F, std::round(state.penSize * fScale));
        fPainter.setPen(QPen(brush, pen));
        outline.adjust(pen / 2, pen / 2, -pen / 2, -pen / 2);
    }
    if (span >= 360)
        fPainter.drawEllipse(outline);
    else if (fill)
        fPainter.drawPie(outline, static_cast<int>(start * 16), static_cast<int>(span * 16));
    else
        fPainter.drawArc(outline, static_cast<int>(start * 16), static_cast<int>(span * 16));
    fPainter.setPen(Qt::NoPen);
    fPainter.setBrush(Qt::NoBrush);
    fPainter.setRenderHint(QPainter::Antialiasing, false);
    _Touch(device);
}

void Painter::Polygon(const DrawState& state, const BPoint* points, int32 count, bool fill,
                      bool closed, ::pattern pattern) {
    if (count < 2 || _IsInvisible(state, pattern))
        return;
    _Begin(state);
    const QBrush brush = _Brush(state, pattern);
    QPolygonF polygon;
    for (int32 i = 0; i < count; i++)
        polygon += _CenterOf(state, points[i]);
    fPainter.setRenderHint(QPainter::Antialiasing, true);
    // The outline is part of the shape: a filled one gets a line of one pixel around it.
    QPen pen = _Pen(state, brush);
    if (fill)
        pen.setWidthF(fScale);
    fPainter.setPen(pen);
    fPainter.setBrush(fill ? brush : QBrush(Qt::NoBrush));
    if (closed || fill)
        fPainter.drawPolygon(polygon);
    else
        fPainter.drawPolyline(polygon);
    fPainter.setPen(Qt::NoPen);
    fPainter.setBrush(Qt::NoBrush);
    fPainter.setRenderHint(QPainter::Antialiasing, false);
    const int reach = static_cast<int>(pen.widthF()) + 2;
    _Touch(polygon.boundingRect().toAlignedRect().adjusted(-reach, -reach, reach, reach));
}

void Painter::DrawBitmap(const DrawState& state, const BBitmap& bitmap, BRect source,
                         BRect target) {
    if (!bitmap.IsValid() || !source.IsValid() || !target.IsValid() || fClipBounds.isEmpty())
        return;
    _Begin(state);
    const BBitmap::Private& data = BBitmap::Private::Of(bitmap);
    const QRect device = _DeviceOf(state, target);
    if (!device.intersects(fClipBounds))
        return;
    const QImage image = ImageOf(data, state);
    source.OffsetBy(-data.bounds.left, -data.bounds.top);
    const QRectF part(source.left, source.top, source.Width() + 1, source.Height() + 1);
    const double grow = device.width() / part.width();
    // Whole multiples keep small icons sharp; anything else is smoothed.
    const bool smooth = grow != std::floor(grow) || device.height() != part.height() * grow;
    fPainter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    fPainter.drawImage(QRectF(device), image, part);
    fPainter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    _Touch(device);
}

void Painter::DrawNatively(const DrawState& state, BRect area,
                           const std::function<void(QPainter&)>& draw) {
    if (fClipBounds.isEmpty())
        return;
    _Begin(state);
    const BPoint origin = fOrigin + state.origin;
    fPainter.save();
    fPainter.scale(fScale, fScale);
    fPainter.translate(origin.x, origin.y);
    draw(fPainter);
    fPainter.restore();
    _Touch(_DeviceOf(state, area));
}

bool Painter::IsWholeMove(float dx, float dy) const {
    const float x = dx * fScale;
    const float y = dy * fScale;
    return x == std::round(x) && y == std::round(y);
}

void Painter::Move(BRect area, float dx, float dy) {
    const QRect whole = _Device(area) & fImage.rect();
    const int x = static_cast<int>(std::lround(dx * fScale));
    const int y = static_cast<int>(std::lround(dy * fScale));
    const QRect from = whole & whole.translated(-x, -y);
    if (from.isEmpty())
        return;
    const size_t bytes = static_cast<size_t>(from.width()) * 4;
    uchar* bits = fImage.bits();
    const qsizetype stride = fImage.bytesPerLine();
    for (int i = 0; i < from.height(); i++) {
        const int row = y > 0 ? from.bottom() - i : from.top() + i;
        const uchar* source = bits + row * stride + from.left() * 4;
        uchar* target = bits + (row + y) * stride + (from.left() + x) * 4;
        memmove(target, source, bytes);
    }
    fChanged += from.translated(x, y);
}
