#pragma once

#include <Window.h>

// Says what the program is, its version and whose parts it uses. Deletes itself.
class NPAboutWindow : public BWindow {
public:
    // Brings the window to the front if there is one. Any thread.
    static void Open();

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    NPAboutWindow();
    void _AddLines(class BView* view);
};
