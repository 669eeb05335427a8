#pragma once

#include "interface/text/TextLines.h"

// Makes one line after another, from any place where a line begins. Short-lived: the text must
// not change meanwhile.
class TextLines::Formatter {
public:
    Formatter(const TextLines& lines, int32 offset, int32 top, bool startsParagraph);

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
    void GoOnFrom(const Walk& walk);
    const Walk& LastWalk() const { return fWalk; }

private:
    void _EnterParagraph();
    void _FollowRun();
    static void Cover(Pen& pen, const TextStyle& style);
    void _WalkLine();
    bool _WalkRun(const TextStyle& style);
    void _EndRun(const TextStyle& style, const Pen& pen, int32 mayEnd, float mayEndX, bool wraps);
    TextLine _NextPlain();
    TextLine _NextShaped();
    TextLine _Finish(TextLine line, int32 height);

    const TextLines& fLines;
    const TextStyles& fStyles;
    const int32 fLength;
    const char* const fText; // from fFrom on
    const int32 fFrom;
    const BreakClass* const fClasses;
    Walk fWalk;
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
