#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How many of the first bytes of a UTF-8 text stand without a part of a character; at most
// `longest`.
size_t LengthToCharacter(std::string_view text, size_t longest);

// Those bytes, of a text to show.
std::string CutAtCharacter(const char* text, size_t longest);
