#pragma once

#include "post/PostTarget.h"
#include "windows/WindowSlot.h"

#include <vector>

// The place of a thread's write window, of which there is one at most, so that two never write one
// draft. It stays for the program's life. Any thread.
WindowSlot& WriteWindowSlotOf(const PostTarget& target);

// The write windows that are open.
std::vector<BMessenger> OpenWriteWindows();

// Asks each of them whether it may go, which keeps its text, and closes it. False as soon as one
// stays, as its user wants, or can't be asked. No looper is locked by the caller.
bool CloseWriteWindows();
