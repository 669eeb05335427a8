#pragma once

#include <Locker.h>
#include <Messenger.h>
#include <OS.h>

#include <atomic>

class BAlert;

// What a window and its worker share about the worker's run: the port that stops it, and the busy
// cursor, which is given back once by whichever of them comes first. Any thread.
class WorkerControl {
public:
    // Creates the port, of capacity 1; Port() is below 0 when that fails.
    explicit WorkerControl(const char* portName);
    ~WorkerControl();
    WorkerControl(const WorkerControl&) = delete;
    WorkerControl& operator=(const WorkerControl&) = delete;

    port_id Port() const { return fPort; }

    // Asks the worker to stop; its alert, if one is open, goes. It may hang on a server for long
    // yet: the cursor is given back at once. By the window, which then forgets the port.
    void Stop();
    bool IsStopped() const { return fStopped; }
    // Whether the worker must stop; its port has then been deleted and the cursor given back.
    bool MustStop();
    // Both may be called more than once.
    void DeletePort();
    void TakeCursor();
    void ReleaseCursor();
    // By the worker: shows the alert, which is locked, and waits for its end. It keeps the input
    // from the window that the worker works for, and goes with it. No alert comes after a stop.
    void PresentAlert(BAlert* alert, const BMessenger& window);

private:
    const port_id fPort;
    std::atomic<bool> fHasCursor = false;
    std::atomic<bool> fStopped = false;

    BLocker fAlertLock; // innermost
    BMessenger fAlert;  // guarded by fAlertLock; the one that is open
};

// Whether a stop has come through a worker's port; waits for none.
bool IsToldToStop(port_id port);

// Asks the application for the busy cursor, or gives one request back. Any thread.
void PostCursorMessage(bool busy);
