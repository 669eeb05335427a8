#pragma once

#include "post/PostTarget.h"
#include "windows/WindowSlot.h"

// The place of a thread's write window, of which there is one at most, so that two never write one
// draft. It stays for the program's life. Any thread.
WindowSlot& WriteWindowSlotOf(const PostTarget& target);
