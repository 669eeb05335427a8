#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

// Posts from one number to another, both included.
struct PostRange {
    int32_t first = 0;
    int32_t last = 0;
    bool operator==(const PostRange& other) const = default;
};

// What a body, as readers see it (UTF-8), refers to, in its order: ">>12", ">>12-15", ">>12,15",
// also in full-width signs. Numbers begin at 1; one beyond what a thread can hold, and a range that
// runs backwards, are none. Of a body that refers to half the thread only the first 1,000 count.
std::vector<PostRange> FindReferences(std::string_view body);
