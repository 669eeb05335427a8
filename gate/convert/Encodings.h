#pragma once

#include <string>
#include <string_view>

namespace gate {

enum class Charset { kCp932, kEucJp, kUtf8 };

// The charset that the bytes themselves speak for: servers' labels are often wrong.
Charset GuessCharset(std::string_view text);

// Always good cp932: what it lacks becomes "&#N;", broken bytes "?", and NUL is left out.
std::string ToCp932(std::string_view text, Charset from);
// Always good UTF-8: broken bytes become "?", and NUL is left out.
std::string ToUtf8(std::string_view text, Charset from);
// What `to` lacks becomes "&#N;". References in the text stay as they are.
std::string FromCp932(std::string_view cp932, Charset to);

// A code point of up to 21 bits.
void AppendUtf8(char32_t code, std::string* text);

} // namespace gate
