#pragma once

#include <ScrollView.h>

// Around a pop-up's text: tells the window whether the pointer is over it, and the time. Has a
// scroll bar when the text is larger than the window.
class PopUpScrollView : public BScrollView {
public:
    PopUpScrollView(BView* text, bool scrolls);

    void MouseMoved(BPoint where, uint32 transit, const BMessage* dragMessage) override;
    void Pulse() override;
};
