#pragma once

#include "post/PostTarget.h"

#include <Messenger.h>

// The open write windows, one for each thread, so that two never write one draft. Any thread.
class WriteWindowList {
public:
    // False when there is none for this thread.
    static bool Activate(const PostTarget& target);
    static void Add(const PostTarget& target, const BMessenger& window);
};
