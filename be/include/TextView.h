#pragma once

#include <Clipboard.h>
#include <Font.h>
#include <GraphicsDefs.h>
#include <InterfaceDefs.h>
#include <Region.h>
#include <View.h>

#include <memory>

class BFile;

// One style from a byte offset on, up to the next run or the end of what the array is for.
struct text_run {
    int32 offset;
    BFont font;
    rgb_color color;
};

// Styles in ascending order of offset. Allocate it with BTextView::AllocRunArray.
struct text_run_array {
    int32 count;
    text_run runs[1];
};

enum undo_state {
    B_UNDO_UNAVAILABLE,
    B_UNDO_TYPING,
    B_UNDO_CUT,
    B_UNDO_PASTE,
    B_UNDO_CLEAR,
    B_UNDO_DROP
};

// Shows text, and lets the user select and edit it.
///
// Every offset and length is in bytes of UTF-8; an offset inside a character counts as the
// character's first byte, one outside of the text as the nearest end. Lines count from 0 and
// include those that wrapping makes. Points are in the view's coordinates.
// All calls belong to the window's thread or need the window's lock.
// Texts and run arrays that are passed in are copied.
class BTextView : public BView {
public:
    BTextView(BRect frame, const char* name, BRect textRect, uint32 resizeMask,
              uint32 flags = B_WILL_DRAW | B_PULSE_NEEDED);
    BTextView(BRect frame, const char* name, BRect textRect, const BFont* initialFont,
              const rgb_color* initialColor, uint32 resizeMask,
              uint32 flags = B_WILL_DRAW | B_PULSE_NEEDED);
    ~BTextView() override;

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void WindowActivated(bool active) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void Pulse() override;
    void FrameResized(float width, float height) override;
    void MakeFocus(bool focused = true) override;
    void MessageReceived(BMessage* message) override;
    void GetPreferredSize(float* width, float* height) override;

    // A null text is an empty one. Runs count only while the view is stylable.
    void SetText(const char* text, const text_run_array* runs = nullptr);
    void SetText(const char* text, int32 length, const text_run_array* runs = nullptr);
    void SetText(BFile* file, int32 startOffset, int32 length,
                 const text_run_array* runs = nullptr);

    // Without an offset: at the start of the selection, which stays unless it is empty;
    // an empty one moves behind what was inserted. Runs count from the inserted text's start.
    void Insert(const char* text, const text_run_array* runs = nullptr);
    void Insert(const char* text, int32 length, const text_run_array* runs = nullptr);
    void Insert(int32 offset, const char* text, int32 length, const text_run_array* runs = nullptr);

    // Without offsets: what is selected.
    void Delete();
    void Delete(int32 startOffset, int32 endOffset);

    // The whole text, ended by a zero byte; borrowed until the text changes.
    const char* Text() const;
    int32 TextLength() const;
    // Copies at most `length` bytes and a zero byte: the buffer holds length + 1.
    void GetText(int32 offset, int32 length, char* buffer) const;
    // 0 outside of the text.
    uchar ByteAt(int32 offset) const;

    int32 CountLines() const;
    int32 CurrentLine() const;
    void GoToLine(int32 line);

    virtual void Cut(BClipboard* clipboard);
    virtual void Copy(BClipboard* clipboard);
    virtual void Paste(BClipboard* clipboard);
    // Deletes what is selected, so that Undo brings it back.
    void Clear();
    virtual bool AcceptsPaste(BClipboard* clipboard);
    virtual bool AcceptsDrop(const BMessage* message);

    virtual void Select(int32 startOffset, int32 endOffset);
    void SelectAll();
    void GetSelection(int32* startOffset, int32* endOffset) const;

    // The first form styles the selection, or the whole text if the view isn't stylable.
    void SetFontAndColor(const BFont* font, uint32 mode = B_FONT_ALL,
                         const rgb_color* color = nullptr);
    void SetFontAndColor(int32 startOffset, int32 endOffset, const BFont* font,
                         uint32 mode = B_FONT_ALL, const rgb_color* color = nullptr);
    void GetFontAndColor(int32 offset, BFont* font, rgb_color* color = nullptr) const;
    // The style of the selection; `sameProperties` names what is the same all over it.
    void GetFontAndColor(BFont* font, uint32* sameProperties, rgb_color* color = nullptr,
                         bool* sameColor = nullptr) const;
    // The last run goes on to `endOffset`.
    void SetRunArray(int32 startOffset, int32 endOffset, const text_run_array* runs);
    // The caller frees it with FreeRunArray. Offsets count from startOffset.
    text_run_array* RunArray(int32 startOffset, int32 endOffset, int32* size = nullptr) const;

    int32 LineAt(int32 offset) const;
    int32 LineAt(BPoint point) const;
    BPoint PointAt(int32 offset, float* height = nullptr) const;
    int32 OffsetAt(BPoint point) const;
    // The first byte of the line.
    int32 OffsetAt(int32 line) const;

    virtual void FindWord(int32 offset, int32* from, int32* to);
    // Whether a line may end before this offset.
    virtual bool CanEndLine(int32 offset);

    float LineWidth(int32 line = 0) const;
    float LineHeight(int32 line = 0) const;
    float TextHeight(int32 startLine, int32 endLine) const;
    void GetTextRegion(int32 startOffset, int32 endOffset, BRegion* region) const;

    virtual void ScrollToOffset(int32 offset);
    void ScrollToSelection();
    // Inverts what is drawn of this range until the next redraw or change of selection.
    void Highlight(int32 startOffset, int32 endOffset);

    // Where the text is laid out; lines wrap at its width, its height follows the text.
    void SetTextRect(BRect rect);
    BRect TextRect() const;

    void SetStylable(bool stylable);
    bool IsStylable() const;
    void SetTabWidth(float width);
    float TabWidth() const;
    void MakeSelectable(bool selectable = true);
    bool IsSelectable() const;
    void MakeEditable(bool editable = true);
    bool IsEditable() const;
    void SetWordWrap(bool wrap);
    bool DoesWordWrap() const;
    // Typing and pasting stop at this length; what is set stays.
    void SetMaxBytes(int32 max);
    int32 MaxBytes() const;
    void DisallowChar(uint32 character);
    void AllowChar(uint32 character);
    void SetAlignment(alignment flag);
    alignment Alignment() const;
    void SetAutoindent(bool state);
    bool DoesAutoindent() const;
    void SetDoesUndo(bool undo);
    bool DoesUndo() const;
    // Draws a bullet for each character and copies nothing. Deletes the text.
    void HideTyping(bool enabled);
    bool IsTypingHidden() const;

    virtual void Undo(BClipboard* clipboard);
    undo_state UndoState(bool* isRedo) const;

    static text_run_array* AllocRunArray(int32 entryCount, int32* size = nullptr);
    static text_run_array* CopyRunArray(const text_run_array* original, int32 countDelta = 0);
    static void FreeRunArray(text_run_array* array);
    // Both results are the caller's: free() the bytes, FreeRunArray the array. Bytes that are
    // no flattened array give null.
    static void* FlattenRunArray(const text_run_array* array, int32* size = nullptr);
    static text_run_array* UnflattenRunArray(const void* data, int32* size = nullptr);

    class Private;

protected:
    // Every change of the text goes through these two, the user's and the program's.
    virtual void InsertText(const char* text, int32 length, int32 offset,
                            const text_run_array* runs);
    virtual void DeleteText(int32 fromOffset, int32 toOffset);

private:
    friend class Private;

    std::unique_ptr<Private> fPrivate;
};
