#include "windows/WriteWindowSlots.h"

#include <Autolock.h>
#include <Locker.h>

#include <map>
#include <string>

namespace {

struct Slots {
    BLocker lock{"write window slots"};
    std::map<std::string, WindowSlot> byThread; // guarded by lock; a slot has its own
};

} // namespace

WindowSlot& WriteWindowSlotOf(const PostTarget& target) {
    static Slots& slots = *new Slots;
    const BAutolock lock(slots.lock);
    return slots.byThread[target.host + "/" + target.board + "/" + target.DatName()];
}
