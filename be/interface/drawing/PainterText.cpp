#include "interface/drawing/Painter.h"
#include "interface/fonts/ScriptShaping.h"
#include "interface/fonts/ShapedText.h"
#include "interface/fonts/Typeface.h"
#include "support/Utf8.h"

#include <QGlyphRun>
#include <QTextLayout>

#include <cmath>
#include <vector>

namespace {

QColor TextColor(const DrawState& state) {
    const rgb_color color = state.mode == B_OP_ERASE ? state.low : state.high;
    return QColor(color.red, color.green, color.blue, state.mode == B_OP_ALPHA ? color.alpha : 255);
}

// Neighbouring glyphs of one face, which are drawn in one go.
struct Run {
    uint32 face = 0;
    std::vector<quint32> glyphs;
    std::vector<QPointF> positions;
};

} // namespace

float Painter::DrawString(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                          const escapement_delta* delta) {
    float width = 0;
    if (bytes <= 0)
        return width;
    _Begin(state);
    fPainter.setPen(TextColor(state));
    if (NeedsShaping(utf8, bytes))
        _DrawShaped(state, utf8, bytes, baseline, width);
    else
        _DrawGlyphs(state, utf8, bytes, baseline, delta, width);
    fPainter.setPen(Qt::NoPen);
    if (state.font.Face() & (B_UNDERSCORE_FACE | B_STRIKEOUT_FACE))
        _Underline(state, baseline, width);
    const float size = state.font.Size();
    _Touch(_DeviceOf(state, BRect(baseline.x - size, baseline.y - size * 1.5F,
                                  baseline.x + width + size, baseline.y + size)));
    return width;
}

void Painter::_DrawGlyphs(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                          const escapement_delta* delta, float& width) {
    Typeface& typeface = Typeface::For(state.font);
    const float size = state.font.Size();
    const double pixelSize = double(size) * double(fScale);
    const BPoint window = baseline + fOrigin + state.origin;
    const QPointF start(window.x * fScale, std::round(window.y * fScale));
    Run run;
    const auto flush = [&] {
        if (run.glyphs.empty())
            return;
        QGlyphRun glyphs;
        glyphs.setRawFont(typeface.RawFont(run.face, pixelSize));
        glyphs.setRawData(run.glyphs.data(), run.positions.data(),
                          static_cast<int>(run.glyphs.size()));
        fPainter.drawGlyphRun(start, glyphs);
        run.glyphs.clear();
        run.positions.clear();
    };
    for (int32 at = 0; at < bytes;) {
        const Utf8Character character = DecodeUtf8(utf8 + at, bytes - at);
        at += character.bytes;
        const TypefaceGlyph glyph = typeface.GlyphOf(character.code);
        if (glyph.face != run.face)
            flush();
        run.face = glyph.face;
        if (glyph.advance > 0 && character.code != ' ') {
            run.glyphs.push_back(glyph.glyph);
            run.positions.emplace_back(width * fScale, 0);
        }
        width += glyph.advance * size;
        if (delta != nullptr)
            width += character.code == ' ' ? delta->space : delta->nonspace;
    }
    flush();
}

void Painter::_DrawShaped(const DrawState& state, const char* utf8, int32 bytes, BPoint baseline,
                          float& width) {
    const double pixelSize = double(state.font.Size()) * double(fScale);
    QTextLayout layout(QString::fromUtf8(utf8, bytes), Typeface::For(state.font).FontAt(pixelSize));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setPosition(QPointF(0, 0));
    layout.endLayout();
    const BPoint window = baseline + fOrigin + state.origin;
    layout.draw(&fPainter,
                QPointF(window.x * fScale, std::round(window.y * fScale) - line.ascent()));
    width = ShapedOffsets(state.font, utf8, bytes).back();
}

void Painter::_Underline(const DrawState& state, BPoint baseline, float width) {
    const float size = state.font.Size();
    const float right = baseline.x + width - 1;
    if (right < baseline.x)
        return;
    if (state.font.Face() & B_UNDERSCORE_FACE)
        StrokeLine(state, BPoint(baseline.x, baseline.y + 1), BPoint(right, baseline.y + 1),
                   B_SOLID_HIGH);
    if (state.font.Face() & B_STRIKEOUT_FACE) {
        const float y = std::round(baseline.y - size * 0.3F);
        StrokeLine(state, BPoint(baseline.x, y), BPoint(right, y), B_SOLID_HIGH);
    }
}
