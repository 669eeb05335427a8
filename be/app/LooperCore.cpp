#include "app/LooperCore.h"

#include <utility>

#include <Message.h>

#include "kernel/Deadline.h"

status_t LooperCore::Lock(bigtime_t timeout) {
    thread_id self = find_thread(nullptr);
    std::unique_lock guard(fLockMutex);
    fRequests++;
    auto isFree = [&] { return fIsGone || fLocks == 0 || fHolder == self; };
    bool isMine = Deadline::After(timeout).Wait(fReleased, guard, isFree);
    // While it goes, its own destructor still has the lock.
    if (!isMine || (fIsGone && fHolder != self)) {
        fRequests--;
        return isMine ? B_BAD_VALUE : B_TIMED_OUT;
    }
    fHolder = self;
    fLocks++;
    return B_OK;
}

void LooperCore::Unlock() {
    std::lock_guard guard(fLockMutex);
    if (fHolder != find_thread(nullptr))
        return;
    fRequests--;
    if (--fLocks > 0)
        return;
    fHolder = B_ERROR;
    fReleased.notify_one();
}

int32 LooperCore::UnlockFully() {
    std::lock_guard guard(fLockMutex);
    if (fHolder != find_thread(nullptr))
        return 0;
    fRequests -= fLocks;
    fHolder = B_ERROR;
    fReleased.notify_one();
    return std::exchange(fLocks, 0);
}

thread_id LooperCore::Holder() const {
    std::lock_guard guard(fLockMutex);
    return fHolder;
}

int32 LooperCore::CountLocks() const {
    std::lock_guard guard(fLockMutex);
    return fLocks;
}

int32 LooperCore::CountLockRequests() const {
    std::lock_guard guard(fLockMutex);
    return fRequests;
}

status_t LooperCore::Post(std::unique_ptr<BMessage> message) {
    std::lock_guard guard(fQueueMutex);
    if (fIsClosed)
        return B_BAD_PORT_ID;
    fQueue.AddMessage(message.release());
    fArrived.notify_one();
    return B_OK;
}

BMessage* LooperCore::Next(bigtime_t timeout) {
    std::unique_lock guard(fQueueMutex);
    auto hasMessage = [&] { return !fQueue.IsEmpty(); };
    if (!Deadline::After(timeout).Wait(fArrived, guard, hasMessage))
        return nullptr;
    return fQueue.NextMessage();
}

bool LooperCore::IsGone() const {
    std::lock_guard guard(fLockMutex);
    return fIsGone;
}

void LooperCore::Close() {
    {
        std::lock_guard guard(fQueueMutex);
        fIsClosed = true;
    }
    while (BMessage* message = fQueue.NextMessage())
        delete message;
    std::lock_guard guard(fLockMutex);
    fIsGone = true;
    fReleased.notify_all();
}
