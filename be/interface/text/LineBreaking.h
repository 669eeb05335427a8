#pragma once

#include <SupportDefs.h>

// Where a line may end. Latin words stay whole; between ideographs and kana a line may end
// anywhere, but closing marks and small kana start no line and opening brackets end none.
enum class BreakClass : uint8 {
    kWord,
    kIdeograph,
    kOpening,
    kClosing,
    kWordClosing,
    kHyphen,
    kSpace
};

// Any thread. The first 65,536 code points' classes, for who walks along a text.
const BreakClass* BreakClassTable();

BreakClass BreakClassOf(uint32 codePoint);

constexpr uint32 BreakClassBit(BreakClass one) {
    return 1u << static_cast<uint32>(one);
}

// For each class, the classes that may begin the next line behind it.
constexpr uint32 kWhatMayFollow[] = {
    /* kWord */ BreakClassBit(BreakClass::kIdeograph),
    /* kIdeograph */ BreakClassBit(BreakClass::kIdeograph) | BreakClassBit(BreakClass::kWord) |
        BreakClassBit(BreakClass::kOpening) | BreakClassBit(BreakClass::kHyphen),
    /* kOpening */ 0,
    /* kClosing */ BreakClassBit(BreakClass::kIdeograph) | BreakClassBit(BreakClass::kWord) |
        BreakClassBit(BreakClass::kOpening) | BreakClassBit(BreakClass::kHyphen),
    /* kWordClosing */ BreakClassBit(BreakClass::kIdeograph),
    /* kHyphen */ BreakClassBit(BreakClass::kIdeograph) | BreakClassBit(BreakClass::kWord),
    /* kSpace */ BreakClassBit(BreakClass::kIdeograph) | BreakClassBit(BreakClass::kWord) |
        BreakClassBit(BreakClass::kOpening) | BreakClassBit(BreakClass::kHyphen)};

// Whether a line may end between two characters of these classes.
constexpr bool MayBreak(BreakClass before, BreakClass after) {
    return (kWhatMayFollow[static_cast<uint32>(before)] & BreakClassBit(after)) != 0;
}
