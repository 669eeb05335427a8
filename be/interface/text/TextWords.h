#pragma once

#include <SupportDefs.h>

class TextBuffer;

// Words, for double clicks and for moving by words: runs of letters and digits, of one Japanese
// script, of spaces, or of other signs. Offsets are bytes.

// The word around the character at `offset`; at the end of the text the one before.
void FindWordAround(const TextBuffer& text, int32 offset, int32* from, int32* to);

// The start of the next word, behind any spaces.
int32 NextWord(const TextBuffer& text, int32 offset);
// The start of this word, or of the one before.
int32 PreviousWord(const TextBuffer& text, int32 offset);
