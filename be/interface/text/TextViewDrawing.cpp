// Drawing: only the lines that show, each style in one go.

#include "interface/text/LineBreaking.h"
#include "interface/text/TextViewPrivate.h"
#include "interface/windows/ViewPrivate.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr bigtime_t kBlinkInterval = 530000;
constexpr char kBulletUtf8[] = "\xE2\x97\x8F";

rgb_color SelectionColor(bool active) {
    return active ? ui_color(B_LIST_SELECTED_BACKGROUND_COLOR)
                  : tint_color(ui_color(B_PANEL_BACKGROUND_COLOR), 1.2F);
}

} // namespace

// Draws one line; made for each.
class BTextView::Private::LinePainter {
public:
    LinePainter(Private& data, int32 line)
        : fData(data), fView(*data.view), fLines(data.document.lines), fLine(line),
          fStart(fLines.LineAt(line).offset), fEnd(fLines.LineVisibleEnd(line)),
          fLeft(data.LineLeft(line)), fFrame(data.LineFrame(line)),
          fBaseline(fFrame.top + static_cast<float>(fLines.LineAt(line).ascent)) {}

    void FillSelection();
    void FillClauses();
    void DrawText(BRect update);
    void UnderlineComposition();
    void InvertHighlight();

private:
    std::vector<BRect> _Cover(int32 from, int32 to) const;
    void _DrawPiece(int32 from, int32 to, const TextStyle& style, float x);
    void _DrawShapedPiece(int32 from, int32 to, const TextStyle& style);
    void _UseStyle(const TextStyle& style);

    Private& fData;
    BView& fView;
    const TextLines& fLines;
    const int32 fLine;
    const int32 fStart;
    const int32 fEnd;
    const float fLeft;
    const BRect fFrame;
    const float fBaseline;
};

// What a range covers in this line; a line feed or a wrap that it goes beyond reaches to the edge.
std::vector<BRect> BTextView::Private::LinePainter::_Cover(int32 from, int32 to) const {
    std::vector<BRect> cover;
    const int32 first = std::max(from, fStart);
    const int32 last = std::min(to, fEnd);
    if (first > last || to <= fStart || from >= fLines.LineEnd(fLine))
        return cover;
    const auto add = [&](float left, float right) {
        cover.emplace_back(std::floor(fLeft + left), fFrame.top, std::ceil(fLeft + right) - 1,
                           fFrame.bottom);
    };
    if (fLines.LineAt(fLine).isShaped) {
        const ShapedParagraph& shaped = fLines.ShapedAt(fLine);
        for (const ShapedParagraph::Span& span :
             shaped.SpansOf(shaped.LineFrom(fStart), first, last))
            add(span.left, span.right);
    } else {
        add(fLines.XAt(fLine, first), fLines.XAt(fLine, last));
    }
    if (to > fEnd && fLines.LineEnd(fLine) > fEnd)
        cover.emplace_back(std::floor(fLeft + fLines.LineAt(fLine).width), fFrame.top, fFrame.right,
                           fFrame.bottom);
    return cover;
}

void BTextView::Private::LinePainter::FillSelection() {
    if (fData.caret.IsEmpty() || !fData.selectable || fData.IsComposing())
        return;
    fView.SetHighColor(SelectionColor(fData.windowIsActive && fView.IsFocus()));
    for (const BRect& rect : _Cover(fData.caret.Start(), fData.caret.End()))
        fView.FillRect(rect);
}

// The clause that is being converted; small letters leave no room for a thicker line below it.
void BTextView::Private::LinePainter::FillClauses() {
    fView.SetHighColor(SelectionColor(true));
    for (const Clause& clause : fData.clauses) {
        for (const BRect& rect : _Cover(clause.from, clause.to))
            fView.FillRect(rect);
    }
}

void BTextView::Private::LinePainter::DrawText(BRect update) {
    const TextStyles& styles = fData.document.styles;
    const bool shaped = fLines.LineAt(fLine).isShaped;
    float x = 0;
    for (int32 at = fStart, run = styles.RunIndexAt(fStart); at < fEnd; run++) {
        const TextStyle& style = styles.Style(styles.RunAt(run).style);
        const int32 end = std::min(styles.RunEnd(run, fEnd), fEnd);
        if (end <= at)
            continue;
        if (shaped) {
            _DrawShapedPiece(at, end, style);
        } else {
            const float right = end == fEnd ? fLines.LineAt(fLine).width : fLines.XAt(fLine, end);
            if (fLeft + right >= update.left - style.font.Size() && fLeft + x <= update.right)
                _DrawPiece(at, end, style, x);
            x = right;
        }
        at = end;
    }
}

void BTextView::Private::LinePainter::_UseStyle(const TextStyle& style) {
    fView.BView::SetFont(&style.font);
    rgb_color color = style.color;
    color.alpha = 255;
    fView.BView::SetHighColor(color);
}

