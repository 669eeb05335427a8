#include "interface/text/ShapedParagraph.h"

#include "interface/fonts/Typeface.h"
#include "interface/text/TextBuffer.h"
#include "interface/text/TextStyles.h"
#include "support/Utf8.h"

#include <QFont>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

// The layout's fonts have whole pixels: large ones keep small sizes exact.
constexpr float kScale = 8;

// Edges nearer to each other than this, in pixels, are one.
constexpr float kTouching = 0.25F;

namespace {

QFont LargeFont(const BFont& font) {
    return Typeface::For(font).FontAt(static_cast<double>(font.Size() * kScale));
}

} // namespace

class ShapedParagraph::Layout {
public:
    Layout(const TextBuffer& buffer, const TextStyles& styles, int32 from, int32 to,
           float wrapWidth, float tabWidth);

    int32 UnitOf(int32 offset) const;
    int32 OffsetOf(int32 unit) const { return fOffsets[std::clamp(unit, 0, fUnits)]; }
    static Span SpanOf(const QTextLine& line, int32 unit, int32 next);
    QTextLine QtLine(int32 line) const { return fLayout.lineAt(line); }

    int32 fFrom;
    int32 fUnits = 0;
    std::vector<int32> fOffsets; // the byte of each UTF-16 unit, and the end
    std::vector<Line> fLines;
    QTextLayout fLayout;

private:
    QString _Convert(const TextBuffer& buffer, int32 to);
    QList<QTextLayout::FormatRange> _Formats(const TextStyles& styles, int32 to) const;
    void _BreakLines(const TextStyles& styles, float wrapWidth);
    static void _CoverStyles(const TextStyles& styles, int32 from, int32 to, Line& line);
};

ShapedParagraph::Layout::Layout(const TextBuffer& buffer, const TextStyles& styles, int32 from,
                                int32 to, float wrapWidth, float tabWidth)
    : fFrom(from) {
    const QString text = _Convert(buffer, to);
    fLayout.setText(text);
    fLayout.setFont(LargeFont(styles.Style(styles.StyleAt(from)).font));
    fLayout.setFormats(_Formats(styles, to));
    QTextOption option;
    option.setTabStopDistance(tabWidth * kScale);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(std::isfinite(wrapWidth) ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                                : QTextOption::NoWrap);
    fLayout.setTextOption(option);
    _BreakLines(styles, wrapWidth);
}

QString ShapedParagraph::Layout::_Convert(const TextBuffer& buffer, int32 to) {
    QString text;
    const int32 length = to - fFrom;
    const char* bytes = length > 0 ? buffer.Range(fFrom, to) : "";
    for (int32 at = 0; at < length;) {
        const Utf8Character character = DecodeUtf8(bytes + at, length - at);
        const qsizetype before = text.size();
        text.append(QChar::fromUcs4(character.code));
        fOffsets.insert(fOffsets.end(), text.size() - before, fFrom + at);
        at += character.bytes;
    }
    fUnits = static_cast<int32>(text.size());
    fOffsets.push_back(to);
    return text;
}

QList<QTextLayout::FormatRange> ShapedParagraph::Layout::_Formats(const TextStyles& styles,
                                                                  int32 to) const {
    QList<QTextLayout::FormatRange> formats;
    for (int32 run = styles.RunIndexAt(fFrom); run < styles.CountRuns(); run++) {
        const int32 start = std::max(styles.RunAt(run).offset, fFrom);
        if (start >= to)
            break;
        const TextStyle& style = styles.Style(styles.RunAt(run).style);
        QTextLayout::FormatRange range;
        range.start = UnitOf(start);
        range.length = UnitOf(std::min(styles.RunEnd(run, to), to)) - range.start;
        range.format.setFont(LargeFont(style.font));
        formats.append(range);
    }
    return formats;
}

void ShapedParagraph::Layout::_BreakLines(const TextStyles& styles, float wrapWidth) {
    const qreal width = std::isfinite(wrapWidth) ? std::max(1.0f, wrapWidth) * kScale : 1e7;
    fLayout.beginLayout();
    while (true) {
        QTextLine qtLine = fLayout.createLine();
        if (!qtLine.isValid())
            break;
        qtLine.setLineWidth(width);
        qtLine.setPosition(QPointF(0, 0));
        Line line{OffsetOf(qtLine.textStart()),
                  static_cast<float>(qtLine.naturalTextWidth()) / kScale, 0, 0};
        _CoverStyles(styles, line.offset, OffsetOf(qtLine.textStart() + qtLine.textLength()), line);
        fLines.push_back(line);
    }
    fLayout.endLayout();
}

