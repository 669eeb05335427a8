#pragma once

#include <SupportDefs.h>

// The posts that an anchor such as ">>12" or ">>12-15" names.
struct ReferenceRange {
    int32 first = 0;
    int32 last = 0;
};

// Reads an anchor's text behind its first two characters. A number above what fits counts as one
// that no thread reaches. False when a number is missing: ">>", ">>-", ">>3-".
bool ParseReference(const char* anchor, ReferenceRange* range);
