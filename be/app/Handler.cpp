#include <Handler.h>

#include <cstring>

#include <Archivable.h>
#include <List.h>
#include <Looper.h>
#include <Message.h>
#include <MessageFilter.h>
#include <String.h>

#include "app/FilterList.h"
#include "app/HandlerRegistry.h"
#include "app/LooperPrivate.h"

BArchivable::~BArchivable() = default;

status_t BArchivable::Archive(BMessage* into, bool /*deep*/) const {
    return into ? B_OK : B_BAD_VALUE;
}

BHandler::BHandler(const char* name) : fToken(HandlerRegistry::Instance().AddHandler(this)) {
    SetName(name);
}

BHandler::~BHandler() {
    if (LockLooper()) {
        BLooper* looper = fLooper;
        looper->RemoveHandler(this);
        looper->Unlock();
    }
    HandlerRegistry::Instance().RemoveHandler(fToken);
    deleteFilters(fFilters.get());
}

void BHandler::Private::SetLooper(BLooper* looper) {
    fHandler->fLooper = looper;
    HandlerRegistry::Instance().SetLooper(fHandler->fToken, looper);
    setFilterLooper(fHandler->fFilters.get(), looper);
}

void BHandler::MessageReceived(BMessage* message) {
    if (fNextHandler) {
        fNextHandler->MessageReceived(message);
        return;
    }
    if (!message->IsSourceWaiting() || message->what == B_MESSAGE_NOT_UNDERSTOOD)
        return;
    BMessage reply(B_MESSAGE_NOT_UNDERSTOOD);
    reply.AddInt32("error", B_BAD_VALUE);
    message->SendReply(&reply);
}

void BHandler::SetName(const char* name) {
    fName.reset();
    if (!name)
        return;
    size_t size = strlen(name) + 1;
    fName = std::make_unique<char[]>(size);
    memcpy(fName.get(), name, size);
}

const char* BHandler::Name() const {
    return fName.get();
}

void BHandler::SetNextHandler(BHandler* handler) {
    if (fLooper && (!handler || handler->fLooper == fLooper))
        fNextHandler = handler;
}

void BHandler::AddFilter(BMessageFilter* filter) {
    addFilter(fFilters, filter, fLooper);
}

bool BHandler::RemoveFilter(BMessageFilter* filter) {
    return removeFilter(fFilters.get(), filter);
}

void BHandler::SetFilterList(BList* filters) {
    setFilterList(fFilters, filters, fLooper);
}

bool BHandler::LockLooper() {
    return LockLooperWithTimeout(B_INFINITE_TIMEOUT) == B_OK;
}

status_t BHandler::LockLooperWithTimeout(bigtime_t timeout) {
    HandlerRegistry& registry = HandlerRegistry::Instance();
    // The handler may change loopers while its looper is waited for: only a lock of the present one
    // counts.
    for (;;) {
        BLooper* looper = registry.Find(fToken).looper;
        std::shared_ptr<LooperCore> core = registry.CoreOf(looper);
        if (!core)
            return B_BAD_VALUE;
        status_t status = core->Lock(timeout);
        if (status == B_TIMED_OUT)
            return status;
        if (status == B_OK && registry.Find(fToken).looper == looper)
            return B_OK;
        if (status == B_OK)
            core->Unlock();
    }
}

void BHandler::UnlockLooper() {
    if (fLooper)
        fLooper->Unlock();
}
