#pragma once

#include <Window.h>

// A window of which there is one at most: wanted again, with kMsgActivateWindow, it comes to the
// front.
class OnceWindow : public BWindow {
public:
    using BWindow::BWindow;

    void MessageReceived(BMessage* message) override;

protected:
    virtual void ComeToFront() { Activate(true); }
};
