#pragma once

#include <Control.h>

// A push button. Its value is B_CONTROL_ON only while it is held down.
class BButton : public BControl {
public:
    BButton(BRect frame, const char* name, const char* label, BMessage* message,
            uint32 resizeMask = B_FOLLOW_LEFT | B_FOLLOW_TOP,
            uint32 flags = B_WILL_DRAW | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE);
    ~BButton() override;

    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    status_t Invoke(BMessage* message = nullptr) override;
    void GetPreferredSize(float* width, float* height) override;

    // The window's default button: Enter presses it whatever has the focus. Its frame stays.
    virtual void MakeDefault(bool isDefault);
    bool IsDefault() const;

private:
    bool fDefault = false;
};
