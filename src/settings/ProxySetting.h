#pragma once

#include <cstddef>
#include <string>

class SettingsFile;

// The HTTP proxy of the settings, as a request uses it.
struct ProxySetting {
    bool use = false;
    std::string host;
    std::string port;
};

// In bytes.
constexpr size_t kLongestProxyHost = 63;
constexpr size_t kLongestProxyPort = 7;

// Reads it. One that is in use and does not fit its format would lead to another host than the
// user's: what there is to tell him then, else nothing. Before anything is stopped or sent. A proxy
// without one of its settings is not used. Any thread.
std::string FindProxy(const SettingsFile& settings, ProxySetting* proxy);
