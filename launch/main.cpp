#include "settings/ReplaceFile.h"
#include "settings/SettingsFile.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

// Tells and sets where the program's requests go, for the launcher that starts the gate:
//   itamori-setup show                  "new" (no settings yet), "here PORT" (the proxy's host is
//                                       this machine), "elsewhere", "off" (no proxy is used), or
//                                       "unreadable"
//   itamori-setup new PORT              turns the proxy on
//   itamori-setup move PORT             another port of this machine
//   itamori-setup portal gate SERVICES  names a real portal in services.txt, and
//   itamori-setup portal none SERVICES  puts back what stood there
// Settings that lead elsewhere, and those that can't be read, stay as they are.

namespace {

// Without the gate this portal's answer is no menu: it is named only where the proxy is set.
constexpr const char* kPortal = "menu.5ch.io";
constexpr const char* kRemark = "# Only with the gate as the proxy; put back without it.\n";
constexpr const char* kNoPortal = "portal.itamori.example"; // as shipped; the gate knows it too

bool Fail(const std::string& what) {
    fprintf(stderr, "itamori-setup: %s\n", what.c_str());
    return false;
}

enum class State { kNew, kHere, kElsewhere, kOff, kUnreadable };

State Look(SettingsFile* settings, BString* port) {
    const status_t status = settings->Load();
    if (status == B_ENTRY_NOT_FOUND)
        return State::kNew;
    if (status != B_OK)
        return State::kUnreadable;
    bool use = false;
    if (settings->Get("proxy", &use) == B_NAME_NOT_FOUND)
        return State::kNew;
    if (!use)
        return State::kOff;
    BString host;
    if (settings->Get("proxy_host", &host) != B_OK || settings->Get("proxy_port", port) != B_OK)
        return State::kElsewhere;
    for (const char* name : {"localhost", "127.0.0.1", "::1"}) {
        const int number = atoi(port->String());
        if (host == name && number > 0 && number < 65536)
            return State::kHere;
    }
    return State::kElsewhere;
}

bool Show() {
    SettingsFile settings("Itamori", "2ch");
    BString port;
    switch (Look(&settings, &port)) {
    case State::kNew: puts("new"); break;
    case State::kHere: printf("here %d\n", atoi(port.String())); break;
    case State::kElsewhere: puts("elsewhere"); break;
    case State::kOff: puts("off"); break;
    case State::kUnreadable: puts("unreadable"); break;
    }
    return true;
}

bool Save(const SettingsFile& settings) {
    return settings.Save() == B_OK || Fail("the settings can't be written");
}

// What the user has put there himself stays, and has no such remark before it.
bool SetPortal(const std::string& whose, const char* path) {
    const std::string shipped = std::string("portal_host = ") + kNoPortal + "\n";
    const std::string real = std::string(kRemark) + "portal_host = " + kPortal + "\n";
    const std::string& old = whose == "gate" ? shipped : real;
    std::string services;
    ReadWholeFile(path, &services);
    const size_t place = ("\n" + services).find("\n" + old);
    if (place == std::string::npos)
        return true;
    services.replace(place, old.size(), whose == "gate" ? real : shipped);
    return ReplaceFile(path, services) == B_OK || Fail(std::string(path) + " can't be written");
}

bool SetNew(const char* port) {
    BPath folder;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &folder, true) != B_OK ||
        folder.Append("2ch") != B_OK)
        return Fail("there is no folder for settings");
    create_directory(folder.Path(), 0755);
    SettingsFile settings("Itamori", "2ch");
    BString old;
    if (Look(&settings, &old) != State::kNew)
        return Fail("there are settings already");
    // The network's settings come as a group: with the first given, the program adds none.
    settings.AddBool("proxy", true);
    for (const auto& [key, value] : {std::pair("proxy_host", "localhost"), {"proxy_port", port}}) {
        if (settings.Replace(key, value) != B_OK)
            settings.AddString(key, value);
    }
    bool cache = false;
    if (settings.Get("enable_cache", &cache) != B_OK)
        settings.AddBool("enable_cache", false);
    return Save(settings);
}

bool Move(const char* port) {
    SettingsFile settings("Itamori", "2ch");
    BString old;
    if (Look(&settings, &old) != State::kHere)
        return Fail("the proxy is not on this machine");
    settings.Replace("proxy_port", port);
    return Save(settings);
}

bool IsPort(const char* text) {
    char* end = nullptr;
    const long number = strtol(text, &end, 10);
    return *end == '\0' && number > 0 && number < 65536;
}

} // namespace

int main(int count, char** words) {
    const std::string what = count > 1 ? words[1] : "";
    if (what == "show" && count == 2)
        return Show() ? 0 : 1;
    if (what == "new" && count == 3 && IsPort(words[2]))
        return SetNew(words[2]) ? 0 : 1;
    if (what == "move" && count == 3 && IsPort(words[2]))
        return Move(words[2]) ? 0 : 1;
    const std::string whose = count == 4 ? words[2] : "";
    if (what == "portal" && (whose == "gate" || whose == "none"))
        return SetPortal(whose, words[3]) ? 0 : 1;
    fprintf(stderr, "usage: itamori-setup show | new PORT | move PORT | "
                    "portal gate SERVICES | portal none SERVICES\n");
    return 2;
}
