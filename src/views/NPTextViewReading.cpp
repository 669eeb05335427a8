// Reading on by the Space key.
#include "views/NPTextView.h"

#include "browser/BrowserWindow.h"
#include "messages/Messages.h"

#include <Message.h>
#include <OS.h>
#include <ScrollBar.h>

#include <algorithm>

namespace {
constexpr bigtime_t kFetchPause = 5000000; // microseconds between two questions to a server
constexpr float kOverlap = 32;             // pixels that stay in sight
} // namespace

// A page on, or back. At the end new posts are asked for, where the user wants that: never by a
// held key, nor again at once.
void NPTextView::_ScrollPage(bool back) {
    BScrollBar* bar = ScrollBar(B_VERTICAL);
    if (bar == nullptr)
        return;
    float least = 0;
    float most = 0;
    bar->GetRange(&least, &most);
    const float page = std::max(Bounds().Height() - kOverlap, 1.0F);
    const float place = std::clamp(bar->Value() + (back ? -page : page), least, most);
    if (back || place >= bar->Value() + 1) {
        bar->SetValue(place);
        return;
    }
    int32 repeat = 0;
    const BMessage* key = Window()->CurrentMessage();
    const bool isHeld = key != nullptr && key->FindInt32("be:key_repeat", &repeat) == B_OK;
    const auto* window = dynamic_cast<BrowserWindow*>(Window());
    const bigtime_t now = system_time();
    if (fArticles.empty() || isHeld || window == nullptr || !window->SpaceFetches() ||
        now < fFetched + kFetchPause)
        return;
    fFetched = now;
    Window()->PostMessage(kMsgReloadThread);
}
