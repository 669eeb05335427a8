#include "interface/text/TextLines.h"

#include "interface/fonts/ScriptShaping.h"

#include <algorithm>

TextLines::TextLines(const TextBuffer* buffer, const TextStyles* styles) : fRules{buffer, styles} {
    LayoutAll();
}

TextLines::~TextLines() = default;

void TextLines::LayoutAll() {
    fShaped.reset();
    fLines.clear();
    LineFormatter formatter(fRules, 0, 0, true);
    while (!formatter.AtEnd())
        fLines.push_back(formatter.Next());
    fHeight = formatter.Top();
    _KeepTail(formatter);
}

void TextLines::_KeepTail(const LineFormatter& formatter) {
    fTailIsValid = formatter.AtEnd() && !fLines.back().isShaped;
    if (fTailIsValid)
        fTail = formatter.LastWalk();
}

TextLines::Change TextLines::Update(int32 offset, int32 removed, int32 inserted) {
    fShaped.reset();
    const int32 delta = inserted - removed;
    const bool shaped = _NeedsShaping(offset, removed, inserted);
    const bool goesOn =
        fTailIsValid && !shaped && removed == 0 && offset + inserted == fRules.buffer->Length();
    const int32 first = goesOn ? CountLines() - 1 : _FirstLineToLayOut(offset, shaped);
    const int32 top = fLines[first].top;
    LineFormatter formatter(fRules, fLines[first].offset, top, _StartsParagraph(first));
    if (!shaped)
        formatter.TakeForPlain(offset + inserted);
    if (goesOn)
        formatter.GoOnFrom(fTail);
    std::vector<TextLine> fresh;
    const int32 last = _LayOutUntilUnchanged(formatter, first, offset + inserted, delta, fresh);
    const bool matches = last < CountLines();
    const int32 oldBottom = matches ? fLines[last].top : fHeight;
    const int32 count = static_cast<int32>(fresh.size());
    _Splice(first, last, fresh, delta, formatter.Top() - oldBottom);
    fHeight += formatter.Top() - oldBottom;
    fTailIsValid = false;
    if (!matches)
        _KeepTail(formatter);
    return {first, first + count, top, std::max(formatter.Top(), oldBottom),
            matches && formatter.Top() != oldBottom};
}

// Makes lines until one begins where an old one did, behind the changed text: from there on nothing
// has changed. Returns that old line, or the number of lines if there is none.
int32 TextLines::_LayOutUntilUnchanged(LineFormatter& formatter, int32 first, int32 changedEnd,
                                       int32 delta, std::vector<TextLine>& fresh) const {
    for (int32 old = first; !formatter.AtEnd(); fresh.push_back(formatter.Next())) {
        // The empty last line is as high as the line feed before it tells.
        const int32 offset = formatter.Offset();
        if (offset < changedEnd || offset == fRules.buffer->Length() || fresh.empty())
            continue;
        while (old < CountLines() && fLines[old].offset < offset - delta)
            old++;
        if (old == CountLines() || fLines[old].offset != offset - delta)
            continue;
        if ((formatter.StartsParagraph() && _StartsParagraph(old)) ||
            (!formatter.InShaped() && !fLines[old].isShaped))
            return old;
    }
    return CountLines();
}

int32 TextLines::_FirstLineToLayOut(int32 offset, bool shaped) const {
    int32 first = IndexAtOffset(offset);
    if (shaped) {
        while (!_StartsParagraph(first))
            first--;
        return first;
    }
    // A word that got shorter may go back to the line before.
    return _StartsParagraph(first) ? first : first - 1;
}

// Whether the whole paragraph has to be looked at, because of what it was or will be.
bool TextLines::_NeedsShaping(int32 offset, int32 removed, int32 inserted) const {
    if (fLines[IndexAtOffset(offset)].isShaped || fLines[IndexAtOffset(offset + removed)].isShaped)
        return true;
    return inserted > 0 &&
           ::NeedsShaping(fRules.buffer->Range(offset, offset + inserted), inserted);
}

void TextLines::_Splice(int32 first, int32 last, std::vector<TextLine>& fresh, int32 offsetDelta,
                        int32 topDelta) {
    if (offsetDelta != 0 || topDelta != 0) {
        for (auto line = fLines.begin() + last; line != fLines.end(); ++line) {
            line->offset += offsetDelta;
            line->top += topDelta;
        }
    }
    if (first == 0 && last == CountLines()) {
        fLines.swap(fresh);
        return;
    }
    const int32 count = static_cast<int32>(fresh.size());
    const int32 replaced = std::min(count, last - first);
    std::copy_n(fresh.begin(), replaced, fLines.begin() + first);
    if (replaced < count)
        fLines.insert(fLines.begin() + first + replaced, fresh.begin() + replaced, fresh.end());
    else
        fLines.erase(fLines.begin() + first + replaced, fLines.begin() + last);
}

void TextLines::SetWrapWidth(float width) {
    if (width == fRules.wrapWidth)
        return;
    fRules.wrapWidth = width;
    LayoutAll();
}

void TextLines::SetTabWidth(float width) {
    if (width == fRules.tabWidth || !(width >= 1))
        return;
    fRules.tabWidth = width;
    LayoutAll();
}

void TextLines::SetMasked(bool masked) {
    if (masked == fRules.masked)
        return;
    fRules.masked = masked;
    LayoutAll();
}

float TextLines::Width() const {
    float width = 0;
    for (const TextLine& line : fLines)
        width = std::max(width, line.width);
    return width;
}

int32 TextLines::IndexAtOffset(int32 offset) const {
    if (offset >= fLines.back().offset)
        return CountLines() - 1;
    const auto after =
        std::upper_bound(fLines.begin() + 1, fLines.end(), offset,
                         [](int32 at, const TextLine& line) { return at < line.offset; });
    return static_cast<int32>(after - fLines.begin()) - 1;
}

int32 TextLines::IndexAtY(float y) const {
    const auto after =
        std::upper_bound(fLines.begin() + 1, fLines.end(), y, [](float at, const TextLine& line) {
            return at < static_cast<float>(line.top);
        });
    return static_cast<int32>(after - fLines.begin()) - 1;
}

int32 TextLines::LineEnd(int32 index) const {
    return index + 1 < CountLines() ? fLines[index + 1].offset : fRules.buffer->Length();
}

int32 TextLines::LineVisibleEnd(int32 index) const {
    return LineEnd(index) - (fLines[index].endsHard ? 1 : 0);
}

int32 TextLines::LineBottom(int32 index) const {
    return index + 1 < CountLines() ? fLines[index + 1].top : fHeight;
}

ShapedParagraph& TextLines::ShapedAt(int32 index) const {
    int32 first = index;
    while (first > 0 && !fLines[first - 1].endsHard)
        first--;
    int32 last = index;
    while (!fLines[last].endsHard && last + 1 < CountLines())
        last++;
    const int32 from = fLines[first].offset;
    if (fShaped == nullptr || fShaped->From() != from)
        fShaped = std::make_unique<ShapedParagraph>(*fRules.buffer, *fRules.styles, from,
                                                    LineVisibleEnd(last), fRules.wrapWidth,
                                                    fRules.tabWidth);
    return *fShaped;
}
