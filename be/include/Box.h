#pragma once

#include <InterfaceDefs.h>
#include <String.h>
#include <View.h>

// A border around a group of views, with a label in its upper edge.
class BBox : public BView {
public:
    explicit BBox(BRect frame, const char* name = nullptr,
                  uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                  uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP,
                  border_style border = B_FANCY_BORDER);
    ~BBox() override;

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void GetPreferredSize(float* width, float* height) override;

    virtual void SetBorder(border_style style);
    border_style Border() const;

    // Either label replaces, and deletes, the other. Null takes it away.
    void SetLabel(const char* label);
    // Takes ownership of the view.
    status_t SetLabel(BView* view);
    // Null if there is none, or a view is the label.
    const char* Label() const;
    BView* LabelView() const;

private:
    // Window thread only
    BString fLabel;
    BView* fLabelView = nullptr;
    border_style fBorder;
    BRect fDrawnBounds;
};
