#pragma once

#include "workers/WorkerControl.h"

#include <Messenger.h>

#include <memory>

class NPThreadItem;

// How far a browser window's patrol through its bookmarks is. The patrol window counts the visits
// and says which comes next; the browser does the visiting. The browser's thread.
class BookmarkPatrol {
public:
    // The window is open; the list of bookmarks comes first.
    void Begin(const BMessenger& window);
    bool IsRunning() const { return fState != State::kNone; }
    // Asks the window to close, which ends the patrol.
    void Stop() const;
    void BringToFront() const;

    // What was under way has ended: asks the window which visit comes next. Once until it has
    // answered: a second answer would count a visit twice.
    void StepEnded();
    // It has answered. False without a patrol.
    bool TakeAnswer();
    // Tells the window that a row is visited, by this worker; null when it could not be started.
    void Visit(const NPThreadItem& item, const std::shared_ptr<WorkerControl>& worker);

    // The window has closed. True when this worker is a visit's, which ends with the patrol.
    bool End(const std::shared_ptr<WorkerControl>& worker);

private:
    enum class State {
        kNone,
        kUnderWay, // the list, a visit or a thread that the user has chosen; or a number is missing
        kAsked     // the window is to say which visit comes next
    };

    State fState = State::kNone;
    BMessenger fWindow;                    // meaningful with a patrol
    std::shared_ptr<WorkerControl> fVisit; // of the last visit
};
