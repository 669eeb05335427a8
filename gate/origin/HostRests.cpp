#include "origin/HostRests.h"

#include <curl/curl.h>

#include <algorithm>
#include <charconv>

namespace gate {

namespace {

using namespace std::chrono_literals;
constexpr auto kLongestRest = 24h;

} // namespace

void HostRests::Note(const std::string& host, long status, const std::string& retryAfter) {
    if (status != 429 && status != 503)
        return;
    const Time now = std::chrono::system_clock::now();
    Time until = now;
    long seconds = 0;
    const char* end = retryAfter.data() + retryAfter.size();
    const auto [rest, error] = std::from_chars(retryAfter.data(), end, seconds);
    if (error == std::errc() && rest == end)
        until += std::chrono::seconds(std::clamp(seconds, 0L, 86400L));
    else if (const time_t date = curl_getdate(retryAfter.c_str(), nullptr); date > 0)
        until = std::chrono::system_clock::from_time_t(date);
    if (until <= now)
        return;
    std::lock_guard guard(fMutex);
    fTired[host] = std::min(until, now + kLongestRest);
}

long HostRests::SecondsLeft(const std::string& host) {
    std::lock_guard guard(fMutex);
    auto tired = fTired.find(host);
    if (tired == fTired.end())
        return 0;
    const auto left = tired->second - std::chrono::system_clock::now();
    if (left <= 0s) {
        fTired.erase(tired);
        return 0;
    }
    return std::chrono::ceil<std::chrono::seconds>(left).count();
}

HostRests::Time HostRests::TakeTurn(const std::string& host, std::chrono::milliseconds pause) {
    const Time now = std::chrono::system_clock::now();
    if (pause <= 0ms)
        return now;
    std::lock_guard guard(fMutex);
    std::erase_if(fTurns, [&](const auto& turn) { return turn.second + 60s < now; });
    auto [turn, isNew] = fTurns.try_emplace(host, now);
    if (!isNew)
        turn->second = std::max(now, turn->second + pause);
    return turn->second;
}

} // namespace gate
