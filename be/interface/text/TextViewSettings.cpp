// What a text view can be set to, and the styles of its text.

#include "interface/text/TextViewPrivate.h"

#include <Cursor.h>

#include <algorithm>

void BTextView::Select(int32 startOffset, int32 endOffset) {
    if (fPrivate->IsComposing())
        fPrivate->AbandonComposition();
    fPrivate->Select(startOffset, std::max(startOffset, endOffset));
    fPrivate->TellInputMethod();
}

void BTextView::SelectAll() {
    if (fPrivate->selectable || fPrivate->editable)
        Select(0, TextLength());
    fPrivate->OfferPrimarySelection();
}

void BTextView::GetSelection(int32* startOffset, int32* endOffset) const {
    if (startOffset != nullptr)
        *startOffset = fPrivate->caret.Start();
    if (endOffset != nullptr)
        *endOffset = fPrivate->caret.End();
}

void BTextView::SetFontAndColor(const BFont* font, uint32 mode, const rgb_color* color) {
    if (!fPrivate->stylable || TextLength() == 0) {
        fPrivate->ApplyStyle(0, TextLength(), font, mode, color);
        return;
    }
    const int32 style =
        fPrivate->ApplyStyle(fPrivate->caret.Start(), fPrivate->caret.End(), font, mode, color);
    if (fPrivate->caret.IsEmpty())
        fPrivate->typingStyle = style;
}

void BTextView::SetFontAndColor(int32 startOffset, int32 endOffset, const BFont* font, uint32 mode,
                                const rgb_color* color) {
    int32 from = fPrivate->document.Clamp(startOffset);
    int32 to = fPrivate->document.Clamp(endOffset);
    if (!fPrivate->stylable) {
        from = 0;
        to = TextLength();
    }
    if (from < to || TextLength() == 0)
        fPrivate->ApplyStyle(from, to, font, mode, color);
}

void BTextView::GetFontAndColor(int32 offset, BFont* font, rgb_color* color) const {
    const TextStyles& styles = fPrivate->document.styles;
    const TextStyle& style = styles.Style(styles.StyleAt(fPrivate->document.Clamp(offset)));
    if (font != nullptr)
        *font = style.font;
    if (color != nullptr)
        *color = style.color;
}

void BTextView::GetFontAndColor(BFont* font, uint32* sameProperties, rgb_color* color,
                                bool* sameColor) const {
    const TextStyles& styles = fPrivate->document.styles;
    const int32 from = fPrivate->caret.Start();
    const std::vector<StyleRun> runs = fPrivate->document.RunsOf(from, fPrivate->caret.End());
    const TextStyle& first = styles.Style(runs.front().style);
    uint32 same = B_FONT_ALL;
    bool oneColor = true;
    for (const StyleRun& run : runs) {
        const TextStyle& style = styles.Style(run.style);
        if (style.font.FamilyAndStyle() != first.font.FamilyAndStyle())
            same &= ~B_FONT_FAMILY_AND_STYLE;
        if (style.font.Size() != first.font.Size())
            same &= ~B_FONT_SIZE;
        if (style.font.Face() != first.font.Face())
            same &= ~B_FONT_FACE;
        oneColor = oneColor && style.color == first.color;
    }
    if (font != nullptr)
        *font = first.font;
    if (sameProperties != nullptr)
        *sameProperties = same;
    if (color != nullptr)
        *color = first.color;
    if (sameColor != nullptr)
        *sameColor = oneColor;
}

void BTextView::SetRunArray(int32 startOffset, int32 endOffset, const text_run_array* runs) {
    const int32 from = fPrivate->document.Clamp(startOffset);
    const int32 to = fPrivate->document.Clamp(endOffset);
    if (!fPrivate->stylable || runs == nullptr || from >= to)
        return;
    fPrivate->Changed(fPrivate->document.SetRuns(from, to, fPrivate->document.Intern(*runs)));
}

