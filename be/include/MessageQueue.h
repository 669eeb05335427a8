#pragma once

#include <memory>

#include <SupportDefs.h>

class BMessage;

// Messages in the order of their arrival. The queue owns what it holds; NextMessage and
// RemoveMessage hand it over. Every call locks by itself; Lock() and Unlock() make several calls
// one.
class BMessageQueue {
public:
    BMessageQueue();
    virtual ~BMessageQueue();
    BMessageQueue(const BMessageQueue&) = delete;
    BMessageQueue& operator=(const BMessageQueue&) = delete;

    void AddMessage(BMessage* message);
    void RemoveMessage(BMessage* message); // the caller frees it
    int32 CountMessages() const;
    bool IsEmpty() const;
    BMessage* FindMessage(int32 index) const;
    BMessage* FindMessage(uint32 what, int32 index = 0) const;
    BMessage* NextMessage(); // null when it is empty; the caller frees it
    bool IsNextMessage(const BMessage* message) const;

    bool Lock();
    void Unlock();

private:
    struct Data;
    std::unique_ptr<Data> fData;
};
