#include "convert/Fields.h"

#include "convert/DatText.h"
#include "convert/Encodings.h"

#include <charconv>

namespace gate {

namespace {

constexpr std::string_view kSeparator = "<>";
constexpr size_t kFieldsOfPost = 6;

} // namespace

std::vector<std::string_view> SplitFields(std::string_view line) {
    std::vector<std::string_view> fields;
    for (;;) {
        const size_t end = line.find(kSeparator);
        fields.push_back(line.substr(0, end));
        if (end == line.npos)
            return fields;
        line.remove_prefix(end + kSeparator.size());
    }
}

std::optional<long> NumberOf(std::string_view digits, long most) {
    long number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end || number < 1 || number > most)
        return std::nullopt;
    return number;
}

std::optional<PostLine> PostOfFields(const std::vector<std::string_view>& fields) {
    const std::optional<long> number = NumberOf(fields[0], kMostPosts);
    if (!number || fields.size() < kFieldsOfPost)
        return std::nullopt;
    const auto coded = [](std::string_view utf8) { return ToCp932(utf8, Charset::kUtf8); };
    return PostLine{*number,          coded(CleanName(fields[1])), coded(fields[2]),
                    coded(fields[3]), coded(CleanBody(fields[4])), coded(fields[5])};
}

} // namespace gate
