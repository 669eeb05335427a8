#include "storage/AttributeText.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <vector>

#include <GraphicsDefs.h>
#include <TypeConstants.h>

namespace {

constexpr std::string_view kHexPrefix = "hex:";
constexpr char kHexDigits[] = "0123456789abcdef";

int hexDigit(char byte) {
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

void appendHex(std::string* text, char byte) {
    *text += kHexDigits[static_cast<uint8>(byte) >> 4];
    *text += kHexDigits[byte & 0x0F];
}

std::string toHex(std::string_view bytes) {
    std::string text;
    for (char byte : bytes)
        appendHex(&text, byte);
    return text;
}

std::optional<std::string> fromHex(std::string_view text) {
    if (text.size() % 2 != 0)
        return std::nullopt;
    std::string bytes;
    for (size_t i = 0; i < text.size(); i += 2) {
        int high = hexDigit(text[i]), low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

// The length of the UTF-8 character at the front, 0 when there is none.
size_t characterLength(std::string_view text) {
    uint8 first = static_cast<uint8>(text[0]);
    size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (first > 0xF4 || length > text.size())
        return 0;
    for (size_t i = 1; i < length; i++) {
        if ((text[i] & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

// '\0' for what has no letter of its own.
char escapeLetter(char byte) {
    switch (byte) {
    case '\n': return 'n';
    case '\t': return 't';
    case '\r': return 'r';
    case '\0': return '0';
    case '\\': return '\\';
    default: return '\0';
    }
}

int unescapeLetter(char letter) {
    switch (letter) {
    case 'n': return '\n';
    case 't': return '\t';
    case 'r': return '\r';
    case '0': return '\0';
    case 's': return ' ';
    case '\\': return '\\';
    default: return -1;
    }
}

enum class Spaces { kAll, kAtTheEnds };

std::string escape(std::string_view bytes, Spaces escapedSpaces) {
    std::string text;
    for (size_t i = 0; i < bytes.size();) {
        size_t length = characterLength(bytes.substr(i));
        bool isAtEnd = i == 0 || i + 1 == bytes.size();
        if (char letter = escapeLetter(bytes[i])) {
            text += '\\';
            text += letter;
        } else if (bytes[i] == ' ' && (isAtEnd || escapedSpaces == Spaces::kAll)) {
            text += "\\s";
        } else if (length == 0 || static_cast<uint8>(bytes[i]) < 0x20 || bytes[i] == 0x7F) {
            text += "\\x";
            appendHex(&text, bytes[i]);
        } else {
            text += bytes.substr(i, length);
        }
        i += length > 0 ? length : 1;
    }
    return text;
}

std::optional<std::string> unescape(std::string_view text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        if (++i == text.size())
            return std::nullopt;
        if (text[i] == 'x') {
            std::optional<std::string> byte = fromHex(text.substr(i + 1, 2));
            if (!byte || byte->empty())
                return std::nullopt;
            bytes += *byte;
            i += 2;
        } else if (int byte = unescapeLetter(text[i]); byte >= 0) {
            bytes += static_cast<char>(byte);
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

// A first character that would mean something else is written as a byte.
std::string hideFirst(std::string text) {
    std::string first = "\\x";
    appendHex(&first, text[0]);
    return first + text.substr(1);
}

bool isText(type_code type) {
    return type == B_STRING_TYPE || type == B_MIME_STRING_TYPE || type == B_MIME_TYPE;
}

template <class Number>
std::optional<std::string> writeNumbers(std::string_view value, size_t count) {
    if (value.size() != count * sizeof(Number))
        return std::nullopt;
    std::string text;
    for (size_t i = 0; i < count; i++) {
        Number number;
        memcpy(&number, value.data() + i * sizeof(number), sizeof(number));
        char digits[40];
        std::to_chars_result end = std::to_chars(digits, digits + sizeof(digits), number);
        text.append(i > 0 ? " " : "").append(digits, end.ptr);
    }
    return text;
}

template <class Number>
std::optional<std::string> readNumbers(std::string_view text, size_t count) {
    std::string value;
    const char* next = text.data();
    const char* end = text.data() + text.size();
    for (size_t i = 0; i < count; i++) {
        while (i > 0 && next < end && *next == ' ')
            next++;
        Number number = 0;
        std::from_chars_result result = std::from_chars(next, end, number);
        if (result.ec != std::errc())
            return std::nullopt;
        next = result.ptr;
        value.append(reinterpret_cast<const char*>(&number), sizeof(number));
    }
    if (next != end)
        return std::nullopt;
    return value;
}

// Numbers that are none, and infinities, keep their exact bytes only as bytes.
template <class Number>
std::optional<std::string> writeReals(std::string_view value, size_t count) {
    if (value.size() != count * sizeof(Number))
        return std::nullopt;
    for (size_t i = 0; i < count; i++) {
        Number number;
        memcpy(&number, value.data() + i * sizeof(number), sizeof(number));
        if (!std::isfinite(number))
            return std::nullopt;
    }
    return writeNumbers<Number>(value, count);
}

std::optional<std::string> writeBool(std::string_view value) {
    if (value.size() != 1 || static_cast<uint8>(value[0]) > 1)
        return std::nullopt;
    return value[0] ? "true" : "false";
}

std::optional<std::string> readBool(std::string_view text) {
    if (text == "true" || text == "1")
        return std::string(1, '\1');
    if (text == "false" || text == "0")
        return std::string(1, '\0');
    return std::nullopt;
}

std::optional<std::string> writeColor(std::string_view value) {
    if (value.size() != sizeof(rgb_color))
        return std::nullopt;
    return "#" + toHex(value);
}

std::optional<std::string> readColor(std::string_view text) {
    if (text.size() != 9 || text[0] != '#')
        return std::nullopt;
    return fromHex(text.substr(1));
}

// None when the value does not fit its type, or the type has no form of its own.
std::optional<std::string> writePlain(type_code type, std::string_view value) {
    switch (type) {
    case B_BOOL_TYPE: return writeBool(value);
    case B_CHAR_TYPE:
    case B_INT8_TYPE: return writeNumbers<int8>(value, 1);
    case B_UINT8_TYPE: return writeNumbers<uint8>(value, 1);
    case B_INT16_TYPE: return writeNumbers<int16>(value, 1);
    case B_UINT16_TYPE: return writeNumbers<uint16>(value, 1);
    case B_INT32_TYPE: return writeNumbers<int32>(value, 1);
    case B_UINT32_TYPE: return writeNumbers<uint32>(value, 1);
    case B_INT64_TYPE:
    case B_OFF_T_TYPE:
    case B_SSIZE_T_TYPE:
    case B_TIME_TYPE: return writeNumbers<int64>(value, 1);
    case B_UINT64_TYPE:
    case B_SIZE_T_TYPE: return writeNumbers<uint64>(value, 1);
    case B_FLOAT_TYPE: return writeReals<float>(value, 1);
    case B_DOUBLE_TYPE: return writeReals<double>(value, 1);
    case B_POINT_TYPE: return writeReals<float>(value, 2);
    case B_RECT_TYPE: return writeReals<float>(value, 4);
    case B_RGB_COLOR_TYPE: return writeColor(value);
    default: return std::nullopt;
    }
}

std::optional<std::string> readPlain(type_code type, std::string_view text) {
    switch (type) {
    case B_BOOL_TYPE: return readBool(text);
    case B_CHAR_TYPE:
    case B_INT8_TYPE: return readNumbers<int8>(text, 1);
    case B_UINT8_TYPE: return readNumbers<uint8>(text, 1);
    case B_INT16_TYPE: return readNumbers<int16>(text, 1);
    case B_UINT16_TYPE: return readNumbers<uint16>(text, 1);
    case B_INT32_TYPE: return readNumbers<int32>(text, 1);
    case B_UINT32_TYPE: return readNumbers<uint32>(text, 1);
    case B_INT64_TYPE:
    case B_OFF_T_TYPE:
    case B_SSIZE_T_TYPE:
    case B_TIME_TYPE: return readNumbers<int64>(text, 1);
    case B_UINT64_TYPE:
    case B_SIZE_T_TYPE: return readNumbers<uint64>(text, 1);
    case B_FLOAT_TYPE: return readNumbers<float>(text, 1);
    case B_DOUBLE_TYPE: return readNumbers<double>(text, 1);
    case B_POINT_TYPE: return readNumbers<float>(text, 2);
    case B_RECT_TYPE: return readNumbers<float>(text, 4);
    case B_RGB_COLOR_TYPE: return readColor(text);
    default: return std::nullopt;
    }
}

} // namespace

std::string writeName(std::string_view name) {
    std::string text = escape(name, Spaces::kAll);
    // A "#" at the beginning makes a line a remark.
    return text.starts_with('#') ? hideFirst(text) : text;
}

std::optional<std::string> readName(std::string_view text) {
    std::optional<std::string> name = unescape(text);
    if (name && (name->empty() || name->find('\0') != std::string::npos))
        return std::nullopt;
    return name;
}

std::string writeType(type_code type) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        char byte = static_cast<char>(type >> shift);
        if (byte <= ' ' || byte > '~') {
            std::string number = "0x";
            for (int nibble = 28; nibble >= 0; nibble -= 4)
                number += kHexDigits[type >> nibble & 0x0F];
            return number;
        }
        text += byte;
    }
    return text;
}

std::optional<type_code> readType(std::string_view text) {
    std::optional<std::string> bytes = std::string(text);
    if (text.size() == 10 && text.starts_with("0x"))
        bytes = fromHex(text.substr(2));
    if (!bytes || bytes->size() != 4)
        return std::nullopt;
    type_code type = 0;
    for (char byte : *bytes)
        type = type << 8 | static_cast<uint8>(byte);
    return type;
}

std::string writeValue(type_code type, std::string_view value) {
    if (isText(type)) {
        std::string text = escape(value, Spaces::kAtTheEnds);
        return text.starts_with(kHexPrefix) ? hideFirst(text) : text;
    }
    std::optional<std::string> text = writePlain(type, value);
    return text ? *text : std::string(kHexPrefix) + toHex(value);
}

std::optional<std::string> readValue(type_code type, std::string_view text) {
    if (text.starts_with(kHexPrefix))
        return fromHex(text.substr(kHexPrefix.size()));
    return isText(type) ? unescape(text) : readPlain(type, text);
}
