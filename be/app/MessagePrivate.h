#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <Message.h>

// Where the answer to a message is waited for.
struct ReplySlot {
    std::mutex mutex;
    std::condition_variable answered;
    // Guarded by mutex
    bool isAnswered = false;
    BMessage reply{B_NO_REPLY};

    void Answer(const BMessage& message);
    // B_TIMED_OUT without an answer in time.
    status_t Wait(BMessage* result, bigtime_t timeout);
};

// The right to answer, held by the delivered message. When it goes unused the sender is told that
// nobody answered.
struct ReplyTicket {
    explicit ReplyTicket(std::shared_ptr<ReplySlot> where) : slot(std::move(where)) {}
    ~ReplyTicket() { slot->Answer(BMessage(B_NO_REPLY)); }
    ReplyTicket(const ReplyTicket&) = delete;
    ReplyTicket& operator=(const ReplyTicket&) = delete;

    const std::shared_ptr<ReplySlot> slot;
};

// One field: values of a fixed size lie one after another in `data`, others each in a string of
// their own. Either way what follows a value is a NUL or the next value, never foreign memory.
struct MessageField {
    std::string name;
    type_code type = 0;
    bool isFixedSize = true;
    size_t itemSize = 0; // fixed size only
    std::string data;
    std::vector<std::string> items;

    int32 Count() const;
    void Get(int32 index, const void** value, size_t* size) const;
    status_t Add(const void* value, size_t size);
    status_t Replace(int32 index, const void* value, size_t size);
    void Remove(int32 index);
};

struct BMessage::Content {
    std::vector<MessageField> fields;
    // How the message came; a copy of a message was not delivered.
    bool wasDelivered = false;
    bool isReply = false;
    bool wasAnswered = false;
    BMessenger replyTo;
    std::unique_ptr<ReplyTicket> replyTicket;
    int32 targetToken = -1;

    MessageField* Find(const char* name);
};

// What loopers and messengers know of a message.
class BMessage::Private {
public:
    explicit Private(BMessage* message) : fContent(*message->fContent) {}

    void SetDelivered() { fContent.wasDelivered = true; }
    void SetIsReply() { fContent.isReply = true; }
    void SetReplyTo(const BMessenger& replyTo) { fContent.replyTo = replyTo; }
    // The answer goes into the slot.
    void SetReplySlot(const std::shared_ptr<ReplySlot>& slot) {
        fContent.replyTicket = std::make_unique<ReplyTicket>(slot);
    }
    void SetTargetToken(int32 token) { fContent.targetToken = token; }
    int32 TargetToken() const { return fContent.targetToken; }

    // As BMessage::Unflatten, and never reads beyond `size`.
    static status_t Unflatten(BMessage* message, const char* buffer, size_t size);
    static void AppendFlattened(const BMessage& message, std::string* result);
    // Whether the bytes are a flattened message with no more than so many messages inside each
    // other.
    static bool IsFlattened(const char* buffer, size_t size, int maxDepth);

    static constexpr int kMaxDepth = 64;

private:
    Content& fContent;
};
