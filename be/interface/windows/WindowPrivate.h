#pragma once

#include "interface/windows/ViewPrivate.h"

#include <Message.h>
#include <Messenger.h>
#include <Region.h>
#include <Window.h>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class Painter;

// To a window: the loop looks again at what is due; the second is counted.
constexpr uint32 kMsgWake = '_WAK';
constexpr uint32 kMsgMark = '_MRK';

namespace server {
class Surface;
class WindowLink;
struct InputContext;
} // namespace server

// The window's data and the framework's way to it. The window's lock protects everything.
class BWindow::Private {
public:
    static Private& Of(const BWindow* window) { return *window->fPrivate; }

    Private(BWindow* self, BRect windowFrame, const char* windowTitle, window_look look,
            window_feel feel, uint32 flags);
    ~Private();

    // Shortcuts of menu items: pressing the key calls MenusBeginning, invoke, MenusEnded. The owner
    // takes its own away before it goes.
    void AddMenuShortcut(const void* owner, uint32 key, uint32 modifiers,
                         std::function<void()> invoke);
    void RemoveMenuShortcuts(const void* owner);
    // F10 and a tap of Alt open the key menu bar through this.
    std::function<void()> openKeyMenuBar;

    // Calls back on the window's thread, once, with the window locked.
    void CallLater(const void* owner, bigtime_t delay, std::function<void()> call);
    void CancelCalls(const void* owner);

    // Updating
    void Invalidate(BRect inWindow);
    void Scroll(BRect inWindow, float dx, float dy); // moves what is shown and what is invalid
    // What lies in `target` (a part of `area`) comes from where it is less `delta`; the rest of the
    // area is drawn again.
    void Copy(BRect target, BRect area, BPoint delta);
    void Update();
    bool CanUpdate() const { return hidden == 0 && updatesDisabled == 0; }
    bool NeedsUpdate() const { return !dirty.IsEmpty() || !moves.empty() || sizeChanged; }
    void PrepareSurface();
    void FocusPainterOn(BView* view);

    // The loop
    bigtime_t TimeToNext(); // how long nothing is due
    void DoWhatIsDue();
    void Wake(); // the loop looks again; for other threads

    // Events, window thread
    bool Dispatch(BMessage* message, BHandler* handler); // false for what BLooper does
    bool TakeWake(const BMessage* message);
    bool IsStale(const BMessage* message) const; // a later one in the queue says more
    void SetSize(float width, float height);
    void SetFocus(BView* view);
    void Watch(BView* view);    // as its event mask says
    void ViewGoes(BView* view); // detached: nothing may point to it any more
    void NavigateFocus(bool backwards);
    bool HandleShortcut(uint32 key, uint32 modifiers);
    void PulseNeededChanged();
    void KeyPressed(BMessage* message, BHandler* handler);
    void MousePressed(BMessage* message, BHandler* handler);
    void MouseReleased(BMessage* message, BHandler* handler);
    void MouseMoved(BMessage* message);
    void WheelTurned(BMessage* message, BHandler* handler);
    void InputMethodSpoke(BMessage* message);
    void TellInputMethod(const server::InputContext& context);
    void ResetInputMethod(); // what is still said of the present composition is not heard
    void Activated(bool nowActive);
    void ResizedByServer(const BMessage* message);
    void MovedByServer(const BMessage* message);
    void ScreenChanged(const BMessage* message);
    void FollowSize(); // while the thread waits for an alert
    void UpdateCursor(BView* under);
    BView* ViewAt(BPoint where) const;

    struct Shortcut {
        uint32 key;
        uint32 modifiers;
        std::unique_ptr<BMessage> message;
        bool hasTarget;
        BMessenger target;
        const void* owner; // of a menu's
        std::function<void()> invoke;
    };

    struct Call {
        bigtime_t when;
        const void* owner;
        std::function<void()> call;
    };

    // Pixels of the area move; both are pixels of the window.
    struct Move {
        BRect area;
        float dx;
        float dy;
    };

    BWindow* const window;
    std::unique_ptr<BView> top; // holds the window's children
    std::shared_ptr<server::WindowLink> link;

    std::string title;
    BRect frame;
    BRect frameBeforeZoom;
    window_look look;
    window_feel feel;
    uint32 flags;
    int32 hidden = 1; // Show calls it needs to be seen
    bool minimized = false;
    bool active = false;
    float minWidth = 0;
    float maxWidth = 32768;
    float minHeight = 0;
    float maxHeight = 32768;

    BView* focus = nullptr;
    std::vector<BView*> watchers; // views with an event mask
    BView* lastMouseView = nullptr;
    BView* mouseDownView = nullptr; // has the pointer while a button is down
    uint32 buttons = 0;
    BPoint pointer;
    bool pointerFresh = false; // the next GetMouse tells of the message, not of the present
    bool altAlone = false;
    bool inputMethodIsEnabled = false;
    int32 composition = 0;        // the last that was heard of, by its number
    int32 givenUpComposition = 0; // the last that was reset
    BMenuBar* keyMenuBar = nullptr;
    BButton* defaultButton = nullptr;
    std::vector<Shortcut> shortcuts;
    std::vector<Call> calls;
    bigtime_t pulseRate = 500000;
    int32 pulsing = 0; // views that need it
    bigtime_t nextPulse = 0;

    BRegion dirty;
    std::vector<Move> moves; // to be done to the pixels before the next drawing
    int32 updatesDisabled = 0;
    int32 transactions = 0;
    bigtime_t lastUpdate = 0;
    bigtime_t dirtySince = 0;
    bool wakePosted = false;
    int32 marks = 0;          // that the loop has taken; everything posted before them is done
    bool showPending = false; // Show was called; drawn first, then shown
    bool sizeChanged = false; // the surface does not have the window's size yet
    float surfaceScale = 0;
    int32 surfaceWidth = 0;
    int32 surfaceHeight = 0;
    Painter* painter = nullptr; // while updating
    BView* painted = nullptr;   // whom the painter is set up for
    BRegion updateRegion;
    std::optional<BCursor> shownCursor;

private:
    void _DrawView(BView* view, BRect clip);
    void _ForgetPress();
    void _TellWatchers(uint32 mask, const BView* except, const std::function<void(BView*)>& tell);
    void _KeyTold(BMessage* message, BView* target, int32 count);
    void _MoveTold(BMessage* message, BView* under, BView* before);
    void _SendMouse(BView* view, BMessage* message, uint32 transit);
    void _ShortcutFound(Shortcut& shortcut);
    void _CollectNavigable(BView* from, std::vector<BView*>& found) const;
    void _TellActivated(BView* from, bool nowActive);
    void _Pulse(BView* from);
    bool _IsUpdateDue(bigtime_t now) const;
    bool _PulsesAreDue() const { return pulsing > 0 && pulseRate > 0 && hidden == 0; }
};
