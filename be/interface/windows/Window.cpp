#include "interface/windows/WindowPrivate.h"

#include "app/LooperPrivate.h"
#include "app/WindowList.h"
#include "server/Screens.h"
#include "server/Server.h"
#include "server/WindowLink.h"

#include <Application.h>

#include <algorithm>
#include <cmath>

namespace {

window_look LookOf(window_type type) {
    switch (type) {
    case B_MODAL_WINDOW: return B_MODAL_WINDOW_LOOK;
    case B_DOCUMENT_WINDOW: return B_DOCUMENT_WINDOW_LOOK;
    case B_BORDERED_WINDOW: return B_BORDERED_WINDOW_LOOK;
    case B_FLOATING_WINDOW: return B_FLOATING_WINDOW_LOOK;
    default: return B_TITLED_WINDOW_LOOK;
    }
}

window_feel FeelOf(window_type type) {
    switch (type) {
    case B_MODAL_WINDOW: return B_MODAL_APP_WINDOW_FEEL;
    case B_FLOATING_WINDOW: return B_FLOATING_APP_WINDOW_FEEL;
    default: return B_NORMAL_WINDOW_FEEL;
    }
}

BRect Whole(BRect frame) {
    return BRect(std::round(frame.left), std::round(frame.top), std::round(frame.right),
                 std::round(frame.bottom));
}

} // namespace

BWindow::Private::Private(BWindow* self, BRect windowFrame, const char* windowTitle,
                          window_look windowLook, window_feel windowFeel, uint32 windowFlags)
    : window(self), title(windowTitle != nullptr ? windowTitle : ""), frame(Whole(windowFrame)),
      look(windowLook), feel(windowFeel), flags(windowFlags) {
    link =
        std::make_shared<server::WindowLink>(server::WindowSpec{title, frame, look, feel, flags});
}

BWindow::Private::~Private() = default;

BWindow::BWindow(BRect frame, const char* title, window_type type, uint32 flags, uint32 workspace)
    : BWindow(frame, title, LookOf(type), FeelOf(type), flags, workspace) {}

BWindow::BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
                 uint32)
    : BLooper(title != nullptr ? title : "window", B_DISPLAY_PRIORITY),
      fPrivate(std::make_unique<Private>(this, frame, title, look, feel, flags)) {
    fPrivate->top = std::make_unique<BView>(Bounds(), "top", B_FOLLOW_ALL_SIDES, 0);
    fPrivate->top->SetViewUIColor(B_PANEL_BACKGROUND_COLOR);
    BView::Private::Of(fPrivate->top.get()).AttachTo(this);
    fPrivate->link->Open(BMessenger(this));
    WindowList::Add(this);
}

BWindow::~BWindow() {
    WindowList::Remove(this);
    fPrivate->link->Close();
    BView::Private::Of(fPrivate->top.get()).Detach();
    fPrivate->top.reset();
}

void BWindow::Quit() {
    Lock();
    while (!IsHidden())
        Hide();
    if ((Flags() & B_QUIT_ON_WINDOW_CLOSE) && be_app != nullptr)
        be_app->PostMessage(B_QUIT_REQUESTED);
    BLooper::Quit();
}

bool BWindow::QuitRequested() {
    return BLooper::QuitRequested();
}

thread_id BWindow::Run() {
    return BLooper::Run();
}

void BWindow::AddChild(BView* child, BView* before) {
    fPrivate->top->AddChild(child, before);
}

bool BWindow::RemoveChild(BView* child) {
    return child != nullptr && BView::Private::Of(child).parent == fPrivate->top.get() &&
           child->RemoveSelf();
}

int32 BWindow::CountChildren() const {
    return fPrivate->top->CountChildren();
}

BView* BWindow::ChildAt(int32 index) const {
    return fPrivate->top->ChildAt(index);
}

BView* BWindow::FindView(const char* name) const {
    for (int32 i = 0; i < CountChildren(); i++) {
        if (BView* found = ChildAt(i)->FindView(name))
            return found;
    }
    return nullptr;
}

BView* BWindow::FindView(BPoint point) const {
    BView* found = fPrivate->ViewAt(point);
    return found != fPrivate->top.get() ? found : nullptr;
}

BView* BWindow::CurrentFocus() const {
    return fPrivate->focus;
}

BView* BWindow::LastMouseMovedView() const {
    BView* last = fPrivate->lastMouseView;
    return last != fPrivate->top.get() ? last : nullptr;
}

void BWindow::FrameMoved(BPoint) {}
void BWindow::FrameResized(float, float) {}
void BWindow::WorkspacesChanged(uint32, uint32) {}
void BWindow::WorkspaceActivated(int32, bool) {}
void BWindow::WindowActivated(bool) {}
void BWindow::ScreenChanged(BRect, color_space) {}
void BWindow::MenusBeginning() {}
void BWindow::MenusEnded() {}

