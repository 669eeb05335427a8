#pragma once

#include <SupportDefs.h>

#include <string>

// Names of families and styles behind BFont's codes. A name, once given a code, keeps it for the
// process. Code 0 is the desktop's interface font. Any thread.
struct FontName {
    std::string family; // empty: the desktop's interface font
    std::string style;  // empty: the family's regular style
    bool fixed = false; // with an empty family: the desktop's fixed-width font
};

const uint32 kPlainFontCode = 0;
const uint32 kFixedFontCode = 1;

FontName FontNameOf(uint32 code);
uint32 CodeOfFontName(const std::string& family, const std::string& style);
