#include <Looper.h>

#include <utility>

#include <Message.h>

#include "app/FilterList.h"
#include "app/HandlerRegistry.h"
#include "app/LooperPrivate.h"
#include "app/MessagePrivate.h"
#include "app/MessengerPrivate.h"

// The looper's thread: taking messages, dispatching them, and leaving. A looper that quits itself
// is deleted in the middle of a dispatch; exit_thread then leaves these functions without touching
// it again, so none of them may hold the looper in a scoped object.

namespace {

// An answer for a sender who waits to learn whether the looper will quit.
void replyToQuitRequest(BMessage* message, bool isQuitting) {
    if (!message->IsSourceWaiting())
        return;
    BMessage reply(B_REPLY);
    reply.AddBool("result", isQuitting);
    reply.AddInt32("thread", find_thread(nullptr));
    message->SendReply(&reply);
}

} // namespace

thread_id BLooper::Run() {
    LooperCore& core = *fData->core;
    if (core.fThread >= 0)
        return B_ERROR;
    auto loop = [](void* looper) -> int32 {
        static_cast<BLooper*>(looper)->_TaskLooper();
        return B_OK;
    };
    thread_id thread = spawn_thread(loop, Name() ? Name() : "looper", fData->priority, this);
    if (thread < 0)
        return thread;
    core.fThread = thread;
    status_t status = resume_thread(thread);
    if (status != B_OK) {
        kill_thread(thread);
        core.fThread = B_ERROR;
        return status;
    }
    // From here the looper may end at any moment: only its core is safe. It was locked since it was
    // made.
    std::shared_ptr<LooperCore> guard = HandlerRegistry::Instance().CoreOf(this);
    if (guard)
        guard->Unlock();
    return thread;
}

void BLooper::Quit() {
    std::shared_ptr<LooperCore> core = fData->core;
    core->Lock(B_INFINITE_TIMEOUT);
    thread_id thread = core->fThread;
    if (thread < 0) {
        delete this;
        return;
    }
    if (thread == find_thread(nullptr)) {
        delete this;
        exit_thread(B_OK);
    }
    // The thread needs the lock to work off its queue.
    core->UnlockFully();
    core->Post(std::make_unique<BMessage>(kMsgQuitNow));
    wait_for_thread(thread, nullptr);
}

bool BLooper::QuitRequested() {
    return true;
}

void BLooper::MessageReceived(BMessage* message) {
    BHandler::MessageReceived(message);
}

void BLooper::DispatchMessage(BMessage* message, BHandler* handler) {
    if (message->what == kMsgQuitNow) {
        Quit();
    } else if (message->what == B_QUIT_REQUESTED && handler == this) {
        bool isQuitting = QuitRequested();
        replyToQuitRequest(message, isQuitting);
        if (isQuitting)
            Quit();
    } else {
        handler->MessageReceived(message);
    }
}

void BLooper::_TaskLooper() {
    Private loop(this);
    while (!loop.IsTerminating()) {
        if (BMessage* message = loop.NextMessage(B_INFINITE_TIMEOUT))
            loop.Dispatch(message);
    }
}

BHandler* BLooper::Private::TargetOf(BMessage* message) const {
    int32 token = BMessage::Private(message).TargetToken();
    if (token == BMessenger::Private::kPreferredToken)
        return fLooper->fData->preferred ? fLooper->fData->preferred : fLooper;
    if (token < 0)
        return fLooper;
    HandlerRegistry::Target target = HandlerRegistry::Instance().Find(token);
    return target.looper == fLooper ? target.handler : nullptr;
}

BHandler* BLooper::Private::ApplyFilters(BMessage* message, BHandler* target) const {
    target = runFilters(fLooper->fData->filters.get(), message, target);
    // A handler's filter may name another handler, whose filters are asked in turn.
    while (target && target->Looper() == fLooper) {
        BHandler* next = runFilters(target->FilterList(), message, target);
        if (next == target)
            return target;
        target = next;
    }
    return nullptr;
}

void BLooper::Private::Dispatch(BMessage* message) {
    LooperCore* core = fLooper->fData->core.get();
    core->Lock(B_INFINITE_TIMEOUT);
    fLooper->fData->current = message;
    BMessage::Private(message).SetDelivered();
    BHandler* target = TargetOf(message);
    if (target)
        target = ApplyFilters(message, target);
    if (target)
        fLooper->DispatchMessage(message, target);
    delete std::exchange(fLooper->fData->current, nullptr);
    core->Unlock();
}

status_t BLooper::Private::Post(std::unique_ptr<BMessage> message, int32 targetToken) {
    BMessage::Private(message.get()).SetTargetToken(targetToken);
    return fLooper->fData->core->Post(std::move(message));
}
