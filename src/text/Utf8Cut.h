#pragma once

#include <cstddef>
#include <string>

// The first bytes of a UTF-8 text to show, at most `longest`, without a part of a character.
std::string CutAtCharacter(const char* text, size_t longest);
