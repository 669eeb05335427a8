#include "settings/GateSettings.h"

#include <algorithm>

namespace gate {

namespace {

// "*.x" takes what ends in ".x", another pattern only itself.
bool Matches(std::string_view pattern, std::string_view host) {
    if (!pattern.starts_with("*."))
        return pattern == host;
    pattern.remove_prefix(1);
    return host.size() > pattern.size() && host.ends_with(pattern);
}

// Whether a host is `end` or below it.
bool EndsAt(std::string_view host, std::string_view end) {
    return host == end || (host.size() > end.size() && host.ends_with(end) &&
                           host[host.size() - end.size() - 1] == '.');
}

} // namespace

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

std::string Family::PresentHost(std::string_view host) const {
    std::string present = LowerCase(host);
    for (const Renaming& renaming : renamed) {
        if (!EndsAt(present, renaming.old))
            continue;
        present.replace(present.size() - renaming.old.size(), std::string::npos, renaming.present);
        break;
    }
    return present;
}

PostKind Family::Post() const {
    switch (kind) {
    case FamilyKind::kRawmode: return post.value_or(PostKind::kRawmode);
    case FamilyKind::kOfflaw: return post.value_or(PostKind::kOfflaw);
    case FamilyKind::kDat: break;
    }
    return post.value_or(PostKind::kBbs);
}

bool Family::Serves(std::string_view host) const {
    const std::string present = PresentHost(host);
    return std::any_of(hosts.begin(), hosts.end(),
                       [&](const std::string& pattern) { return Matches(pattern, present); });
}

const Family* Settings::FindFamily(std::string_view host) const {
    auto found = std::find_if(families.begin(), families.end(),
                              [&](const Family& family) { return family.Serves(host); });
    return found == families.end() ? nullptr : &*found;
}

const Family* Settings::FindFamilyByName(std::string_view name) const {
    auto found = std::find_if(families.begin(), families.end(),
                              [&](const Family& family) { return family.name == name; });
    return found == families.end() ? nullptr : &*found;
}

bool Settings::IsPortal(std::string_view host) const {
    const std::string lower = LowerCase(host);
    return std::find(portalHosts.begin(), portalHosts.end(), lower) != portalHosts.end();
}

} // namespace gate
