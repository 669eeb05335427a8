#include "text/ToUtf8.h"

#include "text/cp932.h"
#include "text/html.h"

bool ToUtf8(std::string_view cp932, std::string* utf8) {
    int32 length = static_cast<int32>(cp932.size());
    int32 written = 0;
    utf8->resize(cp932.size() * 3);
    const bool isWhole = cp932_conv_to_utf8(cp932.data(), &length, utf8->data(), &written) == 0;
    utf8->resize(static_cast<size_t>(RemoveNulls(utf8->data(), written)));
    return isWhole;
}

std::string ToUtf8(std::string_view cp932) {
    std::string utf8;
    ToUtf8(cp932, &utf8);
    return utf8;
}
