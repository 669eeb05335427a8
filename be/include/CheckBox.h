#pragma once

#include <Control.h>

// A box that the user ticks: B_CONTROL_ON or B_CONTROL_OFF.
class BCheckBox : public BControl {
public:
    BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
              uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
              uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BCheckBox() override;

    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;

    void GetPreferredSize(float* width, float* height) override;

private:
    bool fPressed = false;
};
