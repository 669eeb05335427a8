// The clipboard and the primary selection.

#include "interface/text/TextRunArrays.h"
#include "interface/text/TextViewPrivate.h"
#include "server/Desktop.h"

#include <Clipboard.h>
#include <Message.h>
#include <TypeConstants.h>

#include <cstdlib>
#include <memory>

namespace {

constexpr char kTextType[] = "text/plain";
constexpr char kRunsType[] = "application/x-vnd.Be-text_run_array";

using Runs = std::unique_ptr<text_run_array, decltype(&BTextView::FreeRunArray)>;

void AddRuns(BMessage* data, const text_run_array* runs) {
    int32 size = 0;
    if (void* flat = BTextView::FlattenRunArray(runs, &size)) {
        data->AddData(kRunsType, B_MIME_TYPE, flat, size);
        free(flat);
    }
}

Runs RunsOf(const BMessage* data) {
    const void* flat = nullptr;
    ssize_t size = 0;
    text_run_array* runs = nullptr;
    if (data->FindData(kRunsType, B_MIME_TYPE, &flat, &size) == B_OK &&
        IsFlattenedRunArray(flat, size))
        runs = BTextView::UnflattenRunArray(flat);
    return Runs(runs, BTextView::FreeRunArray);
}

} // namespace

void BTextView::Copy(BClipboard* clipboard) {
    const int32 from = fPrivate->caret.Start();
    const int32 to = fPrivate->caret.End();
    if (from == to || IsTypingHidden() || clipboard == nullptr || !clipboard->Lock())
        return;
    clipboard->Clear();
    BMessage* data = clipboard->Data();
    data->AddData(kTextType, B_MIME_TYPE, fPrivate->document.buffer.Range(from, to), to - from);
    if (fPrivate->stylable)
        AddRuns(data, Runs(BTextView::RunArray(from, to), FreeRunArray).get());
    clipboard->Commit();
    clipboard->Unlock();
}

void BTextView::Cut(BClipboard* clipboard) {
    fPrivate->AbandonComposition();
    if (!fPrivate->editable || fPrivate->caret.IsEmpty() || IsTypingHidden())
        return;
    Copy(clipboard);
    fPrivate->ReplaceSelection(B_UNDO_CUT, "", 0);
}

void BTextView::Paste(BClipboard* clipboard) {
    if (!fPrivate->editable || clipboard == nullptr || !clipboard->Lock())
        return;
    fPrivate->AbandonComposition();
    const BMessage* data = clipboard->Data();
    const void* text = nullptr;
    ssize_t length = 0;
    if (data->FindData(kTextType, B_MIME_TYPE, &text, &length) == B_OK && length > 0) {
        std::vector<StyleRun> runs;
        if (fPrivate->stylable) {
            const Runs array = RunsOf(data);
            if (array != nullptr)
                runs = fPrivate->document.Intern(*array);
        }
        fPrivate->history.EndGroup();
        fPrivate->ReplaceSelection(B_UNDO_PASTE, static_cast<const char*>(text),
                                   static_cast<int32>(length), runs.empty() ? nullptr : &runs);
        fPrivate->history.EndGroup();
    }
    clipboard->Unlock();
}

void BTextView::Clear() {
    fPrivate->AbandonComposition();
    if (fPrivate->editable && !fPrivate->caret.IsEmpty())
        fPrivate->ReplaceSelection(B_UNDO_CLEAR, "", 0);
}

bool BTextView::AcceptsPaste(BClipboard* clipboard) {
    if (!fPrivate->editable || clipboard == nullptr || !clipboard->Lock())
        return false;
    const bool accepts = clipboard->Data()->HasData(kTextType, B_MIME_TYPE);
    clipboard->Unlock();
    return accepts;
}

bool BTextView::AcceptsDrop(const BMessage* message) {
    return fPrivate->editable && message != nullptr && message->HasData(kTextType, B_MIME_TYPE);
}

void BTextView::Private::OfferPrimarySelection() {
    if (caret.IsEmpty() || document.lines.IsMasked())
        return;
    server::OfferPrimarySelection(document.Copy(caret.Start(), caret.End()).text);
}

void BTextView::Private::PastePrimarySelection(int32 offset) {
    const std::string text = server::PrimarySelection();
    Select(offset, offset);
    history.EndGroup();
    ReplaceSelection(B_UNDO_PASTE, text.data(), static_cast<int32>(text.size()));
    history.EndGroup();
}
