#pragma once

#include <View.h>

// The documented breadth of scroll bars, in pixels less one.
const float B_V_SCROLL_BAR_WIDTH = 14.0F;
const float B_H_SCROLL_BAR_HEIGHT = 14.0F;

const uint32 B_SCROLL_BAR_PAGE_STEP = 0;

// A flat scroll bar: a proportional knob in a trough. Pressing the trough pages towards the
// pointer, repeating while held. Moves its target's bounds; the target's ScrollTo moves it. The
// window's thread, locked.
class BScrollBar : public BView {
public:
    BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
               orientation direction);
    ~BScrollBar() override;

    void SetValue(float value);
    float Value() const { return fValue; }
    // The visible share of the whole, from 0 to 1.
    void SetProportion(float proportion);
    float Proportion() const { return fProportion; }
    virtual void ValueChanged(float newValue);
    void SetRange(float min, float max);
    void GetRange(float* min, float* max) const;
    void SetSteps(float smallStep, float largeStep);
    void GetSteps(float* smallStep, float* largeStep) const;
    void SetTarget(BView* target);
    void SetTarget(const char* targetName);
    BView* Target() const { return fTarget; }
    void SetOrientation(orientation direction);
    orientation Orientation() const { return fOrientation; }

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void MessageReceived(BMessage* message) override;
    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseUp(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void Pulse() override;
    void FrameResized(float newWidth, float newHeight) override;
    void GetPreferredSize(float* width, float* height) override;

private:
    enum class Hold { kNothing, kKnob, kTrough };

    BRect _Knob() const;
    float _Length() const;
    float _KnobLength() const;
    float _Along(BPoint where) const;
    void _DragTo(float along);
    void _PageTowards(float along);
    void _RepeatAfter(bigtime_t delay);
    void _SetHovered(bool hovered);

    // Window thread only
    BView* fTarget; // borrowed; cleared when it goes
    float fValue;
    float fMin;
    float fMax;
    float fSmallStep;
    float fLargeStep;
    float fProportion;
    orientation fOrientation;
    Hold fHold;
    bool fHovered;
    float fGrip; // from the knob's start to where it was taken
    BPoint fPointer;
};