void BWindow::MessageReceived(BMessage* message) {
    BLooper::MessageReceived(message);
}

void BWindow::Minimize(bool minimize) {
    if (minimize == fPrivate->minimized)
        return;
    fPrivate->minimized = minimize;
    fPrivate->link->Minimize(minimize);
}

void BWindow::Zoom(BPoint origin, float width, float height) {
    MoveTo(origin);
    ResizeTo(width, height);
}

void BWindow::Zoom() {
    fPrivate->link->Zoom();
}

// The window's thread draws before the window appears, so that nobody sees it empty.
void BWindow::Show() {
    const bool isLocked = Lock();
    const bool first = Thread() < 0;
    fPrivate->hidden--;
    if (fPrivate->hidden == 0) {
        fPrivate->showPending = true;
        fPrivate->Invalidate(Bounds());
        if (!first)
            fPrivate->Wake();
    }
    if (isLocked)
        Unlock();
    if (first)
        Run();
}

void BWindow::Hide() {
    const bool isLocked = Lock();
    fPrivate->hidden++;
    if (fPrivate->hidden == 1) {
        fPrivate->showPending = false;
        fPrivate->link->Hide();
    }
    if (isLocked)
        Unlock();
}

bool BWindow::IsHidden() const {
    return fPrivate->hidden > 0;
}
bool BWindow::IsMinimized() const {
    return fPrivate->minimized;
}

void BWindow::Flush() const {}

void BWindow::Sync() const {
    server::Call([] {});
}

BRect BWindow::Bounds() const {
    return fPrivate->frame.OffsetToCopy(0, 0);
}
BRect BWindow::Frame() const {
    return fPrivate->frame;
}
BRect BWindow::DecoratorFrame() const {
    return fPrivate->frame;
}
const char* BWindow::Title() const {
    return fPrivate->title.c_str();
}

void BWindow::SetTitle(const char* title) {
    const std::string fresh = title != nullptr ? title : "";
    if (fresh == fPrivate->title)
        return;
    fPrivate->title = fresh;
    fPrivate->link->SetTitle(fresh);
}

bool BWindow::IsFront() const {
    return fPrivate->active;
}
bool BWindow::IsActive() const {
    return fPrivate->active;
}

void BWindow::Activate(bool active) {
    if (IsHidden())
        return;
    if (active && fPrivate->minimized)
        Minimize(false);
    if (!fPrivate->showPending || !active)
        fPrivate->link->Activate(active);
}

status_t BWindow::SendBehind(const BWindow*) {
    fPrivate->link->Activate(false);
    return B_OK;
}

BPoint BWindow::ConvertToScreen(BPoint point) const {
    return point + fPrivate->frame.LeftTop();
}
BPoint BWindow::ConvertFromScreen(BPoint point) const {
    return point - fPrivate->frame.LeftTop();
}
void BWindow::ConvertToScreen(BPoint* point) const {
    *point = ConvertToScreen(*point);
}
void BWindow::ConvertFromScreen(BPoint* point) const {
    *point = ConvertFromScreen(*point);
}

BRect BWindow::ConvertToScreen(BRect rect) const {
    return rect.OffsetByCopy(fPrivate->frame.LeftTop());
}

BRect BWindow::ConvertFromScreen(BRect rect) const {
    return rect.OffsetByCopy(-fPrivate->frame.LeftTop());
}

void BWindow::ConvertToScreen(BRect* rect) const {
    *rect = ConvertToScreen(*rect);
}
void BWindow::ConvertFromScreen(BRect* rect) const {
    *rect = ConvertFromScreen(*rect);
}

void BWindow::MoveBy(float dx, float dy) {
    MoveTo(fPrivate->frame.LeftTop() + BPoint(dx, dy));
}
void BWindow::MoveTo(float x, float y) {
    MoveTo(BPoint(x, y));
}

void BWindow::MoveTo(BPoint point) {
    const BPoint to(std::round(point.x), std::round(point.y));
    if (to == fPrivate->frame.LeftTop())
        return;
    fPrivate->frame.OffsetTo(to);
    fPrivate->link->SetFrame(fPrivate->frame, true);
}

void BWindow::ResizeBy(float dx, float dy) {
    ResizeTo(fPrivate->frame.Width() + dx, fPrivate->frame.Height() + dy);
}

// The views follow at once; FrameResized is told by a message.
void BWindow::ResizeTo(float width, float height) {
    const float toWidth = std::clamp(std::round(width), fPrivate->minWidth, fPrivate->maxWidth);
    const float toHeight = std::clamp(std::round(height), fPrivate->minHeight, fPrivate->maxHeight);
    if (toWidth == fPrivate->frame.Width() && toHeight == fPrivate->frame.Height())
        return;
    fPrivate->SetSize(toWidth, toHeight);
    fPrivate->link->SetFrame(fPrivate->frame, false);
    BMessage message(B_WINDOW_RESIZED);
    message.AddInt32("width", static_cast<int32>(toWidth));
    message.AddInt32("height", static_cast<int32>(toHeight));
    message.AddBool("be:own", true);
    PostMessage(&message);
}

