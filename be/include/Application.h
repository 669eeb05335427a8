#pragma once

#include <Looper.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

class BCursor;
class BWindow;
struct app_info;

// The program. Construct one in main, call Run, delete it. The constructor connects to the desktop;
// a second start with the same signature and settings folder makes the first come to the front
// (B_SILENT_RELAUNCH, and its first window is activated) and ends the process with status 0. Run
// serves the desktop on the calling thread until the application has quit; the application's own
// loop runs on a thread of its own.
class BApplication : public BLooper {
public:
    class Private;

    explicit BApplication(const char* signature);
    BApplication(const char* signature, status_t* error);
    ~BApplication() override;

    status_t InitCheck() const;

    thread_id Run() override;
    void Quit() override;
    bool QuitRequested() override;
    virtual void Pulse();
    virtual void ReadyToRun();
    void MessageReceived(BMessage* message) override;
    virtual void ArgvReceived(int32 argc, char** argv);
    virtual void AppActivated(bool active);
    virtual void RefsReceived(BMessage* message);
    virtual void AboutRequested();

    void ShowCursor();
    void HideCursor();
    void ObscureCursor();
    bool IsCursorHidden() const;
    // 68 bytes of cursor data, for all windows but views with a cursor of their own.
    void SetCursor(const void* cursorData);
    void SetCursor(const BCursor* cursor, bool sync = true);

    int32 CountWindows() const;
    BWindow* WindowAt(int32 index) const;
    int32 CountLoopers() const;
    BLooper* LooperAt(int32 index) const;
    bool IsLaunching() const;
    const char* Signature() const;
    status_t GetAppInfo(app_info* info) const;

    void DispatchMessage(BMessage* message, BHandler* handler) override;
    // Microseconds between calls of Pulse; 0 stops them.
    void SetPulseRate(bigtime_t rate);

private:
    BApplication(const BApplication&) = delete;
    BApplication& operator=(const BApplication&) = delete;

    void _TaskLooper() override;

    std::unique_ptr<Private> fPrivate;
};

extern BApplication* be_app;
extern BMessenger be_app_messenger;
