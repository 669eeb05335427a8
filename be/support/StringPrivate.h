#pragma once

#include <cstring>

// Helpers of BString's sources. Bytes of UTF-8 characters are never taken for letters, whatever the
// locale.

inline const char* orEmpty(const char* string) {
    return string ? string : "";
}

inline char lowerAscii(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
}

inline char upperAscii(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte;
}

inline bool isInSet(const char* set, char byte) {
    return set && byte != '\0' && strchr(set, byte);
}