void BWindow::CenterIn(const BRect& rect) {
    MoveTo(rect.left + std::floor((rect.Width() - fPrivate->frame.Width()) / 2),
           rect.top + std::floor((rect.Height() - fPrivate->frame.Height()) / 2));
}

void BWindow::CenterOnScreen() {
    CenterIn(server::ScreenOf(fPrivate->frame).available);
}

void BWindow::SetKeyMenuBar(BMenuBar* bar) {
    fPrivate->keyMenuBar = bar;
}
BMenuBar* BWindow::KeyMenuBar() const {
    return fPrivate->keyMenuBar;
}

void BWindow::SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight) {
    if (minWidth > maxWidth || minHeight > maxHeight)
        return;
    fPrivate->minWidth = minWidth;
    fPrivate->maxWidth = maxWidth;
    fPrivate->minHeight = minHeight;
    fPrivate->maxHeight = maxHeight;
    fPrivate->link->SetLimits(minWidth, maxWidth, minHeight, maxHeight);
    ResizeTo(fPrivate->frame.Width(), fPrivate->frame.Height());
}

void BWindow::GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight) {
    if (minWidth != nullptr)
        *minWidth = fPrivate->minWidth;
    if (maxWidth != nullptr)
        *maxWidth = fPrivate->maxWidth;
    if (minHeight != nullptr)
        *minHeight = fPrivate->minHeight;
    if (maxHeight != nullptr)
        *maxHeight = fPrivate->maxHeight;
}

void BWindow::SetZoomLimits(float, float) {}

void BWindow::SetPulseRate(bigtime_t rate) {
    fPrivate->pulseRate = std::max<bigtime_t>(0, rate);
    fPrivate->nextPulse = 0;
    fPrivate->PulseNeededChanged();
}

bigtime_t BWindow::PulseRate() const {
    return fPrivate->pulseRate;
}

void BWindow::SetDefaultButton(BButton* button) {
    fPrivate->defaultButton = button;
}
BButton* BWindow::DefaultButton() const {
    return fPrivate->defaultButton;
}

uint32 BWindow::Workspaces() const {
    return 1;
}
void BWindow::SetWorkspaces(uint32) {}
status_t BWindow::AddToSubset(BWindow* window) {
    if (window == nullptr || fPrivate->feel != B_MODAL_SUBSET_WINDOW_FEEL)
        return B_BAD_VALUE;
    fPrivate->link->SetSubset(window->fPrivate->link);
    return B_OK;
}
status_t BWindow::RemoveFromSubset(BWindow*) {
    fPrivate->link->SetSubset(nullptr);
    return B_OK;
}

status_t BWindow::SetType(window_type type) {
    SetLook(LookOf(type));
    return SetFeel(FeelOf(type));
}

window_type BWindow::Type() const {
    switch (fPrivate->look) {
    case B_MODAL_WINDOW_LOOK: return B_MODAL_WINDOW;
    case B_DOCUMENT_WINDOW_LOOK: return B_DOCUMENT_WINDOW;
    case B_FLOATING_WINDOW_LOOK: return B_FLOATING_WINDOW;
    case B_TITLED_WINDOW_LOOK: return B_TITLED_WINDOW;
    default: return B_BORDERED_WINDOW;
    }
}

status_t BWindow::SetLook(window_look look) {
    fPrivate->look = look;
    fPrivate->link->SetKind(look, fPrivate->feel, fPrivate->flags);
    return B_OK;
}

window_look BWindow::Look() const {
    return fPrivate->look;
}

status_t BWindow::SetFeel(window_feel feel) {
    fPrivate->feel = feel;
    fPrivate->link->SetKind(fPrivate->look, feel, fPrivate->flags);
    return B_OK;
}

window_feel BWindow::Feel() const {
    return fPrivate->feel;
}

status_t BWindow::SetFlags(uint32 flags) {
    fPrivate->flags = flags;
    fPrivate->link->SetKind(fPrivate->look, fPrivate->feel, flags);
    return B_OK;
}

uint32 BWindow::Flags() const {
    return fPrivate->flags;
}

bool BWindow::IsModal() const {
    return Feel() == B_MODAL_APP_WINDOW_FEEL || Feel() == B_MODAL_ALL_WINDOW_FEEL ||
           Feel() == B_MODAL_SUBSET_WINDOW_FEEL;
}

bool BWindow::IsFloating() const {
    return Feel() == B_FLOATING_APP_WINDOW_FEEL || Feel() == B_FLOATING_ALL_WINDOW_FEEL ||
           Feel() == B_FLOATING_SUBSET_WINDOW_FEEL;
}
