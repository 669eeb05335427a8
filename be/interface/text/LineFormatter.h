#pragma once

#include "interface/text/LineBreaking.h"
#include "interface/text/ShapedParagraph.h"
#include "interface/text/TextBuffer.h"
#include "interface/text/TextStyles.h"

#include <SupportDefs.h>

#include <limits>
#include <memory>

// One line of the layout, from `offset` to the next line's offset.
struct TextLine {
    int32 offset; // byte
    int32 top;    // pixels from the text's top
    float width;  // pixels, without the line feed
    int16 ascent; // pixels from the top to the baseline
    bool endsHard;
    bool isShaped;
};

// What lines are made of, and how. The buffer and the styles are borrowed.
struct LineRules {
    static constexpr float kNoWrap = std::numeric_limits<float>::infinity();

    const TextBuffer* buffer;
    const TextStyles* styles;
    float wrapWidth = kNoWrap; // pixels
    float tabWidth = 36;
    bool masked = false; // every character looks like a bullet

    // The advance of one character that begins at x.
    float AdvanceOf(const TextStyle& style, uint32 codePoint, float x) const;
};

// Where the walk along a line stands. The last place where the line may end is kept beside it.
struct LineWalk {
    struct Pen {
        int32 offset = 0;
        int32 run = 0;
        float x = 0;
        int32 ascent = 0;
        int32 below = 0;
    };
    Pen pen;
    Pen opportunity;
    bool hasOpportunity = false;
    BreakClass before = BreakClass::kWord;
};

// Makes one line after another, from any place where a line begins. Short-lived: the text and the
// rules must not change meanwhile.
class LineFormatter {
public:
    LineFormatter(const LineRules& rules, int32 offset, int32 top, bool startsParagraph);

    bool AtEnd() const { return fAtEnd; }
    // Where the next line begins.
    int32 Offset() const { return fWalk.pen.offset; }
    int32 Top() const { return fTop; }
    bool StartsParagraph() const { return fStartsParagraph; }
    bool InShaped() const { return fShaped != nullptr && !fStartsParagraph; }

    TextLine Next();

    // Paragraphs that begin before this offset need no shaping.
    void TakeForPlain(int32 offset) { fPlainUpTo = offset; }

    // The next line has already been walked along so far.
    void GoOnFrom(const LineWalk& walk);
    const LineWalk& LastWalk() const { return fWalk; }

private:
    using Pen = LineWalk::Pen;

    // How far a line came in one run of its styles.
    struct RunOutcome {
        enum class End { kRun, kLineFeed, kEdge } end = End::kRun;
        int32 offset = 0;
        float x = 0;
        BreakClass before = BreakClass::kWord;
        int32 mayEnd = -1; // the last place in it where the line may end; -1: none
        float mayEndX = 0;
    };

    void _EnterParagraph();
    void _FollowRun();
    static void Cover(Pen& pen, const TextStyle& style);
    void _WalkLine();
    RunOutcome _WalkRun(const TextStyle& style) const;
    void _Take(const TextStyle& style, const RunOutcome& outcome);
    TextLine _NextPlain();
    TextLine _NextShaped();
    TextLine _Finish(TextLine line, int32 height);

    const LineRules& fRules;
    const TextStyles& fStyles;
    const int32 fLength;
    const char* const fText; // from fFrom on
    const int32 fFrom;
    const BreakClass* const fClasses;
    LineWalk fWalk;
    int32 fTop;
    bool fStartsParagraph;
    bool fAtEnd = false;
    bool fEndsHard = false;
    bool fGoesOn = false;
    int32 fPlainUpTo = 0;
    std::unique_ptr<ShapedParagraph> fShaped;
    size_t fShapedLine = 0;
    int32 fParagraphEnd = 0; // of a shaped one, before its line feed
};
