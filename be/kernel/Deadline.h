#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include <OS.h>

// The moment at which a wait gives up. Made once, so that a wait in several steps keeps to the one
// time-out.
class Deadline {
public:
    using Clock = std::chrono::steady_clock;

    static Deadline Never() { return Deadline(Clock::time_point::max()); }
    // From now; B_INFINITE_TIMEOUT, or a time so long that the clock could not hold it, is never.
    static Deadline After(bigtime_t timeout) {
        constexpr bigtime_t kLongestWait = 1000000LL * 60 * 60 * 24 * 365 * 10;
        if (timeout > kLongestWait)
            return Never();
        if (timeout < 0)
            timeout = 0;
        return Deadline(Clock::now() + std::chrono::microseconds(timeout));
    }

    bool IsNever() const { return fMoment == Clock::time_point::max(); }
    bool HasPassed() const { return !IsNever() && Clock::now() >= fMoment; }
    // Microseconds left, 0 when it has passed.
    bigtime_t Left() const {
        if (IsNever())
            return B_INFINITE_TIMEOUT;
        auto left = std::chrono::ceil<std::chrono::microseconds>(fMoment - Clock::now()).count();
        return left < 0 ? 0 : left;
    }

    // Waits until `isReady` holds: true, or until the deadline: what it says then.
    template <class Ready>
    bool Wait(std::condition_variable& changed, std::unique_lock<std::mutex>& guard,
              Ready isReady) const {
        if (!IsNever())
            return changed.wait_until(guard, fMoment, isReady);
        changed.wait(guard, isReady);
        return true;
    }

private:
    explicit Deadline(Clock::time_point moment) : fMoment(moment) {}

    Clock::time_point fMoment;
};
