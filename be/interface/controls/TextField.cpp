#include "interface/controls/TextField.h"

#include "interface/text/TextViewPrivate.h"

#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <string>

namespace {

bool IsKeyBeingTold(const BView* view) {
    const BMessage* message =
        view->Window() != nullptr ? view->Window()->CurrentMessage() : nullptr;
    return message != nullptr && message->what == B_KEY_DOWN;
}

} // namespace

TextField::TextField(BTextControl* control, uint32 flags)
    : BTextView(BRect(0, 0, 50, 20), "_input_", BRect(3, 0, 47, 20), B_FOLLOW_NONE,
                flags | B_WILL_DRAW),
      fControl(control) {
    SetWordWrap(false);
    Private::Of(this).modified = [this] { fControl->_TextModified(); };
}

void TextField::KeyDown(const char* bytes, int32 numBytes) {
    const char first = numBytes == 1 ? bytes[0] : '\0';
    switch (first) {
    case B_ENTER:
        fControl->_Commit();
        Private::Of(this).PassOn(bytes, numBytes);
        break;
    case B_TAB:
    case B_ESCAPE:
    case B_UP_ARROW:
    case B_DOWN_ARROW:
    case B_PAGE_UP:
    case B_PAGE_DOWN: Private::Of(this).PassOn(bytes, numBytes); break;
    default: BTextView::KeyDown(bytes, numBytes);
    }
}

void TextField::MakeFocus(bool focused) {
    const bool changes = focused != IsFocus();
    BTextView::MakeFocus(focused);
    if (!changes)
        return;
    if (focused && IsKeyBeingTold(this))
        Select(0, TextLength());
    else if (!focused)
        Select(0, 0);
    fControl->_FieldFocusChanged();
    if (!focused)
        fControl->_Commit();
}

void TextField::SetUsable(bool usable) {
    MakeEditable(usable);
    MakeSelectable(usable);
    SetFlags(usable ? Flags() | B_NAVIGABLE : Flags() & ~B_NAVIGABLE);
    const rgb_color ink = ui_color(B_CONTROL_TEXT_COLOR);
    const rgb_color faint = tint_color(ink, 0.5F);
    SetFontAndColor(nullptr, 0, usable ? &ink : &faint);
    BView::SetViewColor(ui_color(usable ? B_CONTROL_BACKGROUND_COLOR : B_PANEL_BACKGROUND_COLOR));
    Invalidate();
}

void TextField::InsertText(const char* text, int32 length, int32 offset,
                           const text_run_array* runs) {
    std::string line(text, length);
    std::replace(line.begin(), line.end(), '\n', ' ');
    BTextView::InsertText(line.data(), length, offset, runs);
}
