#pragma once

#include <Font.h>
#include <Handler.h>
#include <InterfaceDefs.h>
#include <Rect.h>
#include <SupportDefs.h>

#include <memory>

class BBitmap;
class BCursor;
class BMessage;
class BRegion;
class BScrollBar;
class BScrollView;
class BString;
class BWindow;

enum {
    B_PRIMARY_MOUSE_BUTTON = 0x01,
    B_SECONDARY_MOUSE_BUTTON = 0x02,
    B_TERTIARY_MOUSE_BUTTON = 0x04
};

// Transit codes of MouseMoved.
enum { B_ENTERED_VIEW = 0, B_INSIDE_VIEW, B_EXITED_VIEW, B_OUTSIDE_VIEW };

enum { B_POINTER_EVENTS = 0x00000001, B_KEYBOARD_EVENTS = 0x00000002 };

enum {
    B_LOCK_WINDOW_FOCUS = 0x00000001,
    B_SUSPEND_VIEW_FOCUS = 0x00000002,
    B_NO_POINTER_HISTORY = 0x00000004,
    B_FULL_POINTER_HISTORY = 0x00000008
};

// How a BView draws and takes part.
const uint32 B_FULL_UPDATE_ON_RESIZE = 0x80000000U;
const uint32 B_WILL_DRAW = 0x20000000U;
const uint32 B_PULSE_NEEDED = 0x10000000U;
const uint32 B_NAVIGABLE_JUMP = 0x08000000U;
const uint32 B_FRAME_EVENTS = 0x04000000U;
const uint32 B_NAVIGABLE = 0x02000000U;
const uint32 B_SUBPIXEL_PRECISE = 0x01000000U;
const uint32 B_DRAW_ON_CHILDREN = 0x00800000U;
const uint32 B_INPUT_METHOD_AWARE = 0x00400000U;
const uint32 B_INVALIDATE_AFTER_LAYOUT = 0x00100000U;

// Resizing modes: which side of the parent each of the four sides follows.
const uint32 B_VIEW_TOP = 1;
const uint32 B_VIEW_LEFT = 2;
const uint32 B_VIEW_BOTTOM = 3;
const uint32 B_VIEW_RIGHT = 4;
const uint32 B_VIEW_CENTER = 5;

constexpr uint32 _rule_(uint32 top, uint32 left, uint32 bottom, uint32 right) {
    return (top << 12) | (left << 8) | (bottom << 4) | right;
}

const uint32 B_FOLLOW_NONE = 0;
const uint32 B_FOLLOW_ALL_SIDES = _rule_(B_VIEW_TOP, B_VIEW_LEFT, B_VIEW_BOTTOM, B_VIEW_RIGHT);
const uint32 B_FOLLOW_ALL = B_FOLLOW_ALL_SIDES;
const uint32 B_FOLLOW_LEFT = _rule_(0, B_VIEW_LEFT, 0, B_VIEW_LEFT);
const uint32 B_FOLLOW_RIGHT = _rule_(0, B_VIEW_RIGHT, 0, B_VIEW_RIGHT);
const uint32 B_FOLLOW_LEFT_RIGHT = _rule_(0, B_VIEW_LEFT, 0, B_VIEW_RIGHT);
const uint32 B_FOLLOW_H_CENTER = _rule_(0, B_VIEW_CENTER, 0, B_VIEW_CENTER);
const uint32 B_FOLLOW_TOP = _rule_(B_VIEW_TOP, 0, B_VIEW_TOP, 0);
const uint32 B_FOLLOW_BOTTOM = _rule_(B_VIEW_BOTTOM, 0, B_VIEW_BOTTOM, 0);
const uint32 B_FOLLOW_TOP_BOTTOM = _rule_(B_VIEW_TOP, 0, B_VIEW_BOTTOM, 0);
const uint32 B_FOLLOW_V_CENTER = _rule_(B_VIEW_CENTER, 0, B_VIEW_CENTER, 0);
const uint32 B_FOLLOW_LEFT_TOP = B_FOLLOW_TOP | B_FOLLOW_LEFT;

// A rectangle of a window: draws, takes input, holds other views. Coordinates are pixels with
// inclusive right and bottom. A parent owns and deletes its children; a view without a parent
// belongs to whoever made it. Once attached, everything needs the window locked; hooks run on the
// window's thread. Drawing calls work inside Draw and, between updates, wherever the window is
// locked.
class BView : public BHandler {
public:
    class Private;

    BView(BRect frame, const char* name, uint32 resizingMode, uint32 flags);
    ~BView() override;

