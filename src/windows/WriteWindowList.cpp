#include "windows/WriteWindowList.h"

#include "app/Messages.h"

#include <Autolock.h>
#include <Locker.h>

#include <map>
#include <string>

namespace {

struct Windows {
    BLocker lock{"write windows"};
    std::map<std::string, BMessenger> byThread; // guarded by lock
};

Windows& All() {
    static Windows& windows = *new Windows;
    return windows;
}

std::string KeyOf(const PostTarget& target) {
    return target.host + "/" + target.board + "/" + target.DatName();
}

} // namespace

bool WriteWindowList::Activate(const PostTarget& target) {
    const BAutolock lock(All().lock);
    const auto found = All().byThread.find(KeyOf(target));
    return found != All().byThread.end() && found->second.IsValid() &&
           found->second.SendMessage(kMsgActivateWindow) == B_OK;
}

void WriteWindowList::Add(const PostTarget& target, const BMessenger& window) {
    const BAutolock lock(All().lock);
    All().byThread[KeyOf(target)] = window;
}
