#pragma once

#include <OS.h>

#include <atomic>

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

    // Asks the worker to stop. By the window, which then forgets the port.
    void Stop();
    // Whether the worker must stop; its port has then been deleted and the cursor given back.
    bool MustStop();
    // Both may be called more than once.
    void DeletePort();
    void TakeCursor();
    void ReleaseCursor();

private:
    const port_id fPort;
    std::atomic<bool> fHasCursor = false;
};

// Asks the application for the busy cursor, or gives one request back. Any thread.
void PostCursorMessage(bool busy);
