#pragma once

#include <string>
#include <string_view>

// A text (UTF-8) as it is compared when people look for something: letters small, full-width signs
// and half-width kana in their plain width, katakana as hiragana, a voiced mark joined to its kana.
// Bytes that are no UTF-8 stay.
std::string Folded(std::string_view text);
