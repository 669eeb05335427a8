#include "settings/ProxySetting.h"

#include "settings/SettingsFile.h"
#include "text/Utf8Cut.h"

#include <cstdlib>

namespace {

constexpr size_t kLongestShown = 200;
constexpr long kLastPort = 65535;

// The text behind the number does not count, as for a connection.
bool IsPort(const std::string& text) {
    const long number = strtol(text.c_str(), nullptr, 10);
    return text.size() <= kLongestProxyPort && number >= 1 && number <= kLastPort;
}

std::string Refusal(const char* name, const std::string& value) {
    return "プロキシの" + std::string(name) +
           "が正しくありません: " + CutAtCharacter(value.c_str(), kLongestShown);
}

} // namespace

std::string FindProxy(const SettingsFile& settings, ProxySetting* proxy) {
    BString host;
    BString port;
    *proxy = ProxySetting();
    settings.Get("proxy", &proxy->use);
    if (settings.Get("proxy_host", &host) != B_OK || settings.Get("proxy_port", &port) != B_OK)
        proxy->use = false;
    if (!proxy->use)
        return "";
    proxy->host = host.String();
    proxy->port = port.String();
    if (proxy->host.size() > kLongestProxyHost)
        return Refusal("ホスト", proxy->host);
    return IsPort(proxy->port) ? "" : Refusal("ポート", proxy->port);
}
