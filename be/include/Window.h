#pragma once

#include <InterfaceDefs.h>
#include <Looper.h>
#include <Rect.h>
#include <SupportDefs.h>
#include <View.h>

#include <memory>

class BButton;
class BMenuBar;
class BMenuItem;
class BMessage;
class BMessenger;

enum window_type {
    B_UNTYPED_WINDOW = 0,
    B_TITLED_WINDOW = 1,
    B_MODAL_WINDOW = 3,
    B_DOCUMENT_WINDOW = 11,
    B_BORDERED_WINDOW = 20,
    B_FLOATING_WINDOW = 21
};

enum window_look {
    B_BORDERED_WINDOW_LOOK = 20,
    B_NO_BORDER_WINDOW_LOOK = 19,
    B_TITLED_WINDOW_LOOK = 1,
    B_DOCUMENT_WINDOW_LOOK = 11,
    B_MODAL_WINDOW_LOOK = 3,
    B_FLOATING_WINDOW_LOOK = 7
};

enum window_feel {
    B_NORMAL_WINDOW_FEEL = 0,
    B_MODAL_SUBSET_WINDOW_FEEL = 2,
    B_MODAL_APP_WINDOW_FEEL = 1,
    B_MODAL_ALL_WINDOW_FEEL = 3,
    B_FLOATING_SUBSET_WINDOW_FEEL = 5,
    B_FLOATING_APP_WINDOW_FEEL = 4,
    B_FLOATING_ALL_WINDOW_FEEL = 6
};

enum window_alignment { B_BYTE_ALIGNMENT = 0, B_PIXEL_ALIGNMENT = 1 };

enum {
    B_NOT_MOVABLE = 0x00000001,
    B_NOT_RESIZABLE = 0x00000002,
    B_NOT_H_RESIZABLE = 0x00000004,
    B_NOT_V_RESIZABLE = 0x00000008,
    B_WILL_ACCEPT_FIRST_CLICK = 0x00000010,
    B_NOT_CLOSABLE = 0x00000020,
    B_NOT_ZOOMABLE = 0x00000040,
    B_AVOID_FRONT = 0x00000080,
    B_NO_WORKSPACE_ACTIVATION = 0x00000100,
    B_OUTLINE_RESIZE = 0x00001000,
    B_AVOID_FOCUS = 0x00002000,
    B_NOT_MINIMIZABLE = 0x00004000,
    B_NOT_ANCHORED_ON_ACTIVATE = 0x00020000,
    B_ASYNCHRONOUS_CONTROLS = 0x00080000,
    B_QUIT_ON_WINDOW_CLOSE = 0x00100000,
    B_SAME_POSITION_IN_ALL_WORKSPACES = 0x00200000,
    B_AUTO_UPDATE_SIZE_LIMITS = 0x00400000,
    B_CLOSE_ON_ESCAPE = 0x00800000
};

#define B_CURRENT_WORKSPACE 0
#define B_ALL_WORKSPACES 0xffffffff

// A window: a message loop of its own, a tree of views, and a place on the screen. Frames are in
// screen pixels, without the desktop's decoration. Starts locked and hidden; the first Show starts
// the loop. Every call but Show, Hide, Quit-by-message and the looper's own needs the window
// locked. Deleted by its own Quit.
class BWindow : public BLooper {
public:
    class Private;

    BWindow(BRect frame, const char* title, window_type type, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    BWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
            uint32 workspace = B_CURRENT_WORKSPACE);
    ~BWindow() override;

    void Quit() override;
    void Close() { Quit(); }
    bool QuitRequested() override;
    thread_id Run() override;

    void AddChild(BView* child, BView* before = nullptr);
    bool RemoveChild(BView* child);
    int32 CountChildren() const;
    BView* ChildAt(int32 index) const;
    BView* FindView(const char* name) const;
    BView* FindView(BPoint point) const;
    BView* CurrentFocus() const;
    BView* LastMouseMovedView() const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MessageReceived(BMessage* message) override;
    virtual void FrameMoved(BPoint newPosition);
    virtual void FrameResized(float newWidth, float newHeight);
    virtual void WorkspacesChanged(uint32 oldWorkspaces, uint32 newWorkspaces);
    virtual void WorkspaceActivated(int32 workspace, bool state);
    virtual void WindowActivated(bool active);
    virtual void ScreenChanged(BRect screenSize, color_space depth);
    virtual void MenusBeginning();
    virtual void MenusEnded();

    virtual void Minimize(bool minimize);
    virtual void Zoom(BPoint origin, float width, float height);
    void Zoom();
    virtual void Show();
    virtual void Hide();
    bool IsHidden() const;
    bool IsMinimized() const;

    void Flush() const;
    void Sync() const;
    // Between the two nothing is drawn; calls nest.
    void DisableUpdates();
    void EnableUpdates();
    void BeginViewTransaction();
    void EndViewTransaction();
    bool InViewTransaction() const;
    bool NeedsUpdate() const;
    // Draws what is invalid before it returns.
    void UpdateIfNeeded();

    BRect Bounds() const;
    BRect Frame() const;
    BRect DecoratorFrame() const;
    const char* Title() const;
    void SetTitle(const char* title);
    bool IsFront() const;
    bool IsActive() const;
    void Activate(bool active = true);
    status_t SendBehind(const BWindow* window);

    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    void ConvertToScreen(BRect* rect) const;
    BRect ConvertToScreen(BRect rect) const;
    void ConvertFromScreen(BRect* rect) const;
    BRect ConvertFromScreen(BRect rect) const;

    void MoveBy(float dx, float dy);
    void MoveTo(BPoint point);
    void MoveTo(float x, float y);
    void ResizeBy(float dx, float dy);
    void ResizeTo(float width, float height);
    void CenterIn(const BRect& rect);
    void CenterOnScreen();

    void SetKeyMenuBar(BMenuBar* bar);
    BMenuBar* KeyMenuBar() const;
    void SetSizeLimits(float minWidth, float maxWidth, float minHeight, float maxHeight);
    void GetSizeLimits(float* minWidth, float* maxWidth, float* minHeight, float* maxHeight);
    void SetZoomLimits(float maxWidth, float maxHeight);
    // Microseconds between Pulse calls of views with B_PULSE_NEEDED; 0 stops them.
    void SetPulseRate(bigtime_t rate);
    bigtime_t PulseRate() const;
    void SetDefaultButton(BButton* button);
    BButton* DefaultButton() const;

    // The key with Command and the given modifiers. Takes ownership of the message; the one with a
    // handler sends it there, the one without to the window. A later one replaces an earlier one.
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message);
    void AddShortcut(uint32 key, uint32 modifiers, BMessage* message, BHandler* target);
    bool HasShortcut(uint32 key, uint32 modifiers);
    void RemoveShortcut(uint32 key, uint32 modifiers);

    uint32 Workspaces() const;
    void SetWorkspaces(uint32 workspaces);

    // A window of the modal subset feel keeps the input from the last window that was added, and
    // from no other. Before Show; B_BAD_VALUE with another feel.
    status_t AddToSubset(BWindow* window);
    status_t RemoveFromSubset(BWindow* window);
    status_t SetType(window_type type);
    window_type Type() const;
    status_t SetLook(window_look look);
    window_look Look() const;
    status_t SetFeel(window_feel feel);
    window_feel Feel() const;
    status_t SetFlags(uint32 flags);
    uint32 Flags() const;
    bool IsModal() const;
    bool IsFloating() const;

private:
    BWindow(const BWindow&) = delete;
    BWindow& operator=(const BWindow&) = delete;

    void _TaskLooper() override;

    std::unique_ptr<Private> fPrivate;
};
