// The way between byte offsets and places in a line.

#include "interface/text/TextLines.h"

#include "support/Utf8.h"

#include <algorithm>

namespace {

// Calls visit(offset, x, advance, bytes) for each character until it returns false.
template <typename Visitor>
void WalkLine(const LineRules& rules, int32 from, int32 to, Visitor visit) {
    if (from >= to)
        return;
    const TextBuffer& buffer = *rules.buffer;
    const TextStyles& styles = *rules.styles;
    const char* text = buffer.Range(from, to);
    int32 run = styles.RunIndexAt(from);
    int32 runEnd = styles.RunEnd(run, buffer.Length());
    float x = 0;
    for (int32 offset = from; offset < to;) {
        while (offset >= runEnd)
            runEnd = styles.RunEnd(++run, buffer.Length());
        const Utf8Character character = DecodeUtf8(text + (offset - from), to - offset);
        const float advance =
            rules.AdvanceOf(styles.Style(styles.RunAt(run).style), character.code, x);
        if (!visit(offset, x, advance, character.bytes))
            return;
        x += advance;
        offset += character.bytes;
    }
}

} // namespace

float TextLines::XAt(int32 index, int32 offset) const {
    const TextLine& line = fLines[index];
    if (line.isShaped) {
        ShapedParagraph& shaped = ShapedAt(index);
        return shaped.XAt(shaped.LineFrom(line.offset), offset);
    }
    float x = 0;
    const int32 to = std::min(offset, LineVisibleEnd(index));
    WalkLine(fRules, line.offset, to, [&](int32, float at, float advance, int32) {
        x = at + advance;
        return true;
    });
    return x;
}

int32 TextLines::OffsetAtX(int32 index, float x) const {
    const TextLine& line = fLines[index];
    const int32 end = LineVisibleEnd(index);
    int32 offset = end;
    if (line.isShaped) {
        ShapedParagraph& shaped = ShapedAt(index);
        offset = shaped.OffsetAtX(shaped.LineFrom(line.offset), x);
    } else {
        WalkLine(fRules, line.offset, end, [&](int32 at, float left, float advance, int32) {
            if (x >= left + advance / 2)
                return true;
            offset = at;
            return false;
        });
    }
    // The end of a line that wraps is the start of the next one.
    const bool wraps = index + 1 < CountLines() && !line.endsHard;
    return wraps && offset >= end ? std::max(line.offset, PreviousCaret(end)) : offset;
}

int32 TextLines::NextCaret(int32 offset) const {
    const int32 index = IndexAtOffset(offset);
    if (fLines[index].isShaped && offset < LineVisibleEnd(index))
        return ShapedAt(index).NextCaret(offset);
    return fRules.buffer->NextCharacter(offset);
}

int32 TextLines::PreviousCaret(int32 offset) const {
    if (offset <= 0)
        return 0;
    const int32 before = fRules.buffer->PreviousCharacter(offset);
    const int32 index = IndexAtOffset(before);
    if (fLines[index].isShaped && before < LineVisibleEnd(index))
        return ShapedAt(index).PreviousCaret(offset);
    return before;
}
