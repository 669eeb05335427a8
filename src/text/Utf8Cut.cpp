#include "text/Utf8Cut.h"

#include <algorithm>

size_t LengthToCharacter(std::string_view text, size_t longest) {
    size_t length = std::min(text.size(), longest);
    while (length > 0 && length < text.size() && (text[length] & 0xC0) == 0x80)
        length--;
    return length;
}

std::string CutAtCharacter(const char* text, size_t longest) {
    const std::string_view whole(text);
    return std::string(whole.substr(0, LengthToCharacter(whole, longest)));
}
