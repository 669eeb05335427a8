#include "convert/OfflawLines.h"

#include "convert/Encodings.h"
#include "convert/Fields.h"
#include "convert/Words.h"

namespace gate {

namespace {

constexpr std::string_view kError = "<ERROR>";

// The words behind the mark, up to the line's end or a tag that closes it.
std::string ErrorIn(std::string_view line) {
    line.remove_prefix(line.find(kError) + kError.size());
    return std::string(Trimmed(line.substr(0, line.find("</"))));
}

} // namespace

OfflawAnswer ParseOfflaw(std::string_view cp932) {
    const std::string utf8 = ToUtf8(cp932, Charset::kCp932);
    std::string_view rest = utf8;
    OfflawAnswer answer;
    for (std::string_view line; TakeLine(&rest, &line);) {
        std::optional<PostLine> post = PostOfFields(SplitFields(line));
        if (post)
            answer.posts.push_back(std::move(*post));
        else if (answer.error.empty() && line.find(kError) != line.npos)
            answer.error = ErrorIn(line);
    }
    return answer;
}

} // namespace gate
