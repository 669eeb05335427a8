#pragma once

#include <Font.h>
#include <SupportDefs.h>

#include <vector>

// The x position before each byte of the text and after its last, in pixels: bytes + 1 values.
// Bytes inside of a character stand at its start. For text that needs shaping; any thread.
std::vector<float> ShapedOffsets(const BFont& font, const char* utf8, int32 bytes);
