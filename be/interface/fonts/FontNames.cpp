#include "interface/fonts/FontNames.h"

#include <deque>
#include <map>
#include <mutex>
#include <utility>

namespace {

struct Names {
    std::mutex lock;
    // Guarded by lock
    std::deque<FontName> names{FontName(), FontName{"", "", true}};
    std::map<std::pair<std::string, std::string>, uint32> codes;
};

// Never destroyed: fonts are used while the process ends.
Names& TheNames() {
    static Names* names = new Names;
    return *names;
}

} // namespace

FontName FontNameOf(uint32 code) {
    Names& names = TheNames();
    std::lock_guard lock(names.lock);
    return code < names.names.size() ? names.names[code] : FontName();
}

uint32 CodeOfFontName(const std::string& family, const std::string& style) {
    Names& names = TheNames();
    std::lock_guard lock(names.lock);
    const auto [at, isNew] =
        names.codes.try_emplace({family, style}, static_cast<uint32>(names.names.size()));
    if (isNew)
        names.names.push_back({family, style, false});
    return at->second;
}
