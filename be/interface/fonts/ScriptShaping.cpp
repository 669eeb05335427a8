#include "interface/fonts/ScriptShaping.h"

#include "support/Utf8.h"

#include <QChar>

#include <algorithm>
#include <vector>

namespace {

struct Range {
    uint32 first;
    uint32 last;
};

const Range kShaped[] = {
    {0x0300, 0x036f},   // combining marks
    {0x0483, 0x0489},   // Cyrillic marks
    {0x0590, 0x08ff},   // Hebrew, Arabic and their neighbours
    {0x0900, 0x109f},   // the scripts of India and South East Asia
    {0x1100, 0x11ff},   // Hangul parts
    {0x135d, 0x135f},   // Ethiopic marks
    {0x1700, 0x18af},   // Philippine scripts, Khmer, Mongolian
    {0x1900, 0x1cff},   // Limbu to Vedic
    {0x1dc0, 0x1dff},   // more combining marks
    {0x200c, 0x200f},   // joiners and marks of direction
    {0x202a, 0x202e},   // embedded directions
    {0x2066, 0x2069},   // isolated directions
    {0x20d0, 0x20ff},   // marks for symbols
    {0x302a, 0x302f},   // ideographic tone marks
    {0x3099, 0x309a},   // combining voiced sound marks
    {0xa800, 0xabff},   // Syloti to Meetei
    {0xd7b0, 0xd7ff},   // more Hangul parts
    {0xfb1d, 0xfdff},   // Hebrew and Arabic forms
    {0xfe00, 0xfe0f},   // variation selectors
    {0xfe20, 0xfe2f},   // half marks
    {0xfe70, 0xfefe},   // Arabic forms
    {0x10800, 0x10fff}, // old right-to-left scripts
    {0x11000, 0x11fff}, // historic scripts of India
    {0x1e800, 0x1efff}, // right-to-left
    {0x1f1e6, 0x1f1ff}, // flags
    {0x1f3fb, 0x1f3ff}, // skin tones
    {0xe0000, 0xe01ef}, // tags, variation selectors
};

// A bit for each of the first 65,536 code points.
const std::vector<bool>& ShapedCharacters() {
    static const std::vector<bool> sShaped = [] {
        std::vector<bool> shaped(0x10000);
        for (const Range& range : kShaped) {
            if (range.last < shaped.size())
                std::fill(shaped.begin() + range.first, shaped.begin() + range.last + 1, true);
        }
        return shaped;
    }();
    return sShaped;
}

} // namespace

bool NeedsShaping(uint32 codePoint) {
    if (codePoint < kShaped[0].first)
        return false;
    for (const Range& range : kShaped) {
        if (codePoint < range.first)
            return false;
        if (codePoint <= range.last)
            return true;
    }
    return false;
}

bool NeedsShaping(const char* text, int32 bytes) {
    const std::vector<bool>& shaped = ShapedCharacters();
    for (int32 at = 0; at < bytes;) {
        // ASCII and the common ideographs go by without being read.
        const uchar first = static_cast<uchar>(text[at]);
        if (first < 0xCC || (first >= 0xE4 && first <= 0xE9)) {
            at += first < 0xCC ? 1 : 3;
            continue;
        }
        const Utf8Character character = DecodeUtf8(text + at, bytes - at);
        if (character.code < 0x10000 ? shaped[character.code] : NeedsShaping(character.code))
            return true;
        at += character.bytes;
    }
    return false;
}

bool HasNoWidth(uint32 codePoint) {
    if (codePoint < 0x20 || (codePoint >= 0x7f && codePoint < 0xa0))
        return true;
    switch (QChar::category(codePoint)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format: return codePoint != 0xad;
    default: return false;
    }
}
