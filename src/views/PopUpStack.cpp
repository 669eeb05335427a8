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

void PopUpStack::CloseByKey() {
    if (fPopUps.empty() || fPopUps.back().end == PopUpEnd::kByPointer)
        CloseAll();
    else
        CloseAbove(fPopUps.size() == 1 ? kText : fPopUps[fPopUps.size() - 2].id);
}

size_t PopUpStack::DepthAbove(int32 opener) const {
    return opener == kText ? 0 : _IndexOf(opener) + 1;
}

void PopUpStack::Tell(int32 id, BMessage message) const {
    const size_t index = _IndexOf(id);
    if (index < fPopUps.size())
        fPopUps[index].messenger.SendMessage(&message);
}

int32 PopUpStack::WithKeys() const {
    const auto found =
        std::find_if(fPopUps.rbegin(), fPopUps.rend(), [](const PopUp& p) { return p.hasLinks; });
    return found == fPopUps.rend() ? kText : found->id;
}

void PopUpStack::Push(int32 opener, const PopUp& popUp) {
    CloseAbove(opener);
    if (!fPopUps.empty()) {
        BMessage opened(kMsgNextOpened);
        opened.AddMessenger("pop_up", popUp.messenger);
        fPopUps.back().messenger.SendMessage(&opened);
    }
    fPopUps.push_back(popUp);
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
