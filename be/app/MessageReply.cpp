#include <Message.h>

#include <Handler.h>

#include "app/MessagePrivate.h"
#include "app/MessengerPrivate.h"
#include "kernel/Deadline.h"

namespace {

BMessenger messengerFor(BHandler* handler) {
    return handler ? BMessenger(handler) : BMessenger();
}

} // namespace

void ReplySlot::Answer(const BMessage& message) {
    std::lock_guard guard(mutex);
    if (isAnswered)
        return;
    isAnswered = true;
    reply = message;
    BMessage::Private details(&reply);
    details.SetDelivered();
    details.SetIsReply();
    answered.notify_all();
}

status_t ReplySlot::Wait(BMessage* result, bigtime_t timeout) {
    std::unique_lock guard(mutex);
    if (!Deadline::After(timeout).Wait(answered, guard, [this] { return isAnswered; }))
        return B_TIMED_OUT;
    *result = reply;
    BMessage::Private details(result);
    details.SetDelivered();
    details.SetIsReply();
    return B_OK;
}

bool BMessage::WasDelivered() const {
    return fContent->wasDelivered;
}

bool BMessage::IsSourceWaiting() const {
    return fContent->replyTicket && !fContent->wasAnswered;
}

bool BMessage::IsSourceRemote() const {
    return false;
}

bool BMessage::WasDropped() const {
    return false;
}

bool BMessage::IsReply() const {
    return fContent->isReply;
}

BMessenger BMessage::ReturnAddress() const {
    return fContent->replyTo;
}

status_t BMessage::SendReply(uint32 command, BHandler* replyTo) {
    BMessage reply(command);
    return SendReply(&reply, replyTo);
}

status_t BMessage::SendReply(BMessage* reply, BHandler* replyTo, bigtime_t timeout) {
    return SendReply(reply, messengerFor(replyTo), timeout);
}

status_t BMessage::SendReply(BMessage* reply, BMessenger replyTo, bigtime_t /*timeout*/) {
    if (!reply)
        return B_BAD_VALUE;
    if (!fContent->wasDelivered)
        return B_BAD_REPLY;
    if (fContent->wasAnswered)
        return B_DUPLICATE_REPLY;
    fContent->wasAnswered = true;
    if (fContent->replyTicket) {
        fContent->replyTicket->slot->Answer(*reply);
        return B_OK;
    }
    status_t status = BMessenger::Private(fContent->replyTo).Send(*reply, replyTo, nullptr, true);
    return status == B_BAD_PORT_ID ? B_BAD_REPLY : status;
}

status_t BMessage::SendReply(uint32 command, BMessage* replyToReply) {
    BMessage reply(command);
    return SendReply(&reply, replyToReply);
}

status_t BMessage::SendReply(BMessage* reply, BMessage* replyToReply, bigtime_t /*sendTimeout*/,
                             bigtime_t replyTimeout) {
    if (!reply || !replyToReply)
        return B_BAD_VALUE;
    // Only somebody who gets the answer as a message of its own can answer it in turn.
    if (!fContent->wasDelivered || fContent->replyTicket)
        return B_BAD_REPLY;
    if (fContent->wasAnswered)
        return B_DUPLICATE_REPLY;
    fContent->wasAnswered = true;
    auto slot = std::make_shared<ReplySlot>();
    status_t status = BMessenger::Private(fContent->replyTo).Send(*reply, BMessenger(), slot, true);
    return status == B_OK ? slot->Wait(replyToReply, replyTimeout) : status;
}
