// Where the text lies in the view, and what a change of it means for the screen.

#include "interface/text/TextViewPrivate.h"

#include <ScrollBar.h>

#include <algorithm>
#include <cmath>

BTextView::Private::Private(BTextView* self, BRect rect, const BFont& font, rgb_color color)
    : view(self), document(font, color), textRect(rect) {
    ApplyWrapping();
}

float BTextView::Private::LineLeft(int32 line) const {
    if (align == B_ALIGN_LEFT)
        return textRect.left;
    const float room = textRect.Width() + 1 - document.lines.LineAt(line).width;
    return std::floor(textRect.left + std::max(0.0f, align == B_ALIGN_RIGHT ? room : room / 2));
}

float BTextView::Private::LineTop(int32 line) const {
    return textRect.top + static_cast<float>(document.lines.LineAt(line).top);
}

BRect BTextView::Private::LineFrame(int32 line) const {
    const BRect bounds = view->Bounds();
    const float bottom = textRect.top + static_cast<float>(document.lines.LineBottom(line)) - 1;
    return BRect(bounds.left, LineTop(line), bounds.right, bottom);
}

BRect BTextView::Private::CaretFrame() const {
    const TextLines& lines = document.lines;
    const int32 line = lines.IndexAtOffset(caret.Caret());
    const float x = std::floor(LineLeft(line) + lines.XAt(line, caret.Caret()));
    const BRect frame = LineFrame(line);
    return BRect(x, frame.top, x, frame.bottom);
}

void BTextView::Private::InvalidateLines(int32 first, int32 last) {
    const BRect area = LineFrame(first) | LineFrame(last);
    if (area.Intersects(view->Bounds()))
        view->Invalidate(area);
}

void BTextView::Private::InvalidateRange(int32 from, int32 to) {
    if (from < to)
        InvalidateLines(document.lines.IndexAtOffset(from), document.lines.IndexAtOffset(to));
}

void BTextView::Private::InvalidateFrom(float top) {
    BRect area = view->Bounds();
    area.top = std::max(area.top, top);
    if (area.IsValid())
        view->Invalidate(area);
}

void BTextView::Private::Changed(const TextLines::Change& change) {
    const float top = textRect.top + static_cast<float>(change.top);
    if (change.moved) {
        InvalidateFrom(top);
    } else {
        BRect area = view->Bounds();
        area.top = std::max(area.top, top);
        area.bottom = std::min(area.bottom, textRect.top + static_cast<float>(change.bottom) - 1);
        if (area.IsValid())
            view->Invalidate(area);
    }
    UpdateScrollBars();
}

void BTextView::Private::LayoutChanged() {
    InvalidateFrom(view->Bounds().top);
    UpdateScrollBars();
}

void BTextView::Private::ApplyWrapping() {
    // A rectangle that has no width yet would put each character into a line of its own.
    const float width = std::max(textRect.Width() + 1, 16.0f);
    document.lines.SetWrapWidth(wordWrap ? width : LineRules::kNoWrap);
}

void BTextView::Private::UpdateScrollBars() {
    const BRect bounds = view->Bounds();
    const float inset = std::max(0.0f, textRect.top);
    const float lineHeight = static_cast<float>(document.styles.Style(0).height);
    if (BScrollBar* bar = view->ScrollBar(B_VERTICAL)) {
        const float page = bounds.Height() + 1;
        const float whole = 2 * inset + static_cast<float>(document.lines.Height());
        bar->SetRange(0, std::max(0.0f, whole - page));
        bar->SetProportion(std::min(1.0f, page / whole));
        bar->SetSteps(lineHeight, std::max(lineHeight, page - lineHeight));
    }
    if (BScrollBar* bar = view->ScrollBar(B_HORIZONTAL)) {
        const float page = bounds.Width() + 1;
        const float whole = 2 * std::max(0.0f, textRect.left) +
                            (wordWrap ? textRect.Width() + 1 : document.lines.Width() + 1);
        bar->SetRange(0, std::max(0.0f, whole - page));
        bar->SetProportion(std::min(1.0f, page / whole));
        bar->SetSteps(lineHeight, std::max(lineHeight, page - lineHeight));
    }
}

void BTextView::Private::ScrollVertically(float delta) {
    const BRect bounds = view->Bounds();
    const float whole =
        2 * std::max(0.0f, textRect.top) + static_cast<float>(document.lines.Height());
    const float most = std::max(0.0f, whole - bounds.Height() - 1);
    const float top = std::clamp(bounds.top + delta, 0.0f, most);
    if (top != bounds.top)
        view->ScrollTo(BPoint(bounds.left, top));
}

void BTextView::Private::RevealCaret() {
    view->ScrollToOffset(caret.Caret());
    TellInputMethod();
}
