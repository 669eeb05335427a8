#pragma once

#include "interface/text/TextBuffer.h"
#include "interface/text/TextLines.h"
#include "interface/text/TextStyles.h"

#include <string>
#include <vector>

struct text_run_array;

// A piece of text with its styles, as numbers of TextStyles; offsets of runs count from the
// piece's start.
struct StyledText {
    std::string text;
    std::vector<StyleRun> runs;
};

// A text with its styles and its layout, kept in step. Offsets are bytes and must lie in the text,
// on the boundary of a character. One thread at a time.
class TextDocument {
public:
    TextDocument(const BFont& font, rgb_color color)
        : styles(font, color), lines(&buffer, &styles) {}
    TextDocument(const TextDocument&) = delete;
    TextDocument& operator=(const TextDocument&) = delete;

    // Without runs, in the style of the character before.
    TextLines::Change Insert(int32 offset, const char* text, int32 length,
                             const std::vector<StyleRun>* runs = nullptr);
    TextLines::Change Delete(int32 from, int32 to);
    TextLines::Change SetRuns(int32 from, int32 to, const std::vector<StyleRun>& runs);

    StyledText Copy(int32 from, int32 to) const;
    std::vector<StyleRun> RunsOf(int32 from, int32 to) const;
    std::vector<StyleRun> Intern(const text_run_array& runs);

    // Into the text, and to the start of the character.
    int32 Clamp(int32 offset) const;

    TextBuffer buffer;
    TextStyles styles;
    TextLines lines;

private:
    void _ApplyRuns(int32 from, int32 to, const std::vector<StyleRun>& runs);
};
