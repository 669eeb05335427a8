#include "interface/text/LineBreaking.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace {

struct Range {
    uint32 first;
    uint32 last;
};

constexpr uint32 kOpeningMarks[] = {0x2018, 0x201C, 0x3008, 0x300A, 0x300C, 0x300E,
                                    0x3010, 0x3014, 0x3016, 0x3018, 0x301A, 0x301D,
                                    0xFF08, 0xFF3B, 0xFF5B, 0xFF5F, 0xFF62};

constexpr uint32 kClosingMarks[] = {
    0x2019, 0x201D, 0x2025, 0x2026, 0x203C, 0x2047, 0x2048, 0x2049, 0x3001, 0x3002, 0x3005, 0x3009,
    0x300B, 0x300D, 0x300F, 0x3011, 0x3015, 0x3017, 0x3019, 0x301B, 0x301E, 0x301F, 0x303B, 0x3041,
    0x3043, 0x3045, 0x3047, 0x3049, 0x3063, 0x3083, 0x3085, 0x3087, 0x308E, 0x3095, 0x3096, 0x309B,
    0x309C, 0x309D, 0x309E, 0x30A0, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9, 0x30C3, 0x30E3, 0x30E5,
    0x30E7, 0x30EE, 0x30F5, 0x30F6, 0x30FB, 0x30FC, 0x30FD, 0x30FE, 0xFF01, 0xFF05, 0xFF09, 0xFF0C,
    0xFF0E, 0xFF1A, 0xFF1B, 0xFF1F, 0xFF3D, 0xFF5D, 0xFF60, 0xFF61, 0xFF63, 0xFF64, 0xFF65, 0xFF67,
    0xFF68, 0xFF69, 0xFF6A, 0xFF6B, 0xFF6C, 0xFF6D, 0xFF6E, 0xFF6F, 0xFF70, 0xFF9E, 0xFF9F};

// Scripts and symbols that are written without spaces between words.
constexpr Range kIdeographs[] = {{0x1100, 0x11FF},   {0x2190, 0x23FF},   {0x2460, 0x27BF},
                                 {0x2E80, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7FF},
                                 {0xF900, 0xFAFF},   {0xFE30, 0xFE4F},   {0xFF00, 0xFFEF},
                                 {0x1B000, 0x1B2FF}, {0x1F000, 0x1FAFF}, {0x20000, 0x3FFFD}};

template <size_t N>
bool IsIn(const Range (&ranges)[N], uint32 codePoint) {
    const Range* after =
        std::upper_bound(std::begin(ranges), std::end(ranges), codePoint,
                         [](uint32 code, const Range& range) { return code < range.first; });
    return after != std::begin(ranges) && codePoint <= (after - 1)->last;
}

BreakClass AsciiClass(uint32 codePoint) {
    switch (codePoint) {
    case ' ':
    case '\t': return BreakClass::kSpace;
    case '-': return BreakClass::kHyphen;
    case '(':
    case '[':
    case '{': return BreakClass::kOpening;
    case ')':
    case ']':
    case '}':
    case ',':
    case '.':
    case '!':
    case '?':
    case ':':
    case ';': return BreakClass::kWordClosing;
    default: return BreakClass::kWord;
    }
}

using ClassTable = std::array<BreakClass, 0x10000>;

// Filled range by range: the program starts with it.
const ClassTable& Classes() {
    static const ClassTable sClasses = [] {
        ClassTable classes;
        classes.fill(BreakClass::kWord);
        for (const Range& range : kIdeographs) {
            if (range.last < classes.size())
                std::fill(&classes[range.first], &classes[range.last] + 1, BreakClass::kIdeograph);
        }
        for (const uint32 codePoint : kOpeningMarks)
            classes[codePoint] = BreakClass::kOpening;
        for (const uint32 codePoint : kClosingMarks)
            classes[codePoint] = BreakClass::kClosing;
        for (uint32 codePoint = 0; codePoint < 0x80; codePoint++)
            classes[codePoint] = AsciiClass(codePoint);
        return classes;
    }();
    return sClasses;
}

} // namespace

const BreakClass* BreakClassTable() {
    return Classes().data();
}

BreakClass BreakClassOf(uint32 codePoint) {
    if (codePoint < 0x10000)
        return Classes()[codePoint];
    return IsIn(kIdeographs, codePoint) ? BreakClass::kIdeograph : BreakClass::kWord;
}
