#include "views/HiddenPosts.h"

#include <charconv>
#include <cstring>

namespace {
constexpr char kLinkMark = '#';
constexpr const char* kHidden = "あぼーん";
} // namespace

std::string HiddenPosts::LineOf(int32 number) {
    return std::to_string(number) + " " + kHidden;
}

std::string HiddenPosts::LinkOf(int32 number) {
    return kLinkMark + std::to_string(number);
}

int32 HiddenPosts::NumberOf(const char* link) {
    int32 number = -1;
    if (link[0] == kLinkMark)
        std::from_chars(link + 1, link + strlen(link), number);
    return number;
}

const HiddenPosts::Post* HiddenPosts::Find(int32 number) const {
    const auto post = fPosts.find(number);
    return post == fPosts.end() ? nullptr : &post->second;
}

HiddenPosts::Post HiddenPosts::Take(int32 number) {
    auto node = fPosts.extract(number);
    return node.empty() ? Post() : std::move(node.mapped());
}

void HiddenPosts::SetFont(const BFont& font) {
    for (auto& [number, post] : fPosts) {
        for (int32 i = 0; i < post.runs->count; i++)
            post.runs->runs[i].font = font;
    }
}

HiddenPostText::HiddenPostText(const LinkTextView& article, const HiddenPosts::Post& post,
                               int32 offset)
    : LinkTextView(article.TextRect(), "hidden post", article.TextRect(), B_FOLLOW_NONE, 0),
      fOffset(offset) {
    SetStylable(true);
    SetText(post.text.data(), static_cast<int32>(post.text.size()), post.runs.get());
    fUrls = post.urls;
    fReferences = post.references;
}
