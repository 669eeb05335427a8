#pragma once

#include <String.h>
#include <SupportDefs.h>

// Helpers for text as the servers write it: HTML character references, form values, stray NULs.
// All work in place and may be used from any thread.

// Drops the 0x00 bytes of a raw line and terminates it; returns the number of bytes kept. The
// buffer needs room for one byte more than `length`. The last kept byte is not moved: it stays what
// the input held at its new place, so a line that held a 0x00 ends in the byte found there.
uint32 TruncateNullChar(char* buffer, uint32 length);

// Removes every 0x00 of the first `length` bytes and nothing else, as the codec writes them for
// codes without a character; returns the number of bytes kept. Does not terminate.
int32 RemoveNulls(char* buffer, int32 length);

// Decodes numeric and the known named character references. "&quot;" becomes an apostrophe; since
// "&amp;" is decoded before the named symbols, an escaped "&amp;hearts;" ends as a heart.
void ReplaceHTMLEscapeString(BString* text);

// The numeric part: "&#65;", "&#x41;", "&#0x41;". A value is kept to 16 bits, one of 0 deletes the
// reference, one of more than six characters stays.
void ReplaceCharacterEntity(BString* text);

// Percent-encodes UTF-8 text as cp932 for an "application/x-www-form-urlencoded" body; only letters
// and digits pass as they are, a space becomes "+". Returns −1 and leaves the text unchanged when
// cp932 lacks one of its characters or it is not whole UTF-8.
int32 UrlEncoded(BString* text);
