#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// Seconds since 1970.
using Seconds = int64_t;

struct Cookie {
    std::string name, value;
    std::string domain, path; // the domain in lower case, without a dot at its start
    bool isOfHostAlone = true;
    bool isSecure = false;
    std::optional<Seconds> expires; // none: until its server ends it
    Seconds created = 0;

    bool IsSame(const Cookie& other) const {
        return name == other.name && domain == other.domain && path == other.path;
    }
};

// What a request asks for, as far as cookies go.
struct CookiePlace {
    std::string host, path;
    bool isSecure = true;
};

// A family's rules; they may stand in the settings.
struct CookieRules {
    // The family's own: a cookie of any other domain is neither kept nor sent.
    std::vector<std::string> domains;
    // Never kept: marks that servers give to whom they suspect, or that only pages use.
    std::vector<std::string> dropped;
    // Sent in any case, empty if there is no such cookie.
    std::vector<std::string> wanted;
};

// The cookies of one family, after the standard's rules for domains, paths and expiry. A family has
// a jar of its own, so that none ever reaches another.
class CookieJar {
public:
    explicit CookieJar(CookieRules rules) : fRules(std::move(rules)) {}

    // The value of a "Set-Cookie" line that `place` answered with. A date that has passed forgets
    // the cookie. False when the cookie is refused.
    bool Take(std::string_view line, const CookiePlace& place, Seconds now);
    // One that was kept on disk; it must be one of the family's.
    bool Add(Cookie cookie);
    // The one "Cookie" header for a request, without its name; empty for none.
    std::string HeaderFor(const CookiePlace& place, Seconds now) const;
    // Of every domain and path; how many there were.
    size_t Drop(std::string_view name);
    void DropExpired(Seconds now);

    const std::vector<Cookie>& All() const { return fCookies; }

private:
    bool _IsOfFamily(std::string_view domain) const;

    CookieRules fRules;
    std::vector<Cookie> fCookies; // in the order of their creation
};

// A date as servers write it, in any of their forms.
std::optional<Seconds> ParseCookieDate(std::string_view text);

} // namespace gate
