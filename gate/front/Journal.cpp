#include "front/Journal.h"

#include <cstdio>

namespace gate {

namespace {
constexpr size_t kMost = 50;
}

void Journal::Add(const Entry& entry) {
    fprintf(stderr, "%s %d %lld bytes %lld ms\n", entry.request.c_str(), entry.status, entry.bytes,
            entry.milliseconds);
    std::lock_guard guard(fMutex);
    fEntries.push_front(entry);
    if (fEntries.size() > kMost)
        fEntries.pop_back();
}

std::vector<Journal::Entry> Journal::Last() const {
    std::lock_guard guard(fMutex);
    return {fEntries.begin(), fEntries.end()};
}

} // namespace gate