void ShapedParagraph::Layout::_CoverStyles(const TextStyles& styles, int32 from, int32 to,
                                           Line& line) {
    int32 below = 0;
    int32 run = styles.RunIndexAt(from);
    do {
        const TextStyle& style = styles.Style(styles.RunAt(run).style);
        line.ascent = std::max(line.ascent, style.ascent);
        below = std::max(below, style.height - style.ascent);
        run++;
    } while (run < styles.CountRuns() && styles.RunAt(run).offset < to);
    line.height = line.ascent + below;
}

// What one character with its marks covers.
ShapedParagraph::Span ShapedParagraph::Layout::SpanOf(const QTextLine& line, int32 unit,
                                                      int32 next) {
    const float a = static_cast<float>(line.cursorToX(unit)) / kScale;
    const float b = static_cast<float>(line.cursorToX(unit, QTextLine::Trailing)) / kScale;
    if (a != b)
        return {std::min(a, b), std::max(a, b)};
    // Where the direction changes, Qt puts both edges to the end of what came before.
    Span span{a, a};
    for (const QGlyphRun& run : line.glyphRuns(unit, next - unit)) {
        const QList<QPointF> places = run.positions();
        const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
        for (qsizetype i = 0; i < places.size(); i++) {
            const float left = static_cast<float>(places[i].x()) / kScale;
            const float right = left + static_cast<float>(advances[i].x()) / kScale;
            span = span.left == span.right
                       ? Span{left, right}
                       : Span{std::min(span.left, left), std::max(span.right, right)};
        }
    }
    return span;
}

int32 ShapedParagraph::Layout::UnitOf(int32 offset) const {
    const auto unit = std::lower_bound(fOffsets.begin(), fOffsets.end(), offset);
    return std::min(static_cast<int32>(unit - fOffsets.begin()), fUnits);
}

ShapedParagraph::ShapedParagraph(const TextBuffer& buffer, const TextStyles& styles, int32 from,
                                 int32 to, float wrapWidth, float tabWidth)
    : fLayout(std::make_unique<Layout>(buffer, styles, from, to, wrapWidth, tabWidth)) {}

ShapedParagraph::~ShapedParagraph() = default;

int32 ShapedParagraph::From() const {
    return fLayout->fFrom;
}

const std::vector<ShapedParagraph::Line>& ShapedParagraph::Lines() const {
    return fLayout->fLines;
}

int32 ShapedParagraph::LineFrom(int32 offset) const {
    const std::vector<Line>& lines = fLayout->fLines;
    const auto after =
        std::upper_bound(lines.begin() + 1, lines.end(), offset,
                         [](int32 at, const Line& line) { return at < line.offset; });
    return static_cast<int32>(after - lines.begin()) - 1;
}

float ShapedParagraph::XAt(int32 line, int32 offset) const {
    return static_cast<float>(fLayout->QtLine(line).cursorToX(fLayout->UnitOf(offset))) / kScale;
}

int32 ShapedParagraph::OffsetAtX(int32 line, float x) const {
    return fLayout->OffsetOf(fLayout->QtLine(line).xToCursor(x * kScale));
}

int32 ShapedParagraph::NextCaret(int32 offset) const {
    return fLayout->OffsetOf(fLayout->fLayout.nextCursorPosition(fLayout->UnitOf(offset)));
}

int32 ShapedParagraph::PreviousCaret(int32 offset) const {
    return fLayout->OffsetOf(fLayout->fLayout.previousCursorPosition(fLayout->UnitOf(offset)));
}

std::vector<ShapedParagraph::Span> ShapedParagraph::SpansOf(int32 line, int32 from,
                                                            int32 to) const {
    const QTextLine qtLine = fLayout->QtLine(line);
    const int32 start = std::max(fLayout->UnitOf(from), qtLine.textStart());
    const int32 end = std::min(fLayout->UnitOf(to), qtLine.textStart() + qtLine.textLength());
    std::vector<Span> spans;
    for (int32 unit = start; unit < end;) {
        const int32 next = std::min(end, fLayout->fLayout.nextCursorPosition(unit));
        if (next <= unit)
            break;
        const Span span = fLayout->SpanOf(qtLine, unit, next);
        if (!spans.empty() && std::abs(spans.back().right - span.left) < kTouching)
            spans.back().right = span.right;
        else if (!spans.empty() && std::abs(spans.back().left - span.right) < kTouching)
            spans.back().left = span.left;
        else
            spans.push_back(span);
        unit = next;
    }
    return spans;
}
