// The keyboard.

#include "interface/text/TextViewPrivate.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>

namespace {

// What the message of the key tells besides the bytes; a subclass may hand on other bytes than the
// key's own, which then come without modifiers.
struct KeyState {
    bool shift = false;
    bool word = false;       // Ctrl
    int32 controlLetter = 0; // Ctrl with this letter, which made the byte
};

KeyState StateOf(const BView* view, char byte) {
    KeyState state;
    const BMessage* message =
        view->Window() != nullptr ? view->Window()->CurrentMessage() : nullptr;
    int32 down = 0;
    int32 raw = 0;
    if (message == nullptr || message->what != B_KEY_DOWN ||
        message->FindInt32("modifiers", &down) != B_OK ||
        message->FindInt32("raw_char", &raw) != B_OK)
        return state;
    const bool control = (down & (B_CONTROL_KEY | B_COMMAND_KEY)) != 0;
    if (control && raw >= 0x20 && raw < 0x7F) {
        if ((raw & 0x1F) == byte || raw == byte)
            state.controlLetter = raw | 0x20;
        return state;
    }
    state.shift = (down & B_SHIFT_KEY) != 0;
    state.word = control && raw == byte;
    return state;
}

} // namespace

void BTextView::Private::HandleKey(const char* bytes, int32 numBytes) {
    if (numBytes < 1 || IsComposing())
        return;
    const KeyState state = StateOf(view, bytes[0]);
    if (numBytes == 1 && state.controlLetter != 0) {
        if (!HandleControlLetter(state.controlLetter, (modifiers() & B_SHIFT_KEY) != 0))
            PassOn(bytes, numBytes);
        return;
    }
    if (numBytes == 1 && HandleMove(bytes[0], state.word, state.shift))
        return;
    const uchar first = static_cast<uchar>(bytes[0]);
    if (!editable) {
        if (numBytes != 1 || !ScrollByKey(bytes[0]))
            PassOn(bytes, numBytes);
        return;
    }
    if (numBytes == 1 && (first == B_BACKSPACE || first == B_DELETE))
        Erase(first == B_DELETE, state.word);
    else if (first == B_TAB && state.shift)
        PassOn(bytes, numBytes); // the way out of a text that Tab is typed into
    else if (first >= 0x20 || first == '\n' || first == B_TAB)
        Type(bytes, numBytes);
    else
        PassOn(bytes, numBytes);
}

bool BTextView::Private::HandleControlLetter(int32 letter, bool shift) {
    switch (letter) {
    case 'c': view->Copy(be_clipboard); return true;
    case 'x':
        if (editable)
            view->Cut(be_clipboard);
        return true;
    case 'v':
        if (editable)
            view->Paste(be_clipboard);
        return true;
    case 'a': view->SelectAll(); return true;
    case 'z':
        if (editable && shift)
            TakeBack(true);
        else if (editable)
            view->Undo(be_clipboard);
        return true;
    default: return false;
    }
}

bool BTextView::Private::HandleMove(char byte, bool word, bool shift) {
    if (!editable && !(selectable && shift))
        return false;
    CaretMove move;
    switch (byte) {
    case B_LEFT_ARROW: move = word ? CaretMove::kWordLeft : CaretMove::kLeft; break;
    case B_RIGHT_ARROW: move = word ? CaretMove::kWordRight : CaretMove::kRight; break;
    case B_UP_ARROW: move = CaretMove::kUp; break;
    case B_DOWN_ARROW: move = CaretMove::kDown; break;
    case B_PAGE_UP: move = CaretMove::kPageUp; break;
    case B_PAGE_DOWN: move = CaretMove::kPageDown; break;
    case B_HOME: move = word ? CaretMove::kTextStart : CaretMove::kLineStart; break;
    case B_END: move = word ? CaretMove::kTextEnd : CaretMove::kLineEnd; break;
    default: return false;
    }
    MoveCaret(move, shift);
    if (shift)
        OfferPrimarySelection();
    return true;
}

void BTextView::Private::MoveCaret(CaretMove move, bool extend) {
    TextCaret moved = caret;
    moved.Move(document, move, extend, view->Bounds().Height());
    const int32 oldStart = caret.Start();
    const int32 oldEnd = caret.End();
    // A subclass sees the new selection; the caret keeps its end and its aim.
    view->Select(moved.Start(), moved.End());
    if (caret.Start() == moved.Start() && caret.End() == moved.End())
        caret = moved;
    SelectionChanged(oldStart, oldEnd);
    history.EndGroup();
    RevealCaret();
    ShowCaret(true);
}

bool BTextView::Private::ScrollByKey(char byte) {
    const float line = static_cast<float>(document.styles.Style(0).height);
    const float page = std::max(line, view->Bounds().Height() + 1 - line);
    const float whole = static_cast<float>(document.lines.Height()) + 2 * textRect.top;
    switch (byte) {
    case B_UP_ARROW: ScrollVertically(-line); return true;
    case B_DOWN_ARROW: ScrollVertically(line); return true;
    case B_PAGE_UP: ScrollVertically(-page); return true;
    case B_PAGE_DOWN:
    case B_SPACE: ScrollVertically(page); return true;
    case B_HOME: ScrollVertically(-whole); return true;
    case B_END: ScrollVertically(whole); return true;
    default: return false;
    }
}

void BTextView::Private::Type(const char* bytes, int32 numBytes) {
    if (numBytes == 1 && bytes[0] == '\n' && autoindent) {
        std::string text(1, '\n');
        text += Indentation();
        ReplaceSelection(B_UNDO_TYPING, text.data(), static_cast<int32>(text.size()));
        return;
    }
    ReplaceSelection(B_UNDO_TYPING, bytes, numBytes);
}

std::string BTextView::Private::Indentation() const {
    const TextBuffer& buffer = document.buffer;
    int32 start = caret.Start();
    while (start > 0 && buffer.ByteAt(start - 1) != '\n')
        start--;
    std::string indentation;
    for (int32 at = start; at < caret.Start(); at++) {
        const char byte = buffer.ByteAt(at);
        if (byte != ' ' && byte != '\t')
            break;
        indentation.push_back(byte);
    }
    return indentation;
}
