#pragma once

#include "interface/fonts/AdvanceTable.h"

#include <Font.h>
#include <GraphicsDefs.h>

#include <vector>

// A font and a colour, with what the layout needs of the font. Heights are whole pixels.
struct TextStyle {
    BFont font;
    rgb_color color;
    const AdvanceTable* advances;
    int32 ascent;
    int32 height;
};

// From `offset` to the next run's offset.
struct StyleRun {
    int32 offset;
    int32 style;
};

// Which style each byte of a text has. Runs cover the text from 0 on without a break and
// neighbours differ; an empty text keeps the style that its next character gets.
// Offsets are bytes. One thread at a time.
class TextStyles {
public:
    TextStyles(const BFont& font, rgb_color color);

    // The number of this style, from now on.
    int32 Intern(const BFont& font, rgb_color color);
    const TextStyle& Style(int32 style) const { return fStyles[style]; }

    int32 CountRuns() const { return static_cast<int32>(fRuns.size()); }
    const StyleRun& RunAt(int32 index) const { return fRuns[index]; }
    int32 RunIndexAt(int32 offset) const;
    // Where the run ends in a text of this length.
    int32 RunEnd(int32 index, int32 textLength) const {
        return index + 1 < CountRuns() ? fRuns[index + 1].offset : textLength;
    }
    int32 StyleAt(int32 offset) const { return fRuns[RunIndexAt(offset)].style; }
    // What a character typed here gets: the style of the character before it.
    int32 TypingStyle(int32 offset) const { return StyleAt(offset > 0 ? offset - 1 : 0); }

    // Makes room for inserted bytes in the typing style.
    void Insert(int32 offset, int32 length);
    // The length is the one before.
    void Remove(int32 from, int32 to, int32 textLength);
    void Set(int32 from, int32 to, int32 style, int32 textLength);
    // Runs in ascending order, from the first one's offset up to `to`.
    void SetRuns(const std::vector<StyleRun>& runs, int32 to, int32 textLength);

private:
    std::vector<TextStyle> fStyles;
    std::vector<StyleRun> fRuns;
    int32 fLastInterned = 0;
};
