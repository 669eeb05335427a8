#include "origin/Location.h"

#include <curl/curl.h>

#include <algorithm>

namespace gate {

namespace {

constexpr size_t kMostRedirects = 5;

bool IsHostCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == '.' || c == '-';
}

bool IsPathCharacter(char c) {
    return c > ' ' && c < 0x7F;
}

std::optional<Place> MakePlace(std::string_view authority, std::string_view path,
                               std::string_view defaultPort) {
    std::string host = LowerCase(authority);
    if (host.ends_with(defaultPort))
        host.resize(host.size() - defaultPort.size());
    path = path.substr(0, path.find('#'));
    Place place{host, std::string(path)};
    if (!path.starts_with('/'))
        place.path.insert(0, "/");
    const bool isGood = !host.empty() && std::all_of(host.begin(), host.end(), IsHostCharacter) &&
                        std::all_of(path.begin(), path.end(), IsPathCharacter);
    return isGood ? std::optional(place) : std::nullopt;
}

} // namespace

std::optional<Place> ParseAddress(std::string_view address) {
    const std::string start = LowerCase(address.substr(0, 8));
    const bool isTls = start == "https://";
    if (!isTls && !start.starts_with("http://"))
        return std::nullopt;
    address.remove_prefix(isTls ? 8 : 7);
    const size_t end = std::min(address.find_first_of("/?#"), address.size());
    return MakePlace(address.substr(0, end), address.substr(end), isTls ? ":443" : ":80");
}

std::optional<Place> ResolveLocation(const Place& from, std::string_view location) {
    if (location.starts_with("//"))
        return ParseAddress("https:" + std::string(location));
    if (location.starts_with('/'))
        return MakePlace(from.host, location, ":443");
    if (location.find("://") != std::string_view::npos)
        return ParseAddress(location);
    const std::string folder = from.path.substr(0, from.path.find('?'));
    return MakePlace(from.host, folder.substr(0, folder.rfind('/') + 1) + std::string(location),
                     ":443");
}

bool IsRedirect(long status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

time_t ParseHttpDate(const std::string& text) {
    return curl_getdate(text.c_str(), nullptr);
}

Fetched FetchFollowing(Origin* origin, const OriginRequest& request, Deadline deadline) {
    OriginRequest now = request;
    for (size_t count = 0;; count++) {
        Fetched fetched{{now.host, now.path}, now.family, origin->Start(now), {}, {}};
        if (!fetched.transfer->WaitForHead(deadline)) {
            fetched.failure = fetched.transfer->Failure(now.host + " の応答がまだありません");
            return fetched;
        }
        fetched.head = fetched.transfer->Head();
        const std::string* location = fetched.head.Find("location");
        if (!IsRedirect(fetched.head.status) || location == nullptr)
            return fetched;
        const std::optional<Place> next = ResolveLocation(fetched.place, *location);
        const Family* family = next ? origin->Rules().FindFamily(next->host) : nullptr;
        if (family == nullptr || count == kMostRedirects) {
            fetched.failure = family == nullptr ? now.host + " が知らない場所へ移動を求めました"
                                                : now.host + " の移動先をたどりきれません";
            return fetched;
        }
        now.family = family;
        now.host = family->PresentHost(next->host);
        now.path = next->path;
    }
}

} // namespace gate
