#pragma once

#include <memory>

#include <Messenger.h>

struct ReplySlot;

class BMessenger::Private {
public:
    // Stands for the handler that the looper prefers when the message arrives.
    static constexpr int32 kPreferredToken = -2;

    explicit Private(const BMessenger& messenger) : fMessenger(messenger) {}

    static BMessenger ForTokens(int32 looperToken, int32 handlerToken) {
        BMessenger messenger;
        messenger.fLooperToken = looperToken;
        messenger.fHandlerToken = handlerToken;
        return messenger;
    }
    // Posts a copy. The answer goes into the slot, if there is one, else to `replyTo`.
    status_t Send(const BMessage& message, const BMessenger& replyTo,
                  const std::shared_ptr<ReplySlot>& slot, bool isReply) const;

private:
    const BMessenger& fMessenger;
};
