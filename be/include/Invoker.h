#pragma once

#include <memory>

#include <Messenger.h>

class BHandler;
class BLooper;
class BMessage;

// Sends its message, a copy each time, to its target when it is invoked. Owns the message.
class BInvoker {
public:
    BInvoker();
    BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper = nullptr);
    BInvoker(BMessage* message, BMessenger target);
    virtual ~BInvoker();
    BInvoker(const BInvoker&) = delete;
    BInvoker& operator=(const BInvoker&) = delete;

    virtual status_t SetMessage(BMessage* message);
    BMessage* Message() const { return fMessage.get(); }
    uint32 Command() const; // 0 without a message

    virtual status_t SetTarget(const BHandler* handler, const BLooper* looper = nullptr);
    virtual status_t SetTarget(BMessenger messenger);
    bool IsTargetLocal() const { return fMessenger.IsTargetLocal(); }
    BHandler* Target(BLooper** looper = nullptr) const;
    BMessenger Messenger() const { return fMessenger; }

    virtual status_t SetHandlerForReply(BHandler* handler);
    BHandler* HandlerForReply() const { return fReplyTo; }

    // Sends `message`, or its own when that is null; B_BAD_VALUE when there is neither.
    virtual status_t Invoke(BMessage* message = nullptr);
    status_t SetTimeout(bigtime_t timeout);
    bigtime_t Timeout() const { return fTimeout; }

private:
    std::unique_ptr<BMessage> fMessage;
    BMessenger fMessenger;
    BHandler* fReplyTo = nullptr;
    bigtime_t fTimeout = B_INFINITE_TIMEOUT;
};
