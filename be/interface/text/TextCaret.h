#pragma once

#include <SupportDefs.h>

class TextDocument;

enum class CaretMove {
    kLeft,
    kRight,
    kWordLeft,
    kWordRight,
    kUp,
    kDown,
    kPageUp,
    kPageDown,
    kLineStart,
    kLineEnd,
    kTextStart,
    kTextEnd
};

// The selection: an anchor that stays and a caret that moves. Offsets are bytes on the boundary of
// a character.
class TextCaret {
public:
    int32 Start() const { return fAnchor < fCaret ? fAnchor : fCaret; }
    int32 End() const { return fAnchor < fCaret ? fCaret : fAnchor; }
    int32 Anchor() const { return fAnchor; }
    int32 Caret() const { return fCaret; }
    bool IsEmpty() const { return fAnchor == fCaret; }

    void Select(int32 anchor, int32 caret);
    // Moves as a key does; `extend` keeps the anchor. A page is that high, in pixels.
    void Move(const TextDocument& document, CaretMove move, bool extend, float pageHeight);

    // The text has changed.
    void Inserted(int32 offset, int32 length);
    void Removed(int32 from, int32 to);

private:
    int32 _Target(const TextDocument& document, CaretMove move, float pageHeight);
    int32 _Vertical(const TextDocument& document, float byLines, float byPixels);

    int32 fAnchor = 0;
    int32 fCaret = 0;
    // Where moves up and down aim at, in pixels; below 0: where the caret stands
    float fGoalX = -1;
};
