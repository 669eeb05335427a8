#include "interface/windows/ViewPrivate.h"
#include "interface/windows/WindowPrivate.h"

#include <Message.h>
#include <ScrollBar.h>

#include <algorithm>
#include <cmath>

BView::BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BHandler(name), fPrivate(std::make_unique<Private>(this)) {
    // Views stand on whole pixels, so that neighbours neither overlap nor leave gaps.
    fPrivate->frame = BRect(std::round(frame.left), std::round(frame.top), std::round(frame.right),
                            std::round(frame.bottom));
    fPrivate->resizingMode = resizingMode;
    fPrivate->flags = flags;
}

BView::~BView() {
    RemoveSelf();
    // A bar's target may go before the bar.
    if (fPrivate->horizontalBar != nullptr)
        fPrivate->horizontalBar->SetTarget(static_cast<BView*>(nullptr));
    if (fPrivate->verticalBar != nullptr)
        fPrivate->verticalBar->SetTarget(static_cast<BView*>(nullptr));
    while (!fPrivate->children.empty())
        delete fPrivate->children.back();
}

void BView::AttachedToWindow() {}
void BView::AllAttached() {}
void BView::DetachedFromWindow() {}
void BView::AllDetached() {}
void BView::Draw(BRect) {}
void BView::DrawAfterChildren(BRect) {}
void BView::MouseDown(BPoint) {}
void BView::MouseUp(BPoint) {}
void BView::MouseMoved(BPoint, uint32, const BMessage*) {}
void BView::WindowActivated(bool) {}
void BView::KeyUp(const char*, int32) {}
void BView::Pulse() {}
void BView::FrameMoved(BPoint) {}
void BView::FrameResized(float, float) {}
void BView::TargetedByScrollView(BScrollView*) {}

void BView::KeyDown(const char* bytes, int32 numBytes) {
    if (Window() == nullptr || numBytes != 1 || bytes[0] != B_TAB)
        return;
    int32 held = 0;
    if (const BMessage* message = Window()->CurrentMessage())
        message->FindInt32("modifiers", &held);
    BWindow::Private::Of(Window()).NavigateFocus(static_cast<uint32>(held) & B_SHIFT_KEY);
}

void BView::AddChild(BView* child, BView* before) {
    if (child == nullptr || child == this || child->Parent() != nullptr ||
        child->Window() != nullptr)
        return;
    std::vector<BView*>& children = fPrivate->children;
    const auto place = std::find(children.begin(), children.end(), before);
    children.insert(place, child);
    child->fPrivate->parent = this;
    if (Window() != nullptr)
        child->fPrivate->AttachTo(Window());
}

bool BView::RemoveChild(BView* child) {
    return child != nullptr && child->Parent() == this && child->RemoveSelf();
}

bool BView::RemoveSelf() {
    BView* parent = fPrivate->parent;
    if (parent == nullptr)
        return false;
    if (fPrivate->window != nullptr)
        fPrivate->Detach();
    std::erase(parent->fPrivate->children, this);
    fPrivate->parent = nullptr;
    return true;
}

int32 BView::CountChildren() const {
    return static_cast<int32>(fPrivate->children.size());
}

BView* BView::ChildAt(int32 index) const {
    return index >= 0 && index < CountChildren() ? fPrivate->children[static_cast<size_t>(index)]
                                                 : nullptr;
}

BView* BView::NextSibling() const {
    if (fPrivate->parent == nullptr)
        return nullptr;
    const std::vector<BView*>& siblings = fPrivate->parent->fPrivate->children;
    const auto here = std::find(siblings.begin(), siblings.end(), this);
    return here + 1 != siblings.end() ? here[1] : nullptr;
}

BView* BView::PreviousSibling() const {
    if (fPrivate->parent == nullptr)
        return nullptr;
    const std::vector<BView*>& siblings = fPrivate->parent->fPrivate->children;
    const auto here = std::find(siblings.begin(), siblings.end(), this);
    return here != siblings.begin() ? here[-1] : nullptr;
}

BWindow* BView::Window() const {
    return fPrivate->window;
}

BView* BView::Parent() const {
    // The view that holds a window's children is not theirs to see.
    BView* parent = fPrivate->parent;
    if (parent != nullptr && fPrivate->window != nullptr &&
        parent == BWindow::Private::Of(fPrivate->window).top.get())
        return nullptr;
    return parent;
}

BView* BView::FindView(const char* name) const {
    if (name == nullptr)
        return nullptr;
    if (Name() != nullptr && std::string(Name()) == name)
        return const_cast<BView*>(this);
    for (const BView* child : fPrivate->children) {
        if (BView* found = child->FindView(name))
            return found;
    }
    return nullptr;
}

