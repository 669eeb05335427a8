#include "posts/OwnPosts.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace {

constexpr std::string_view kWideSpace = "\u3000";
constexpr int64_t kPatience = 3600; // seconds
constexpr size_t kMostWaiting = 20;

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

// A number up to the next blank; false without one.
template <typename Number>
bool TakeNumber(std::string_view* text, Number* number) {
    const char* end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, *number);
    if (error != std::errc() || stop == end || *stop != ' ' || *number < 0)
        return false;
    text->remove_prefix(static_cast<size_t>(stop - text->data()) + 1);
    return true;
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

void OwnPosts::Add(std::string_view sent, int32_t known, int64_t now) {
    std::string text = WithoutBlanks(sent);
    if (text.empty())
        return;
    waiting.push_back({now, known, std::move(text)});
    if (waiting.size() > kMostWaiting)
        waiting.erase(waiting.begin());
}

bool OwnPosts::Settle(const std::vector<PostText>& posts, int64_t now) {
    const auto settles = [&](const SentPost& sent) {
        std::vector<PostText> fresh;
        std::ranges::copy_if(posts, std::back_inserter(fresh),
                             [&](const PostText& post) { return post.number > sent.known; });
        const int32_t found = FindOwnPost(sent.text, fresh);
        if (found > 0)
            numbers.push_back(found);
        return found > 0 || now - sent.time >= kPatience;
    };
    const bool isChanged = std::erase_if(waiting, settles) > 0;
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return isChanged;
}

std::string SentAsText(const std::vector<SentPost>& sent) {
    std::string text;
    for (const SentPost& post : sent)
        text +=
            std::to_string(post.time) + " " + std::to_string(post.known) + " " + post.text + "\n";
    return text;
}

std::vector<SentPost> SentFromText(std::string_view text) {
    std::vector<SentPost> sent;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        SentPost post;
        if (!TakeNumber(&line, &post.time) || !TakeNumber(&line, &post.known) || line.empty())
            continue;
        post.text = line;
        sent.push_back(std::move(post));
    }
    return sent;
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
