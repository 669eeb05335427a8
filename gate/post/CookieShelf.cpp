#include "post/CookieShelf.h"

#include <ctime>

namespace gate {

namespace {

CookieRules RulesOf(const Family& family) {
    CookieRules rules;
    for (const std::string& host : family.hosts)
        rules.domains.push_back(host.starts_with("*.") ? host.substr(2) : host);
    rules.dropped = family.droppedCookies;
    rules.wanted = family.wantedCookies;
    return rules;
}

CookieJar LoadJar(const Family& family, Store* store) {
    CookieJar jar(RulesOf(family));
    for (Cookie& cookie : store->ListCookies(family.name))
        jar.Add(std::move(cookie));
    jar.DropExpired(time(nullptr));
    return jar;
}

} // namespace

CookieShelf::CookieShelf(const Settings& settings, Store* store)
    : fSettings(settings), fStore(store) {
    for (const Family& family : fSettings.families)
        fJars.emplace(family.name, LoadJar(family, fStore));
}

CookieJar& CookieShelf::_JarOf(const Family& family) {
    return fJars.at(family.name);
}

std::string CookieShelf::HeaderFor(const Family& family, const CookiePlace& place) {
    std::lock_guard guard(fMutex);
    return _JarOf(family).HeaderFor(place, time(nullptr));
}

std::vector<std::string> CookieShelf::Take(const Family& family, const CookiePlace& place,
                                           const std::vector<std::string>& broken,
                                           const std::vector<std::string>& lines) {
    const Seconds now = time(nullptr);
    std::lock_guard guard(fMutex);
    CookieJar& jar = _JarOf(family);
    std::vector<std::string> gone;
    for (const std::string& name : broken) {
        if (jar.Drop(name) > 0)
            gone.push_back(name);
    }
    for (const std::string& line : lines)
        jar.Take(line, place, now);
    jar.DropExpired(now);
    if (!gone.empty() || !lines.empty())
        fStore->SetCookies(family.name, jar.All());
    return gone;
}

std::vector<std::string> CookieShelf::NamesOf(const Family& family) {
    std::lock_guard guard(fMutex);
    CookieJar& jar = _JarOf(family);
    jar.DropExpired(time(nullptr));
    std::vector<std::string> names;
    for (const Cookie& cookie : jar.All())
        names.push_back(cookie.name);
    return names;
}

void CookieShelf::Forget(const Family& family) {
    std::lock_guard guard(fMutex);
    _JarOf(family) = CookieJar(RulesOf(family));
    fStore->ForgetCookies(family.name);
}

} // namespace gate
