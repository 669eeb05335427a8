#include "views/TickScrollView.h"

#include "views/NPTextView.h"

#include <ScrollBar.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr rgb_color kOwn = {70, 130, 180, 255};
constexpr rgb_color kAnswer = {214, 132, 36, 255};
constexpr float kTickWidth = 4;
constexpr float kTickHeight = 2;

} // namespace

TickScrollView::TickScrollView(NPTextView* text)
    : BScrollView("scroll", text, B_FOLLOW_ALL_SIDES, 0, false, true, B_PLAIN_BORDER), fText(text) {
}

void TickScrollView::TicksChanged() {
    const bool draws = !fText->Ticks().empty();
    if (!draws && (Flags() & B_DRAW_ON_CHILDREN) == 0)
        return;
    SetFlags(draws ? Flags() | B_DRAW_ON_CHILDREN : Flags() & ~B_DRAW_ON_CHILDREN);
    ScrollBar(B_VERTICAL)->Invalidate();
}

// A tick of an own post stands over one of an answer.
void TickScrollView::DrawAfterChildren(BRect updateRect) {
    BScrollBar* bar = ScrollBar(B_VERTICAL);
    const BRect frame = bar->Frame();
    if (!frame.Intersects(updateRect))
        return;
    float most = 0;
    bar->GetRange(nullptr, &most);
    const float whole = most + fText->Bounds().Height() + 1;
    for (const bool isOwn : {false, true}) {
        SetHighColor(isOwn ? kOwn : kAnswer);
        for (const NPTextView::Tick& tick : fText->Ticks()) {
            const float share = fText->PointAt(tick.offset).y / whole;
            const float y = frame.top + std::floor(share * (frame.Height() - kTickHeight + 1));
            if (tick.isOwn == isOwn)
                FillRect(BRect(frame.left, y, frame.left + kTickWidth - 1, y + kTickHeight - 1));
        }
    }
}
