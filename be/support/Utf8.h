#pragma once

#include <SupportDefs.h>

// Reading UTF-8 that may be broken: every byte that begins no whole character stands for itself,
// as the replacement character.

constexpr uint32 kReplacementCharacter = 0xFFFD;

// One character and the number of its bytes.
struct Utf8Character {
    uint32 code;
    int32 bytes;
};

constexpr bool IsUtf8Continuation(char byte) {
    return (byte & 0xC0) == 0x80;
}

// The length that a first byte announces; 1 for a byte that can't be one.
constexpr int32 Utf8Announced(uchar first) {
    return first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 1;
}

// The character at `text`, of which `length` bytes, at least one, may be read.
inline Utf8Character DecodeUtf8(const char* text, int32 length) {
    const uchar first = static_cast<uchar>(text[0]);
    if (first < 0x80)
        return {first, 1};
    // Kana and the common ideographs, without the cases that matter elsewhere.
    if (first >= 0xE1 && first <= 0xEC && length >= 3 && IsUtf8Continuation(text[1]) &&
        IsUtf8Continuation(text[2]))
        return {(first & 0x0Fu) << 12 | (text[1] & 0x3Fu) << 6 | (text[2] & 0x3Fu), 3};
    const int32 bytes = Utf8Announced(first);
    if (bytes == 1 || bytes > length)
        return {kReplacementCharacter, 1};
    uint32 code = first & (0x7F >> bytes);
    for (int32 i = 1; i < bytes; i++) {
        if (!IsUtf8Continuation(text[i]))
            return {kReplacementCharacter, 1};
        code = code << 6 | (text[i] & 0x3F);
    }
    const bool overlong = (bytes == 3 && code < 0x800) || (bytes == 4 && code < 0x10000);
    if (overlong || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
        return {kReplacementCharacter, 1};
    return {code, bytes};
}
