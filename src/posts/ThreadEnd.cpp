#include "posts/ThreadEnd.h"

#include "text/Folding.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace {

constexpr int32_t kNearTheEnd = 980; // posts; most boards close a thread at 1,000

// Whether the text holds the two parts with nothing but a number and spaces between them.
bool HoldsAroundNumber(std::string_view text, std::string_view before, std::string_view behind) {
    for (size_t at = text.find(before); at != text.npos; at = text.find(before, at + 1)) {
        size_t next = at + before.size();
        const size_t number = next;
        while (next < text.size() &&
               (text[next] == ' ' || isdigit(static_cast<unsigned char>(text[next])) != 0))
            next++;
        if (next > number && text.substr(next).starts_with(behind))
            return true;
    }
    return false;
}

} // namespace

bool IsAtItsEnd(int32_t posts, std::string_view lastPost) {
    if (posts >= kNearTheEnd)
        return true;
    constexpr const char* kMarks[][2] = {
        {"このスレッドは", "を超えました"},
        {"レス数が", "を超えています"},
        {"Over ", "Thread"},
    };
    const std::string post = Folded(lastPost);
    return std::ranges::any_of(kMarks, [&](const auto& mark) {
        return HoldsAroundNumber(post, Folded(mark[0]), Folded(mark[1]));
    });
}
