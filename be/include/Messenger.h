#pragma once

#include <OS.h>

class BHandler;
class BLooper;
class BMessage;

// The address of a handler. Cheap to copy and safe to keep after its target has gone: sending then
// fails with B_BAD_PORT_ID. A messenger for a looper's preferred handler follows the change of that
// handler.
class BMessenger {
public:
    BMessenger() = default;
    // The target must be alive. A handler without a looper gives B_MISMATCHED_VALUES in `result`;
    // so does a handler that belongs to another looper than the one given. A null handler means the
    // looper's preferred handler.
    BMessenger(const BHandler* handler, const BLooper* looper = nullptr,
               status_t* result = nullptr);

    bool IsValid() const; // the target's looper still exists
    bool IsTargetLocal() const;
    BHandler* Target(BLooper** looper) const;
    bool LockTarget() const;
    status_t LockTargetWithTimeout(bigtime_t timeout) const;

    // A copy of the message is sent; the caller keeps its own. B_BAD_PORT_ID when the target has
    // gone.
    status_t SendMessage(uint32 command, BHandler* replyTo = nullptr) const;
    status_t SendMessage(BMessage* message, BHandler* replyTo = nullptr,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    status_t SendMessage(BMessage* message, BMessenger replyTo,
                         bigtime_t timeout = B_INFINITE_TIMEOUT) const;
    // Wait for the answer: B_TIMED_OUT without one in time. A target that goes away answers
    // B_NO_REPLY.
    status_t SendMessage(uint32 command, BMessage* reply) const;
    status_t SendMessage(BMessage* message, BMessage* reply,
                         bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT,
                         bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;

    bool operator==(const BMessenger& other) const;
    bool operator!=(const BMessenger& other) const { return !(*this == other); }

    class Private;

private:
    int32 fLooperToken = -1;
    int32 fHandlerToken = -1; // kPreferredToken: whoever is preferred when the message arrives
};
