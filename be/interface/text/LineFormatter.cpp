#include "interface/text/LineFormatter.h"

#include "interface/fonts/ScriptShaping.h"
#include "interface/text/LineBreaking.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cstring>

namespace {

// Longer paragraphs are laid out from the table whatever they hold, so that a change stays cheap.
constexpr int32 kLongestShaped = 16 * 1024;

} // namespace

TextLines::Formatter::Formatter(const TextLines& lines, int32 offset, int32 top,
                                bool startsParagraph)
    : fLines(lines), fStyles(*lines.fStyles), fLength(lines.fBuffer->Length()),
      fText(offset < fLength ? lines.fBuffer->Range(offset, fLength) : nullptr), fFrom(offset),
      fClasses(BreakClassTable()), fTop(top), fStartsParagraph(startsParagraph) {
    fWalk.pen.offset = offset;
    fWalk.pen.run = fStyles.RunIndexAt(offset);
}

void TextLines::Formatter::GoOnFrom(const Walk& walk) {
    fWalk = walk;
    fGoesOn = true;
}

TextLine TextLines::Formatter::Next() {
    if (fStartsParagraph && !fGoesOn)
        _EnterParagraph();
    return fShaped != nullptr ? _NextShaped() : _NextPlain();
}

void TextLines::Formatter::_EnterParagraph() {
    fShaped.reset();
    if (fLines.fMasked || fWalk.pen.offset < fPlainUpTo || fWalk.pen.offset == fLength)
        return;
    const char* text = fText + (fWalk.pen.offset - fFrom);
    const int32 rest = fLength - fWalk.pen.offset;
    const void* feed = memchr(text, '\n', rest);
    const int32 length =
        feed != nullptr ? static_cast<int32>(static_cast<const char*>(feed) - text) : rest;
    if (length > kLongestShaped || !NeedsShaping(text, length))
        return;
    fParagraphEnd = fWalk.pen.offset + length;
    fShaped = std::make_unique<ShapedParagraph>(*fLines.fBuffer, fStyles, fWalk.pen.offset,
                                                fParagraphEnd, fLines.fWrapWidth, fLines.fTabWidth);
    fShapedLine = 0;
}

TextLine TextLines::Formatter::_NextPlain() {
    Pen& pen = fWalk.pen;
    TextLine line{fGoesOn ? fFrom : pen.offset, fTop, 0, 0, false, false};
    if (!fGoesOn) {
        pen = {pen.offset, pen.run, 0, 0, 0};
        fWalk.hasOpportunity = false;
        fWalk.before = BreakClass::kOpening; // no line ends before its first character
    }
    fGoesOn = false;
    fEndsHard = false;
    _WalkLine();
    if (pen.offset == line.offset)
        Cover(pen, fStyles.Style(fStyles.TypingStyle(line.offset)));
    line.width = pen.x;
    line.ascent = static_cast<int16>(pen.ascent);
    line.endsHard = fEndsHard;
    const int32 height = pen.ascent + pen.below;
    if (pen.offset == line.offset)
        pen.ascent = pen.below = 0;
    return _Finish(line, height);
}

void TextLines::Formatter::_WalkLine() {
    do
        _FollowRun();
    while (fWalk.pen.offset < fLength &&
           _WalkRun(fStyles.Style(fStyles.RunAt(fWalk.pen.run).style)));
}

// Walks to the end of the run; false if the line ends before.
bool TextLines::Formatter::_WalkRun(const TextStyle& style) {
    const Pen from = fWalk.pen;
    const int32 end = fStyles.RunEnd(from.run, fLength);
    const char* const text = fText - fFrom;
    const float wrapWidth = fLines.fWrapWidth;
    const bool masked = fLines.fMasked;
    const AdvanceTable& advances = *style.advances;
    int32 offset = from.offset;
    float x = from.x;
    BreakClass before = fWalk.before;
    int32 mayEnd = -1;
    float mayEndX = 0;
    bool goesOn = true;
    while (offset < end) {
        const Utf8Character character = DecodeUtf8(text + offset, fLength - offset);
        if (character.code == '\n') {
            offset++;
            fEndsHard = true;
            goesOn = false;
            break;
        }
        const BreakClass now =
            character.code < 0x10000 ? fClasses[character.code] : BreakClassOf(character.code);
        if (MayBreak(before, now)) {
            mayEnd = offset;
            mayEndX = x;
        }
        const float advance = masked || character.code == '\t'
                                  ? fLines.AdvanceOf(style, character.code, x)
                                  : advances.Advance(character.code);
        // Spaces hang over the edge; one character at least stands in a line.
        if (x + advance > wrapWidth && now != BreakClass::kSpace && x > 0) {
            goesOn = false;
            break;
        }
        x += advance;
        offset += character.bytes;
        before = now;
    }
    const bool wraps = !goesOn && !fEndsHard;
    _EndRun(style, {offset, from.run, x, from.ascent, from.below}, mayEnd, mayEndX, wraps);
    fWalk.before = before;
    return goesOn;
}

// The walk along a run has come to `pen`, by a last place `mayEnd` where the line may end, unless
// that is -1.
void TextLines::Formatter::_EndRun(const TextStyle& style, const Pen& pen, int32 mayEnd,
                                   float mayEndX, bool wraps) {
    const int32 from = fWalk.pen.offset;
    if (mayEnd >= 0) {
        fWalk.opportunity = fWalk.pen;
        fWalk.opportunity.offset = mayEnd;
        fWalk.opportunity.x = mayEndX;
        if (mayEnd > from)
            Cover(fWalk.opportunity, style);
        fWalk.hasOpportunity = true;
    }
    if (wraps && fWalk.hasOpportunity) {
        fWalk.pen = fWalk.opportunity;
        return;
    }
    fWalk.pen = pen;
    if (pen.offset > from)
        Cover(fWalk.pen, style);
}

void TextLines::Formatter::_FollowRun() {
    Pen& pen = fWalk.pen;
    while (pen.run + 1 < fStyles.CountRuns() && pen.offset >= fStyles.RunAt(pen.run + 1).offset)
        pen.run++;
}

void TextLines::Formatter::Cover(Pen& pen, const TextStyle& style) {
    pen.ascent = std::max(pen.ascent, style.ascent);
    pen.below = std::max(pen.below, style.height - style.ascent);
}

TextLine TextLines::Formatter::_NextShaped() {
    const std::vector<ShapedParagraph::Line>& shaped = fShaped->Lines();
    const ShapedParagraph::Line& from = shaped[fShapedLine++];
    TextLine line{from.offset, fTop, from.width, static_cast<int16>(from.ascent), false, true};
    if (fShapedLine < shaped.size()) {
        fWalk.pen.offset = shaped[fShapedLine].offset;
    } else {
        line.endsHard = fParagraphEnd < fLength;
        fWalk.pen.offset = std::min(fParagraphEnd + 1, fLength);
        _FollowRun();
    }
    fEndsHard = line.endsHard;
    return _Finish(line, from.height);
}

TextLine TextLines::Formatter::_Finish(TextLine line, int32 height) {
    fTop += height;
    fStartsParagraph = fEndsHard;
    // Behind a line feed stands one more line, even an empty one.
    fAtEnd = fWalk.pen.offset == fLength && !fEndsHard;
    return line;
}
