// Text that an input method is still composing: shown in place, underlined, outside of the history
// until it is confirmed.

#include "interface/text/TextViewPrivate.h"
#include "interface/windows/ViewPrivate.h"

#include <Message.h>

#include <algorithm>
#include <cstring>

namespace {

// As much of the text around the caret as input methods look at, in bytes.
constexpr int32 kSurrounding = 512;

} // namespace

void BTextView::Private::HandleInputMethod(BMessage* message) {
    int32 opcode = 0;
    if (!editable || message->FindInt32("be:opcode", &opcode) != B_OK)
        return;
    switch (opcode) {
    case B_INPUT_METHOD_CHANGED: ShowComposition(message); break;
    case B_INPUT_METHOD_STOPPED: EndComposition(""); break;
    case B_INPUT_METHOD_LOCATION_REQUEST: TellInputMethod(); break;
    default: break;
    }
}

void BTextView::Private::ShowComposition(BMessage* message) {
    const char* string = nullptr;
    if (message->FindString("be:string", &string) != B_OK)
        return;
    bool confirmed = false;
    message->FindBool("be:confirmed", &confirmed);
    if (confirmed) {
        int32 replaceFrom = 0;
        int32 replaceTo = 0;
        message->FindInt32("be:replace_from", &replaceFrom);
        message->FindInt32("be:replace_to", &replaceTo);
        EndComposition(string, replaceFrom, replaceTo);
        return;
    }
    const int32 length = static_cast<int32>(strlen(string));
    PutComposition(string, length);
    ReadClauses(message, length);
    int32 selection = length;
    message->FindInt32("be:selection", &selection);
    const int32 at = compositionStart + std::clamp(selection, 0, length);
    Select(at, at);
    RevealCaret();
    ShowCaret(true);
}

// In the place of the last one, or of the selection.
void BTextView::Private::PutComposition(const char* text, int32 length) {
    if (!IsComposing() && !caret.IsEmpty())
        Replace(B_UNDO_TYPING, caret.Start(), caret.End(), {});
    const int32 start = IsComposing() ? compositionStart : caret.Start();
    if (IsComposing())
        view->DeleteText(compositionStart, compositionEnd);
    if (length > 0)
        view->InsertText(text, length, start, nullptr);
    compositionStart = start;
    compositionEnd = start + length;
}

void BTextView::Private::ReadClauses(const BMessage* message, int32 length) {
    clauses.clear();
    int32 from = 0;
    int32 to = 0;
    for (int32 i = 0; message->FindInt32("be:clause_start", i, &from) == B_OK &&
                      message->FindInt32("be:clause_end", i, &to) == B_OK;
         i++) {
        bool converting = false;
        message->FindBool("be:clause_selected", i, &converting);
        if (converting)
            clauses.push_back({compositionStart + std::clamp(from, 0, length),
                               compositionStart + std::clamp(to, 0, length)});
    }
}

void BTextView::Private::EndComposition(const char* result, int32 replaceFrom, int32 replaceTo) {
    if (IsComposing()) {
        const int32 start = compositionStart;
        view->DeleteText(compositionStart, compositionEnd);
        compositionStart = compositionEnd = 0;
        clauses.clear();
        Select(start, start);
    }
    if (replaceFrom < replaceTo)
        Select(caret.Start() + replaceFrom, caret.Start() + replaceTo);
    if (result[0] == '\0' && replaceFrom < replaceTo)
        Replace(B_UNDO_TYPING, caret.Start(), caret.End(), {});
    else if (result[0] != '\0')
        ReplaceSelection(B_UNDO_TYPING, result, static_cast<int32>(strlen(result)));
    TellInputMethod();
}

// A click or a loss of the focus keeps what has been composed so far.
void BTextView::Private::AbandonComposition() {
    if (!IsComposing())
        return;
    std::string text(compositionEnd - compositionStart, '\0');
    document.buffer.Copy(compositionStart, compositionEnd - compositionStart, text.data());
    EndComposition(text.c_str());
    BView::Private::Of(view).ResetInputMethod();
}

void BTextView::Private::TellInputMethod() {
    if (view->Window() == nullptr || !view->IsFocus())
        return;
    InputMethodState state;
    state.enabled = editable && !document.lines.IsMasked();
    // Where nobody composes, the text around the caret is of no interest.
    if (!state.enabled && !BView::Private::Of(view).InputMethodIsEnabled())
        return;
    state.caret = CaretFrame();
    // The composition is no part of the text around it.
    const int32 from = IsComposing() ? compositionStart : caret.Start();
    const int32 to = IsComposing() ? compositionEnd : caret.Start();
    const int32 first = document.Clamp(std::max(0, from - kSurrounding));
    const int32 last = document.Clamp(std::min(document.buffer.Length(), to + kSurrounding));
    if (state.enabled) {
        state.surrounding.resize(from - first + last - to);
        document.buffer.Copy(first, from - first, state.surrounding.data());
        document.buffer.Copy(to, last - to, state.surrounding.data() + (from - first));
    }
    state.cursorByte = from - first;
    state.anchorByte = IsComposing() ? state.cursorByte
                                     : std::clamp(caret.End() - first, 0,
                                                  static_cast<int32>(state.surrounding.size()));
    BView::Private::Of(view).SetInputMethodState(state);
}
