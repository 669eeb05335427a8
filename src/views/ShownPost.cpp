#include "views/ShownPost.h"

#include <algorithm>
#include <charconv>

namespace {

// What stands between two labels of a line; empty without the first.
std::string_view Between(std::string_view line, std::string_view from, std::string_view to) {
    const size_t start = line.find(from);
    if (start == std::string_view::npos)
        return {};
    line.remove_prefix(start + from.size());
    std::string_view part = line.substr(0, line.find(to));
    if (part.ends_with(' '))
        part.remove_suffix(1);
    return part;
}

} // namespace

PostText ParseShownPost(std::string_view shown) {
    PostText post;
    std::from_chars(shown.data(), shown.data() + shown.size(), post.number);
    const std::string_view head = shown.substr(0, shown.find('\n'));
    post.name = Between(head, kNameLabel, kMailLabel);
    if (const size_t date = head.rfind(kDateLabel); date != std::string_view::npos)
        post.date = head.substr(date + std::string_view(kDateLabel).size());
    post.body = shown.substr(std::min(shown.size(), head.size() + 1));
    while (post.body.ends_with('\n'))
        post.body.remove_suffix(1);
    return post;
}
