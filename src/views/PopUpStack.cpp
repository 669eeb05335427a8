#include "views/PopUpStack.h"

#include "views/PopUpMessages.h"

#include <AppDefs.h>
#include <Message.h>

#include <algorithm>

size_t PopUpStack::_IndexOf(int32 id) const {
    const auto found = std::find_if(fPopUps.begin(), fPopUps.end(),
                                    [id](const PopUp& popUp) { return popUp.id == id; });
    return static_cast<size_t>(found - fPopUps.begin());
}

bool PopUpStack::Holds(int32 id) const {
    return id == kText || _IndexOf(id) < fPopUps.size();
}

void PopUpStack::_CloseFrom(size_t index) {
    while (fPopUps.size() > index) {
        fPopUps.back().messenger.SendMessage(B_QUIT_REQUESTED);
        fPopUps.pop_back();
    }
}

void PopUpStack::CloseAbove(int32 id) {
    const size_t first = id == kText ? 0 : _IndexOf(id) + 1;
    if (first >= fPopUps.size())
        return;
    _CloseFrom(first);
    if (first > 0)
        fPopUps[first - 1].messenger.SendMessage(kMsgNextClosed);
}

void PopUpStack::Push(int32 opener, int32 id, const BMessenger& popUp) {
    CloseAbove(opener);
    if (!fPopUps.empty()) {
        BMessage opened(kMsgNextOpened);
        opened.AddMessenger("pop_up", popUp);
        fPopUps.back().messenger.SendMessage(&opened);
    }
    fPopUps.push_back({id, popUp});
}

void PopUpStack::HasClosed(int32 id) {
    const size_t index = _IndexOf(id);
    if (index == fPopUps.size())
        return;
    _CloseFrom(index + 1);
    fPopUps.pop_back();
    if (index > 0)
        fPopUps.back().messenger.SendMessage(kMsgNextClosed);
}

void PopUpStack::AnchorPointed(bool isOn) {
    if (!fPopUps.empty())
        fPopUps.front().messenger.SendMessage(isOn ? kMsgAnchorEntered : kMsgAnchorLeft);
}
