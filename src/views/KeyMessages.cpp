#include "views/KeyMessages.h"

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <View.h>
#include <Window.h>

#include <cstring>
#include <utility>

KeyMessages::KeyMessages(BHandler* target, std::vector<Key> keys)
    : BMessageFilter(B_KEY_DOWN), fTarget(target), fKeys(std::move(keys)) {}

KeyMessages::~KeyMessages() {
    if (Looper() != nullptr)
        Looper()->RemoveCommonFilter(this);
}

filter_result KeyMessages::Filter(BMessage* message, BHandler**) {
    const char* bytes = nullptr;
    int32 modifiers = 0;
    if (message->FindString("bytes", &bytes) != B_OK || strlen(bytes) != 1 ||
        message->FindInt32("modifiers", &modifiers) != B_OK ||
        (static_cast<uint32>(modifiers) & (B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY)) != 0)
        return B_DISPATCH_MESSAGE;
    const BWindow* window = dynamic_cast<BWindow*>(Looper());
    for (const Key& key : fKeys) {
        if (key.byte == bytes[0] && window != nullptr && key.view == window->CurrentFocus()) {
            Looper()->PostMessage(key.code, fTarget);
            return B_SKIP_MESSAGE;
        }
    }
    return B_DISPATCH_MESSAGE;
}
