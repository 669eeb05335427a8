#pragma once

#include "interface/text/TextDocument.h"

#include <TextView.h>

#include <deque>
#include <optional>

// One change that the user made: at `offset`, `removed` gave way to `inserted`. The selection is
// the one from before.
struct TextEdit {
    undo_state kind;
    int32 offset;
    StyledText removed;
    StyledText inserted;
    int32 selectionStart;
    int32 selectionEnd;
};

// What can be undone and redone. Typing is grouped: a word, or a stretch of deletions, is undone
// at once. Keeps the last few megabytes.
class TextHistory {
public:
    void Note(TextEdit edit);
    // The next edit begins a group of its own, for instance because the caret was moved.
    void EndGroup() { fGroupIsOpen = false; }
    void Clear();

    // The edit to take back, or to do again; none if there is none. Moves on in the history.
    std::optional<TextEdit> TakeUndo();
    std::optional<TextEdit> TakeRedo();

    undo_state UndoKind() const;
    undo_state RedoKind() const;

private:
    bool _Joins(const TextEdit& edit) const;
    void _Join(const TextEdit& edit);
    void _Forget();

    std::deque<TextEdit> fEdits;
    size_t fDone = 0; // edits before this one are done, the rest undone
    size_t fBytes = 0;
    bool fGroupIsOpen = false;
};
