#pragma once

#include <memory>
#include <vector>

#include <List.h>
#include <Looper.h>

#include "app/LooperCore.h"

// What Quit() posts to the looper's own thread. QuitRequested() is not asked.
constexpr uint32 kMsgQuitNow = '_QT_';

struct BLooper::Data {
    // Constant after construction
    std::shared_ptr<LooperCore> core;
    int32 priority = B_NORMAL_PRIORITY;
    // Looper's lock
    std::vector<BHandler*> handlers;
    BHandler* preferred = nullptr;
    BMessage* current = nullptr;
    std::unique_ptr<BList> filters;
    bool isTerminating = false;
};

// For the loopers that drive their own loop: BWindow, BApplication. All on the looper's thread.
class BLooper::Private {
public:
    explicit Private(BLooper* looper) : fLooper(looper) {}

    // The next message, owned by the caller; null when none came in time. The looper must not be
    // locked.
    BMessage* NextMessage(bigtime_t timeout) { return fLooper->fData->core->Next(timeout); }
    // Locks the looper, hands the message to its handler (filters first), deletes it, unlocks. Does
    // not return when the message ends the looper.
    void Dispatch(BMessage* message);

    // A looper that is terminating leaves _TaskLooper after the present message.
    void SetTerminating() { fLooper->fData->isTerminating = true; }
    bool IsTerminating() const { return fLooper->fData->isTerminating; }
    // The handler the message is for; null when it has gone or belongs to another looper. The
    // looper is locked.
    BHandler* TargetOf(BMessage* message) const;
    // What the filters make of the target; null when the message is to be dropped.
    BHandler* ApplyFilters(BMessage* message, BHandler* target) const;
    // Posts from any thread without a copy: ownership goes over. For input, which comes often.
    status_t Post(std::unique_ptr<BMessage> message, int32 targetToken);
    LooperCore& Core() const { return *fLooper->fData->core; }

private:
    BLooper* fLooper;
};

class BHandler::Private {
public:
    explicit Private(BHandler* handler) : fHandler(handler) {}

    int32 Token() const { return fHandler->fToken; }
    // The looper is locked.
    void SetLooper(BLooper* looper);

private:
    BHandler* fHandler;
};
