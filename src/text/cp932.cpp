#include "text/cp932.h"

#include "text/Cp932Table.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace {

constexpr uint8 kFirstByteMark[] = {0x00, 0x00, 0xC0, 0xE0};
constexpr uint32 kCodePointOffset[] = {0, 0, 0x3080, 0xE2080};

bool IsHalfWidthKatakana(uint8 b) {
    return b >= 0xA1 && b <= 0xDF;
}

// For each byte: where the entries of the double-byte codes that it leads begin, less their trails.
// The trail is unchecked: one below 0x40 reaches into the slots before its lead's own, as the table
// was always indexed. Only lead 0x81 has none before it.
constexpr int32 kNoLead = -0x10000;

constexpr std::array<int32, 256> MakeLeadBases() {
    std::array<int32, 256> bases{};
    bases.fill(kNoLead);
    for (int32 lead = 0x81; lead <= 0x9F; lead++)
        bases[lead] = lead * 256 - 0x8140;
    for (int32 lead = 0xE0; lead <= 0xFC; lead++)
        bases[lead] = lead * 256 - 0xE040 + kCp932LowEntries;
    return bases;
}

constexpr std::array<int32, 256> kLeadBases = MakeLeadBases();
constexpr Utf8Entry kNoCharacter = {{0, 0, 0}, 1};

const Utf8Entry& EntryAt(int32 index) {
    return index < 0 ? kNoCharacter : cp932_to_utf8[index];
}

// A text is runs of ASCII and runs of double bytes. Each of these takes one from the front of the
// source. A copy may write more than it keeps: there is room for three times what is left.

// How many bytes stand before the first that is not 0.
int32 CountLeading(uint64 block) {
    const bool isLittle = std::endian::native == std::endian::little;
    return (isLittle ? std::countr_zero(block) : std::countl_zero(block)) / 8;
}

void TakeAscii(const uint8** source, const uint8* end, char** dst) {
    const uint8* src = *source;
    char* out = *dst;
    constexpr uint64 kHighBits = 0x8080808080808080;
    uint64 block = 0;
    while (end - src >= static_cast<ptrdiff_t>(sizeof(block))) {
        memcpy(&block, src, sizeof(block));
        memcpy(out, &block, sizeof(block));
        const int32 ascii = CountLeading(block & kHighBits);
        src += ascii;
        out += ascii;
        if (ascii < static_cast<int32>(sizeof(block)))
            break;
    }
    while (src < end && *src < 0x80)
        *out++ = static_cast<char>(*src++);
    *source = src;
    *dst = out;
}

void TakeDoubleBytes(const uint8** source, const uint8* end, char** dst) {
    const uint8* src = *source;
    char* out = *dst;
    for (int32 base = kLeadBases[*src]; base != kNoLead; base = kLeadBases[*src]) {
        const Utf8Entry& entry = EntryAt(base + src[1]);
        memcpy(out, &entry, sizeof(entry));
        out += entry.length;
        src += 2;
        if (end - src < 2)
            break;
    }
    *source = src;
    *dst = out;
}

// Decodes n bytes at src, of which `available` may be read; the missing ones count as 0x00.
uint16 Decode(const uint8* src, int32 n, int32 available) {
    uint32 code = 0;
    for (int32 i = 0; i < n; i++)
        code = (code << 6) + (i < available ? src[i] : 0);
    return static_cast<uint16>(code - kCodePointOffset[n]);
}

} // namespace

int32 cp932_conv_to_utf8(const char* source, int32* srcLen, char* dst, int32* dstLen) {
    const uint8* src = reinterpret_cast<const uint8*>(source);
    const uint8* end = src + (*srcLen > 0 ? *srcLen : 0);
    char* out = dst;
    int32 status = 0;
    while (src < end) {
        const uint8 b = *src;
        if (b < 0x80) {
            TakeAscii(&src, end, &out);
        } else if (kLeadBases[b] != kNoLead && end - src >= 2) {
            TakeDoubleBytes(&src, end, &out);
        } else if (kLeadBases[b] != kNoLead) {
            const Utf8Entry& entry = EntryAt(kLeadBases[b]);
            memcpy(out, entry.bytes, sizeof(entry.bytes));
            out += entry.length;
            src++;
        } else if (IsHalfWidthKatakana(b)) {
            out += put_utf8_from_unicode(static_cast<uint16>(b + 0xFEC0), out);
            src++;
        } else {
            *out++ = '?';
            status = -1;
            src++;
        }
    }
    *srcLen = static_cast<int32>(end - reinterpret_cast<const uint8*>(source));
    *dstLen = static_cast<int32>(out - dst);
    return status;
}

int32 utf8_conv_to_cp932(const char* source, int32* srcLen, char* dst, int32* dstLen) {
    const uint8* start = reinterpret_cast<const uint8*>(source);
    const uint8* src = start;
    const uint8* end = start + (*srcLen > 0 ? *srcLen : 0);
    char* out = dst;
    int32 status = 0;
    while (src < end) {
        const int32 n = get_utf8_bytes_from_utf8(*src);
        if (n == 0)
            break;
        const int32 available = static_cast<int32>(end - src);
        const uint16 code = Decode(src, n, available);
        if (code <= 0x7F) {
            *out++ = static_cast<char>(code);
            src++;
            continue;
        }
        const Cp932Page* page = unicode_to_cp932[code >> 8];
        uint16 bytes = page != nullptr ? (*page)[code & 0xFF] : 0;
        // Of a cut sequence one byte may be left: the output never is longer than the input.
        if (bytes >= 0x100 && available < 2)
            bytes = 0;
        if (bytes >= 0x100)
            *out++ = static_cast<char>(bytes >> 8);
        *out++ = bytes != 0 ? static_cast<char>(bytes & 0xFF) : '?';
        status = bytes != 0 ? status : -1;
        src += n < available ? n : available;
    }
    *srcLen = static_cast<int32>(src - start);
    *dstLen = static_cast<int32>(out - dst);
    return status;
}

int32 set_unicode(const char* src, uint16* code) {
    const int32 n = get_utf8_bytes_from_utf8(static_cast<uint8>(*src));
    const int32 available = static_cast<int32>(strnlen(src, 3));
    *code = n == 0 ? 0 : Decode(reinterpret_cast<const uint8*>(src), n, available);
    return n;
}

int32 get_utf8_bytes_from_utf8(uint8 c) {
    if (c < 0x80)
        return 1;
    if (c < 0xC0 || c > 0xEF)
        return 0;
    return c < 0xE0 ? 2 : 3;
}

int32 put_utf8_from_unicode(uint16 code, char* dst) {
    const int32 length = code < 0x80 ? 1 : code < 0x800 ? 2 : 3;
    for (int32 i = length - 1; i > 0; i--) {
        dst[i] = static_cast<char>(0x80 | (code & 0x3F));
        code = static_cast<uint16>(code >> 6);
    }
    dst[0] = static_cast<char>(kFirstByteMark[length] | code);
    return length;
}
