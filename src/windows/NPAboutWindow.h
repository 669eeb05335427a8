#pragma once

#include <Window.h>

// Says what the program is, its version and whose parts it uses. Deletes itself.
class NPAboutWindow : public BWindow {
public:
    NPAboutWindow();

    void MessageReceived(BMessage* message) override;

private:
    void _AddLines(class BView* view);
};
