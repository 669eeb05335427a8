#pragma once

#include "posts/OwnPosts.h"

#include <string>

class NPCache;

// What is remembered with a cached thread of the posts that were sent from here; one that is not
// cached remembers nothing. Any thread.
OwnPosts ReadOwnPosts(NPCache* cache);
void WriteOwnPosts(NPCache* cache, const OwnPosts& own);

// A post has just been sent to a thread: among those that come next it will be looked for.
void RememberSent(const char* host, const char* board, const char* dat, const std::string& text);
