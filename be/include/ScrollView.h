#pragma once

#include <View.h>

class BScrollBar;

// A frame with scroll bars around a target view, which becomes its child and is moved to fit. The
// window's thread, locked.
class BScrollView : public BView {
public:
    BScrollView(const char* name, BView* target, uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                uint32 flags = 0, bool horizontal = false, bool vertical = false,
                border_style border = B_FANCY_BORDER);
    ~BScrollView() override;

    BScrollBar* ScrollBar(orientation direction) const;
    virtual void SetBorder(border_style border);
    border_style Border() const { return fBorder; }
    // Whether the frame shows that the target has the keyboard.
    virtual status_t SetBorderHighlighted(bool highlight);
    bool IsBorderHighlighted() const { return fHighlighted; }
    void SetTarget(BView* target);
    BView* Target() const { return fTarget; }

    void Draw(BRect updateRect) override;
    void AttachedToWindow() override;
    void WindowActivated(bool active) override;
    void GetPreferredSize(float* width, float* height) override;

private:
    void _PlaceTarget();
    void _PlaceBars();
    void _Fit();

    // Window thread only
    BView* fTarget;
    BScrollBar* fHorizontal;
    BScrollBar* fVertical;
    border_style fBorder;
    bool fHighlighted;
};
