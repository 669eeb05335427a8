#pragma once

#include "windows/OnceWindow.h"

// Says what the program is, its version and whose parts it uses. Deletes itself.
class NPAboutWindow : public OnceWindow {
public:
    // Brings the window to the front if there is one. Any thread.
    static void Open();

    bool QuitRequested() override;

private:
    NPAboutWindow();
    void _AddLines(class BView* view);
};
