#pragma once

#include <SupportDefs.h>

// Whether this many bytes hold the flattened run array that their head tells of: what comes from a
// clipboard has to be asked before it is unflattened.
bool IsFlattenedRunArray(const void* data, ssize_t size);
