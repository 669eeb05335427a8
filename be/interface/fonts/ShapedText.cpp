#include "interface/fonts/ShapedText.h"

#include "interface/fonts/Typeface.h"
#include "support/Utf8.h"

#include <QTextLayout>

std::vector<float> ShapedOffsets(const BFont& font, const char* utf8, int32 bytes) {
    constexpr float kScale =
        64; // the layout's font has whole pixels: a large one keeps small sizes exact
    const float size = font.Size();
    QString text;
    std::vector<qsizetype> units;
    units.reserve(static_cast<size_t>(bytes) + 1);
    for (int32 at = 0; at < bytes;) {
        const Utf8Character character = DecodeUtf8(utf8 + at, bytes - at);
        units.insert(units.end(), static_cast<size_t>(character.bytes), text.size());
        const char32_t code = character.code;
        text += QString::fromUcs4(&code, 1);
        at += character.bytes;
    }
    units.push_back(text.size());
    QTextLayout layout(text, Typeface::For(font).FontAt(kScale));
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    std::vector<float> offsets;
    offsets.reserve(units.size());
    for (const qsizetype unit : units) {
        const double x = line.isValid() ? line.cursorToX(static_cast<int>(unit)) : 0;
        offsets.push_back(static_cast<float>(x) * size / kScale);
    }
    return offsets;
}
