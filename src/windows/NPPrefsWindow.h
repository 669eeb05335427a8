#pragma once

#include "windows/OnceWindow.h"

#include <Rect.h>

class BBox;
class BCheckBox;
class BMenu;
class BStringView;
class BTextControl;
class NPFontMenu;
class SettingsFile;

// The preferences: article font, key bindings of the editor, proxy, habits of reading. "OK" writes
// the proxy, the key bindings and the habits into the settings and sends the font to the
// application with kMsgFontChanged; "Cancel" changes nothing. What is not among the choices, a font
// that is no longer installed or a size of the user's own, stays as it is until another is chosen.
// Deletes itself.
class NPPrefsWindow : public OnceWindow {
public:
    // Brings the window to the front if there is one. The settings outlive it. Any thread.
    static void Open(SettingsFile* settings);

    explicit NPPrefsWindow(SettingsFile* settings);

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    BView* _MakeGeneralTab(BRect frame);
    BBox* _MakeFontBox(BRect frame);
    NPFontMenu* GetFontMenu() const;
    BBox* _MakeEditorBox(BRect frame);
    BView* _MakeNetworkTab(BRect frame);
    BView* _MakeReadingTab(BRect frame);
    BCheckBox* _AddHabit(BBox* box, int32 row, const char* key, const char* label);
    void _AddButtons(BView* view);
    BString _Setting(const char* key) const;

    void _ChooseFont(const BMessage* message);
    void _ShowSample();
    void _EnableProxy();
    void _Accept();
    void _StoreProxy();
    void _StoreKeyBinding();
    void _StoreHabits();
    void _SendFont();

    // Constant after construction
    SettingsFile* fSettings;

    // Window thread only
    NPFontMenu* fFontMenu = nullptr;
    BMenu* fSizeMenu = nullptr;
    BMenu* fKeyMenu = nullptr;
    BStringView* fSample = nullptr;
    BCheckBox* fProxy = nullptr;
    BTextControl* fHost = nullptr;
    BTextControl* fPort = nullptr;
    BCheckBox* fSpaceFetches = nullptr;
    BCheckBox* fReopens = nullptr;
};
