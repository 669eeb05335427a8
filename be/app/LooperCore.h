#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

#include <MessageQueue.h>
#include <OS.h>

// What others may need of a looper after it has gone: its lock and its queue. Shared by the looper
// and by whoever is just locking it or posting to it.
class LooperCore {
public:
    // The lock. Its holder may take it again. B_TIMED_OUT, or B_BAD_VALUE once the looper has gone.
    status_t Lock(bigtime_t timeout);
    void Unlock();
    int32 UnlockFully(); // how often it was locked
    thread_id Holder() const;
    int32 CountLocks() const;
    int32 CountLockRequests() const;
    bool IsLockedByMe() const { return Holder() == find_thread(nullptr); }

    // The queue takes ownership; B_BAD_PORT_ID once the looper has gone.
    status_t Post(std::unique_ptr<BMessage> message);
    // The next message, null when none came in time.
    BMessage* Next(bigtime_t timeout);
    bool IsMessageWaiting() const { return !fQueue.IsEmpty(); }
    BMessageQueue& Queue() { return fQueue; }

    // The looper goes: whoever waits for its lock fails, what is queued is deleted.
    void Close();
    bool IsGone() const;

    std::atomic<thread_id> fThread{B_ERROR};

private:
    mutable std::mutex fLockMutex;
    std::condition_variable fReleased;
    // Guarded by fLockMutex
    thread_id fHolder = B_ERROR;
    int32 fLocks = 0;
    int32 fRequests = 0;
    bool fIsGone = false;

    std::mutex fQueueMutex;
    std::condition_variable fArrived;
    // Guarded by fQueueMutex
    bool fIsClosed = false;
    BMessageQueue fQueue; // has a lock of its own
};
