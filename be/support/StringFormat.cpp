#include <String.h>

#include <cstdio>
#include <string>

#include "support/StringPrivate.h"

BString& BString::SetToFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SetToFormatVarArgs(format, arguments);
    va_end(arguments);
    return *this;
}

BString& BString::SetToFormatVarArgs(const char* format, va_list arguments) {
    va_list measuring;
    va_copy(measuring, arguments);
    int length = vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    if (length < 0)
        return SetTo("");
    // The arguments may point into this very string: it changes last.
    std::string text(static_cast<size_t>(length), '\0');
    vsnprintf(text.data(), text.size() + 1, format, arguments);
    fText = std::move(text);
    return *this;
}

BString& BString::CharacterEscape(const char* setOfCharactersToEscape, char escapeWith) {
    std::string original = fText;
    return CharacterEscape(original.c_str(), setOfCharactersToEscape, escapeWith);
}

BString& BString::CharacterEscape(const char* original, const char* setOfCharactersToEscape,
                                  char escapeWith) {
    std::string result;
    for (const char* byte = orEmpty(original); *byte; byte++) {
        if (isInSet(setOfCharactersToEscape, *byte))
            result += escapeWith;
        result += *byte;
    }
    fText = std::move(result);
    return *this;
}

BString& BString::CharacterDeescape(char escapeChar) {
    std::string original = fText;
    return CharacterDeescape(original.c_str(), escapeChar);
}

BString& BString::CharacterDeescape(const char* original, char escapeChar) {
    std::string result;
    for (const char* byte = orEmpty(original); *byte; byte++) {
        if (*byte == escapeChar && byte[1] != '\0')
            byte++;
        result += *byte;
    }
    fText = std::move(result);
    return *this;
}

BString& BString::operator<<(int value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(unsigned int value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(long value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(unsigned long value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(long long value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(unsigned long long value) {
    fText += std::to_string(value);
    return *this;
}

BString& BString::operator<<(float value) {
    return *this << static_cast<double>(value);
}

BString& BString::operator<<(double value) {
    BString text;
    text.SetToFormat("%.2f", value);
    return Append(text);
}
