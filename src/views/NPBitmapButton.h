#pragma once

#include <Control.h>

class BBitmap;

// A flat button with a picture. The bitmap is borrowed and must outlive the button.
class NPBitmapButton : public BControl {
public:
    NPBitmapButton(BRect frame, const char* name, const BBitmap* bitmap, BMessage* message,
                   uint32 resizingMode);

    void SetBitmap(const BBitmap* bitmap);

    void Draw(BRect updateRect) override;
    void MouseDown(BPoint where) override;
    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void MouseUp(BPoint where) override;

private:
    const BBitmap* fBitmap;
    bool fPressed = false; // the button went down here
    bool fInside = false;  // the pointer is over the button
};
