#include "windows/SearchSteps.h"

#include <cstring>

int32 NextTitleMatch(const TitleAt& titleAt, const char* wanted, int32* position) {
    while (const char* title = titleAt(++*position)) {
        if (strstr(title, wanted) != nullptr)
            return *position;
    }
    *position = -1;
    return -1;
}

int32 NextTextMatch(const char* text, int32 length, const char* wanted, int32* offset) {
    // Linear in the text, whatever is wanted.
    const char* match = *offset <= length ? strstr(text + *offset, wanted) : nullptr;
    if (match == nullptr) {
        *offset = 0;
        return -1;
    }
    const int32 start = static_cast<int32>(match - text);
    *offset = start + 1;
    return start;
}
