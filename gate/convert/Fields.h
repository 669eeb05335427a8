#pragma once

#include "convert/PostLine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// What the line formats of the families share.

// The fields of a line that "<>" separates.
std::vector<std::string_view> SplitFields(std::string_view line);
// A number of digits alone, from 1 to `most`.
std::optional<long> NumberOf(std::string_view digits, long most);

// The post of a line "no<>name<>mail<>date<>body<>title…" in UTF-8; nothing when it is none.
std::optional<PostLine> PostOfFields(const std::vector<std::string_view>& fields);

} // namespace gate
