// What is invalid, when it is drawn, and the loop that waits for either.
#include "app/LooperPrivate.h"
#include "interface/drawing/Painter.h"
#include "interface/windows/WindowPrivate.h"
#include "server/Drawing.h"

#include <algorithm>
#include <cmath>

namespace {

const bigtime_t kFrame = 16000; // microseconds
const int32 kManyRects = 40;    // more invalid rectangles than that are joined

QRgb Rgb(rgb_color color) {
    return qRgb(color.red, color.green, color.blue);
}

} // namespace

void BWindow::Private::Invalidate(BRect inWindow) {
    const BRect part = inWindow & frame.OffsetToCopy(0, 0);
    if (!part.IsValid())
        return;
    if (!NeedsUpdate()) {
        dirtySince = system_time();
        Wake();
    }
    dirty.Include(part);
    if (dirty.CountRects() > kManyRects)
        dirty.Set(dirty.Frame());
}

void BWindow::Private::Wake() {
    if (wakePosted || window->Thread() < 0 || window->Thread() == find_thread(nullptr))
        return;
    wakePosted = window->PostMessage(kMsgWake) == B_OK;
}

void BWindow::Private::Scroll(BRect area, float dx, float dy) {
    const float scaledX = dx * surfaceScale;
    const float scaledY = dy * surfaceScale;
    const bool isWhole = scaledX == std::round(scaledX) && scaledY == std::round(scaledY);
    if (!CanUpdate() || !isWhole || surfaceScale == 0)
        return Invalidate(area);
    Copy(area & area.OffsetByCopy(dx, dy), area, BPoint(dx, dy));
}

void BWindow::Private::Copy(BRect target, BRect area, BPoint delta) {
    if (!target.IsValid() || !CanUpdate())
        return Invalidate(area);
    if (!NeedsUpdate()) {
        dirtySince = system_time();
        Wake();
    }
    // What was invalid moves along and is invalid where it comes to lie.
    BRegion carried(target.OffsetByCopy(-delta));
    carried.IntersectWith(&dirty);
    carried.OffsetBy(delta);
    dirty.Exclude(area);
    dirty.Include(&carried);
    BRegion uncovered(area);
    uncovered.Exclude(target);
    dirty.Include(&uncovered);
    moves.push_back({target.OffsetByCopy(-delta) | target, delta.x, delta.y});
    if (moves.size() > static_cast<size_t>(kManyRects)) {
        moves.clear();
        dirty.Set(frame.OffsetToCopy(0, 0));
    }
}

void BWindow::Private::PrepareSurface() {
    sizeChanged = false;
    const float scale = link->Scale();
    const int32 width = static_cast<int32>(std::ceil((frame.Width() + 1) * scale));
    const int32 height = static_cast<int32>(std::ceil((frame.Height() + 1) * scale));
    if (width == surfaceWidth && height == surfaceHeight && scale == surfaceScale)
        return;
    server::Drawing(link).Resize(width, height, scale, Rgb(top->ViewColor()));
    if (scale != surfaceScale) {
        moves.clear();
        dirty.Set(frame.OffsetToCopy(0, 0));
    }
    surfaceWidth = width;
    surfaceHeight = height;
    surfaceScale = scale;
}

void BWindow::Private::Update() {
    if (!CanUpdate() || !NeedsUpdate() || painter != nullptr)
        return;
    PrepareSurface();
    {
        server::Drawing drawing(link);
        Painter own(drawing.Image(), surfaceScale);
        for (const Move& move : std::exchange(moves, {}))
            own.Move(move.area, move.dx, move.dy);
        updateRegion = std::exchange(dirty, BRegion());
        painter = &own;
        painted = nullptr;
        _DrawView(top.get(), frame.OffsetToCopy(0, 0));
        painter = nullptr;
        drawing.Include(own.Changed());
    }
    lastUpdate = system_time();
}

// A child without a background of its own is drawn over what the parent shows there.
void BWindow::Private::_DrawView(BView* view, BRect clip) {
    BView::Private& data = BView::Private::Of(view);
    const BRect visible = data.WindowFrame() & clip;
    if (data.hidden > 0 || !visible.IsValid() || !updateRegion.Intersects(visible))
        return;
    BRegion own(visible);
    own.IntersectWith(&updateRegion);
    for (size_t i = 0; i < data.children.size() && !own.IsEmpty(); i++) {
        const BView::Private& child = BView::Private::Of(data.children[i]);
        if (child.hidden == 0 && child.viewColor != B_TRANSPARENT_COLOR &&
            !(data.flags & B_DRAW_ON_CHILDREN))
            own.Exclude(child.WindowFrame());
    }
    const BPoint origin = data.WindowOrigin();
    const BRect updateRect = own.Frame().OffsetByCopy(-origin);
    if (!own.IsEmpty()) {
        painter->SetView(origin, own);
        painted = view;
        if (data.viewColor != B_TRANSPARENT_COLOR)
            painter->Fill(own.Frame(), data.viewColor);
        if (data.flags & B_WILL_DRAW)
            view->Draw(updateRect);
    }
    for (size_t i = 0; i < data.children.size(); i++)
        _DrawView(data.children[i], visible);
    if ((data.flags & B_DRAW_ON_CHILDREN) && !own.IsEmpty())
        view->DrawAfterChildren(updateRect);
}

