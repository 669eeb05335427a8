#pragma once

#include "windows/StopWindow.h"

#include <Messenger.h>

// The small window of a patrol: shows which thread is being visited, counts the visits, asks the
// browser window for the next one, and ends the patrol as it closes. The browser window does the
// visiting; the two only send each other messages. Deletes itself.
class NPPatrolWindow : public StopWindow {
public:
    // Opens over the middle of the browser's frame, in screen coordinates.
    NPPatrolWindow(const BMessenger& browser, BRect browserFrame);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void _AskForNext();
    void _ShowVisit(const BMessage* message);

    // Constant after construction
    const BMessenger fBrowser;

    // Window thread only
    int32 fVisits = 0;
};
