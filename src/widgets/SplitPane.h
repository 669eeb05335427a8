#pragma once

#include <View.h>

// Two views with a bar between them that the user drags. Owns both. When the pane is resized the
// first view keeps its size as long as both can keep their least. Sizes are pixels. The window's
// thread, or with it locked.
class SplitPane : public BView {
public:
    // How the views stand.
    enum : int32 { kStacked = 0, kSideBySide = 1 };

    SplitPane(BRect frame, const char* name, BView* one, BView* two, uint32 resizingMode);

    void SetAlignment(int32 alignment); // any other value counts as kStacked
    int32 GetAlignment() const { return fAlignment; }
    // Where the bar starts: the first view's size. Kept as wanted until there is room for it.
    void SetBarPosition(float position);
    float GetBarPosition() const { return fPosition; }
    void SetBarThickness(float thickness);
    void SetMinSizeOne(float size);
    void SetMinSizeTwo(float size);

    void AttachedToWindow() override;
    void Draw(BRect updateRect) override;
    void FrameResized(float width, float height) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;

private:
    bool _SideBySide() const { return fAlignment == kSideBySide; }
    float _Length() const;
    float _Along(BPoint where) const;
    float _FittedPosition() const;
    BRect _BarRect() const;
    void _Place();

    BView* const fOne;
    BView* const fTwo;
    int32 fAlignment = kStacked;
    float fPosition = 100;
    float fThickness = 4;
    float fMinOne = 0;
    float fMinTwo = 0;
    bool fDragging = false;
    float fDragOffset = 0; // from the bar's start to where it was pressed
};
