#pragma once

#include <TextView.h>

// The editor of the write window: plain text that wraps, with undo, a context menu, quoting of what
// is on the clipboard and, if the user wants them, Emacs key bindings. It tells its window with
// kMsgTextChanged that the text is another, and with kMsgTextRests each of the window's pulses. The
// window's thread.
class NPWriteTextView : public BTextView {
public:
    enum class Bindings { kPlatform, kEmacs };

    NPWriteTextView(BRect frame, Bindings bindings);

    void AttachedToWindow() override;
    void FrameResized(float width, float height) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MouseDown(BPoint where) override;
    void MessageReceived(BMessage* message) override;
    void Pulse() override;

    // While it can't be edited it looks like it.
    void MakeUsable(bool usable);
    // Moves what stands between the caret and the end of its line to the clipboard; at the end of a
    // line its line feed.
    void CutOfLine();
    // Inserts the clipboard's text at the caret, each line behind "> ".
    void QuotePaste();

protected:
    void InsertText(const char* text, int32 length, int32 offset,
                    const text_run_array* runs) override;
    void DeleteText(int32 fromOffset, int32 toOffset) override;

private:
    void _Tell(uint32 what);
    bool _HandleEmacsKey(char letter);
    void _MoveToLineStart();
    int32 _EndOfLine() const;
    void _PressKey(char byte) { BTextView::KeyDown(&byte, 1); }
    void _OpenMenu(BPoint screen);
    void _OpenMenuByKey();

    const Bindings fBindings;
};
