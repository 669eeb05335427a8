#pragma once

#include <string>

class BAlert;
class BWindow;

// Who may be called off while an alert of his is open: a job that works for a window.
class AlertOwner {
public:
    virtual ~AlertOwner() = default;

    // Calls Go, which deletes the alert, or Quit. The alert is locked.
    virtual void PresentAlert(BAlert* alert) = 0;
};

// The program's way of telling the user about an error: a modal alert with one "OK" button; waits
// for it. It keeps the input from the owner's window alone, on whose thread it is called.
void ShowAlert(BWindow* owner, const std::string& text);

// The same for a job, on its own thread.
void ShowAlert(AlertOwner* owner, const std::string& text);

// The same for what concerns no window: it keeps the input from all of them. Any thread but a
// window's.
void ShowAlertToAll(const std::string& text);

// The same without waiting: for a thread that others wait for, such as the application's.
void LeaveAlert(const std::string& text);

// Lets the alert keep the input from this window alone. With both locked, before Go.
void BindAlert(BAlert* alert, BWindow* window);
