#pragma once

#include "server/Surface.h"

#include <Cursor.h>
#include <Messenger.h>
#include <Rect.h>
#include <SupportDefs.h>
#include <Window.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace server {

class NativeWindow;
class WindowLink;

struct WindowSpec {
    std::string title;
    BRect frame;
    window_look look;
    window_feel feel;
    uint32 flags;
    float minWidth = 0;
    float maxWidth = 32768;
    float minHeight = 0;
    float maxHeight = 32768;
    std::weak_ptr<WindowLink> subset = {}; // the only window that a modal one blocks
};

// What the input method is told; rectangles in the window's coordinates, offsets in UTF-16 units.
struct InputContext {
    bool enabled = false;
    BRect caret;
    std::string surrounding;
    int32 cursorByte = 0;
    int32 anchorByte = 0;
};

// A window's end of its native window. Calls come from the window's side, any thread, and are
// carried out by the server in order; messages go to the messenger. Lives as long as either side
// needs it.
class WindowLink : public std::enable_shared_from_this<WindowLink> {
public:
    explicit WindowLink(const WindowSpec& spec);
    ~WindowLink();

    void Open(const BMessenger& target);
    void Close();
    void Show(bool takesFocus);
    void Hide();
    void SetTitle(const std::string& title);
    void SetFrame(BRect frame, bool moved);
    void SetLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void SetKind(window_look look, window_feel feel, uint32 flags);
    void SetSubset(const std::shared_ptr<WindowLink>& window); // null: none
    // Waits for the server. Of the window that this one comes for; invalid without one.
    BRect OwnerFrame();
    void Activate(bool active);
    void Minimize(bool minimize);
    void Zoom();
    void SetCursor(const BCursor* cursor); // null: the application's
    void SetInputContext(const InputContext& context);
    void ResetInputMethod();
    void Blit(); // the surface has changed

    Surface& Pixels() { return fSurface; }
    // The last that the server saw, in the window's coordinates.
    BPoint Pointer() const;
    uint32 Buttons() const { return fButtons.load(std::memory_order_relaxed); }
    float Scale() const { return fScale.load(std::memory_order_relaxed); }
    // Commands that have been sent; a size from the desktop that was told before the last is stale.
    int32 Serial() const { return fSerial.load(std::memory_order_relaxed); }

private:
    friend class NativeWindow;

    void _WithNative(std::function<void(NativeWindow&)> work);

    Surface fSurface;
    std::atomic<float> fScale;
    std::atomic<uint32> fButtons{0};
    std::atomic<float> fPointerX{-1};
    std::atomic<float> fPointerY{-1};
    std::atomic<int32> fSerial{0};

    // Server thread only
    WindowSpec fSpec;
    std::unique_ptr<BCursor> fCursor;
    BMessenger fTarget;
    std::unique_ptr<NativeWindow> fNative;
    int32 fSeenSerial = 0;
};

} // namespace server
