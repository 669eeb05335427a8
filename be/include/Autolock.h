#pragma once

#include <Locker.h>
#include <Looper.h>

// Holds a lock for the length of a scope. IsLocked() says whether it was had at all: the looper may
// be gone.
class BAutolock {
public:
    BAutolock(BLooper* looper)
        : fLocker(nullptr), fLooper(looper), fIsLocked(looper && looper->Lock()) {}
    BAutolock(BLocker* locker)
        : fLocker(locker), fLooper(nullptr), fIsLocked(locker && locker->Lock()) {}
    BAutolock(BLocker& locker) : fLocker(&locker), fLooper(nullptr), fIsLocked(locker.Lock()) {}
    ~BAutolock() { Unlock(); }
    BAutolock(const BAutolock&) = delete;
    BAutolock& operator=(const BAutolock&) = delete;

    bool IsLocked() const { return fIsLocked; }
    bool Lock() {
        if (!fIsLocked)
            fIsLocked = fLocker ? fLocker->Lock() : fLooper && fLooper->Lock();
        return fIsLocked;
    }
    void Unlock() {
        if (!fIsLocked)
            return;
        fIsLocked = false;
        if (fLocker)
            fLocker->Unlock();
        else
            fLooper->Unlock();
    }

private:
    BLocker* fLocker;
    BLooper* fLooper;
    bool fIsLocked;
};
