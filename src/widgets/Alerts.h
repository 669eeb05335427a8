#pragma once

class BAlert;
class BWindow;

// Shows a modal alert with one "OK" button and waits for it. Any thread; the program's way of
// telling the user about an error. `format` is printf's and never comes from data.
//
// It keeps the input from the window that it concerns: the one whose thread calls, or the one of
// the thread's AlertOwner. From any other thread it keeps it from all windows.
void ShowAlert(const char* format, ...) __attribute__((format(printf, 1, 2)));

// The same without waiting: for a thread that others wait for, such as the application's.
void LeaveAlert(const char* text);

// Lets the alert keep the input from this window alone. With both locked, before Go.
void BindAlert(BAlert* alert, BWindow* window);

// Takes over the alerts that its own thread shows, in whatever layer: a job that works for a window
// and may be called off. Lives on the thread's stack; one a thread.
class AlertOwner {
public:
    AlertOwner();
    virtual ~AlertOwner();
    AlertOwner(const AlertOwner&) = delete;
    AlertOwner& operator=(const AlertOwner&) = delete;

    // Calls Go, which deletes the alert, or Quit. The alert is locked.
    virtual void PresentAlert(BAlert* alert) = 0;
};
