#include <Locker.h>

#include <condition_variable>
#include <mutex>

#include "kernel/Deadline.h"

struct BLocker::State {
    std::mutex mutex;
    std::condition_variable released;
    // Guarded by mutex
    thread_id holder = B_ERROR;
    int32 locks = 0;
    int32 requests = 0;
    bool isGone = false;

    bool IsFreeFor(thread_id thread) const { return isGone || locks == 0 || holder == thread; }
};

BLocker::BLocker() : fState(std::make_shared<State>()) {}

BLocker::BLocker(const char* /*name*/) : BLocker() {}

BLocker::BLocker(bool /*benaphoreStyle*/) : BLocker() {}

BLocker::BLocker(const char* /*name*/, bool /*benaphoreStyle*/) : BLocker() {}

BLocker::~BLocker() {
    std::lock_guard guard(fState->mutex);
    fState->isGone = true;
    fState->released.notify_all();
}

bool BLocker::Lock() {
    return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BLocker::LockWithTimeout(bigtime_t timeout) {
    std::shared_ptr<State> state = fState;
    thread_id self = find_thread(nullptr);
    std::unique_lock guard(state->mutex);
    state->requests++;
    auto isFree = [&] { return state->IsFreeFor(self); };
    bool isMine = Deadline::After(timeout).Wait(state->released, guard, isFree);
    if (!isMine || state->isGone) {
        state->requests--;
        return state->isGone ? B_BAD_SEM_ID : B_TIMED_OUT;
    }
    state->holder = self;
    state->locks++;
    return B_OK;
}

void BLocker::Unlock() {
    std::lock_guard guard(fState->mutex);
    if (fState->holder != find_thread(nullptr))
        return;
    fState->requests--;
    if (--fState->locks > 0)
        return;
    fState->holder = B_ERROR;
    fState->released.notify_one();
}

thread_id BLocker::LockingThread() const {
    std::lock_guard guard(fState->mutex);
    return fState->holder;
}

bool BLocker::IsLocked() const {
    return LockingThread() == find_thread(nullptr);
}

int32 BLocker::CountLocks() const {
    std::lock_guard guard(fState->mutex);
    return fState->locks;
}

int32 BLocker::CountLockRequests() const {
    std::lock_guard guard(fState->mutex);
    return fState->requests;
}
