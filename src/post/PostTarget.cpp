#include "post/PostTarget.h"

#include "net/ThreadAddress.h"
#include "text/PathNames.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr size_t kLongestName = 63;
constexpr std::string_view kScheme = "//";

// The value of a query's field; empty without it. Both families' names are upper or lower case.
std::string FieldOf(std::string_view query, std::string_view lower, std::string_view upper) {
    while (!query.empty()) {
        const std::string_view field = query.substr(0, query.find('&'));
        for (const std::string_view name : {lower, upper}) {
            if (field.starts_with(name))
                return std::string(field.substr(name.size()));
        }
        query.remove_prefix(std::min(query.size(), field.size() + 1));
    }
    return "";
}

bool IsPlain(const std::string& text) {
    return text.size() <= kLongestName && std::none_of(text.begin(), text.end(), [](char byte) {
               return static_cast<unsigned char>(byte) <= 0x20 || byte == 0x7F;
           });
}

bool IsUsable(const PostTarget& target) {
    return IsGoodComponent(target.host.c_str()) && IsPlain(target.host) &&
           IsGoodBoardFolder(target.board.c_str()) && IsPlain(target.board) &&
           IsGoodComponent(target.key.c_str()) && IsPlain(target.key);
}

} // namespace

std::string PostTarget::Prefix() const {
    return SplitBoard(board).prefix;
}

std::string PostTarget::Folder() const {
    return SplitBoard(board).folder;
}

std::string PostTarget::Referer() const {
    return "http://" + host + "/" + board + "/index.html";
}

std::string PostTarget::CgiPath() const {
    if (family == PostFamily::kBbsCgi)
        return "/test/bbs.cgi";
    const std::string prefix = Prefix();
    return prefix.empty() || prefix == "bbs" ? "/bbs/write.cgi" : "/" + prefix + "/bbs/write.cgi";
}

std::string PostTarget::BoardUrl() const {
    const bool isBare = Prefix() == "bbs";
    return "http://" + host + "/" + (isBare ? Folder() : board) + "/index.html";
}

std::string PostTarget::DatName() const {
    return key + (family == PostFamily::kBbsCgi ? ".dat" : ".cgi");
}

std::optional<PostTarget> ParsePostTarget(const std::string& address, PostFamily family) {
    PostTarget target;
    target.family = family;
    size_t position = address.find(kScheme);
    const size_t query = address.find('?');
    if (position == address.npos || query == address.npos)
        return std::nullopt;
    position += kScheme.size();
    const size_t slash = address.find('/', position);
    if (slash >= query)
        return std::nullopt;
    target.host = address.substr(position, slash - position);
    const std::string path = address.substr(slash, query - slash);
    const std::string fields = address.substr(query + 1);
    const size_t prefixEnd = family == PostFamily::kBbsCgi ? path.find("/test") : path.find('/', 1);
    if (prefixEnd == path.npos)
        return std::nullopt;
    target.board = prefixEnd > 1 ? path.substr(1, prefixEnd - 1) + "/" : "";
    target.board += FieldOf(fields, "bbs=", "BBS=");
    target.key = FieldOf(fields, "key=", "KEY=");
    return IsUsable(target) ? std::optional(target) : std::nullopt;
}
