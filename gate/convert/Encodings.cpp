#include "convert/Encodings.h"

#include "text/cp932.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>
#include <stdexcept>

namespace gate {

namespace {

constexpr char32_t kNoCode = 0xFFFFFFFF;

unsigned char At(std::string_view text, size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
}

bool IsBetween(unsigned char byte, unsigned char first, unsigned char last) {
    return byte >= first && byte <= last;
}

// The length of the good sequence at `i`, or 0.
size_t Utf8Length(std::string_view text, size_t i) {
    const unsigned char first = At(text, i);
    if (first < 0x80)
        return 1;
    const size_t length = IsBetween(first, 0xC2, 0xDF)   ? 2
                          : IsBetween(first, 0xE0, 0xEF) ? 3
                          : IsBetween(first, 0xF0, 0xF4) ? 4
                                                         : 0;
    for (size_t j = 1; j < length; j++) {
        if (!IsBetween(At(text, i + j), 0x80, 0xBF))
            return 0;
    }
    const unsigned char second = At(text, i + 1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second > 0x9F;
    const bool beyond = first == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyond ? 0 : length;
}

size_t Cp932Length(std::string_view text, size_t i) {
    const unsigned char first = At(text, i);
    if (first < 0x80 || IsBetween(first, 0xA1, 0xDF))
        return 1;
    const unsigned char second = At(text, i + 1);
    const bool lead = IsBetween(first, 0x81, 0x9F) || IsBetween(first, 0xE0, 0xFC);
    return lead && IsBetween(second, 0x40, 0xFC) && second != 0x7F ? 2 : 0;
}

size_t EucLength(std::string_view text, size_t i) {
    const unsigned char first = At(text, i);
    if (first < 0x80)
        return 1;
    const size_t length = first == 0x8F ? 3 : first == 0x8E || IsBetween(first, 0xA1, 0xFE) ? 2 : 0;
    for (size_t j = 1; j < length; j++) {
        if (!IsBetween(At(text, i + j), 0xA1, 0xFE))
            return 0;
    }
    return length;
}

// Whether the text's characters beyond ASCII outnumber by far the bytes that are none.
bool FitsWell(std::string_view text, size_t (*lengthAt)(std::string_view, size_t)) {
    size_t characters = 0;
    size_t broken = 0;
    for (size_t i = 0; i < text.size();) {
        const size_t length = lengthAt(text, i);
        broken += length == 0;
        characters += length != 0 && At(text, i) >= 0x80;
        i += std::max<size_t>(length, 1);
    }
    return characters > 4 * broken;
}

char32_t DecodeUtf8(std::string_view sequence) {
    constexpr std::array<unsigned char, 5> kFirstBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t code = At(sequence, 0) & kFirstBits[sequence.size()];
    for (size_t i = 1; i < sequence.size(); i++)
        code = code << 6 | (At(sequence, i) & 0x3F);
    return code;
}

// Calls `each` with every code point of the text, kNoCode for a broken byte; NUL is passed over.
template <typename Each>
void ForEachCode(std::string_view utf8, Each each) {
    for (size_t i = 0; i < utf8.size();) {
        const size_t length = Utf8Length(utf8, i);
        if (length == 0)
            each(kNoCode);
        else if (utf8[i] != '\0')
            each(DecodeUtf8(utf8.substr(i, length)));
        i += std::max<size_t>(length, 1);
    }
}

std::string GoodUtf8(std::string_view utf8) {
    std::string good;
    good.reserve(utf8.size());
    ForEachCode(utf8, [&good](char32_t code) { AppendUtf8(code == kNoCode ? '?' : code, &good); });
    return good;
}

// The codec on bytes that are all good characters; one that has no code point comes out as NUL.
void AppendDecoded(std::string_view cp932, std::string* utf8) {
    std::string decoded(cp932.size() * 3, '\0');
    auto length = static_cast<int32>(cp932.size());
    int32 written = 0;
    cp932_conv_to_utf8(cp932.data(), &length, decoded.data(), &written);
    decoded.resize(static_cast<size_t>(written));
    std::replace(decoded.begin(), decoded.end(), '\0', '?');
    *utf8 += decoded;
}

std::string Cp932ToUtf8(std::string_view cp932) {
    std::string utf8;
    size_t run = 0; // where the good bytes start that are not yet decoded
    for (size_t i = 0; i < cp932.size();) {
        const size_t length = cp932[i] == '\0' ? 0 : Cp932Length(cp932, i);
        if (length == 0) {
            AppendDecoded(cp932.substr(run, i - run), &utf8);
            utf8 += cp932[i] == '\0' ? "" : "?";
            run = i + 1;
        }
        i += std::max<size_t>(length, 1);
    }
    AppendDecoded(cp932.substr(run), &utf8);
    return utf8;
}

// Characters that differ between the makers' tables of one Japanese code.
char32_t WithCp932Form(char32_t code) {
    switch (code) {
    case 0x301C: return 0xFF5E;
    case 0x2212: return 0xFF0D;
    case 0x2014: return 0x2015;
    case 0x2016: return 0x2225;
    case 0x00A2: return 0xFFE0;
    case 0x00A3: return 0xFFE1;
    case 0x00AC: return 0xFFE2;
    default: return code;
    }
}

// False when cp932 lacks the character. The codec gives Latin letters single bytes that a reader
// takes for the first half of a character: they count as lacking.
bool AppendCp932(char32_t code, std::string* cp932) {
    if (code > 0xFFFF)
        return false;
    std::string utf8;
    AppendUtf8(WithCp932Form(code), &utf8);
    std::array<char, 4> bytes{};
    auto length = static_cast<int32>(utf8.size());
    int32 written = 0;
    const bool known = utf8_conv_to_cp932(utf8.data(), &length, bytes.data(), &written) == 0;
    const std::string_view coded(bytes.data(), static_cast<size_t>(written));
    if (!known || Cp932Length(coded, 0) != coded.size())
        return false;
    *cp932 += coded;
    return true;
}

void AppendReference(char32_t code, std::string* text) {
    *text += "&#" + std::to_string(static_cast<unsigned long>(code)) + ";";
}

std::string Utf8ToCp932(std::string_view utf8) {
    std::string cp932;
    ForEachCode(utf8, [&cp932](char32_t code) {
        if (code == kNoCode)
            cp932 += '?';
        else if (code < 0x80)
            cp932 += static_cast<char>(code);
        else if (!AppendCp932(code, &cp932))
            AppendReference(code, &cp932);
    });
    return cp932;
}

// The C library's converter between UTF-8 and the EUC-JP that servers mean: with the makers' own
// characters, where the library knows them.
class Converter {
public:
    Converter(const char* to, const char* from) : fHandle(iconv_open(to, from)) {}
    ~Converter() {
        if (IsOpen())
            iconv_close(fHandle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return fHandle != reinterpret_cast<iconv_t>(-1); }

    // Converts as much as it can of the text's start and takes it off; what is left starts with
    // what can't be converted.
    void Append(std::string_view* text, std::string* out) {
        std::array<char, 4096> buffer;
        for (;;) {
            char* in = const_cast<char*>(text->data());
            size_t left = text->size();
            char* to = buffer.data();
            size_t room = buffer.size();
            const size_t result = iconv(fHandle, &in, &left, &to, &room);
            const bool isFull = result == static_cast<size_t>(-1) && errno == E2BIG;
            out->append(buffer.data(), buffer.size() - room);
            text->remove_prefix(text->size() - left);
            if (!isFull)
                return;
        }
    }

private:
    iconv_t fHandle;
};

std::string EucToUtf8(std::string_view euc) {
    Converter makers("UTF-8", "EUC-JP-MS");
    Converter plain("UTF-8", "EUC-JP");
    Converter& converter = makers.IsOpen() ? makers : plain;
    if (!converter.IsOpen())
        throw std::runtime_error("the C library has no EUC-JP");
    std::string utf8;
    for (converter.Append(&euc, &utf8); !euc.empty(); converter.Append(&euc, &utf8)) {
        utf8 += '?';
        euc.remove_prefix(1);
    }
    std::erase(utf8, '\0');
    return utf8;
}

std::string Utf8ToEuc(std::string_view utf8) {
    Converter makers("EUC-JP-MS", "UTF-8");
    Converter plain("EUC-JP", "UTF-8");
    Converter& converter = makers.IsOpen() ? makers : plain;
    if (!converter.IsOpen())
        throw std::runtime_error("the C library has no EUC-JP");
    std::string euc;
    for (converter.Append(&utf8, &euc); !utf8.empty(); converter.Append(&utf8, &euc)) {
        const size_t length = Utf8Length(utf8, 0);
        AppendReference(DecodeUtf8(utf8.substr(0, length)), &euc);
        utf8.remove_prefix(length);
    }
    return euc;
}

} // namespace

void AppendUtf8(char32_t code, std::string* text) {
    if (code < 0x80) {
        *text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr std::array<unsigned char, 4> kMarks = {0, 0xC0, 0xE0, 0xF0};
    *text += static_cast<char>(kMarks[static_cast<size_t>(more)] | code >> (6 * more));
    for (int i = more - 1; i >= 0; i--)
        *text += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
}

Charset GuessCharset(std::string_view text) {
    // A few broken bytes, where the server or a cut has split a character, are no other charset.
    // Two bytes of EUC-JP are two half-width katakana in cp932, so EUC-JP is asked for before it.
    if (FitsWell(text, Utf8Length))
        return Charset::kUtf8;
    return FitsWell(text, EucLength) ? Charset::kEucJp : Charset::kCp932;
}

std::string ToUtf8(std::string_view text, Charset from) {
    switch (from) {
    case Charset::kCp932: return Cp932ToUtf8(text);
    case Charset::kEucJp: return EucToUtf8(text);
    case Charset::kUtf8: break;
    }
    return GoodUtf8(text);
}

std::string ToCp932(std::string_view text, Charset from) {
    return Utf8ToCp932(ToUtf8(text, from));
}

std::string FromCp932(std::string_view cp932, Charset to) {
    std::string utf8 = Cp932ToUtf8(cp932);
    switch (to) {
    case Charset::kCp932: return Utf8ToCp932(utf8);
    case Charset::kEucJp: return Utf8ToEuc(utf8);
    case Charset::kUtf8: break;
    }
    return utf8;
}

} // namespace gate
