// The pointer: selecting by characters, words and lines, and scrolling while it is dragged out.

#include "interface/text/TextViewPrivate.h"
#include "interface/windows/ViewPrivate.h"

#include <Message.h>

#include <algorithm>

namespace {

constexpr bigtime_t kAutoscrollInterval = 40000;

} // namespace

void BTextView::Private::PointerDown(BPoint where, const BMessage* message) {
    int32 buttons = B_PRIMARY_MOUSE_BUTTON;
    int32 clicks = 1;
    int32 down = 0;
    if (message != nullptr) {
        message->FindInt32("buttons", &buttons);
        message->FindInt32("clicks", &clicks);
        message->FindInt32("modifiers", &down);
    }
    if (IsComposing())
        AbandonComposition();
    if (!view->IsFocus() && (editable || selectable))
        view->MakeFocus(true);
    if ((buttons & B_TERTIARY_MOUSE_BUTTON) != 0 && editable) {
        PastePrimarySelection(view->OffsetAt(where));
        return;
    }
    if ((buttons & B_PRIMARY_MOUSE_BUTTON) == 0 || !selectable)
        return;
    StartTracking(where, clicks, (down & B_SHIFT_KEY) != 0);
    ShowCaret(true);
    TellInputMethod();
    view->SetMouseEventMask(B_POINTER_EVENTS, B_NO_POINTER_HISTORY);
}

void BTextView::Private::StartTracking(BPoint where, int32 clicks, bool extend) {
    const int32 offset = view->OffsetAt(where);
    trackedUnit = clicks >= 3 ? Unit::kLine : clicks == 2 ? Unit::kWord : Unit::kCharacter;
    trackedFrom = trackedTo = offset;
    if (trackedUnit == Unit::kCharacter && extend)
        trackedFrom = trackedTo = caret.Anchor();
    else if (trackedUnit == Unit::kWord)
        view->FindWord(offset, &trackedFrom, &trackedTo);
    else if (trackedUnit == Unit::kLine)
        ParagraphAround(offset, &trackedFrom, &trackedTo);
    tracking = true;
    pointer = where;
    history.EndGroup();
    ExtendTo(where);
}

void BTextView::Private::ParagraphAround(int32 offset, int32* from, int32* to) const {
    const TextLines& lines = document.lines;
    int32 first = lines.IndexAtOffset(offset);
    int32 last = first;
    while (first > 0 && !lines.LineAt(first - 1).endsHard)
        first--;
    while (!lines.LineAt(last).endsHard && last + 1 < lines.CountLines())
        last++;
    *from = lines.LineAt(first).offset;
    *to = lines.LineEnd(last);
}

void BTextView::Private::PointerMoved(BPoint where) {
    if (!tracking)
        return;
    pointer = where;
    ExtendTo(where);
    if (!view->Bounds().Contains(where))
        ScheduleAutoscroll();
}

void BTextView::Private::ExtendTo(BPoint where) {
    const int32 offset = view->OffsetAt(where);
    int32 from = offset;
    int32 to = offset;
    if (trackedUnit == Unit::kWord)
        view->FindWord(offset, &from, &to);
    else if (trackedUnit == Unit::kLine)
        ParagraphAround(offset, &from, &to);
    // Between two characters on the edge of the first word, that word alone stays selected.
    if (trackedUnit != Unit::kCharacter && offset >= trackedFrom && offset <= trackedTo) {
        from = trackedFrom;
        to = trackedTo;
    }
    const int32 start = std::min(trackedFrom, from);
    const int32 end = std::max(trackedTo, to);
    if (start == caret.Start() && end == caret.End())
        return;
    view->Select(start, end);
    // The caret stands where the pointer is.
    if (caret.Start() == start && caret.End() == end && from < trackedFrom)
        caret.Select(end, start);
}

void BTextView::Private::ScheduleAutoscroll() {
    if (autoscrolls)
        return;
    autoscrolls = true;
    BView::Private::Of(view).CallLater(kAutoscrollInterval, [this] {
        autoscrolls = false;
        const BRect bounds = view->Bounds();
        if (!tracking || bounds.Contains(pointer))
            return;
        const float above = std::min(0.0f, pointer.y - bounds.top);
        const float below = std::max(0.0f, pointer.y - bounds.bottom);
        const float oldTop = bounds.top;
        ScrollVertically(std::clamp(above + below, -bounds.Height(), bounds.Height()));
        pointer.y += view->Bounds().top - oldTop;
        ExtendTo(pointer);
        if (!wordWrap)
            view->ScrollToOffset(caret.Caret());
        ScheduleAutoscroll();
    });
}

void BTextView::Private::PointerUp() {
    if (!tracking)
        return;
    tracking = false;
    OfferPrimarySelection();
}
