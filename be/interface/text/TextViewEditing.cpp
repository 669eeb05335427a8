// Changes that the user makes, which can be undone.

#include "interface/text/TextViewPrivate.h"
#include "support/Utf8.h"

#include <algorithm>

void BTextView::Private::Replace(undo_state kind, int32 from, int32 to, const StyledText& text) {
    if (from == to && text.text.empty())
        return;
    const int32 length = static_cast<int32>(text.text.size());
    if (doesUndo && !document.lines.IsMasked())
        history.Note({kind, from, document.Copy(from, to), text, caret.Start(), caret.End()});
    if (from < to)
        view->DeleteText(from, to);
    if (length > 0) {
        view->InsertText(text.text.data(), length, from, nullptr);
        if (!text.runs.empty())
            Changed(document.SetRuns(from, from + length, text.runs));
    }
    Select(from + length, from + length);
    RevealCaret();
    ShowCaret(true);
    if (modified)
        modified();
}

void BTextView::Private::ReplaceSelection(undo_state kind, const char* text, int32 length,
                                          const std::vector<StyleRun>* runs) {
    const int32 from = caret.Start();
    const int32 to = caret.End();
    StyledText piece;
    piece.text = Filtered(text, length, to - from);
    if (runs != nullptr && static_cast<int32>(piece.text.size()) == length)
        piece.runs = *runs;
    if (piece.runs.empty())
        piece.runs = {{0, typingStyle >= 0 ? typingStyle : document.styles.TypingStyle(from)}};
    if (piece.text.empty())
        piece.runs.clear();
    Replace(kind, from, to, piece);
}

void BTextView::Private::Erase(bool forward, bool word) {
    int32 from = caret.Start();
    int32 to = caret.End();
    if (from == to) {
        TextCaret reach = caret;
        const CaretMove move = word ? (forward ? CaretMove::kWordRight : CaretMove::kWordLeft)
                                    : (forward ? CaretMove::kRight : CaretMove::kLeft);
        reach.Move(document, move, true, 0);
        from = reach.Start();
        to = reach.End();
        // Backspace takes marks off one by one.
        if (!forward && !word && from < to)
            from = document.buffer.PreviousCharacter(to);
    }
    Replace(B_UNDO_TYPING, from, to, {});
}

bool BTextView::Private::TakeBack(bool redo) {
    if (!editable)
        return false;
    AbandonComposition();
    std::optional<TextEdit> edit = redo ? history.TakeRedo() : history.TakeUndo();
    if (!edit)
        return false;
    StyledText& gone = redo ? edit->removed : edit->inserted;
    StyledText& back = redo ? edit->inserted : edit->removed;
    const int32 goneEnd = edit->offset + static_cast<int32>(gone.text.size());
    if (!gone.text.empty())
        view->DeleteText(edit->offset, goneEnd);
    const int32 backEnd = edit->offset + static_cast<int32>(back.text.size());
    if (!back.text.empty()) {
        view->InsertText(back.text.data(), backEnd - edit->offset, edit->offset, nullptr);
        Changed(document.SetRuns(edit->offset, backEnd, back.runs));
    }
    if (redo)
        Select(backEnd, backEnd);
    else
        Select(edit->selectionStart, edit->selectionEnd);
    RevealCaret();
    if (modified)
        modified();
    return true;
}

std::string BTextView::Private::Filtered(const char* text, int32 length, int32 replaced) const {
    std::string result;
    const int32 room = maxBytes - (document.buffer.Length() - replaced);
    for (int32 at = 0; at < length;) {
        const Utf8Character character = DecodeUtf8(text + at, length - at);
        const bool control =
            character.code < 0x20 && character.code != '\n' && character.code != '\t';
        if (!control && character.code != 0x7F && disallowed.count(character.code) == 0) {
            if (static_cast<int32>(result.size()) + character.bytes > room)
                break;
            result.append(text + at, character.bytes);
        } else if (character.code == '\r' && (at + 1 == length || text[at + 1] != '\n') &&
                   disallowed.count('\n') == 0 && static_cast<int32>(result.size()) < room) {
            result.push_back('\n');
        }
        at += character.bytes;
    }
    return result;
}

void BTextView::Private::Select(int32 anchor, int32 caretOffset) {
    const int32 oldStart = caret.Start();
    const int32 oldEnd = caret.End();
    caret.Select(document.Clamp(anchor), document.Clamp(caretOffset));
    SelectionChanged(oldStart, oldEnd);
}

void BTextView::Private::SelectionChanged(int32 oldStart, int32 oldEnd) {
    typingStyle = -1;
    if (highlightStart < highlightEnd) {
        InvalidateRange(highlightStart, highlightEnd);
        highlightStart = highlightEnd = 0;
    }
    const int32 start = caret.Start();
    const int32 end = caret.End();
    if (view->IsFocus())
        ShowCaret(true);
    if (start == oldStart && end == oldEnd)
        return;
    // Only what is in one selection and not in the other looks different.
    if (oldStart == oldEnd || start == end || end < oldStart || oldEnd < start) {
        InvalidateRange(oldStart, oldEnd);
        InvalidateRange(start, end);
    } else {
        InvalidateRange(std::min(start, oldStart), std::max(start, oldStart));
        InvalidateRange(std::min(end, oldEnd), std::max(end, oldEnd));
    }
}

// The program has changed the text: what could be undone no longer fits it.
void BTextView::Private::ProgramChanged() {
    history.Clear();
    typingStyle = -1;
    if (view->IsFocus())
        TellInputMethod();
}

int32 BTextView::Private::ApplyStyle(int32 from, int32 to, const BFont* font, uint32 mode,
                                     const rgb_color* color) {
    std::vector<StyleRun> runs;
    for (const StyleRun& run : document.RunsOf(from, to)) {
        // Interning may move the styles.
        BFont combined = document.styles.Style(run.style).font;
        const rgb_color ink = color != nullptr ? *color : document.styles.Style(run.style).color;
        if (font != nullptr) {
            if (mode & B_FONT_FAMILY_AND_STYLE)
                combined.SetFamilyAndStyle(font->FamilyAndStyle());
            if (mode & B_FONT_SIZE)
                combined.SetSize(font->Size());
            if (mode & B_FONT_FACE)
                combined.SetFace(font->Face());
            if (mode & B_FONT_SPACING)
                combined.SetSpacing(font->Spacing());
        }
        runs.push_back({run.offset, document.styles.Intern(combined, ink)});
    }
    if (from == to && document.buffer.Length() > 0)
        return runs.front().style;
    if (document.buffer.Length() == 0) {
        document.styles.Set(0, 0, runs.front().style, 0);
        Changed(document.lines.Update(0, 0, 0));
    } else {
        Changed(document.SetRuns(from, to, runs));
    }
    return runs.front().style;
}
