#include "interface/text/TextCaret.h"

#include "interface/text/TextDocument.h"
#include "interface/text/TextWords.h"

#include <algorithm>

namespace {

int32 Shifted(int32 offset, int32 from, int32 to) {
    return offset <= from ? offset : offset < to ? from : offset - (to - from);
}

// A caret at the end of a line that wraps stands before its last character: behind it is the next
// line's start.
int32 EndOfLine(const TextDocument& document, int32 line) {
    const TextLines& lines = document.lines;
    const int32 end = lines.LineVisibleEnd(line);
    const bool wraps = line + 1 < lines.CountLines() && !lines.LineAt(line).endsHard;
    return wraps ? std::max(lines.LineAt(line).offset, lines.PreviousCaret(end)) : end;
}

} // namespace

void TextCaret::Select(int32 anchor, int32 caret) {
    fAnchor = anchor;
    fCaret = caret;
    fGoalX = -1;
}

void TextCaret::Move(const TextDocument& document, CaretMove move, bool extend, float pageHeight) {
    const bool sideways = move == CaretMove::kLeft || move == CaretMove::kRight;
    if (sideways && !extend && !IsEmpty()) {
        const int32 edge = move == CaretMove::kLeft ? Start() : End();
        Select(edge, edge);
        return;
    }
    const int32 target = _Target(document, move, pageHeight);
    const bool vertical = move == CaretMove::kUp || move == CaretMove::kDown ||
                          move == CaretMove::kPageUp || move == CaretMove::kPageDown;
    const float goal = vertical ? fGoalX : -1;
    Select(extend ? fAnchor : target, target);
    fGoalX = goal;
}

int32 TextCaret::_Target(const TextDocument& document, CaretMove move, float pageHeight) {
    const TextLines& lines = document.lines;
    switch (move) {
    case CaretMove::kLeft: return lines.PreviousCaret(fCaret);
    case CaretMove::kRight: return lines.NextCaret(fCaret);
    case CaretMove::kWordLeft: return PreviousWord(document.buffer, fCaret);
    case CaretMove::kWordRight: return NextWord(document.buffer, fCaret);
    case CaretMove::kUp: return _Vertical(document, -1, 0);
    case CaretMove::kDown: return _Vertical(document, 1, 0);
    case CaretMove::kPageUp: return _Vertical(document, 0, -pageHeight);
    case CaretMove::kPageDown: return _Vertical(document, 0, pageHeight);
    case CaretMove::kLineStart: return lines.LineAt(lines.IndexAtOffset(fCaret)).offset;
    case CaretMove::kLineEnd: return EndOfLine(document, lines.IndexAtOffset(fCaret));
    case CaretMove::kTextStart: return 0;
    case CaretMove::kTextEnd: return document.buffer.Length();
    }
    return fCaret;
}

int32 TextCaret::_Vertical(const TextDocument& document, float byLines, float byPixels) {
    const TextLines& lines = document.lines;
    const int32 from = lines.IndexAtOffset(fCaret);
    if (fGoalX < 0)
        fGoalX = lines.XAt(from, fCaret);
    int32 to = from + static_cast<int32>(byLines);
    if (byPixels != 0)
        to = lines.IndexAtY(static_cast<float>(lines.LineAt(from).top) + byPixels);
    // Beyond the first and the last line lie the text's ends.
    if (to < 0 || (to == from && byPixels < 0))
        return 0;
    if (to >= lines.CountLines() || (to == from && byPixels > 0))
        return document.buffer.Length();
    return lines.OffsetAtX(to, fGoalX);
}

void TextCaret::Inserted(int32 offset, int32 length) {
    const auto shifted = [&](int32 at) { return at > offset ? at + length : at; };
    Select(shifted(fAnchor), shifted(fCaret));
}

void TextCaret::Removed(int32 from, int32 to) {
    Select(Shifted(fAnchor, from, to), Shifted(fCaret, from, to));
}
