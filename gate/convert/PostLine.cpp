#include "convert/PostLine.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace gate {

namespace {

constexpr std::string_view kSeparator = "<>";
constexpr std::string_view kDeleted = "\x82\xA0\x82\xDA\x81\x5B\x82\xF1"; // "あぼーん"

std::string Field(std::string text) {
    std::erase_if(text, [](char byte) { return byte == '\r' || byte == '\0'; });
    std::ranges::replace(text, '\n', ' ');
    for (size_t at = text.find(kSeparator); at != text.npos; at = text.find(kSeparator, at))
        text.replace(at, kSeparator.size(), "&lt;&gt;");
    return text;
}

} // namespace

std::string MakeDatLine(const PostLine& post) {
    std::string line = Field(post.name);
    if (line.empty())
        line = " ";
    for (const std::string* field : {&post.mail, &post.date})
        line.append(kSeparator) += Field(*field);
    line.append(kSeparator) += " " + Field(post.body) + " ";
    return line.append(kSeparator) + Field(post.title) + "\n";
}

std::string DeletedLine() {
    std::string line(kDeleted);
    for (int i = 0; i < 4; i++)
        line.append(kSeparator) += kDeleted;
    return line + "\n";
}

std::string LinesOfPosts(const std::vector<PostLine>& posts, long first, long last) {
    std::map<long, const PostLine*> ofNumber;
    for (const PostLine& post : posts)
        ofNumber.emplace(post.number, &post);
    first = std::max(first, 1L);
    last = std::min(last, kMostPosts);
    std::string lines;
    for (long number = first; number <= last; number++) {
        const auto found = ofNumber.find(number);
        lines += found == ofNumber.end() ? DeletedLine() : MakeDatLine(*found->second);
    }
    return lines;
}

} // namespace gate
