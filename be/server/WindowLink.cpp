#include "server/WindowLink.h"

#include "server/NativeWindow.h"
#include "server/Screens.h"
#include "server/Server.h"

namespace server {

WindowLink::WindowLink(const WindowSpec& spec)
    : fScale(ScreenAt(spec.frame.LeftTop()).scale), fSpec(spec) {}

// The native window keeps its link, so it has gone by now.
WindowLink::~WindowLink() = default;

void WindowLink::Open(const BMessenger& target) {
    Post([self = shared_from_this(), target] {
        self->fTarget = target;
        self->fNative = std::make_unique<NativeWindow>(*self);
    });
}

void WindowLink::Close() {
    Post([self = shared_from_this()] {
        if (self->fNative)
            self->fNative->HideIt();
        self->fNative.reset();
    });
}

void WindowLink::_WithNative(std::function<void(NativeWindow&)> work) {
    Post([self = shared_from_this(), work = std::move(work)] {
        if (self->fNative)
            work(*self->fNative);
    });
}

void WindowLink::Show(bool takesFocus) {
    _WithNative([takesFocus](NativeWindow& native) { native.ShowIt(takesFocus); });
}

void WindowLink::Hide() {
    _WithNative([](NativeWindow& native) { native.HideIt(); });
}

void WindowLink::SetTitle(const std::string& title) {
    _WithNative([this, title](NativeWindow& native) {
        fSpec.title = title;
        native.ApplyTitle();
    });
}

void WindowLink::SetFrame(BRect frame, bool moved) {
    const int32 serial = fSerial.fetch_add(1, std::memory_order_relaxed) + 1;
    _WithNative([this, frame, moved, serial](NativeWindow& native) {
        fSeenSerial = serial;
        fSpec.frame = frame;
        native.ApplyFrame(moved);
    });
}

void WindowLink::SetLimits(float minWidth, float maxWidth, float minHeight, float maxHeight) {
    _WithNative([=, this](NativeWindow& native) {
        fSpec.minWidth = minWidth;
        fSpec.maxWidth = maxWidth;
        fSpec.minHeight = minHeight;
        fSpec.maxHeight = maxHeight;
        native.ApplyLimits();
    });
}

void WindowLink::SetKind(window_look look, window_feel feel, uint32 flags) {
    _WithNative([=, this](NativeWindow& native) {
        fSpec.look = look;
        fSpec.feel = feel;
        fSpec.flags = flags;
        native.ApplyKind();
        native.ApplyLimits();
    });
}

void WindowLink::SetSubset(const std::shared_ptr<WindowLink>& window) {
    _WithNative([this, subset = std::weak_ptr(window)](NativeWindow& native) {
        fSpec.subset = subset;
        native.ApplyKind();
    });
}

BRect WindowLink::OwnerFrame() {
    BRect frame;
    Call([&] {
        const QRect owner = fNative != nullptr ? fNative->OwnerFrame() : QRect();
        if (owner.isValid())
            frame = Inclusive(owner);
    });
    return frame;
}

void WindowLink::Activate(bool active) {
    _WithNative([active](NativeWindow& native) {
        if (active)
            native.BringForward();
        else
            native.lower();
    });
}

void WindowLink::Minimize(bool minimize) {
    _WithNative([minimize](NativeWindow& native) {
        native.setWindowStates(minimize ? native.windowStates() | Qt::WindowMinimized
                                        : native.windowStates() & ~Qt::WindowMinimized);
    });
}

void WindowLink::Zoom() {
    _WithNative([](NativeWindow& native) {
        native.setWindowStates(native.windowStates() ^ Qt::WindowMaximized);
    });
}

void WindowLink::SetCursor(const BCursor* cursor) {
    auto shape = cursor != nullptr ? std::make_shared<BCursor>(*cursor) : nullptr;
    _WithNative([this, shape](NativeWindow& native) {
        fCursor = shape != nullptr ? std::make_unique<BCursor>(*shape) : nullptr;
        native.ApplyCursor();
    });
}

void WindowLink::SetInputContext(const InputContext& context) {
    _WithNative([context](NativeWindow& native) { native.SetInputContext(context); });
}

void WindowLink::ResetInputMethod() {
    _WithNative([](NativeWindow& native) { native.ResetInputMethod(); });
}

void WindowLink::Blit() {
    _WithNative([](NativeWindow& native) { native.Paint(QRegion()); });
}

BPoint WindowLink::Pointer() const {
    return BPoint(fPointerX.load(std::memory_order_relaxed),
                  fPointerY.load(std::memory_order_relaxed));
}

} // namespace server
