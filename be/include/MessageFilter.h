#pragma once

#include <SupportDefs.h>

class BHandler;
class BLooper;
class BMessage;
class BMessageFilter;

enum filter_result { B_SKIP_MESSAGE, B_DISPATCH_MESSAGE };
enum message_delivery { B_ANY_DELIVERY, B_DROPPED_DELIVERY, B_PROGRAMMED_DELIVERY };
enum message_source { B_ANY_SOURCE, B_REMOTE_SOURCE, B_LOCAL_SOURCE };

// May change the message and its target, which must belong to the same looper.
typedef filter_result (*filter_hook)(BMessage* message, BHandler** target, BMessageFilter* filter);

// Looks at messages before they are dispatched, with the looper locked, and may stop them.
class BMessageFilter {
public:
    BMessageFilter(uint32 command, filter_hook hook = nullptr);
    BMessageFilter(message_delivery delivery, message_source source, filter_hook hook = nullptr);
    BMessageFilter(message_delivery delivery, message_source source, uint32 command,
                   filter_hook hook = nullptr);
    virtual ~BMessageFilter();

    // Called when there is no hook.
    virtual filter_result Filter(BMessage* message, BHandler** target);

    message_delivery MessageDelivery() const { return fDelivery; }
    message_source MessageSource() const { return fSource; }
    uint32 Command() const { return fCommand; }
    bool FiltersAnyCommand() const { return fFiltersAny; }
    BLooper* Looper() const { return fLooper; }

    class Private;

private:
    // Constant after construction
    bool fFiltersAny;
    uint32 fCommand;
    message_delivery fDelivery;
    message_source fSource;
    filter_hook fHook;
    // Looper's lock
    BLooper* fLooper = nullptr;
};
