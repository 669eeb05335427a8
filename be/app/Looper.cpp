#include <Looper.h>

#include <unistd.h>

#include <algorithm>
#include <utility>

#include <Message.h>
#include <MessageFilter.h>
#include <Messenger.h>

#include "app/FilterList.h"
#include "app/HandlerRegistry.h"
#include "app/LooperPrivate.h"
#include "app/MessagePrivate.h"
#include "app/MessengerPrivate.h"

BLooper::BLooper(const char* name, int32 priority, int32 /*portCapacity*/)
    : BHandler(name), fData(std::make_unique<Data>()) {
    fData->core = std::make_shared<LooperCore>();
    fData->priority = priority;
    HandlerRegistry::Instance().AddLooper(this, BHandler::Private(this).Token(), fData->core);
    Lock();
    AddHandler(this);
}

BLooper::~BLooper() {
    // Nobody but this thread can have the lock from here on; the registry forgets the looper last,
    // so that the handlers that go with it still find it.
    fData->core->Lock(B_INFINITE_TIMEOUT);
    fData->core->Close();
    delete std::exchange(fData->current, nullptr);
    while (!fData->handlers.empty())
        RemoveHandler(fData->handlers.back());
    deleteFilters(fData->filters.get());
    HandlerRegistry::Instance().RemoveLooper(this);
    fData->core->UnlockFully();
}

status_t BLooper::PostMessage(uint32 command) {
    BMessage message(command);
    return PostMessage(&message);
}

status_t BLooper::PostMessage(BMessage* message) {
    return PostMessage(message, this, nullptr);
}

status_t BLooper::PostMessage(uint32 command, BHandler* handler, BHandler* replyTo) {
    BMessage message(command);
    return PostMessage(&message, handler, replyTo);
}

status_t BLooper::PostMessage(BMessage* message, BHandler* handler, BHandler* replyTo) {
    status_t status = B_OK;
    BMessenger messenger(handler, this, &status);
    return status == B_OK ? messenger.SendMessage(message, replyTo, 0) : status;
}

BMessage* BLooper::CurrentMessage() const {
    return fData->current;
}

BMessage* BLooper::DetachCurrentMessage() {
    return std::exchange(fData->current, nullptr);
}

BMessageQueue* BLooper::MessageQueue() const {
    return &fData->core->Queue();
}

bool BLooper::IsMessageWaiting() const {
    return fData->core->IsMessageWaiting();
}

void BLooper::AddHandler(BHandler* handler) {
    if (!handler || handler->Looper())
        return;
    fData->handlers.push_back(handler);
    BHandler::Private(handler).SetLooper(this);
    if (handler != this)
        handler->SetNextHandler(this);
}

bool BLooper::RemoveHandler(BHandler* handler) {
    if (!handler || handler->Looper() != this)
        return false;
    for (BHandler* other : fData->handlers) {
        if (other->NextHandler() == handler)
            other->SetNextHandler(nullptr);
    }
    if (fData->preferred == handler)
        fData->preferred = nullptr;
    std::erase(fData->handlers, handler);
    handler->SetNextHandler(nullptr);
    BHandler::Private(handler).SetLooper(nullptr);
    return true;
}

int32 BLooper::CountHandlers() const {
    return static_cast<int32>(fData->handlers.size());
}

BHandler* BLooper::HandlerAt(int32 index) const {
    if (index < 0 || index >= CountHandlers())
        return nullptr;
    return fData->handlers[static_cast<size_t>(index)];
}

int32 BLooper::IndexOf(BHandler* handler) const {
    const auto& handlers = fData->handlers;
    auto found = std::find(handlers.begin(), handlers.end(), handler);
    return found == handlers.end() ? B_ERROR : static_cast<int32>(found - handlers.begin());
}

BHandler* BLooper::PreferredHandler() const {
    return fData->preferred;
}

void BLooper::SetPreferredHandler(BHandler* handler) {
    fData->preferred = handler && handler->Looper() == this ? handler : nullptr;
}

bool BLooper::Lock() {
    return LockWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BLooper::LockWithTimeout(bigtime_t timeout) {
    std::shared_ptr<LooperCore> core = HandlerRegistry::Instance().CoreOf(this);
    return core ? core->Lock(timeout) : B_BAD_VALUE;
}

void BLooper::Unlock() {
    if (std::shared_ptr<LooperCore> core = HandlerRegistry::Instance().CoreOf(this))
        core->Unlock();
}

bool BLooper::IsLocked() const {
    std::shared_ptr<LooperCore> core = HandlerRegistry::Instance().CoreOf(this);
    return core && core->IsLockedByMe();
}

thread_id BLooper::Thread() const {
    return fData->core->fThread;
}

team_id BLooper::Team() const {
    return static_cast<team_id>(getpid());
}

BLooper* BLooper::LooperForThread(thread_id thread) {
    return HandlerRegistry::Instance().LooperForThread(thread);
}

thread_id BLooper::LockingThread() const {
    return fData->core->Holder();
}

int32 BLooper::CountLocks() const {
    return fData->core->CountLocks();
}

int32 BLooper::CountLockRequests() const {
    return fData->core->CountLockRequests();
}

void BLooper::AddCommonFilter(BMessageFilter* filter) {
    addFilter(fData->filters, filter, this);
}

bool BLooper::RemoveCommonFilter(BMessageFilter* filter) {
    return removeFilter(fData->filters.get(), filter);
}

void BLooper::SetCommonFilterList(BList* filters) {
    setFilterList(fData->filters, filters, this);
}

BList* BLooper::CommonFilterList() const {
    return fData->filters.get();
}