// Tabs are left out: what follows one is drawn at its own place.
void BTextView::Private::LinePainter::_DrawPiece(int32 from, int32 to, const TextStyle& style,
                                                 float x) {
    _UseStyle(style);
    const char* text = fData.document.buffer.Range(from, to);
    if (fLines.IsMasked()) {
        std::string bullets;
        for (int32 at = 0; at < to - from; at += DecodeUtf8(text + at, to - from - at).bytes)
            bullets += kBulletUtf8;
        fView.DrawString(bullets.c_str(), BPoint(fLeft + x, fBaseline));
        return;
    }
    int32 start = 0;
    for (int32 at = 0; at <= to - from; at++) {
        if (at < to - from && text[at] != '\t')
            continue;
        if (at > start)
            fView.DrawString(
                text + start, at - start,
                BPoint(fLeft + (start == 0 ? x : fLines.XAt(fLine, from + start)), fBaseline));
        start = at + 1;
    }
}

// One stretch is drawn as a whole; parts that directions have torn apart, character by character.
void BTextView::Private::LinePainter::_DrawShapedPiece(int32 from, int32 to,
                                                       const TextStyle& style) {
    const ShapedParagraph& shaped = fLines.ShapedAt(fLine);
    const int32 line = shaped.LineFrom(fStart);
    _UseStyle(style);
    const auto draw = [&](int32 first, int32 last, float left) {
        fView.DrawString(fData.document.buffer.Range(first, last), last - first,
                         BPoint(fLeft + left, fBaseline));
    };
    const std::vector<ShapedParagraph::Span> spans = shaped.SpansOf(line, from, to);
    const char* text = fData.document.buffer.Range(from, to);
    if (spans.size() == 1 && std::find(text, text + (to - from), '\t') == text + (to - from)) {
        draw(from, to, spans.front().left);
        return;
    }
    for (int32 at = from; at < to;) {
        const int32 next = std::clamp(shaped.NextCaret(at), at + 1, to);
        const std::vector<ShapedParagraph::Span> parts = shaped.SpansOf(line, at, next);
        if (!parts.empty() && fData.document.buffer.ByteAt(at) != '\t')
            draw(at, next, parts.front().left);
        at = next;
    }
}

// A thin line under all of it, a thicker one under the clause that is being converted.
void BTextView::Private::LinePainter::UnderlineComposition() {
    const rgb_color ink =
        fData.document.styles.Style(fData.document.styles.StyleAt(fData.compositionStart)).color;
    fView.SetHighColor(ink.red, ink.green, ink.blue);
    const float y = std::min(fBaseline + 2, fFrame.bottom);
    for (const BRect& rect : _Cover(fData.compositionStart, fData.compositionEnd))
        fView.FillRect(BRect(rect.left, y, rect.right, y));
    for (const Clause& clause : fData.clauses) {
        for (const BRect& rect : _Cover(clause.from, clause.to))
            fView.FillRect(BRect(rect.left, y, rect.right - 1, std::min(y + 1, fFrame.bottom)));
    }
}

void BTextView::Private::LinePainter::InvertHighlight() {
    for (const BRect& rect : _Cover(fData.highlightStart, fData.highlightEnd))
        fView.InvertRect(rect);
}

void BTextView::Private::Draw(BRect update) {
    view->PushState();
    view->SetDrawingMode(B_OP_OVER);
    const TextLines& lines = document.lines;
    const int32 last = lines.IndexAtY(update.bottom - textRect.top);
    for (int32 line = lines.IndexAtY(update.top - textRect.top); line <= last; line++) {
        LinePainter painter(*this, line);
        painter.FillSelection();
        if (IsComposing())
            painter.FillClauses();
        painter.DrawText(update);
        if (IsComposing())
            painter.UnderlineComposition();
        if (highlightStart < highlightEnd)
            painter.InvertHighlight();
    }
    if (caretIsOn) {
        view->SetHighColor(ui_color(B_DOCUMENT_TEXT_COLOR));
        view->FillRect(CaretFrame());
    }
    view->PopState();
}

// Starts the blinking anew, or ends it, as focus and window tell.
void BTextView::Private::ShowCaret(bool restart) {
    const bool wanted = editable && windowIsActive && view->IsFocus() && view->Window() != nullptr;
    if (wanted && !restart && caretIsOn)
        return;
    const int32 present = ++blinks;
    // The caret may have stood elsewhere: Select and InvalidateRange know nothing of it.
    if (drawnCaret.IsValid())
        view->Invalidate(drawnCaret);
    caretIsOn = wanted;
    if (!wanted)
        return;
    drawnCaret = CaretFrame();
    view->Invalidate(drawnCaret);
    ScheduleBlink(present);
}

void BTextView::Private::HideCaret() {
    blinks++;
    caretIsOn = false;
    autoscrolls = false;
}

void BTextView::Private::ScheduleBlink(int32 name) {
    BView::Private::Of(view).CallLater(kBlinkInterval, [this, name] {
        if (blinks != name)
            return;
        caretIsOn = !caretIsOn;
        drawnCaret = CaretFrame();
        view->Invalidate(drawnCaret);
        ScheduleBlink(name);
    });
}