void BWindow::Private::FocusPainterOn(BView* view) {
    if (painted == view)
        return;
    BView::Private& data = BView::Private::Of(view);
    BRegion region = data.VisibleRegion();
    region.IntersectWith(&updateRegion);
    painter->SetView(data.WindowOrigin(), region);
    painted = view;
}

void BWindow::DisableUpdates() {
    fPrivate->updatesDisabled++;
}

void BWindow::EnableUpdates() {
    if (fPrivate->updatesDisabled > 0 && --fPrivate->updatesDisabled == 0)
        fPrivate->Wake();
}

void BWindow::BeginViewTransaction() {
    fPrivate->transactions++;
    DisableUpdates();
}

void BWindow::EndViewTransaction() {
    if (fPrivate->transactions == 0)
        return;
    fPrivate->transactions--;
    EnableUpdates();
}

bool BWindow::InViewTransaction() const {
    return fPrivate->transactions > 0;
}
bool BWindow::NeedsUpdate() const {
    return fPrivate->NeedsUpdate();
}
void BWindow::UpdateIfNeeded() {
    fPrivate->Update();
}

void BWindow::Private::CallLater(const void* owner, bigtime_t delay, std::function<void()> call) {
    calls.push_back({system_time() + std::max<bigtime_t>(0, delay), owner, std::move(call)});
    Wake();
}

void BWindow::Private::CancelCalls(const void* owner) {
    std::erase_if(calls, [owner](const Call& call) { return call.owner == owner; });
}

void BWindow::Private::PulseNeededChanged() {
    if (!_PulsesAreDue())
        nextPulse = 0;
    else if (nextPulse == 0)
        nextPulse = system_time() + pulseRate;
    Wake();
}

void BWindow::Private::_Pulse(BView* from) {
    if (BView::Private::Of(from).flags & B_PULSE_NEEDED)
        from->Pulse();
    const std::vector<BView*> children = BView::Private::Of(from).children;
    for (BView* child : children)
        _Pulse(child);
}

bool BWindow::Private::_IsUpdateDue(bigtime_t now) const {
    if (!CanUpdate() || (!NeedsUpdate() && !showPending))
        return false;
    return now >= lastUpdate + kFrame &&
           (!window->IsMessageWaiting() || now >= dirtySince + kFrame);
}

bigtime_t BWindow::Private::TimeToNext() {
    bigtime_t next = B_INFINITE_TIMEOUT;
    if (CanUpdate() && (NeedsUpdate() || showPending))
        next = lastUpdate + kFrame;
    if (_PulsesAreDue()) {
        if (nextPulse == 0)
            nextPulse = system_time() + pulseRate;
        next = std::min(next, nextPulse);
    }
    for (const Call& call : calls)
        next = std::min(next, call.when);
    return next == B_INFINITE_TIMEOUT ? next : std::max<bigtime_t>(0, next - system_time());
}

void BWindow::Private::DoWhatIsDue() {
    const bigtime_t now = system_time();
    // A call may add others or take some away; each round looks anew.
    for (size_t i = 0; i < calls.size();) {
        if (calls[i].when > now) {
            i++;
            continue;
        }
        const std::function<void()> call = std::move(calls[i].call);
        calls.erase(calls.begin() + static_cast<ptrdiff_t>(i));
        call();
        i = 0;
    }
    if (_PulsesAreDue() && nextPulse != 0 && now >= nextPulse) {
        nextPulse = now + pulseRate;
        _Pulse(top.get());
    }
    if (!_IsUpdateDue(now))
        return;
    Update();
    if (showPending) {
        showPending = false;
        link->Show((flags & B_AVOID_FOCUS) == 0);
    }
}

// True for a message that only wakes the loop, or that a later one makes needless.
bool BWindow::Private::TakeWake(const BMessage* message) {
    if (message->what != kMsgWake && message->what != kMsgMark)
        return IsStale(message);
    window->Lock();
    if (message->what == kMsgWake)
        wakePosted = false;
    else
        marks++;
    window->Unlock();
    return true;
}

// A looper that quits leaves this function by ending its thread: it holds no scoped object.
void BWindow::_TaskLooper() {
    BLooper::Private loop(this);
    while (!loop.IsTerminating()) {
        Lock();
        const bigtime_t timeout = fPrivate->TimeToNext();
        Unlock();
        BMessage* message = loop.NextMessage(timeout);
        if (message != nullptr && fPrivate->TakeWake(message))
            delete message;
        else if (message != nullptr)
            loop.Dispatch(message);
        Lock();
        fPrivate->DoWhatIsDue();
        Unlock();
    }
}
