#pragma once

#include <Control.h>

// One of several under the same parent, of which exactly one is on: turning one on turns its
// siblings off, without messages from them.
class BRadioButton : public BControl {
public:
    BRadioButton(BRect frame, const char* name, const char* label, BMessage* message,
                 uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
                 uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
    ~BRadioButton() override;

    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void SetValue(int32 value) override;

    void GetPreferredSize(float* width, float* height) override;

private:
    void _ChooseNeighbour(bool backwards);

    bool fPressed = false;
};