    // Hooks
    virtual void AttachedToWindow();
    virtual void AllAttached();
    virtual void DetachedFromWindow();
    virtual void AllDetached();
    void MessageReceived(BMessage* message) override;
    virtual void Draw(BRect updateRect);
    virtual void DrawAfterChildren(BRect updateRect);
    virtual void MouseDown(BPoint where);
    virtual void MouseUp(BPoint where);
    virtual void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage);
    virtual void WindowActivated(bool active);
    virtual void KeyDown(const char* bytes, int32 numBytes);
    virtual void KeyUp(const char* bytes, int32 numBytes);
    virtual void Pulse();
    virtual void FrameMoved(BPoint newPosition);
    virtual void FrameResized(float newWidth, float newHeight);
    virtual void TargetedByScrollView(BScrollView* scrollView);
    virtual void MakeFocus(bool focus = true);
    virtual void Show();
    virtual void Hide();
    virtual void GetPreferredSize(float* width, float* height);
    virtual void ResizeToPreferred();
    virtual void ScrollTo(BPoint where);
    virtual void SetViewColor(rgb_color color);
    virtual void SetHighColor(rgb_color color);
    virtual void SetLowColor(rgb_color color);
    virtual void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
    virtual void SetFlags(uint32 flags);
    virtual void SetResizingMode(uint32 mode);

    // The tree
    void AddChild(BView* child, BView* before = nullptr);
    bool RemoveChild(BView* child);
    int32 CountChildren() const;
    BView* ChildAt(int32 index) const;
    BView* NextSibling() const;
    BView* PreviousSibling() const;
    bool RemoveSelf();
    BWindow* Window() const;
    BView* Parent() const;
    BView* FindView(const char* name) const;

    // Place
    BRect Bounds() const;
    BRect Frame() const;
    BPoint LeftTop() const;
    void MoveBy(float dx, float dy);
    void MoveTo(BPoint where);
    void MoveTo(float x, float y);
    void ResizeBy(float dx, float dy);
    void ResizeTo(float width, float height);
    void ScrollBy(float dx, float dy);
    void ScrollTo(float x, float y);
    uint32 ResizingMode() const;
    uint32 Flags() const;
    bool IsHidden() const;
    bool IsHidden(const BView* lookingFrom) const;
    BScrollBar* ScrollBar(orientation direction) const;
    BRect VisibleBounds() const;

    void ConvertToParent(BPoint* point) const;
    BPoint ConvertToParent(BPoint point) const;
    void ConvertFromParent(BPoint* point) const;
    BPoint ConvertFromParent(BPoint point) const;
    void ConvertToParent(BRect* rect) const;
    BRect ConvertToParent(BRect rect) const;
    void ConvertFromParent(BRect* rect) const;
    BRect ConvertFromParent(BRect rect) const;
    void ConvertToWindow(BPoint* point) const;
    BPoint ConvertToWindow(BPoint point) const;
    void ConvertFromWindow(BPoint* point) const;
    BPoint ConvertFromWindow(BPoint point) const;
    void ConvertToWindow(BRect* rect) const;
    BRect ConvertToWindow(BRect rect) const;
    void ConvertFromWindow(BRect* rect) const;
    BRect ConvertFromWindow(BRect rect) const;
    void ConvertToScreen(BPoint* point) const;
    BPoint ConvertToScreen(BPoint point) const;
    void ConvertFromScreen(BPoint* point) const;
    BPoint ConvertFromScreen(BPoint point) const;
    void ConvertToScreen(BRect* rect) const;
    BRect ConvertToScreen(BRect rect) const;
    void ConvertFromScreen(BRect* rect) const;
    BRect ConvertFromScreen(BRect rect) const;

    // Input
    bool IsFocus() const;
    void GetMouse(BPoint* location, uint32* buttons, bool checkMessageQueue = true);
    status_t SetEventMask(uint32 mask, uint32 options = 0);
    uint32 EventMask();
    // Until the button goes up; for MouseDown.
    status_t SetMouseEventMask(uint32 mask, uint32 options = 0);
    void SetViewCursor(const BCursor* cursor, bool sync = true);

    // Updating
    void Invalidate();
    void Invalidate(BRect rect);
    void Invalidate(const BRegion* region);
    void DelayedInvalidate(bigtime_t delay);
    void DelayedInvalidate(bigtime_t delay, BRect rect);
    void Flush() const;
    void Sync() const;

    // The drawing state
    rgb_color ViewColor() const;
    rgb_color HighColor() const;
    rgb_color LowColor() const;
    void SetViewColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    void SetHighColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    void SetLowColor(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
    void SetViewUIColor(color_which which, float tint = B_NO_TINT);
    void SetHighUIColor(color_which which, float tint = B_NO_TINT);
    void SetLowUIColor(color_which which, float tint = B_NO_TINT);
    void AdoptParentColors();
    void AdoptSystemColors();
    void SetDrawingMode(drawing_mode mode);
    drawing_mode DrawingMode() const;
    void SetBlendingMode(source_alpha sourceAlpha, alpha_function function);
    void GetBlendingMode(source_alpha* sourceAlpha, alpha_function* function) const;
    void SetPenSize(float size);
    float PenSize() const;
    void SetLineMode(cap_mode lineCap, join_mode lineJoin,
                     float miterLimit = B_DEFAULT_MITER_LIMIT);
    void MovePenTo(BPoint point);
    void MovePenTo(float x, float y);
    void MovePenBy(float x, float y);
    BPoint PenLocation() const;
    void SetOrigin(BPoint where);
    void SetOrigin(float x, float y);
    BPoint Origin() const;
    void PushState();
    void PopState();
    // In the view's coordinates; null lifts the limit of the present state.
    void ConstrainClippingRegion(BRegion* region);
    void GetClippingRegion(BRegion* region) const;
    void ClipToRect(BRect rect);
    void SetFontSize(float size);
    void GetFont(BFont* font) const;
    void GetFontHeight(font_height* height) const;
    void ForceFontAliasing(bool enable);
    float StringWidth(const char* string) const;
    float StringWidth(const char* string, int32 length) const;
    void GetStringWidths(char* stringArray[], int32 lengthArray[], int32 numStrings,
                         float widthArray[]) const;
    void TruncateString(BString* string, uint32 mode, float width) const;

    // Drawing
    void StrokeLine(BPoint toPoint, ::pattern pattern = B_SOLID_HIGH);
    void StrokeLine(BPoint start, BPoint end, ::pattern pattern = B_SOLID_HIGH);
    void StrokeRect(BRect rect, ::pattern pattern = B_SOLID_HIGH);
    void FillRect(BRect rect, ::pattern pattern = B_SOLID_HIGH);
    void FillRegion(BRegion* region, ::pattern pattern = B_SOLID_HIGH);
    void InvertRect(BRect rect);
    void StrokeRoundRect(BRect rect, float xRadius, float yRadius,
                         ::pattern pattern = B_SOLID_HIGH);
    void FillRoundRect(BRect rect, float xRadius, float yRadius, ::pattern pattern = B_SOLID_HIGH);
    void StrokeEllipse(BPoint center, float xRadius, float yRadius,
                       ::pattern pattern = B_SOLID_HIGH);
    void StrokeEllipse(BRect rect, ::pattern pattern = B_SOLID_HIGH);
    void FillEllipse(BPoint center, float xRadius, float yRadius, ::pattern pattern = B_SOLID_HIGH);
    void FillEllipse(BRect rect, ::pattern pattern = B_SOLID_HIGH);
    void StrokeArc(BRect rect, float startAngle, float arcAngle, ::pattern pattern = B_SOLID_HIGH);
    void FillArc(BRect rect, float startAngle, float arcAngle, ::pattern pattern = B_SOLID_HIGH);
    void StrokeTriangle(BPoint point1, BPoint point2, BPoint point3,
                        ::pattern pattern = B_SOLID_HIGH);
    void FillTriangle(BPoint point1, BPoint point2, BPoint point3,
                      ::pattern pattern = B_SOLID_HIGH);
    void StrokePolygon(const BPoint* points, int32 count, bool closed = true,
                       ::pattern pattern = B_SOLID_HIGH);
    void FillPolygon(const BPoint* points, int32 count, ::pattern pattern = B_SOLID_HIGH);
    void BeginLineArray(int32 count);
    void AddLine(BPoint start, BPoint end, rgb_color color);
    void EndLineArray();
    void DrawChar(char character);
    void DrawChar(char character, BPoint location);
    // The baseline starts at location, else at the pen, which moves to the text's end.
    void DrawString(const char* string, escapement_delta* delta = nullptr);
    void DrawString(const char* string, BPoint location, escapement_delta* delta = nullptr);
    void DrawString(const char* string, int32 length, escapement_delta* delta = nullptr);
    void DrawString(const char* string, int32 length, BPoint location,
                    escapement_delta* delta = nullptr);
    void DrawBitmap(const BBitmap* bitmap);
    void DrawBitmap(const BBitmap* bitmap, BPoint where);
    void DrawBitmap(const BBitmap* bitmap, BRect viewRect);
    void DrawBitmap(const BBitmap* bitmap, BRect bitmapRect, BRect viewRect);
    void DrawBitmapAsync(const BBitmap* bitmap);
    void DrawBitmapAsync(const BBitmap* bitmap, BPoint where);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect viewRect);
    void DrawBitmapAsync(const BBitmap* bitmap, BRect bitmapRect, BRect viewRect);
    // Copies what is on the screen; what could not be copied is invalidated.
    void CopyBits(BRect source, BRect destination);

private:
    BView(const BView&) = delete;
    BView& operator=(const BView&) = delete;

    std::unique_ptr<Private> fPrivate;
};
