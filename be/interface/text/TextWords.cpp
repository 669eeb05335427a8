#include "interface/text/TextWords.h"

#include "interface/text/TextBuffer.h"
#include "support/Utf8.h"

#include <algorithm>

namespace {

enum class WordClass { kSpace, kLineFeed, kWord, kKanji, kHiragana, kKatakana, kSign };

bool IsBetween(uint32 code, uint32 first, uint32 last) {
    return code >= first && code <= last;
}

bool IsLetterOrDigit(uint32 code) {
    if (code < 0x80)
        return IsBetween(code | 0x20, 'a', 'z') || IsBetween(code, '0', '9') || code == '_';
    return IsBetween(code, 0xC0, 0x1FFF) || IsBetween(code, 0xFF10, 0xFF19) ||
           IsBetween(code | 0x20, 0xFF41, 0xFF5A) || IsBetween(code, 0xAC00, 0xD7A3);
}

WordClass ClassOf(uint32 code) {
    if (code == '\n')
        return WordClass::kLineFeed;
    if (code == ' ' || code == '\t' || code == 0x3000)
        return WordClass::kSpace;
    if (IsBetween(code, 0x3041, 0x309F))
        return WordClass::kHiragana;
    if (IsBetween(code, 0x30A1, 0x30FF) || IsBetween(code, 0xFF66, 0xFF9F))
        return code == 0x30FB ? WordClass::kSign : WordClass::kKatakana;
    if (IsBetween(code, 0x3400, 0x9FFF) || IsBetween(code, 0x3005, 0x3007) ||
        IsBetween(code, 0x20000, 0x3FFFD))
        return WordClass::kKanji;
    return IsLetterOrDigit(code) ? WordClass::kWord : WordClass::kSign;
}

WordClass ClassAt(const TextBuffer& text, int32 offset) {
    char bytes[4];
    const int32 length = std::min(4, text.Length() - offset);
    text.Copy(offset, length, bytes);
    return ClassOf(DecodeUtf8(bytes, length).code);
}

int32 SkipForward(const TextBuffer& text, int32 offset, WordClass wanted) {
    while (offset < text.Length() && ClassAt(text, offset) == wanted)
        offset = text.NextCharacter(offset);
    return offset;
}

int32 SkipBackward(const TextBuffer& text, int32 offset, WordClass wanted) {
    while (offset > 0) {
        const int32 before = text.PreviousCharacter(offset);
        if (ClassAt(text, before) != wanted)
            break;
        offset = before;
    }
    return offset;
}

} // namespace

void FindWordAround(const TextBuffer& text, int32 offset, int32* from, int32* to) {
    *from = *to = offset;
    if (text.Length() == 0)
        return;
    const int32 inside = offset < text.Length() ? offset : text.PreviousCharacter(offset);
    const WordClass wanted = ClassAt(text, inside);
    if (wanted == WordClass::kLineFeed) {
        *from = inside;
        *to = text.NextCharacter(inside);
        return;
    }
    *from = SkipBackward(text, inside, wanted);
    *to = SkipForward(text, inside, wanted);
}

int32 NextWord(const TextBuffer& text, int32 offset) {
    if (offset >= text.Length())
        return offset;
    const WordClass here = ClassAt(text, offset);
    if (here == WordClass::kLineFeed)
        return text.NextCharacter(offset);
    return SkipForward(text, SkipForward(text, offset, here), WordClass::kSpace);
}

int32 PreviousWord(const TextBuffer& text, int32 offset) {
    const int32 end = SkipBackward(text, offset, WordClass::kSpace);
    if (end == 0)
        return 0;
    const int32 last = text.PreviousCharacter(end);
    const WordClass wanted = ClassAt(text, last);
    if (wanted == WordClass::kLineFeed)
        return end < offset ? end : last;
    return SkipBackward(text, end, wanted);
}
