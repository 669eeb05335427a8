#pragma once

#include <cstdint>
#include <string_view>

// Whether a thread takes no more posts, or few: it has so many, or its last post (UTF-8, as it is
// read) is one with which servers close a thread.
bool IsAtItsEnd(int32_t posts, std::string_view lastPost);
