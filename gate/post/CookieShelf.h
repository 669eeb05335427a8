#pragma once

#include "post/Cookies.h"
#include "settings/GateSettings.h"
#include "store/Store.h"

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// The cookies of all families, each in its own jar, kept in the store. Any thread may call.
class CookieShelf {
public:
    // Both outlive it.
    CookieShelf(const Settings& settings, Store* store);

    // The one "Cookie" header's value for a request; empty for none.
    std::string HeaderFor(const Family& family, const CookiePlace& place);
    // What an answer says of its family's cookies: first those that the server calls broken go,
    // then its "Set-Cookie" lines are taken. Returns the names of those that went.
    std::vector<std::string> Take(const Family& family, const CookiePlace& place,
                                  const std::vector<std::string>& broken,
                                  const std::vector<std::string>& lines);
    std::vector<std::string> NamesOf(const Family& family);
    void Forget(const Family& family);

private:
    CookieJar& _JarOf(const Family& family);

    const Settings& fSettings;
    Store* const fStore;
    std::mutex fMutex;
    std::map<std::string, CookieJar> fJars; // guarded by fMutex; by the family's name
};

} // namespace gate
