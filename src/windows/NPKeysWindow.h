#pragma once

#include "windows/OnceWindow.h"

class BStringView;
class BTextControl;
class CommandListView;
class SettingsFile;

// Lists every command with its key, and lets the user give it another. What is done holds at once,
// in every window. Deletes itself.
class NPKeysWindow : public OnceWindow {
public:
    static constexpr const char* kTitle = "キー";

    // Brings the window to the front if there is one. The settings outlive it. Any thread.
    static void Open(SettingsFile* settings);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    explicit NPKeysWindow(SettingsFile* settings);
    void _ShowKey();
    void _Change(const char* text);
    void _Restore();

    // Constant after construction
    SettingsFile* const fSettings;

    // Window thread only
    CommandListView* fList = nullptr;
    BTextControl* fKey = nullptr;
    BStringView* fStatus = nullptr;
};
