#pragma once

#include "interface/text/LineFormatter.h"

#include <SupportDefs.h>

#include <memory>
#include <vector>

// The lines of a text: where they break, how wide and high they are, and the way between byte
// offsets and places. Places are pixels from the text's top left corner, before any alignment.
//
// A change lays out only the lines that it can have touched. Lines break where LineBreaking.h
// allows it, in a word that is wider than a whole line anywhere; spaces may hang over the edge.
// Paragraphs with characters that need shaping are laid out by ShapedParagraph.
// One thread at a time. The buffer and the styles are borrowed and must outlive the lines.
class TextLines {
public:
    TextLines(const TextBuffer* buffer, const TextStyles* styles);
    ~TextLines();

    // What a call has changed: the new lines from `first` to before `last`; what lies from `top`
    // down to `bottom` looks different, and everything below too if `moved`.
    struct Change {
        int32 first;
        int32 last;
        int32 top;
        int32 bottom;
        bool moved;
    };

    // Call after the buffer and the styles have changed: `removed` bytes gave way to `inserted`
    // ones at `offset`.
    Change Update(int32 offset, int32 removed, int32 inserted);
    void LayoutAll();

    // Each lays out anew if its value is another one.
    void SetWrapWidth(float width);
    void SetTabWidth(float width);
    float TabWidth() const { return fRules.tabWidth; }
    // Every character looks like a bullet.
    void SetMasked(bool masked);
    bool IsMasked() const { return fRules.masked; }

    int32 CountLines() const { return static_cast<int32>(fLines.size()); }
    const TextLine& LineAt(int32 index) const { return fLines[index]; }
    int32 Height() const { return fHeight; }
    // The widest line.
    float Width() const;

    int32 IndexAtOffset(int32 offset) const;
    int32 IndexAtY(float y) const;
    int32 LineEnd(int32 index) const;
    // Without the line feed.
    int32 LineVisibleEnd(int32 index) const;
    int32 LineBottom(int32 index) const;

    float XAt(int32 index, int32 offset) const;
    // The character boundary next to x, never one that belongs to the next line.
    int32 OffsetAtX(int32 index, float x) const;
    // The neighbouring places for a caret.
    int32 NextCaret(int32 offset) const;
    int32 PreviousCaret(int32 offset) const;

    // The paragraph of a line with isShaped. Borrowed until the next call.
    ShapedParagraph& ShapedAt(int32 index) const;

private:
    int32 _LayOutUntilUnchanged(LineFormatter& formatter, int32 first, int32 changedEnd,
                                int32 delta, std::vector<TextLine>& fresh) const;
    int32 _FirstLineToLayOut(int32 offset, bool shaped) const;
    bool _NeedsShaping(int32 offset, int32 removed, int32 inserted) const;
    bool _StartsParagraph(int32 index) const { return index == 0 || fLines[index - 1].endsHard; }
    void _KeepTail(const LineFormatter& formatter);
    void _Splice(int32 first, int32 last, std::vector<TextLine>& fresh, int32 offsetDelta,
                 int32 topDelta);

    LineRules fRules;
    std::vector<TextLine> fLines;
    int32 fHeight = 0;
    // How the walk along the last line ended, so that appending goes on from there
    LineWalk fTail;
    bool fTailIsValid = false;
    // The last one asked for
    mutable std::unique_ptr<ShapedParagraph> fShaped;
};
