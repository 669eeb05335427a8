#pragma once

#include <cstddef>
#include <ctime>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace gate {

// The last requests, a line each, without what was posted or searched. Any thread may call.
class Journal {
public:
    struct Entry {
        time_t time = 0;
        std::string request; // "GET HOST/PATH"
        int status = 0;      // 0: no answer was sent
        std::string reason;
        long long bytes = 0, milliseconds = 0;
    };

    // Writes the line to standard error too.
    void Add(const Entry& entry);
    std::vector<Entry> Last() const; // the newest first

private:
    mutable std::mutex fMutex;
    std::deque<Entry> fEntries; // guarded by fMutex
};

} // namespace gate
