#include "views/ReferenceRange.h"

#include <string_view>

namespace {

constexpr size_t kMarkLength = 2; // ">>"
constexpr int32 kHighest = 0x7FFFFFFE;

bool TakeNumber(std::string_view* text, int32* number) {
    int64 value = 0;
    size_t length = 0;
    while (length < text->size() && (*text)[length] >= '0' && (*text)[length] <= '9') {
        value = value * 10 + ((*text)[length] - '0');
        value = value > kHighest ? kHighest : value;
        length++;
    }
    text->remove_prefix(length);
    *number = static_cast<int32>(value);
    return length > 0;
}

} // namespace

bool ParseReference(const char* anchor, ReferenceRange* range) {
    std::string_view text(anchor);
    if (text.size() <= kMarkLength)
        return false;
    text.remove_prefix(kMarkLength);
    if (!TakeNumber(&text, &range->first))
        return false;
    range->last = range->first;
    if (!text.starts_with('-'))
        return true;
    text.remove_prefix(1);
    return TakeNumber(&text, &range->last);
}
