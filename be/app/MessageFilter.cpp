#include <MessageFilter.h>

#include <List.h>
#include <Message.h>

#include "app/FilterList.h"
#include "app/MessageFilterPrivate.h"

BMessageFilter::BMessageFilter(uint32 command, filter_hook hook)
    : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE, command, hook) {}

BMessageFilter::BMessageFilter(message_delivery delivery, message_source source, filter_hook hook)
    : fFiltersAny(true), fCommand(0), fDelivery(delivery), fSource(source), fHook(hook) {}

BMessageFilter::BMessageFilter(message_delivery delivery, message_source source, uint32 command,
                               filter_hook hook)
    : fFiltersAny(false), fCommand(command), fDelivery(delivery), fSource(source), fHook(hook) {}

BMessageFilter::~BMessageFilter() = default;

filter_result BMessageFilter::Filter(BMessage* /*message*/, BHandler** /*target*/) {
    return B_DISPATCH_MESSAGE;
}

// Nothing is dropped on a program here, and nothing comes from another one.
bool BMessageFilter::Private::Applies(const BMessage& message) const {
    return (fFilter->fFiltersAny || fFilter->fCommand == message.what) &&
           fFilter->fDelivery != B_DROPPED_DELIVERY && fFilter->fSource != B_REMOTE_SOURCE;
}

filter_result BMessageFilter::Private::Run(BMessage* message, BHandler** target) {
    return fFilter->fHook ? fFilter->fHook(message, target, fFilter)
                          : fFilter->Filter(message, target);
}

void addFilter(std::unique_ptr<BList>& filters, BMessageFilter* filter, BLooper* looper) {
    if (!filter)
        return;
    if (!filters)
        filters = std::make_unique<BList>();
    filters->AddItem(filter);
    BMessageFilter::Private(filter).SetLooper(looper);
}

bool removeFilter(BList* filters, BMessageFilter* filter) {
    if (!filters || !filters->RemoveItem(filter))
        return false;
    BMessageFilter::Private(filter).SetLooper(nullptr);
    return true;
}

void setFilterList(std::unique_ptr<BList>& filters, BList* newFilters, BLooper* looper) {
    if (filters.get() == newFilters)
        return;
    deleteFilters(filters.get());
    filters.reset(newFilters);
    setFilterLooper(newFilters, looper);
}

void setFilterLooper(BList* filters, BLooper* looper) {
    for (int32 i = 0; filters && i < filters->CountItems(); i++)
        BMessageFilter::Private(static_cast<BMessageFilter*>(filters->ItemAt(i))).SetLooper(looper);
}

void deleteFilters(BList* filters) {
    while (filters && !filters->IsEmpty())
        delete static_cast<BMessageFilter*>(filters->RemoveItem(int32(0)));
}

BHandler* runFilters(BList* filters, BMessage* message, BHandler* target) {
    // A filter may change the list: it is asked again for each.
    for (int32 i = 0; filters && i < filters->CountItems(); i++) {
        BMessageFilter::Private filter(static_cast<BMessageFilter*>(filters->ItemAt(i)));
        if (filter.Applies(*message) && filter.Run(message, &target) == B_SKIP_MESSAGE)
            return nullptr;
    }
    return target;
}
