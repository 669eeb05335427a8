#include "text/Utf8Cut.h"

std::string CutAtCharacter(const char* text, size_t longest) {
    std::string cut(text);
    size_t length = cut.size() < longest ? cut.size() : longest;
    while (length > 0 && length < cut.size() && (cut[length] & 0xC0) == 0x80)
        length--;
    cut.resize(length);
    return cut;
}
