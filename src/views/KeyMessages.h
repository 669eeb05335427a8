#pragma once

#include <MessageFilter.h>
#include <SupportDefs.h>

#include <vector>

class BHandler;
class BView;

// Keys of views that mean something to another one: in their place a message comes there. A common
// filter of their window: as long as it is one, the views and the target live.
class KeyMessages : public BMessageFilter {
public:
    struct Key {
        const BView* view; // that has the keyboard
        char byte;         // alone, without Ctrl
        uint32 code;
    };

    KeyMessages(BHandler* target, std::vector<Key> keys);
    // Takes itself off the window.
    ~KeyMessages() override;

    filter_result Filter(BMessage* message, BHandler** target) override;

private:
    BHandler* const fTarget;
    const std::vector<Key> fKeys;
};
