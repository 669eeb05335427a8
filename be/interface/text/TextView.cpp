#include <TextView.h>

#include "interface/text/TextViewPrivate.h"
#include "interface/text/TextWords.h"

#include <Cursor.h>
#include <File.h>
#include <Message.h>
#include <ScrollView.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

BTextView::BTextView(BRect frame, const char* name, BRect textRect, uint32 resizeMask, uint32 flags)
    : BTextView(frame, name, textRect, nullptr, nullptr, resizeMask, flags) {}

BTextView::BTextView(BRect frame, const char* name, BRect textRect, const BFont* initialFont,
                     const rgb_color* initialColor, uint32 resizeMask, uint32 flags)
    : BView(frame, name, resizeMask,
            (flags & ~B_PULSE_NEEDED) | B_FRAME_EVENTS | B_INPUT_METHOD_AWARE),
      fPrivate(std::make_unique<Private>(
          this, textRect, initialFont != nullptr ? *initialFont : *be_plain_font,
          initialColor != nullptr ? *initialColor : ui_color(B_DOCUMENT_TEXT_COLOR))) {
    BView::SetViewColor(ui_color(B_DOCUMENT_BACKGROUND_COLOR));
}

BTextView::~BTextView() = default;

void BTextView::AttachedToWindow() {
    BView::AttachedToWindow();
    fPrivate->windowIsActive = Window()->IsActive();
    if (fPrivate->selectable || fPrivate->editable)
        SetViewCursor(B_CURSOR_I_BEAM);
    fPrivate->LayoutChanged();
}

void BTextView::DetachedFromWindow() {
    fPrivate->tracking = false;
    fPrivate->HideCaret();
    BView::DetachedFromWindow();
}

void BTextView::Draw(BRect updateRect) {
    fPrivate->Draw(updateRect);
}

void BTextView::MouseDown(BPoint where) {
    fPrivate->PointerDown(where, Window() != nullptr ? Window()->CurrentMessage() : nullptr);
}

void BTextView::MouseUp(BPoint where) {
    BView::MouseUp(where);
    fPrivate->PointerUp();
}

void BTextView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) {
    BView::MouseMoved(where, transit, dragMessage);
    fPrivate->PointerMoved(where);
}

void BTextView::WindowActivated(bool active) {
    BView::WindowActivated(active);
    fPrivate->windowIsActive = active;
    fPrivate->ShowCaret(false);
    fPrivate->InvalidateRange(fPrivate->caret.Start(), fPrivate->caret.End());
    if (active)
        fPrivate->TellInputMethod();
}

void BTextView::KeyDown(const char* bytes, int32 numBytes) {
    fPrivate->HandleKey(bytes, numBytes);
}

void BTextView::Pulse() {}

void BTextView::FrameResized(float width, float height) {
    BView::FrameResized(width, height);
    fPrivate->UpdateScrollBars();
    if (ScrollBar(B_VERTICAL) == nullptr)
        fPrivate->ScrollVertically(0);
}

void BTextView::MakeFocus(bool focused) {
    if (!focused)
        fPrivate->AbandonComposition();
    BView::MakeFocus(focused);
    if (Window() == nullptr)
        return;
    fPrivate->windowIsActive = Window()->IsActive();
    fPrivate->ShowCaret(false);
    fPrivate->InvalidateRange(fPrivate->caret.Start(), fPrivate->caret.End());
    fPrivate->TellInputMethod();
    if (BScrollView* frame = dynamic_cast<BScrollView*>(Parent()))
        frame->SetBorderHighlighted(focused);
}

void BTextView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case B_CUT: Cut(be_clipboard); break;
    case B_COPY: Copy(be_clipboard); break;
    case B_PASTE: Paste(be_clipboard); break;
    case B_SELECT_ALL: SelectAll(); break;
    case B_UNDO: Undo(be_clipboard); break;
    case B_REDO: fPrivate->TakeBack(true); break;
    case B_INPUT_METHOD_EVENT: fPrivate->HandleInputMethod(message); break;
    default: BView::MessageReceived(message); break;
    }
}

void BTextView::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = Bounds().Width();
    if (height != nullptr)
        *height = 2 * std::max(0.0f, fPrivate->textRect.top) +
                  static_cast<float>(fPrivate->document.lines.Height()) - 1;
}

void BTextView::SetText(const char* text, const text_run_array* runs) {
    SetText(text, text != nullptr ? static_cast<int32>(strlen(text)) : 0, runs);
}

