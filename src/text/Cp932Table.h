#pragma once

#include <SupportDefs.h>

#include <array>

// The tables behind the codec of cp932.h: Microsoft's published mapping of code page 932 with the
// user-defined area (0xF040 to 0xF9FC) left empty. All are constant data of the program.

// Double-byte codes: 0x8140 to 0x9FFF come first, 0xE040 to 0xFCFF follow. Every trail byte has a
// slot; a code without a character holds 0.
constexpr int32 kCp932LowEntries = 0x1EC0;
constexpr int32 kCp932Entries = 15232;
extern const std::array<uint16, kCp932Entries> cp932_to_unicode;

// The same entries as the UTF-8 bytes that stand for them, so that decoding is one copy.
struct Utf8Entry {
    uint8 bytes[3];
    uint8 length; // 1 to 3; a code without a character is one byte of 0
};
extern const std::array<Utf8Entry, kCp932Entries> cp932_to_utf8;

// The way back: a page of 256 codes for each high byte of a code point, null where a block has
// none. A code below 0x100 is one byte; 0 means that cp932 lacks the character.
using Cp932Page = std::array<uint16, 256>;
extern const std::array<const Cp932Page*, 256> unicode_to_cp932;
