#include <Invoker.h>

#include <Handler.h>
#include <Looper.h>
#include <Message.h>

BInvoker::BInvoker() = default;

BInvoker::BInvoker(BMessage* message, const BHandler* handler, const BLooper* looper)
    : fMessage(message), fMessenger(handler, looper) {}

BInvoker::BInvoker(BMessage* message, BMessenger target) : fMessage(message), fMessenger(target) {}

BInvoker::~BInvoker() = default;

status_t BInvoker::SetMessage(BMessage* message) {
    if (message != fMessage.get())
        fMessage.reset(message);
    return B_OK;
}

uint32 BInvoker::Command() const {
    return fMessage ? fMessage->what : 0;
}

status_t BInvoker::SetTarget(const BHandler* handler, const BLooper* looper) {
    if (!handler && !looper) {
        fMessenger = BMessenger();
        return B_OK;
    }
    status_t status = B_OK;
    BMessenger messenger(handler, looper, &status);
    if (status == B_OK)
        fMessenger = messenger;
    return status;
}

status_t BInvoker::SetTarget(BMessenger messenger) {
    fMessenger = messenger;
    return B_OK;
}

BHandler* BInvoker::Target(BLooper** looper) const {
    return fMessenger.Target(looper);
}

status_t BInvoker::SetHandlerForReply(BHandler* handler) {
    fReplyTo = handler;
    return B_OK;
}

status_t BInvoker::Invoke(BMessage* message) {
    if (!message)
        message = fMessage.get();
    if (!message)
        return B_BAD_VALUE;
    return fMessenger.SendMessage(message, fReplyTo, fTimeout);
}

status_t BInvoker::SetTimeout(bigtime_t timeout) {
    fTimeout = timeout;
    return B_OK;
}
