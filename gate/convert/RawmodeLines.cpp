#include "convert/RawmodeLines.h"

#include "convert/Encodings.h"
#include "convert/Fields.h"
#include "convert/Words.h"

namespace gate {

namespace {

constexpr size_t kIdentity = 6;

} // namespace

std::vector<PostLine> ParseRawmode(std::string_view eucJp) {
    const std::string utf8 = ToUtf8(eucJp, Charset::kEucJp);
    std::string_view rest = utf8;
    std::vector<PostLine> posts;
    for (std::string_view line; TakeLine(&rest, &line);) {
        const std::vector<std::string_view> fields = SplitFields(line);
        std::optional<PostLine> post = PostOfFields(fields);
        if (!post)
            continue;
        if (fields.size() > kIdentity && !fields[kIdentity].empty())
            post->date += " ID:" + ToCp932(fields[kIdentity], Charset::kUtf8);
        posts.push_back(std::move(*post));
    }
    return posts;
}

} // namespace gate
