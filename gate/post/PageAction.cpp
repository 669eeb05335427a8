#include "post/PageAction.h"

#include "convert/Words.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace gate {

namespace {

// Without "." and ".."; nothing when it leads above the root.
std::optional<std::string> NormalPath(const std::string& path) {
    const size_t query = std::min(path.find('?'), path.size());
    std::string normal;
    for (size_t at = 0; at < query;) {
        const size_t end = std::min(path.find('/', at + 1), query);
        const std::string part = path.substr(at, end - at);
        const bool isLast = end == query;
        if (part == "/..") {
            if (normal.empty())
                return std::nullopt;
            normal.resize(normal.rfind('/'));
        } else if (part != "/.") {
            normal += part;
        }
        if (isLast && (part == "/.." || part == "/."))
            normal += '/';
        at = end;
    }
    return normal + path.substr(query);
}

// Whether an address is a path beside the page that names it, as a web browser reads it.
bool IsRelativePath(std::string_view address) {
    return !address.empty() && address.find_first_of("/?#") != 0 &&
           address.substr(0, address.find_first_of("/?#")).find_first_of(":\\") == address.npos;
}

} // namespace

std::optional<Place> ActionOf(const PageForm& form, const Place& answered) {
    const std::string_view action = Trimmed(form.action);
    if (!IsRelativePath(action))
        return std::nullopt;
    std::optional<Place> place = ResolveLocation(answered, action);
    const std::optional<std::string> path = place ? NormalPath(place->path) : std::nullopt;
    if (!path || place->host != answered.host)
        return std::nullopt;
    place->path = *path;
    return place;
}

} // namespace gate
