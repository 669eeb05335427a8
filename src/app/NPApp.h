#pragma once

#include "settings/SettingsFile.h"
#include "windows/NPUpdateWindow.h"

#include <Application.h>
#include <Messenger.h>
#include <Rect.h>

#include <atomic>
#include <string>

class NPWindow;

constexpr const char* kSignature = "application/x-vnd.Itamori";

// The program: owns the settings, makes the folders, opens browser windows and quits with the last
// of them. What concerns every window goes through it: the online and click modes, the font,
// requests for new windows, the busy cursor. Everything runs on the application's thread.
class NPApp : public BApplication {
public:
    NPApp();

    void ReadyToRun() override;
    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;
    void Pulse() override;
    void AboutRequested() override;

    // Makes sure that a folder stands below the user's settings: 0, or −1 after telling the user.
    int32 CheckPath(const char* path);
    // Where the write window stood; 0, or −1 without one.
    int32 GetWriteWindowRect(BRect* out) const;
    void SetWriteWindowRect(BRect frame);

    // Shared with every window; lives until the process ends.
    SettingsFile* Settings() const { return fSettings; }
    // Whether the program ends with the browser window that asks. Any thread.
    bool IsLastWindow() const { return fWindowCount == 1; }
    // A browser window closes: whether it leaves no other. Any thread.
    bool WindowCloses();

private:
    void InitPrefs();
    void _OpenFirstWindow();
    bool _ReopenWindows();
    std::string _OpenWindows();
    void _Save(const std::string& openWindows);
    void _DismissAlerts();
    BMessenger CreateNewWindow(BRect frame, bool threadOnly, const BMessenger& parent);
    void _Broadcast(const BMessage& message);

    void _ChangeFont(BMessage* message);
    void _ToggleOnline(BMessage* message);
    void _ToggleClick(BMessage* message);
    void _OpenWindow(BMessage* message);
    void _OpenThread(BMessage* message, uint32 selection);
    void _OpenBoard(BMessage* message, uint32 selection);
    void _ActivateNextWindow();
    void _UpdateBoardMenu(BMessage* message);
    void _UpdateEnded(BMessage* message);
    BMessenger _OpenUpdateWindow(NPUpdateWindow::Setup* setup);
    void _WindowClosed();
    void _ChangeBusyCursor(BMessage* message);
    void _ShowNextFrame();
    void _SaveSoon();
    void _SaveIfDue();
    void _SetPulse();

    SettingsFile* fSettings = nullptr;
    std::atomic<int32> fWindowCount = 0; // written by the application's thread alone
    std::atomic<int32> fOpenCount = 0;   // of windows that have not begun to close
    int32 fBusyCount = 0;
    NPUpdateWindow* fUpdateWindow = nullptr; // while it is being opened
    bool fShowsBusy = false;
    bigtime_t fSaveTime = 0; // of changed settings; 0 while there are none
};