void BTextView::SetText(const char* text, int32 length, const text_run_array* runs) {
    fPrivate->AbandonComposition();
    fPrivate->Select(0, 0);
    if (TextLength() > 0)
        DeleteText(0, TextLength());
    if (text != nullptr && length > 0)
        InsertText(text, length, 0, runs);
    fPrivate->Select(0, 0);
    fPrivate->ProgramChanged();
    ScrollToOffset(0);
}

void BTextView::SetText(BFile* file, int32 startOffset, int32 length, const text_run_array* runs) {
    std::string text(std::max(0, length), '\0');
    const ssize_t read = file != nullptr ? file->ReadAt(startOffset, text.data(), text.size()) : 0;
    SetText(text.data(), static_cast<int32>(std::max<ssize_t>(0, read)), runs);
}

void BTextView::Insert(const char* text, const text_run_array* runs) {
    if (text != nullptr)
        Insert(text, static_cast<int32>(strlen(text)), runs);
}

void BTextView::Insert(const char* text, int32 length, const text_run_array* runs) {
    const bool wasEmpty = fPrivate->caret.IsEmpty();
    const int32 before = TextLength();
    const int32 offset = fPrivate->caret.Start();
    Insert(offset, text, length, runs);
    if (!wasEmpty)
        return;
    fPrivate->Select(offset + TextLength() - before, offset + TextLength() - before);
    fPrivate->TellInputMethod();
}

void BTextView::Insert(int32 offset, const char* text, int32 length, const text_run_array* runs) {
    if (text == nullptr || length <= 0)
        return;
    fPrivate->AbandonComposition();
    InsertText(text, length, fPrivate->document.Clamp(offset), runs);
    fPrivate->ProgramChanged();
}

void BTextView::Delete() {
    Delete(fPrivate->caret.Start(), fPrivate->caret.End());
}

void BTextView::Delete(int32 startOffset, int32 endOffset) {
    fPrivate->AbandonComposition();
    const int32 from = fPrivate->document.Clamp(startOffset);
    const int32 to = fPrivate->document.Clamp(endOffset);
    if (from >= to)
        return;
    DeleteText(from, to);
    fPrivate->ProgramChanged();
}

void BTextView::InsertText(const char* text, int32 length, int32 offset,
                           const text_run_array* runs) {
    if (text == nullptr || length <= 0)
        return;
    TextDocument& document = fPrivate->document;
    const int32 at = document.Clamp(offset);
    std::vector<StyleRun> interned;
    if (runs != nullptr && fPrivate->stylable)
        interned = document.Intern(*runs);
    const TextLines::Change change =
        document.Insert(at, text, length, interned.empty() ? nullptr : &interned);
    fPrivate->caret.Inserted(at, length);
    fPrivate->Changed(change);
}

void BTextView::DeleteText(int32 fromOffset, int32 toOffset) {
    TextDocument& document = fPrivate->document;
    const int32 from = document.Clamp(fromOffset);
    const int32 to = document.Clamp(toOffset);
    if (from >= to)
        return;
    const TextLines::Change change = document.Delete(from, to);
    fPrivate->caret.Removed(from, to);
    fPrivate->highlightStart = fPrivate->highlightEnd = 0;
    fPrivate->Changed(change);
}

const char* BTextView::Text() const {
    return fPrivate->document.buffer.Text();
}

int32 BTextView::TextLength() const {
    return fPrivate->document.buffer.Length();
}

void BTextView::GetText(int32 offset, int32 length, char* buffer) const {
    if (buffer == nullptr)
        return;
    const int32 from = std::clamp(offset, 0, TextLength());
    const int32 part = std::clamp(length, 0, TextLength() - from);
    fPrivate->document.buffer.Copy(from, part, buffer);
    buffer[part] = '\0';
}

uchar BTextView::ByteAt(int32 offset) const {
    if (offset < 0 || offset >= TextLength())
        return 0;
    return static_cast<uchar>(fPrivate->document.buffer.ByteAt(offset));
}

void BTextView::FindWord(int32 offset, int32* from, int32* to) {
    int32 start = 0;
    int32 end = 0;
    FindWordAround(fPrivate->document.buffer, fPrivate->document.Clamp(offset), &start, &end);
    if (from != nullptr)
        *from = start;
    if (to != nullptr)
        *to = end;
}

void BTextView::Undo(BClipboard*) {
    fPrivate->TakeBack(false);
}

undo_state BTextView::UndoState(bool* isRedo) const {
    if (isRedo != nullptr)
        *isRedo = false;
    return fPrivate->history.UndoKind();
}
