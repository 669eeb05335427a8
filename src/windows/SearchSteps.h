#pragma once

#include <SupportDefs.h>

#include <functional>

// One step of a search: the next match after the last one. The text wanted is compared byte for
// byte; an empty one matches everywhere. When nothing more is found the step gives −1 and the next
// one begins anew.

// A row's title; null behind the last row.
using TitleAt = std::function<const char*(int32)>;

// The row of the next title that holds the text. The position is the row of the last match, −1
// before the first.
int32 NextTitleMatch(const TitleAt& titleAt, const char* wanted, int32* position);

// Where the next match starts, in bytes. The offset is where this step begins to look; afterwards
// it lies one byte behind the match's start, so that matches may overlap. Copies nothing.
int32 NextTextMatch(const char* text, int32 length, const char* wanted, int32* offset);