text_run_array* BTextView::RunArray(int32 startOffset, int32 endOffset, int32* size) const {
    const TextStyles& styles = fPrivate->document.styles;
    const int32 from = fPrivate->document.Clamp(startOffset);
    const int32 to = std::max(from, fPrivate->document.Clamp(endOffset));
    const std::vector<StyleRun> runs = fPrivate->document.RunsOf(from, to);
    text_run_array* array = AllocRunArray(static_cast<int32>(runs.size()), size);
    if (array == nullptr)
        return nullptr;
    text_run* entry = array->runs;
    for (const StyleRun& run : runs) {
        const TextStyle& style = styles.Style(run.style);
        *entry++ = {run.offset, style.font, style.color};
    }
    return array;
}

void BTextView::Highlight(int32 startOffset, int32 endOffset) {
    Private& data = *fPrivate;
    data.InvalidateRange(data.highlightStart, data.highlightEnd);
    data.highlightStart = data.document.Clamp(startOffset);
    data.highlightEnd = data.document.Clamp(endOffset);
    data.InvalidateRange(data.highlightStart, data.highlightEnd);
}

void BTextView::SetTextRect(BRect rect) {
    fPrivate->textRect = rect;
    fPrivate->ApplyWrapping();
    fPrivate->LayoutChanged();
}

BRect BTextView::TextRect() const {
    BRect rect = fPrivate->textRect;
    rect.bottom = rect.top + static_cast<float>(fPrivate->document.lines.Height()) - 1;
    return rect;
}

void BTextView::SetStylable(bool stylable) {
    fPrivate->stylable = stylable;
}

bool BTextView::IsStylable() const {
    return fPrivate->stylable;
}

void BTextView::SetTabWidth(float width) {
    fPrivate->document.lines.SetTabWidth(width);
    fPrivate->LayoutChanged();
}

float BTextView::TabWidth() const {
    return fPrivate->document.lines.TabWidth();
}

void BTextView::MakeSelectable(bool selectable) {
    fPrivate->selectable = selectable;
    fPrivate->InvalidateRange(fPrivate->caret.Start(), fPrivate->caret.End());
}

bool BTextView::IsSelectable() const {
    return fPrivate->selectable;
}

void BTextView::MakeEditable(bool editable) {
    if (editable == fPrivate->editable)
        return;
    if (!editable)
        fPrivate->AbandonComposition();
    fPrivate->editable = editable;
    fPrivate->ShowCaret(true);
    fPrivate->TellInputMethod();
}

bool BTextView::IsEditable() const {
    return fPrivate->editable;
}

void BTextView::SetWordWrap(bool wrap) {
    fPrivate->wordWrap = wrap;
    fPrivate->ApplyWrapping();
    fPrivate->LayoutChanged();
}

bool BTextView::DoesWordWrap() const {
    return fPrivate->wordWrap;
}

void BTextView::SetMaxBytes(int32 max) {
    fPrivate->maxBytes = std::max(0, max);
}

int32 BTextView::MaxBytes() const {
    return fPrivate->maxBytes;
}

void BTextView::DisallowChar(uint32 character) {
    fPrivate->disallowed.insert(character);
}

void BTextView::AllowChar(uint32 character) {
    fPrivate->disallowed.erase(character);
}

void BTextView::SetAlignment(alignment flag) {
    fPrivate->align = flag;
    fPrivate->LayoutChanged();
}

alignment BTextView::Alignment() const {
    return fPrivate->align;
}

void BTextView::SetAutoindent(bool state) {
    fPrivate->autoindent = state;
}

bool BTextView::DoesAutoindent() const {
    return fPrivate->autoindent;
}

void BTextView::SetDoesUndo(bool undo) {
    fPrivate->doesUndo = undo;
    if (!undo)
        fPrivate->history.Clear();
}

bool BTextView::DoesUndo() const {
    return fPrivate->doesUndo;
}

void BTextView::HideTyping(bool enabled) {
    if (enabled == IsTypingHidden())
        return;
    SetText("");
    fPrivate->document.lines.SetMasked(enabled);
    fPrivate->LayoutChanged();
}

bool BTextView::IsTypingHidden() const {
    return fPrivate->document.lines.IsMasked();
}
