#pragma once

#include <SupportDefs.h>

// Characters that a table of advances can't lay out: combining marks, right-to-left and other
// scripts whose glyphs depend on their neighbours. Any thread.
bool NeedsShaping(uint32 codePoint);
// Whether any character of this UTF-8 does.
bool NeedsShaping(const char* utf8, int32 bytes);

// Marks and format characters, which add nothing to a line.
bool HasNoWidth(uint32 codePoint);
