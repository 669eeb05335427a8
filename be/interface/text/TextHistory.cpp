#include "interface/text/TextHistory.h"

#include <utility>

namespace {

constexpr size_t kMostBytes = 4 * 1024 * 1024;

size_t SizeOf(const TextEdit& edit) {
    return sizeof(TextEdit) + edit.removed.text.size() + edit.inserted.text.size();
}

bool IsTyping(const TextEdit& edit) {
    return edit.kind == B_UNDO_TYPING && edit.removed.text.empty() && !edit.inserted.text.empty();
}

bool IsErasing(const TextEdit& edit) {
    return edit.kind == B_UNDO_TYPING && edit.inserted.text.empty() && !edit.removed.text.empty();
}

bool EndsWord(const std::string& text) {
    return text.back() == ' ' || text.back() == '\n';
}

void Append(StyledText& to, const StyledText& more) {
    const int32 shift = static_cast<int32>(to.text.size());
    for (const StyleRun& run : more.runs) {
        if (to.runs.empty() || to.runs.back().style != run.style)
            to.runs.push_back({shift + run.offset, run.style});
    }
    to.text += more.text;
}

} // namespace

void TextHistory::Note(TextEdit edit) {
    while (fEdits.size() > fDone) {
        fBytes -= SizeOf(fEdits.back());
        fEdits.pop_back();
    }
    if (_Joins(edit)) {
        _Join(edit);
        return;
    }
    fBytes += SizeOf(edit);
    fEdits.push_back(std::move(edit));
    fDone = fEdits.size();
    fGroupIsOpen = true;
    _Forget();
}

bool TextHistory::_Joins(const TextEdit& edit) const {
    if (!fGroupIsOpen || fEdits.empty())
        return false;
    const TextEdit& last = fEdits.back();
    const int32 lastEnd = last.offset + static_cast<int32>(last.inserted.text.size());
    if (last.kind == B_UNDO_TYPING && !last.inserted.text.empty() && IsTyping(edit))
        return edit.offset == lastEnd &&
               (!EndsWord(last.inserted.text) || EndsWord(edit.inserted.text));
    if (IsErasing(last) && IsErasing(edit)) {
        const int32 editEnd = edit.offset + static_cast<int32>(edit.removed.text.size());
        return editEnd == last.offset || edit.offset == last.offset;
    }
    return false;
}

void TextHistory::_Join(const TextEdit& edit) {
    TextEdit& last = fEdits.back();
    fBytes -= SizeOf(last);
    if (IsTyping(edit)) {
        Append(last.inserted, edit.inserted);
    } else if (edit.offset == last.offset) {
        Append(last.removed, edit.removed);
    } else {
        StyledText joined = edit.removed;
        Append(joined, last.removed);
        last.removed = std::move(joined);
        last.offset = edit.offset;
    }
    fBytes += SizeOf(last);
}

void TextHistory::_Forget() {
    while (fBytes > kMostBytes && fEdits.size() > 1) {
        fBytes -= SizeOf(fEdits.front());
        fEdits.pop_front();
        fDone--;
    }
}

void TextHistory::Clear() {
    fEdits.clear();
    fDone = 0;
    fBytes = 0;
    fGroupIsOpen = false;
}

std::optional<TextEdit> TextHistory::TakeUndo() {
    if (fDone == 0)
        return std::nullopt;
    fGroupIsOpen = false;
    return fEdits[--fDone];
}

std::optional<TextEdit> TextHistory::TakeRedo() {
    if (fDone == fEdits.size())
        return std::nullopt;
    fGroupIsOpen = false;
    return fEdits[fDone++];
}

undo_state TextHistory::UndoKind() const {
    return fDone > 0 ? fEdits[fDone - 1].kind : B_UNDO_UNAVAILABLE;
}

undo_state TextHistory::RedoKind() const {
    return fDone < fEdits.size() ? fEdits[fDone].kind : B_UNDO_UNAVAILABLE;
}
