#include <MessageQueue.h>

#include <algorithm>
#include <deque>
#include <mutex>

#include <Message.h>

struct BMessageQueue::Data {
    std::recursive_mutex mutex;
    // Guarded by mutex
    std::deque<BMessage*> messages;
};

using Guard = std::lock_guard<std::recursive_mutex>;

BMessageQueue::BMessageQueue() : fData(std::make_unique<Data>()) {}

BMessageQueue::~BMessageQueue() {
    for (BMessage* message : fData->messages)
        delete message;
}

void BMessageQueue::AddMessage(BMessage* message) {
    Guard guard(fData->mutex);
    if (message)
        fData->messages.push_back(message);
}

void BMessageQueue::RemoveMessage(BMessage* message) {
    Guard guard(fData->mutex);
    std::erase(fData->messages, message);
}

int32 BMessageQueue::CountMessages() const {
    Guard guard(fData->mutex);
    return static_cast<int32>(fData->messages.size());
}

bool BMessageQueue::IsEmpty() const {
    return CountMessages() == 0;
}

BMessage* BMessageQueue::FindMessage(int32 index) const {
    Guard guard(fData->mutex);
    if (index < 0 || index >= CountMessages())
        return nullptr;
    return fData->messages[static_cast<size_t>(index)];
}

BMessage* BMessageQueue::FindMessage(uint32 what, int32 index) const {
    Guard guard(fData->mutex);
    for (BMessage* message : fData->messages) {
        if (message->what == what && index-- == 0)
            return message;
    }
    return nullptr;
}

BMessage* BMessageQueue::NextMessage() {
    Guard guard(fData->mutex);
    if (fData->messages.empty())
        return nullptr;
    BMessage* message = fData->messages.front();
    fData->messages.pop_front();
    return message;
}

bool BMessageQueue::IsNextMessage(const BMessage* message) const {
    Guard guard(fData->mutex);
    return !fData->messages.empty() && fData->messages.front() == message;
}

bool BMessageQueue::Lock() {
    fData->mutex.lock();
    return true;
}

void BMessageQueue::Unlock() {
    fData->mutex.unlock();
}