void BView::Private::AttachTo(BWindow* newWindow) {
    _SetWindow(newWindow);
    _TellAttached();
    BWindow::Private::Of(newWindow).PulseNeededChanged();
    InvalidateInWindow(VisibleFrame());
}

// The whole tree belongs to the window before any hook runs: hooks use their children.
void BView::Private::_SetWindow(BWindow* newWindow) {
    BWindow::Private& owner = BWindow::Private::Of(newWindow);
    window = newWindow;
    newWindow->AddHandler(view);
    if (parent != nullptr && parent != owner.top.get())
        view->SetNextHandler(parent);
    if (flags & B_PULSE_NEEDED)
        owner.pulsing++;
    owner.Watch(view);
    for (BView* child : children)
        Of(child)._SetWindow(newWindow);
}

// A child that a hook adds has been told by then.
void BView::Private::_TellAttached() {
    attached = true;
    view->AttachedToWindow();
    for (size_t i = 0; i < children.size(); i++) {
        if (!Of(children[i]).attached)
            Of(children[i])._TellAttached();
    }
    view->AllAttached();
}

void BView::Private::Detach() {
    if (IsVisible())
        BWindow::Private::Of(window).Invalidate(VisibleFrame());
    _TellDetached();
    _ForgetWindow();
}

void BView::Private::_TellDetached() {
    view->DetachedFromWindow();
    attached = false;
    const std::vector<BView*> known = children;
    for (BView* child : known)
        Of(child)._TellDetached();
    view->AllDetached();
}

void BView::Private::_ForgetWindow() {
    for (BView* child : children)
        Of(child)._ForgetWindow();
    BWindow::Private& owner = BWindow::Private::Of(window);
    owner.ViewGoes(view);
    if (flags & B_PULSE_NEEDED)
        owner.pulsing--;
    window->RemoveHandler(view);
    window = nullptr;
}

BView* BView::Private::ViewAt(BPoint inParent) {
    if (hidden > 0 || !frame.Contains(inParent))
        return nullptr;
    const BPoint inside = inParent - frame.LeftTop() + scroll;
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (BView* found = Of(*child).ViewAt(inside))
            return found;
    }
    return view;
}

bool BView::Private::IsVisible() const {
    if (window == nullptr)
        return false;
    for (const BView* one = view; one != nullptr; one = Of(one).parent) {
        if (Of(one).hidden > 0)
            return false;
    }
    return true;
}

void BView::Show() {
    if (--fPrivate->hidden == 0 && fPrivate->window != nullptr)
        Invalidate();
}

void BView::Hide() {
    if (fPrivate->hidden == 0 && fPrivate->window != nullptr)
        fPrivate->InvalidateInWindow(fPrivate->VisibleFrame());
    fPrivate->hidden++;
    if (IsFocus())
        MakeFocus(false);
}

bool BView::IsHidden() const {
    return IsHidden(nullptr);
}

bool BView::IsHidden(const BView* lookingFrom) const {
    for (const BView* one = this; one != nullptr && one != lookingFrom;
         one = one->fPrivate->parent) {
        if (one->fPrivate->hidden > 0)
            return true;
    }
    return false;
}

uint32 BView::Flags() const {
    return fPrivate->flags;
}

void BView::SetFlags(uint32 flags) {
    const bool hadPulse = fPrivate->flags & B_PULSE_NEEDED;
    fPrivate->flags = flags;
    const bool hasPulse = flags & B_PULSE_NEEDED;
    if (fPrivate->window == nullptr || hadPulse == hasPulse)
        return;
    BWindow::Private& window = BWindow::Private::Of(fPrivate->window);
    window.pulsing += hasPulse ? 1 : -1;
    window.PulseNeededChanged();
}

uint32 BView::ResizingMode() const {
    return fPrivate->resizingMode;
}

void BView::SetResizingMode(uint32 mode) {
    fPrivate->resizingMode = mode;
}

BScrollBar* BView::ScrollBar(orientation direction) const {
    return direction == B_HORIZONTAL ? fPrivate->horizontalBar : fPrivate->verticalBar;
}

void BView::GetPreferredSize(float* width, float* height) {
    if (width != nullptr)
        *width = fPrivate->frame.Width();
    if (height != nullptr)
        *height = fPrivate->frame.Height();
}

void BView::ResizeToPreferred() {
    float width = 0;
    float height = 0;
    GetPreferredSize(&width, &height);
    ResizeTo(width, height);
}
