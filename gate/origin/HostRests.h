#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <string>

namespace gate {

// Hosts that are left alone for a while: since they said so, or since they were just asked. Any
// thread may call.
class HostRests {
public:
    using Time = std::chrono::system_clock::time_point;

    // An answer of status 429 or 503 with its Retry-After, which is seconds or a date; nothing
    // happens for another status or text.
    void Note(const std::string& host, long status, const std::string& retryAfter);
    // Seconds for which the host must still be left alone, or 0.
    long SecondsLeft(const std::string& host);
    // The time at which the host may be asked next; asking is taken as done then.
    Time TakeTurn(const std::string& host, std::chrono::milliseconds pause);

private:
    std::mutex fMutex;
    // Guarded by fMutex
    std::map<std::string, Time> fTired;
    std::map<std::string, Time> fTurns;
};

} // namespace gate
