#include "interface/text/LineFormatter.h"

#include "interface/fonts/ScriptShaping.h"
#include "interface/text/LineBreaking.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr uint32 kBullet = 0x25CF;
// Longer paragraphs are laid out from the table whatever they hold, so that a change stays cheap.
constexpr int32 kLongestShaped = 16 * 1024;

} // namespace

float LineRules::AdvanceOf(const TextStyle& style, uint32 codePoint, float x) const {
    if (masked)
        return style.advances->Advance(kBullet);
    if (codePoint == '\t')
        return (std::floor(x / tabWidth) + 1) * tabWidth - x;
    return style.advances->Advance(codePoint);
}

LineFormatter::LineFormatter(const LineRules& rules, int32 offset, int32 top, bool startsParagraph)
    : fRules(rules), fStyles(*rules.styles), fLength(rules.buffer->Length()),
      fText(offset < fLength ? rules.buffer->Range(offset, fLength) : nullptr), fFrom(offset),
      fClasses(BreakClassTable()), fTop(top), fStartsParagraph(startsParagraph) {
    fWalk.pen.offset = offset;
    fWalk.pen.run = fStyles.RunIndexAt(offset);
}

void LineFormatter::GoOnFrom(const LineWalk& walk) {
    fWalk = walk;
    fGoesOn = true;
}

TextLine LineFormatter::Next() {
    if (fStartsParagraph && !fGoesOn)
        _EnterParagraph();
    return fShaped != nullptr ? _NextShaped() : _NextPlain();
}

void LineFormatter::_EnterParagraph() {
    fShaped.reset();
    if (fRules.masked || fWalk.pen.offset < fPlainUpTo || fWalk.pen.offset == fLength)
        return;
    const char* text = fText + (fWalk.pen.offset - fFrom);
    const int32 rest = fLength - fWalk.pen.offset;
    const void* feed = memchr(text, '\n', rest);
    const int32 length =
        feed != nullptr ? static_cast<int32>(static_cast<const char*>(feed) - text) : rest;
    if (length > kLongestShaped || !NeedsShaping(text, length))
        return;
    fParagraphEnd = fWalk.pen.offset + length;
    fShaped = std::make_unique<ShapedParagraph>(*fRules.buffer, fStyles, fWalk.pen.offset,
                                                fParagraphEnd, fRules.wrapWidth, fRules.tabWidth);
    fShapedLine = 0;
}

TextLine LineFormatter::_NextPlain() {
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

void LineFormatter::_WalkLine() {
    for (bool goesOn = true; goesOn;) {
        _FollowRun();
        if (fWalk.pen.offset == fLength)
            return;
        const TextStyle& style = fStyles.Style(fStyles.RunAt(fWalk.pen.run).style);
        const RunOutcome outcome = _WalkRun(style);
        _Take(style, outcome);
        fEndsHard = outcome.end == RunOutcome::End::kLineFeed;
        goesOn = outcome.end == RunOutcome::End::kRun;
    }
}

LineFormatter::RunOutcome LineFormatter::_WalkRun(const TextStyle& style) const {
    const int32 end = fStyles.RunEnd(fWalk.pen.run, fLength);
    const char* const text = fText - fFrom;
    const float wrapWidth = fRules.wrapWidth;
    const bool masked = fRules.masked;
    const AdvanceTable& advances = *style.advances;
    RunOutcome way;
    way.offset = fWalk.pen.offset;
    way.x = fWalk.pen.x;
    way.before = fWalk.before;
    while (way.offset < end) {
        const Utf8Character character = DecodeUtf8(text + way.offset, fLength - way.offset);
        if (character.code == '\n') {
            way.offset++;
            way.end = RunOutcome::End::kLineFeed;
            break;
        }
        const BreakClass now =
            character.code < 0x10000 ? fClasses[character.code] : BreakClassOf(character.code);
        if (MayBreak(way.before, now)) {
            way.mayEnd = way.offset;
            way.mayEndX = way.x;
        }
        const float advance = masked || character.code == '\t'
                                  ? fRules.AdvanceOf(style, character.code, way.x)
                                  : advances.Advance(character.code);
        // Spaces hang over the edge; one character at least stands in a line.
        if (way.x + advance > wrapWidth && now != BreakClass::kSpace && way.x > 0) {
            way.end = RunOutcome::End::kEdge;
            break;
        }
        way.x += advance;
        way.offset += character.bytes;
        way.before = now;
    }
    return way;
}

// At the edge the line ends where it last might have.
void LineFormatter::_Take(const TextStyle& style, const RunOutcome& outcome) {
    const Pen from = fWalk.pen;
    fWalk.before = outcome.before;
    if (outcome.mayEnd >= 0) {
        fWalk.opportunity = {outcome.mayEnd, from.run, outcome.mayEndX, from.ascent, from.below};
        if (outcome.mayEnd > from.offset)
            Cover(fWalk.opportunity, style);
        fWalk.hasOpportunity = true;
    }
    if (outcome.end == RunOutcome::End::kEdge && fWalk.hasOpportunity) {
        fWalk.pen = fWalk.opportunity;
        return;
    }
    fWalk.pen = {outcome.offset, from.run, outcome.x, from.ascent, from.below};
    if (outcome.offset > from.offset)
        Cover(fWalk.pen, style);
}

void LineFormatter::_FollowRun() {
    Pen& pen = fWalk.pen;
    while (pen.run + 1 < fStyles.CountRuns() && pen.offset >= fStyles.RunAt(pen.run + 1).offset)
        pen.run++;
}

void LineFormatter::Cover(Pen& pen, const TextStyle& style) {
    pen.ascent = std::max(pen.ascent, style.ascent);
    pen.below = std::max(pen.below, style.height - style.ascent);
}

TextLine LineFormatter::_NextShaped() {
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

TextLine LineFormatter::_Finish(TextLine line, int32 height) {
    fTop += height;
    fStartsParagraph = fEndsHard;
    // Behind a line feed stands one more line, even an empty one.
    fAtEnd = fWalk.pen.offset == fLength && !fEndsHard;
    return line;
}
