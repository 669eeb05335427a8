#include "post/Cookies.h"

#include "convert/Words.h"

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

constexpr size_t kLongestCookie = 4096;
constexpr size_t kMostCookies = 50; // of a family
constexpr Seconds kForever = Seconds{400} * 24 * 3600;

bool IsAddress(std::string_view host) {
    return host.find(':') != host.npos || host.find_first_not_of("0123456789.") == host.npos;
}

bool MatchesDomain(std::string_view host, std::string_view domain) {
    return host == domain || (host.size() > domain.size() && host.ends_with(domain) &&
                              host[host.size() - domain.size() - 1] == '.' && !IsAddress(host));
}

bool MatchesPath(std::string_view path, std::string_view ofCookie) {
    return path == ofCookie || (path.starts_with(ofCookie) &&
                                (ofCookie.ends_with('/') || path[ofCookie.size()] == '/'));
}

// The folder of what was asked for.
std::string DefaultPath(std::string_view path) {
    path = path.substr(0, path.find('?'));
    const size_t slash = path.rfind('/');
    return path.starts_with('/') && slash != 0 ? std::string(path.substr(0, slash)) : "/";
}

bool HasControl(std::string_view text) {
    return std::ranges::any_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
}

// A time that has passed stands for no life at all.
std::optional<Seconds> MaxAge(std::string_view value, Seconds now) {
    Seconds age = 0;
    const bool isLess = value.starts_with('-');
    const char* end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data() + isLess, end, age);
    if (value.empty() || stop != end || error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        age = kForever;
    return isLess || age == 0 ? Seconds{0} : now + std::min(age, kForever);
}

struct Attribute {
    std::string name;
    std::string_view value;
};

// The next "NAME=VALUE" of a line, up to its ";".
Attribute TakeAttribute(std::string_view* line) {
    const std::string_view text = line->substr(0, line->find(';'));
    line->remove_prefix(std::min(text.size() + 1, line->size()));
    const size_t equals = text.find('=');
    return {Lowered(Trimmed(text.substr(0, equals))),
            equals == text.npos ? "" : Trimmed(text.substr(equals + 1))};
}

void ReadAttributes(std::string_view line, Seconds now, Cookie* cookie) {
    bool hasAge = false;
    while (!line.empty()) {
        const Attribute attribute = TakeAttribute(&line);
        std::string_view value = attribute.value;
        if (attribute.name == "max-age") {
            const std::optional<Seconds> expires = MaxAge(value, now);
            hasAge = hasAge || expires;
            cookie->expires = expires ? expires : cookie->expires;
        } else if (attribute.name == "expires" && !hasAge) {
            const std::optional<Seconds> expires = ParseCookieDate(value);
            cookie->expires = expires ? expires : cookie->expires;
        } else if (attribute.name == "domain" && !value.empty()) {
            value.remove_prefix(value.starts_with('.') ? 1 : 0);
            cookie->domain = Lowered(value);
            cookie->isOfHostAlone = false;
        } else if (attribute.name == "path" && value.starts_with('/')) {
            cookie->path = value;
        } else if (attribute.name == "secure") {
            cookie->isSecure = true;
        }
    }
}

std::optional<Cookie> ParseCookie(std::string_view line, const CookiePlace& place, Seconds now) {
    const std::string_view pair = line.substr(0, line.find(';'));
    const size_t equals = pair.find('=');
    if (equals == pair.npos || line.size() > 2 * kLongestCookie || HasControl(line))
        return std::nullopt;
    Cookie cookie;
    cookie.name = Trimmed(pair.substr(0, equals));
    cookie.value = Trimmed(pair.substr(equals + 1));
    cookie.domain = Lowered(place.host);
    cookie.path = DefaultPath(place.path);
    cookie.created = now;
    ReadAttributes(line.substr(std::min(pair.size() + 1, line.size())), now, &cookie);
    const bool isGood =
        !cookie.name.empty() && cookie.name.size() + cookie.value.size() <= kLongestCookie &&
        MatchesDomain(Lowered(place.host), cookie.domain) && (!cookie.isSecure || place.isSecure);
    return isGood ? std::optional(cookie) : std::nullopt;
}

bool IsSentTo(const Cookie& cookie, const CookiePlace& place, Seconds now) {
    const std::string host = Lowered(place.host);
    const std::string_view path = std::string_view(place.path).substr(0, place.path.find('?'));
    return (cookie.isOfHostAlone ? host == cookie.domain : MatchesDomain(host, cookie.domain)) &&
           MatchesPath(path.empty() ? "/" : path, cookie.path) &&
           (!cookie.isSecure || place.isSecure) && (!cookie.expires || *cookie.expires > now);
}

} // namespace

bool CookieJar::Take(std::string_view line, const CookiePlace& place, Seconds now) {
    std::optional<Cookie> cookie = ParseCookie(line, place, now);
    if (!cookie || !_IsOfFamily(cookie->domain))
        return false;
    DropExpired(now);
    if (cookie->expires && *cookie->expires <= now) {
        std::erase_if(fCookies, [&cookie](const Cookie& old) { return old.IsSame(*cookie); });
        return true;
    }
    return Add(std::move(*cookie));
}

bool CookieJar::Add(Cookie cookie) {
    const bool isDropped = std::ranges::find(fRules.dropped, cookie.name) != fRules.dropped.end();
    if (isDropped || !_IsOfFamily(cookie.domain))
        return false;
    const auto old = std::ranges::find_if(
        fCookies, [&cookie](const Cookie& other) { return other.IsSame(cookie); });
    if (old != fCookies.end()) {
        cookie.created = old->created;
        *old = std::move(cookie);
        return true;
    }
    if (fCookies.size() >= kMostCookies)
        fCookies.erase(fCookies.begin());
    fCookies.push_back(std::move(cookie));
    return true;
}

std::string CookieJar::HeaderFor(const CookiePlace& place, Seconds now) const {
    std::vector<const Cookie*> sent;
    for (const Cookie& cookie : fCookies) {
        if (IsSentTo(cookie, place, now))
            sent.push_back(&cookie);
    }
    std::ranges::stable_sort(sent, std::ranges::greater(),
                             [](const Cookie* cookie) { return cookie->path.size(); });
    std::string header;
    const auto append = [&header](const std::string& name, const std::string& value) {
        header += (header.empty() ? "" : "; ") + name + "=" + value;
    };
    for (const Cookie* cookie : sent)
        append(cookie->name, cookie->value);
    for (const std::string& name : fRules.wanted) {
        if (_IsOfFamily(Lowered(place.host)) &&
            std::ranges::find(sent, name, &Cookie::name) == sent.end())
            append(name, "");
    }
    return header;
}

size_t CookieJar::Drop(std::string_view name) {
    return std::erase_if(fCookies, [name](const Cookie& cookie) { return cookie.name == name; });
}

void CookieJar::DropExpired(Seconds now) {
    std::erase_if(fCookies,
                  [now](const Cookie& cookie) { return cookie.expires && *cookie.expires <= now; });
}

bool CookieJar::_IsOfFamily(std::string_view domain) const {
    return std::ranges::any_of(fRules.domains,
                               [domain](auto& own) { return MatchesDomain(domain, own); });
}

} // namespace gate
