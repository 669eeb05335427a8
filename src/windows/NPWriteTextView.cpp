#include "windows/NPWriteTextView.h"

#include "messages/Messages.h"
#include "widgets/MenuKey.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <MenuItem.h>
#include <Message.h>
#include <PopUpMenu.h>
#include <Window.h>

#include <algorithm>
#include <string>

namespace {

constexpr float kInset = 6;
constexpr const char* kQuote = "> ";

// The letter that was pressed together with the Control key alone; 0 for every other key.
char ControlLetter(const BMessage* message) {
    int32 down = 0;
    int32 raw = 0;
    if (message == nullptr || message->FindInt32("modifiers", &down) != B_OK ||
        message->FindInt32("raw_char", &raw) != B_OK || (down & B_CONTROL_KEY) == 0 ||
        (down & (B_SHIFT_KEY | B_OPTION_KEY)) != 0)
        return 0;
    return raw >= 'a' && raw <= 'z' ? static_cast<char>(raw) : '\0';
}

std::string ClipboardText() {
    std::string text;
    const void* data = nullptr;
    ssize_t size = 0;
    if (!be_clipboard->Lock())
        return text;
    if (be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &data, &size) == B_OK)
        text.assign(static_cast<const char*>(data), static_cast<size_t>(size));
    be_clipboard->Unlock();
    return text;
}

std::string Quoted(const std::string& text) {
    std::string quoted;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        quoted += kQuote + text.substr(start, end - start) + "\n";
        start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return quoted;
}

} // namespace

NPWriteTextView::NPWriteTextView(BRect frame, Bindings bindings)
    : BTextView(frame, "message", frame.OffsetToCopy(0, 0).InsetByCopy(kInset, kInset),
                B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE),
      fBindings(bindings) {
    SetFlags(Flags() | B_PULSE_NEEDED); // a text view asks for none by itself
    SetDoesUndo(true);
    SetWordWrap(true);
}

void NPWriteTextView::AttachedToWindow() {
    BTextView::AttachedToWindow();
    SetViewColor(ui_color(B_DOCUMENT_BACKGROUND_COLOR));
}

void NPWriteTextView::InsertText(const char* text, int32 length, int32 offset,
                                 const text_run_array* runs) {
    BTextView::InsertText(text, length, offset, runs);
    _Tell(kMsgTextChanged);
}

void NPWriteTextView::DeleteText(int32 fromOffset, int32 toOffset) {
    BTextView::DeleteText(fromOffset, toOffset);
    _Tell(kMsgTextChanged);
}

void NPWriteTextView::Pulse() {
    _Tell(kMsgTextRests);
}

void NPWriteTextView::_Tell(uint32 what) {
    if (Window() != nullptr)
        Window()->PostMessage(what);
}

void NPWriteTextView::MakeUsable(bool usable) {
    MakeEditable(usable);
    SetViewColor(ui_color(usable ? B_DOCUMENT_BACKGROUND_COLOR : B_PANEL_BACKGROUND_COLOR));
    Invalidate();
}

void NPWriteTextView::FrameResized(float width, float height) {
    BTextView::FrameResized(width, height);
    SetTextRect(BRect(kInset, kInset, width - kInset, height - kInset));
}

void NPWriteTextView::KeyDown(const char* bytes, int32 numBytes) {
    if (IsMenuKey(Window()->CurrentMessage()))
        return _OpenMenuByKey();
    const char letter = numBytes == 1 ? ControlLetter(Window()->CurrentMessage()) : '\0';
    const bool isBinding = fBindings == Bindings::kEmacs && letter != 0 && IsEditable();
    if (!isBinding || !_HandleEmacsKey(letter))
        BTextView::KeyDown(bytes, numBytes);
}

bool NPWriteTextView::_HandleEmacsKey(char letter) {
    switch (letter) {
    case 'a': _MoveToLineStart(); return true;
    case 'b': _PressKey(B_LEFT_ARROW); return true;
    case 'd': _PressKey(B_DELETE); return true;
    case 'e': _PressKey(B_END); return true;
    case 'f': _PressKey(B_RIGHT_ARROW); return true;
    case 'k': CutOfLine(); return true;
    case 'm': _PressKey(B_ENTER); return true;
    case 'n': _PressKey(B_DOWN_ARROW); return true;
    case 'p': _PressKey(B_UP_ARROW); return true;
    case 'y': Paste(be_clipboard); return true;
    default: return false;
    }
}

