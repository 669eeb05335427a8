#pragma once

#include <string>
#include <vector>

namespace gate {

// Sockets on which connections of this machine arrive; closed at the end.
class Listeners {
public:
    Listeners() = default;
    ~Listeners();
    Listeners(const Listeners&) = delete;
    Listeners& operator=(const Listeners&) = delete;

    // Those that who started this process has opened for it (LISTEN_PID, LISTEN_FDS). False when
    // there are none, or with an error when one of them can be reached from elsewhere.
    bool Adopt(std::string* error);
    // 127.0.0.1, and ::1 where that is. Port 0: a free one.
    bool Open(int port, std::string* error);

    int Port() const { return fPort; }
    const std::vector<int>& Handles() const { return fHandles; }

private:
    std::vector<int> fHandles;
    int fPort = 0;
};

} // namespace gate
