#pragma once

#include <SupportDefs.h>

#include <memory>
#include <vector>

class TextBuffer;
class TextStyles;

// One paragraph that needs shaping (combining marks, joiners, right-to-left), laid out by Qt.
// Offsets are bytes of the text; places are pixels from the left end of a line.
// One thread at a time.
class ShapedParagraph {
public:
    struct Line {
        int32 offset;
        float width;
        int32 ascent;
        int32 height;
    };
    struct Span {
        float left;
        float right;
    };

    // `to` lies before the line feed. A width that isn't finite wraps nothing.
    ShapedParagraph(const TextBuffer& buffer, const TextStyles& styles, int32 from, int32 to,
                    float wrapWidth, float tabWidth);
    ~ShapedParagraph();

    int32 From() const;
    const std::vector<Line>& Lines() const;
    // The index of the line that holds this offset.
    int32 LineFrom(int32 offset) const;

    float XAt(int32 line, int32 offset) const;
    int32 OffsetAtX(int32 line, float x) const;
    int32 NextCaret(int32 offset) const;
    int32 PreviousCaret(int32 offset) const;
    // What these bytes cover in the line; several parts in mixed directions.
    std::vector<Span> SpansOf(int32 line, int32 from, int32 to) const;

private:
    class Layout;

    std::unique_ptr<Layout> fLayout;
};
