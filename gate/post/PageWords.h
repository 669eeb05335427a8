#pragma once

#include "convert/HtmlTree.h"

#include <string>

namespace gate {

// What a reader sees of a page below its title: UTF-8, without blank lines, its lines ended by
// line feeds. At most `most` bytes of it, cut at a character.
std::string WordsOf(const HtmlTree& page, size_t most);
// UTF-8 cut at a character.
std::string CutUtf8(std::string text, size_t most);

} // namespace gate
