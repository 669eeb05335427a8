#include "text/Cp932Table.h"

constexpr std::array<uint16, kCp932Entries> cp932_to_unicode = {
#include "text/Cp932Table.inc"
};

namespace {

constexpr Utf8Entry Encode(uint16 code) {
    if (code < 0x80)
        return {{static_cast<uint8>(code), 0, 0}, 1};
    const uint8 last = static_cast<uint8>(0x80 | (code & 0x3F));
    if (code < 0x800)
        return {{static_cast<uint8>(0xC0 | (code >> 6)), last, 0}, 2};
    return {{static_cast<uint8>(0xE0 | (code >> 12)),
             static_cast<uint8>(0x80 | ((code >> 6) & 0x3F)), last},
            3};
}

constexpr std::array<Utf8Entry, kCp932Entries> EncodeAll() {
    std::array<Utf8Entry, kCp932Entries> entries{};
    for (int32 i = 0; i < kCp932Entries; i++)
        entries[i] = Encode(cp932_to_unicode[i]);
    return entries;
}

// Codes are walked upwards and a later one replaces an earlier one for the same character: what
// several codes share is sent as the highest of them.
constexpr std::array<uint16, 0x10000> Reverse() {
    std::array<uint16, 0x10000> codes{};
    for (uint16 c = 0x01; c <= 0xFF; c++)
        codes[c >= 0xA1 && c <= 0xDF ? c + 0xFEC0 : c] = c;
    for (int32 i = 0; i < kCp932Entries; i++) {
        const int32 code = i < kCp932LowEntries ? i + 0x8140 : i - kCp932LowEntries + 0xE040;
        if (cp932_to_unicode[i] != 0)
            codes[cp932_to_unicode[i]] = static_cast<uint16>(code);
    }
    return codes;
}

constexpr std::array<uint16, 0x10000> kReverse = Reverse();

constexpr Cp932Page PageOf(int32 highByte) {
    Cp932Page page{};
    for (int32 i = 0; i < 256; i++)
        page[i] = kReverse[highByte * 256 + i];
    return page;
}

// clang-format off
#define PAGES(each) \
    each(00) each(03) each(04) each(20) each(21) each(22) each(23) each(24) each(25) each(26) \
    each(30) each(32) each(33) each(4E) each(4F) \
    each(50) each(51) each(52) each(53) each(54) each(55) each(56) each(57) \
    each(58) each(59) each(5A) each(5B) each(5C) each(5D) each(5E) each(5F) \
    each(60) each(61) each(62) each(63) each(64) each(65) each(66) each(67) \
    each(68) each(69) each(6A) each(6B) each(6C) each(6D) each(6E) each(6F) \
    each(70) each(71) each(72) each(73) each(74) each(75) each(76) each(77) \
    each(78) each(79) each(7A) each(7B) each(7C) each(7D) each(7E) each(7F) \
    each(80) each(81) each(82) each(83) each(84) each(85) each(86) each(87) \
    each(88) each(89) each(8A) each(8B) each(8C) each(8D) each(8E) each(8F) \
    each(90) each(91) each(92) each(93) each(94) each(95) each(96) each(97) \
    each(98) each(99) each(9A) each(9B) each(9C) each(9D) each(9E) each(9F) \
    each(F9) each(FA) each(FF)

#define PAGE(high) constexpr Cp932Page unicode##high##00_to_cp932 = PageOf(0x##high);
PAGES(PAGE)

constexpr std::array<const Cp932Page*, 256> IndexPages() {
    std::array<const Cp932Page*, 256> index{};
#define ENTRY(high) index[0x##high] = &unicode##high##00_to_cp932;
    PAGES(ENTRY)
    return index;
}
// clang-format on

} // namespace

constexpr std::array<Utf8Entry, kCp932Entries> cp932_to_utf8 = EncodeAll();
constexpr std::array<const Cp932Page*, 256> unicode_to_cp932 = IndexPages();
