#pragma once

#include <Font.h>
#include <SupportDefs.h>

#include <vector>

// Text that a table of advances can't lay out: combining marks, right-to-left and other scripts
// whose glyphs depend on their neighbours.
bool NeedsShaping(uint32 codePoint);
bool NeedsShaping(const char* utf8, int32 bytes);
// A bit for each of the first 65,536 code points that says so.
const std::vector<bool>& ShapedCharacters();

// Marks and format characters, which add nothing to a line.
bool HasNoWidth(uint32 codePoint);

// The x position before each byte of the text and after its last, in pixels: bytes + 1 values.
// Bytes inside of a character stand at its start. For text that needs shaping; any thread.
std::vector<float> ShapedOffsets(const BFont& font, const char* utf8, int32 bytes);

// Their sum, from the table of advances or, where that can't do, from the shaped text.
float WidthOf(const BFont& font, const char* utf8, int32 bytes);
