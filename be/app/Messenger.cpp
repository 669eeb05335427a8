#include <Messenger.h>

#include <Handler.h>
#include <Looper.h>
#include <Message.h>

#include "app/HandlerRegistry.h"
#include "app/LooperPrivate.h"
#include "app/MessagePrivate.h"
#include "app/MessengerPrivate.h"

BMessenger::BMessenger(const BHandler* handler, const BLooper* looper, status_t* result) {
    HandlerRegistry& registry = HandlerRegistry::Instance();
    status_t status = handler || looper ? B_OK : B_BAD_VALUE;
    int32 handlerToken = Private::kPreferredToken;
    if (handler) {
        handlerToken = BHandler::Private(const_cast<BHandler*>(handler)).Token();
        BLooper* owner = registry.Find(handlerToken).looper;
        if (!owner || (looper && looper != owner))
            status = B_MISMATCHED_VALUES;
        looper = owner;
    }
    int32 looperToken = status == B_OK ? registry.TokenOf(looper) : -1;
    if (status == B_OK && looperToken < 0)
        status = B_BAD_VALUE;
    if (status == B_OK)
        *this = Private::ForTokens(looperToken, handlerToken);
    if (result)
        *result = status;
}

bool BMessenger::IsValid() const {
    // A looper that can't be locked any more is not there, though its destructor may still run.
    const std::shared_ptr<LooperCore> core =
        HandlerRegistry::Instance().CoreWithToken(fLooperToken);
    return core && !core->IsGone();
}

bool BMessenger::IsTargetLocal() const {
    return fLooperToken >= 0;
}

BHandler* BMessenger::Target(BLooper** looper) const {
    HandlerRegistry& registry = HandlerRegistry::Instance();
    if (looper)
        *looper = registry.Find(fLooperToken).looper;
    return registry.Find(fHandlerToken).handler;
}

bool BMessenger::LockTarget() const {
    return LockTargetWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BMessenger::LockTargetWithTimeout(bigtime_t timeout) const {
    std::shared_ptr<LooperCore> core = HandlerRegistry::Instance().CoreWithToken(fLooperToken);
    return core ? core->Lock(timeout) : B_BAD_VALUE;
}

status_t BMessenger::SendMessage(uint32 command, BHandler* replyTo) const {
    BMessage message(command);
    return SendMessage(&message, replyTo);
}

status_t BMessenger::SendMessage(BMessage* message, BHandler* replyTo, bigtime_t timeout) const {
    return SendMessage(message, replyTo ? BMessenger(replyTo) : BMessenger(), timeout);
}

status_t BMessenger::SendMessage(BMessage* message, BMessenger replyTo,
                                 bigtime_t /*timeout*/) const {
    return message ? Private(*this).Send(*message, replyTo, nullptr, false) : B_BAD_VALUE;
}

status_t BMessenger::SendMessage(uint32 command, BMessage* reply) const {
    BMessage message(command);
    return SendMessage(&message, reply);
}

status_t BMessenger::SendMessage(BMessage* message, BMessage* reply, bigtime_t /*deliveryTimeout*/,
                                 bigtime_t replyTimeout) const {
    if (!message || !reply)
        return B_BAD_VALUE;
    auto slot = std::make_shared<ReplySlot>();
    status_t status = Private(*this).Send(*message, BMessenger(), slot, false);
    return status == B_OK ? slot->Wait(reply, replyTimeout) : status;
}

bool BMessenger::operator==(const BMessenger& other) const {
    return fLooperToken == other.fLooperToken && fHandlerToken == other.fHandlerToken;
}

status_t BMessenger::Private::Send(const BMessage& message, const BMessenger& replyTo,
                                   const std::shared_ptr<ReplySlot>& slot, bool isReply) const {
    std::shared_ptr<LooperCore> core =
        HandlerRegistry::Instance().CoreWithToken(fMessenger.fLooperToken);
    if (!core)
        return B_BAD_PORT_ID;
    auto copy = std::make_unique<BMessage>(message);
    BMessage::Private details(copy.get());
    details.SetTargetToken(fMessenger.fHandlerToken);
    details.SetReplyTo(replyTo);
    if (slot)
        details.SetReplySlot(slot);
    if (isReply)
        details.SetIsReply();
    return core->Post(std::move(copy));
}
