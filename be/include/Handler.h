#pragma once

#include <memory>

#include <Archivable.h>
#include <OS.h>

class BList;
class BLooper;
class BMessage;
class BMessageFilter;

// What takes messages. It gets them once it has been added to a looper, on the looper's thread with
// the looper locked. What it does not know goes to the next handler. Its looper must be locked to
// change it.
class BHandler : public BArchivable {
public:
    BHandler(const char* name = nullptr);
    ~BHandler() override;
    BHandler(const BHandler&) = delete;
    BHandler& operator=(const BHandler&) = delete;

    virtual void MessageReceived(BMessage* message);

    BLooper* Looper() const { return fLooper; }
    void SetName(const char* name);
    const char* Name() const; // null when it has none
    // Both belong to the same looper, which is locked.
    virtual void SetNextHandler(BHandler* handler);
    BHandler* NextHandler() const { return fNextHandler; }

    // The handler takes ownership of filters; RemoveFilter gives it back. SetFilterList takes the
    // list as well.
    virtual void AddFilter(BMessageFilter* filter);
    virtual bool RemoveFilter(BMessageFilter* filter);
    virtual void SetFilterList(BList* filters);
    BList* FilterList() const { return fFilters.get(); }

    // Safe against a looper that is going away or a handler that changes loopers.
    bool LockLooper();
    status_t LockLooperWithTimeout(bigtime_t timeout); // B_BAD_VALUE without a looper
    void UnlockLooper();

    class Private;

private:
    // Constant after construction
    int32 fToken;
    // Looper's lock
    std::unique_ptr<char[]> fName;
    BLooper* fLooper = nullptr;
    BHandler* fNextHandler = nullptr;
    std::unique_ptr<BList> fFilters;
};
