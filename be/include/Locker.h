#pragma once

#include <memory>

#include <OS.h>

// A lock that its holder may take again; it is free when it has been given back as often. Whoever
// waits for a locker that is deleted comes back with a failure.
class BLocker {
public:
    BLocker();
    BLocker(const char* name);
    BLocker(bool benaphoreStyle);
    BLocker(const char* name, bool benaphoreStyle);
    virtual ~BLocker();
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

    bool Lock();
    status_t LockWithTimeout(bigtime_t timeout); // B_TIMED_OUT, B_BAD_SEM_ID when it went away
    void Unlock(); // only its holder; anybody else's call does nothing

    thread_id LockingThread() const; // B_ERROR while it is free
    bool IsLocked() const;           // by the calling thread
    int32 CountLocks() const;        // how often the holder has it
    int32 CountLockRequests() const; // the holder and those who wait

private:
    struct State;
    std::shared_ptr<State> fState;
};