// Not the Home key: its byte is that of Ctrl-A, which the text view takes for "select all".
void NPWriteTextView::_MoveToLineStart() {
    const int32 start = OffsetAt(CurrentLine());
    Select(start, start);
    ScrollToSelection();
}

int32 NPWriteTextView::_EndOfLine() const {
    const int32 next = CurrentLine() + 1;
    if (next >= CountLines())
        return TextLength();
    const int32 end = OffsetAt(next);
    return ByteAt(end - 1) == '\n' ? end - 1 : end;
}

void NPWriteTextView::CutOfLine() {
    int32 from = 0;
    int32 selectionEnd = 0;
    GetSelection(&from, &selectionEnd);
    Select(from, from);
    int32 to = _EndOfLine();
    if (to == from && ByteAt(from) == '\n')
        to++;
    if (to <= from)
        return;
    Select(from, to);
    Cut(be_clipboard);
    ScrollToSelection();
}

void NPWriteTextView::QuotePaste() {
    const std::string text = Quoted(ClipboardText());
    BClipboard quoted("quoted text"); // so that one step of undo takes it back
    if (text.empty() || !quoted.Lock())
        return;
    quoted.Clear();
    quoted.Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                           static_cast<ssize_t>(text.size()));
    quoted.Commit();
    quoted.Unlock();
    Paste(&quoted);
}

void NPWriteTextView::MouseDown(BPoint where) {
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    if (const BMessage* message = Window()->CurrentMessage())
        message->FindInt32("buttons", &buttons);
    if ((buttons & B_SECONDARY_MOUSE_BUTTON) == 0)
        return BTextView::MouseDown(where);
    MakeFocus(true);
    _OpenMenu(ConvertToScreen(where));
}

// Below the caret, if that can be seen.
void NPWriteTextView::_OpenMenuByKey() {
    int32 caret = 0;
    int32 end = 0;
    float height = 0;
    GetSelection(&caret, &end);
    BPoint where = PointAt(caret, &height);
    where.y += height;
    if (!Bounds().Contains(where))
        where = Bounds().LeftTop() + BPoint(kInset, kInset);
    _OpenMenu(ConvertToScreen(where));
}

void NPWriteTextView::_OpenMenu(BPoint screen) {
    struct Line {
        const char* label; // null: a separator
        uint32 what;
        char shortcut;
        bool isEnabled;
    };
    int32 from = 0;
    int32 to = 0;
    GetSelection(&from, &to);
    const bool isEditable = IsEditable();
    const bool canPaste = isEditable && !ClipboardText().empty();
    const Line lines[] = {
        {"元に戻す", B_UNDO, 'Z', isEditable && UndoState(nullptr) != B_UNDO_UNAVAILABLE},
        {nullptr, 0, 0, false},
        {"切り取り", B_CUT, 'X', isEditable && from < to},
        {"コピー", B_COPY, 'C', from < to},
        {"貼り付け", B_PASTE, 'V', canPaste},
        {"引用貼付", kMsgQuotePaste, 0, canPaste},
        {nullptr, 0, 0, false},
        {"すべて選択", B_SELECT_ALL, 'A', TextLength() > 0},
    };
    BPopUpMenu* menu = new BPopUpMenu("message", false, false);
    for (const Line& line : lines) {
        if (line.label == nullptr) {
            menu->AddSeparatorItem();
            continue;
        }
        BMenuItem* item = new BMenuItem(line.label, new BMessage(line.what), line.shortcut);
        item->SetEnabled(line.isEnabled);
        menu->AddItem(item);
    }
    menu->SetTargetForItems(this);
    menu->SetAsyncAutoDestruct(true);
    menu->Go(screen, true, true, true);
}

void NPWriteTextView::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgQuotePaste: QuotePaste(); break;
    default: BTextView::MessageReceived(message);
    }
}
