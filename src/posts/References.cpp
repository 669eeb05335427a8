#include "posts/References.h"

#include <array>
#include <optional>

namespace {

constexpr int32_t kHighest = 1000000;
constexpr size_t kMostReferences = 1000;

// One sign of a reference as it may be written.
using Spellings = std::array<std::string_view, 2>;
constexpr Spellings kMark = {">", "\uFF1E"};
constexpr std::array<std::string_view, 3> kTo = {"-", "\uFF0D", "\u2212"};
constexpr std::array<std::string_view, 3> kAnd = {",", "\uFF0C", "\u3001"};

// Takes one of the spellings from the front of a text.
template <size_t kCount>
bool Take(const std::array<std::string_view, kCount>& spellings, std::string_view* text) {
    for (const std::string_view spelling : spellings) {
        if (text->starts_with(spelling)) {
            text->remove_prefix(spelling.size());
            return true;
        }
    }
    return false;
}

// A digit in either width; −1 without one.
int TakeDigit(std::string_view* text) {
    constexpr std::string_view kWideStart = "\xEF\xBC"; // then 0x90 to 0x99
    if (text->empty())
        return -1;
    const char first = text->front();
    if (first >= '0' && first <= '9') {
        text->remove_prefix(1);
        return first - '0';
    }
    if (!text->starts_with(kWideStart) || text->size() < 3)
        return -1;
    const int digit = static_cast<unsigned char>((*text)[2]) - 0x90;
    if (digit < 0 || digit > 9)
        return -1;
    text->remove_prefix(3);
    return digit;
}

// All digits that stand there; one that no thread reaches is kept as the first such.
std::optional<int32_t> TakeNumber(std::string_view* text) {
    std::optional<int32_t> number;
    for (int digit; (digit = TakeDigit(text)) >= 0;) {
        const int32_t next = number.value_or(0) * 10 + digit;
        number = next > kHighest ? kHighest + 1 : next;
    }
    return number;
}

std::optional<PostRange> TakeRange(std::string_view* text) {
    const std::optional<int32_t> first = TakeNumber(text);
    if (!first)
        return std::nullopt;
    std::string_view rest = *text;
    const std::optional<int32_t> last = Take(kTo, &rest) ? TakeNumber(&rest) : std::nullopt;
    if (!last)
        return PostRange{*first, *first};
    *text = rest;
    return PostRange{*first, *last};
}

bool IsThere(const PostRange& range) {
    return range.first >= 1 && range.first <= range.last && range.last <= kHighest;
}

// What stands behind the two marks: ranges with commas between.
void TakeList(std::string_view* text, std::vector<PostRange>* ranges) {
    while (const std::optional<PostRange> range = TakeRange(text)) {
        if (IsThere(*range) && ranges->size() < kMostReferences)
            ranges->push_back(*range);
        std::string_view rest = *text;
        if (!Take(kAnd, &rest) || !TakeRange(&rest))
            return;
        Take(kAnd, text);
    }
}

} // namespace

std::vector<PostRange> FindReferences(std::string_view body) {
    std::vector<PostRange> ranges;
    while (!body.empty()) {
        const size_t mark = body.find_first_of(">\xEF");
        if (mark == std::string_view::npos)
            break;
        body.remove_prefix(mark);
        if (!Take(kMark, &body)) {
            body.remove_prefix(1);
            continue;
        }
        size_t marks = 1;
        while (Take(kMark, &body))
            marks++;
        if (marks >= 2)
            TakeList(&body, &ranges);
    }
    return ranges;
}
