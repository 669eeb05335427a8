#include "posts/OwnPosts.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view kWideSpace = "\u3000";

std::string WithoutBlanks(std::string_view text) {
    std::string dense;
    while (!text.empty()) {
        const bool isWide = text.starts_with(kWideSpace);
        const char c = text.front();
        if (!isWide && c != ' ' && c != '\t' && c != '\n' && c != '\r')
            dense += c;
        text.remove_prefix(isWide ? kWideSpace.size() : 1);
    }
    return dense;
}

} // namespace

int32_t FindOwnPost(std::string_view sent, const std::vector<PostText>& posts) {
    const std::string wanted = WithoutBlanks(sent);
    int32_t found = 0;
    for (const PostText& post : posts) {
        if (wanted.empty() || WithoutBlanks(post.body) != wanted)
            continue;
        if (found != 0)
            return 0;
        found = post.number;
    }
    return found;
}

std::string NumbersAsText(const std::vector<int32_t>& numbers) {
    std::string text;
    for (const int32_t number : numbers)
        text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

std::vector<int32_t> NumbersFromText(std::string_view text) {
    std::vector<int32_t> numbers;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(','));
        text.remove_prefix(std::min(text.size(), part.size() + 1));
        int32_t number = 0;
        const char* end = part.data() + part.size();
        const auto [stop, error] = std::from_chars(part.data(), end, number);
        if (error == std::errc() && stop == end && number >= 1)
            numbers.push_back(number);
    }
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}
