#pragma once

#include "convert/Encodings.h"
#include "convert/PostLine.h"

#include <string>
#include <string_view>
#include <vector>

// Tables are written in UTF-8; servers speak other charsets.
inline std::string Sjis(std::string_view utf8) {
    return gate::ToCp932(utf8, gate::Charset::kUtf8);
}

inline std::string Euc(std::string_view utf8) {
    return gate::FromCp932(Sjis(utf8), gate::Charset::kEucJp);
}

inline std::string Utf8(std::string_view cp932) {
    return gate::ToUtf8(cp932, gate::Charset::kCp932);
}

// All posts as the lines of a dat, in UTF-8.
inline std::string Lines(const std::vector<gate::PostLine>& posts) {
    std::string lines;
    for (const gate::PostLine& post : posts)
        lines += std::to_string(post.number) + "|" + Utf8(gate::MakeDatLine(post));
    return lines;
}
