#include "widgets/MenuKey.h"

#include <InterfaceDefs.h>
#include <Message.h>

namespace {
constexpr int32 kMenuKey = 0x68; // its "key"; its byte is 0
} // namespace

bool IsMenuKey(const BMessage* message) {
    int32 key = 0;
    int32 raw = 0;
    if (message == nullptr || message->FindInt32("key", &key) != B_OK)
        return false;
    message->FindInt32("raw_char", &raw);
    return key == kMenuKey || (raw == B_FUNCTION_KEY && key == B_F10_KEY);
}
