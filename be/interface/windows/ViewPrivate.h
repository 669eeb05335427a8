#pragma once

#include "interface/drawing/DrawState.h"

#include <Cursor.h>
#include <Region.h>
#include <View.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QPainter;

struct ArrayLine {
    BPoint start;
    BPoint end;
    rgb_color color;
};

// What a focused text view tells the input method ahead of its questions.
struct InputMethodState {
    bool enabled = false;
    BRect caret;             // the view's coordinates
    std::string surrounding; // UTF-8, around the caret
    int32 cursorByte = 0;    // in surrounding
    int32 anchorByte = 0;
};

// The view's data and the framework's way to it. The window's lock protects everything.
class BView::Private {
public:
    static Private& Of(const BView* view) { return *view->fPrivate; }

    explicit Private(BView* self) : view(self) {}

    // The tree
    void AttachTo(BWindow* newWindow); // with AttachedToWindow and AllAttached
    void Detach();                     // with DetachedFromWindow and AllDetached
    bool IsVisible() const;            // neither it nor a parent is hidden, and it is in a window
    BPoint WindowOrigin() const;       // of the view's (0, 0), in the window's coordinates
    BRect WindowFrame() const;
    // What of it shows, without what its children cover; in the window's coordinates.
    BRegion VisibleRegion() const;
    BRect VisibleFrame() const; // its frame cut by its parents, window coordinates
    bool IsOverlapped() const;  // by a sibling, or a parent's, that lies above
    BView* ViewAt(BPoint inParent);

    // The framework's part of events
    void ParentResized(float dx, float dy);
    void SetSize(float width, float height);
    void InvalidateInWindow(BRect inWindow);
    void ViewportChanged(); // bars follow

    // Input-method text that a focused text view shows; also for B_INPUT_METHOD_AWARE views of our
    // own.
    void SetInputMethodState(const InputMethodState& given);
    bool InputMethodIsEnabled() const; // as the window told last
    void ResetInputMethod();           // drops a composition that the view gave up

    // Draws by hand, in the view's coordinates. Clipped like every drawing call.
    void DrawNatively(BRect area, const std::function<void(QPainter&)>& draw);

    // Calls back on the window's thread, once, with the window locked; gone with the view.
    void CallLater(bigtime_t delay, std::function<void()> call);
    void CancelCalls();

    BView* const view;
    BWindow* window = nullptr;
    bool attached = false; // its hook has been called
    BView* parent = nullptr;
    std::vector<BView*> children;
    BRect frame;   // in the parent's coordinates
    BPoint scroll; // left top of the bounds
    uint32 resizingMode = 0;
    uint32 flags = 0;
    int32 hidden = 0;
    uint32 eventMask = 0;
    uint32 eventOptions = 0;
    uint32 mouseEventMask = 0;
    std::optional<BCursor> cursor;
    BScrollBar* horizontalBar = nullptr;
    BScrollBar* verticalBar = nullptr;
    BPoint wheelRest; // parts of pixels that the wheel has not scrolled yet

    rgb_color viewColor{255, 255, 255, 255};
    DrawState state;
    std::vector<DrawState> saved;
    std::vector<ArrayLine> lines;

private:
    void _SetWindow(BWindow* newWindow);
    void _TellAttached();
    void _TellDetached();
    void _ForgetWindow();
};
