#pragma once

#include "interface/text/TextCaret.h"
#include "interface/text/TextDocument.h"
#include "interface/text/TextHistory.h"

#include <TextView.h>

#include <functional>
#include <limits>
#include <set>
#include <string>

class BMessage;

// What a text view holds and does behind its documented calls. The document, the caret and the
// history know no view; this one draws them and turns input into changes of them.
// Protected by the window's lock.
class BTextView::Private {
public:
    class LinePainter;

    static Private& Of(const BTextView* view) { return *view->fPrivate; }

    Private(BTextView* self, BRect rect, const BFont& font, rgb_color color);

    // Places, TextViewPlaces.cpp
    float LineLeft(int32 line) const;
    float LineTop(int32 line) const;
    BRect LineFrame(int32 line) const; // over the view's whole width
    BRect CaretFrame() const;
    void InvalidateRange(int32 from, int32 to);
    void InvalidateLines(int32 first, int32 last);
    void InvalidateFrom(float top);
    void Changed(const TextLines::Change& change);
    void LayoutChanged();
    void ApplyWrapping();
    void UpdateScrollBars();
    void ScrollVertically(float delta);
    void RevealCaret();

    // Drawing, TextViewDrawing.cpp
    void Draw(BRect update);
    void ShowCaret(bool restart);
    void HideCaret();
    void ScheduleBlink(int32 name);

    // Changes by the user, TextViewEditing.cpp
    void Replace(undo_state kind, int32 from, int32 to, const StyledText& text);
    void ReplaceSelection(undo_state kind, const char* text, int32 length,
                          const std::vector<StyleRun>* runs = nullptr);
    void Erase(bool forward, bool word);
    bool TakeBack(bool redo);
    // What may be typed or pasted of a text: without control bytes, as long as fits.
    std::string Filtered(const char* text, int32 length, int32 replaced) const;
    void SelectionChanged(int32 oldStart, int32 oldEnd);
    void Select(int32 anchor, int32 caret);
    void ProgramChanged();
    void OfferPrimarySelection();
    void PastePrimarySelection(int32 offset);
    int32 ApplyStyle(int32 from, int32 to, const BFont* font, uint32 mode, const rgb_color* color);

    // Keyboard, TextViewKeys.cpp
    void HandleKey(const char* bytes, int32 numBytes);
    bool HandleControlLetter(int32 letter, bool shift);
    bool HandleMove(char byte, bool word, bool shift);
    void MoveCaret(CaretMove move, bool extend);
    // To what any view does with a key.
    void PassOn(const char* bytes, int32 numBytes) { view->BView::KeyDown(bytes, numBytes); }
    bool ScrollByKey(char byte);
    void Type(const char* bytes, int32 numBytes);
    std::string Indentation() const;

    // Pointer, TextViewPointer.cpp
    void PointerDown(BPoint where, const BMessage* message);
    void PointerMoved(BPoint where);
    void PointerUp();
    void StartTracking(BPoint where, int32 clicks, bool extend);
    void ExtendTo(BPoint where);
    void ParagraphAround(int32 offset, int32* from, int32* to) const;
    void ScheduleAutoscroll();

    // Input method, TextViewComposition.cpp
    void HandleInputMethod(BMessage* message);
    void ShowComposition(BMessage* message);
    void PutComposition(const char* text, int32 length);
    void ReadClauses(const BMessage* message, int32 length);
    // The result takes the composition's place, and that of a range around it if one is given, in
    // bytes from the caret.
    void EndComposition(const char* result, int32 replaceFrom = 0, int32 replaceTo = 0);
    void AbandonComposition();
    bool IsComposing() const { return compositionEnd > compositionStart; }
    void TellInputMethod();

    BTextView* const view;
    TextDocument document;
    TextCaret caret;
    TextHistory history;
    BRect textRect;

    bool stylable = false;
    bool selectable = true;
    bool editable = true;
    bool wordWrap = true;
    bool autoindent = false;
    bool doesUndo = true;
    alignment align = B_ALIGN_LEFT;
    int32 maxBytes = std::numeric_limits<int32>::max();
    std::set<uint32> disallowed;
    int32 typingStyle = -1; // for the next character typed at an empty selection

    bool windowIsActive = false;
    bool caretIsOn = false;
    BRect drawnCaret;
    int32 blinks = 0; // names the running blinking; another number has replaced it
    int32 highlightStart = 0;
    int32 highlightEnd = 0;

    enum class Unit { kCharacter, kWord, kLine };
    bool tracking = false;
    Unit trackedUnit = Unit::kCharacter;
    int32 trackedFrom = 0;
    int32 trackedTo = 0;
    BPoint pointer;
    bool autoscrolls = false;

    struct Clause {
        int32 from;
        int32 to;
    };
    int32 compositionStart = 0;
    int32 compositionEnd = 0;
    std::vector<Clause> clauses; // the one being converted, if any

    // A field of one line tells its control.
    std::function<void()> modified;
};
