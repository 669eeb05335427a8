// The documented calls about lines and places.

#include "interface/text/LineBreaking.h"
#include "interface/text/TextViewPrivate.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>

int32 BTextView::CountLines() const {
    return fPrivate->document.lines.CountLines();
}

int32 BTextView::CurrentLine() const {
    return LineAt(fPrivate->caret.Start());
}

void BTextView::GoToLine(int32 line) {
    const int32 offset = OffsetAt(line);
    Select(offset, offset);
    ScrollToOffset(offset);
}

int32 BTextView::LineAt(int32 offset) const {
    return fPrivate->document.lines.IndexAtOffset(std::clamp(offset, 0, TextLength()));
}

int32 BTextView::LineAt(BPoint point) const {
    return fPrivate->document.lines.IndexAtY(point.y - fPrivate->textRect.top);
}

BPoint BTextView::PointAt(int32 offset, float* height) const {
    const TextLines& lines = fPrivate->document.lines;
    const int32 at = fPrivate->document.Clamp(offset);
    const int32 line = lines.IndexAtOffset(at);
    if (height != nullptr)
        *height = static_cast<float>(lines.LineBottom(line) - lines.LineAt(line).top);
    return BPoint(fPrivate->LineLeft(line) + lines.XAt(line, at), fPrivate->LineTop(line));
}

int32 BTextView::OffsetAt(BPoint point) const {
    const TextLines& lines = fPrivate->document.lines;
    const float y = point.y - fPrivate->textRect.top;
    if (y >= static_cast<float>(lines.Height()))
        return TextLength();
    if (y < 0)
        return 0;
    const int32 line = lines.IndexAtY(y);
    return lines.OffsetAtX(line, point.x - fPrivate->LineLeft(line));
}

int32 BTextView::OffsetAt(int32 line) const {
    if (line >= CountLines())
        return TextLength();
    return fPrivate->document.lines.LineAt(std::max(0, line)).offset;
}

bool BTextView::CanEndLine(int32 offset) {
    const TextBuffer& buffer = fPrivate->document.buffer;
    const int32 at = fPrivate->document.Clamp(offset);
    if (at == 0 || at == buffer.Length() || buffer.ByteAt(at - 1) == '\n')
        return at != 0;
    const int32 before = buffer.PreviousCharacter(at);
    const int32 after = buffer.NextCharacter(at);
    const char* bytes = buffer.Range(before, after);
    const uint32 first = DecodeUtf8(bytes, at - before).code;
    const uint32 second = DecodeUtf8(bytes + (at - before), after - at).code;
    return MayBreak(BreakClassOf(first), BreakClassOf(second));
}

float BTextView::LineWidth(int32 line) const {
    const bool exists = line >= 0 && line < CountLines();
    return exists ? fPrivate->document.lines.LineAt(line).width : 0;
}

float BTextView::LineHeight(int32 line) const {
    return TextHeight(line, line);
}

float BTextView::TextHeight(int32 startLine, int32 endLine) const {
    const TextLines& lines = fPrivate->document.lines;
    const int32 first = std::clamp(startLine, 0, CountLines() - 1);
    const int32 last = std::clamp(endLine, first, CountLines() - 1);
    return static_cast<float>(lines.LineBottom(last) - lines.LineAt(first).top);
}

void BTextView::GetTextRegion(int32 startOffset, int32 endOffset, BRegion* region) const {
    if (region == nullptr)
        return;
    region->MakeEmpty();
    const TextLines& lines = fPrivate->document.lines;
    const int32 from = fPrivate->document.Clamp(startOffset);
    const int32 to = fPrivate->document.Clamp(endOffset);
    if (from >= to)
        return;
    const int32 last = lines.IndexAtOffset(to);
    for (int32 line = lines.IndexAtOffset(from); line <= last; line++) {
        const float left = fPrivate->LineLeft(line);
        const int32 start = std::max(from, lines.LineAt(line).offset);
        const int32 end = std::min(to, lines.LineVisibleEnd(line));
        BRect rect = fPrivate->LineFrame(line);
        rect.left = std::floor(left + lines.XAt(line, start));
        rect.right =
            to > end ? fPrivate->textRect.right : std::ceil(left + lines.XAt(line, end)) - 1;
        if (rect.IsValid())
            region->Include(rect);
    }
}

void BTextView::ScrollToOffset(int32 offset) {
    const BRect bounds = Bounds();
    float height = 0;
    const BPoint at = PointAt(offset, &height);
    const float inset = std::max(0.0f, fPrivate->textRect.top);
    BPoint to = bounds.LeftTop();
    // The first line brings the margin above it along, the last line the one below.
    if (at.y < bounds.top + 1)
        to.y = at.y <= inset ? 0 : at.y;
    else if (at.y + height - 1 > bounds.bottom)
        to.y = std::min(at.y, at.y + height + inset - 1 - bounds.Height());
    if (!fPrivate->wordWrap) {
        const float margin = std::min(std::max(0.0f, fPrivate->textRect.left), bounds.Width() / 4);
        if (at.x < bounds.left + margin)
            to.x = std::max(0.0f, at.x - margin - bounds.Width() / 8);
        else if (at.x + 1 > bounds.right - margin)
            to.x = at.x + 1 + margin - bounds.Width();
    }
    if (to != bounds.LeftTop())
        ScrollTo(BPoint(std::floor(to.x), std::floor(std::max(0.0f, to.y))));
}

void BTextView::ScrollToSelection() {
    ScrollToOffset(fPrivate->caret.Start());
}
