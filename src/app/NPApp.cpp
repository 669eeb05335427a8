#include "app/NPApp.h"

#include "app/DefaultSettings.h"
#include "app/NPWindow.h"
#include "app/Session.h"
#include "app/TimeCursors.h"
#include "messages/Messages.h"
#include "noise/NoiseStore.h"
#include "settings/Habits.h"
#include "views/BoardFiles.h"
#include "widgets/Alerts.h"
#include "windows/NPAboutWindow.h"
#include "windows/NPUpdateWindow.h"
#include "windows/WriteWindowSlots.h"

#include <Alert.h>
#include <Cursor.h>
#include <Directory.h>
#include <FindDirectory.h>
#include <Path.h>

#include <cstdlib>
#include <vector>

namespace {

constexpr bigtime_t kBusyRate = 100000; // microseconds a frame
constexpr bigtime_t kLockTime =
    1000000; // microseconds; a window that shows an alert is passed over
constexpr bigtime_t kAlertLockTime = 100000; // microseconds; an alert is held by nobody for longer
constexpr bigtime_t kSavePause = 3000000;    // microseconds between a change and its being saved
constexpr float kCascade = 20;
const BRect kFirstFrame(50, 50, 600, 550);

// Asks with the window locked. One that has gone meanwhile can't be locked: false.
template <typename Question>
bool WithWindow(BWindow* window, Question question) {
    if (window == nullptr || window->LockWithTimeout(kLockTime) != B_OK)
        return false;
    const bool answer = question(window);
    window->Unlock();
    return answer;
}

// The settings live until the process ends: what still runs then may hold them.
SettingsFile* KeepForever(SettingsFile* settings) {
    static std::vector<SettingsFile*>& all = *new std::vector<SettingsFile*>;
    all.push_back(settings);
    return settings;
}

} // namespace

NPApp::NPApp() : BApplication(kSignature) {}

void NPApp::ReadyToRun() {
    InitPrefs();
    if (!_ReopenWindows())
        _OpenFirstWindow();
}

// What they showed comes from the cache. False when there is nothing to open, or the user does not
// want that.
bool NPApp::_ReopenWindows() {
    bool reopens = false;
    BString session;
    if (fSettings->Get(kReopensWindows, &reopens) != B_OK || !reopens ||
        fSettings->Get(kOpenWindows, &session) != B_OK)
        return false;
    const std::vector<OpenWindow> windows = ReadSession(session.String());
    for (const OpenWindow& open : windows) {
        const BMessenger window = CreateNewWindow(open.frame, open.isThreadOnly, BMessenger());
        BMessage board(kMsgBoardSelectedCached);
        board.AddString("url", open.boardUrl.c_str());
        board.AddString("board", open.boardName.c_str());
        if (!open.boardUrl.empty())
            window.SendMessage(&board);
        BMessage thread(kMsgThreadSelectedCached);
        thread.AddString("url", open.threadUrl.c_str());
        thread.AddString("dat", open.threadDat.c_str());
        thread.AddString("title", open.title.c_str());
        if (!open.threadDat.empty())
            window.SendMessage(&thread);
    }
    return !windows.empty();
}

// Empty without any: the last window that closed by itself has kept what it showed.
std::string NPApp::_OpenWindows() {
    std::vector<OpenWindow> open;
    for (int32 i = 0; BWindow* window = WindowAt(i); i++) {
        const auto keep = [&open](BWindow* locked) {
            if (const auto* browser = dynamic_cast<NPWindow*>(locked))
                open.push_back(browser->AsOpen());
            return true;
        };
        WithWindow(window, keep);
    }
    return WriteSession(open);
}

void NPApp::_Save(const std::string& openWindows) {
    if (!openWindows.empty())
        fSettings->PutAt(kOpenWindows, 0, openWindows.c_str());
    fSettings->Save();
}

// Windows close on threads of their own, several at once; the application may hear of it later.
bool NPApp::WindowCloses() {
    return --fOpenCount == 0;
}

void NPApp::_OpenFirstWindow() {
    BRect frame = kFirstFrame;
    fSettings->Get("window_frame", &frame);
    CreateNewWindow(frame, false, BMessenger());
}

void NPApp::InitPrefs() {
    if (CheckPath("2ch") != 0)
        std::_Exit(1);
    fSettings = KeepForever(new SettingsFile("Itamori", "2ch", B_USER_SETTINGS_DIRECTORY));
    if (fSettings->InitCheck() == B_OK) {
        fSettings->Load();
        AddPrefsIfNotExists(fSettings);
    }
    // Whatever was saved, the cache is on wherever its folder is usable.
    if (CheckPath("2ch/2chCache") == 0)
        fSettings->Replace("enable_cache", true);
    fSettings->TellChanges(be_app_messenger);
}

int32 NPApp::CheckPath(const char* name) {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK || path.Append(name) != B_OK)
        return -1;
    const status_t status = BDirectory(path.Path()).InitCheck();
    if (status == B_OK)
        return 0;
    if (status != B_ENTRY_NOT_FOUND)
        ShowAlertToAll(path.Path() + std::string("\nにアクセスできません。\n"));
    else if (create_directory(path.Path(), 0755) != B_OK)
        ShowAlertToAll(path.Path() + std::string("\nが作れません。\n"));
    else
        return 0;
    return -1;
}

bool NPApp::QuitRequested() {
    if (fSettings == nullptr)
        return BApplication::QuitRequested();
    _DismissAlerts();
    const std::string open = _OpenWindows();
    _Save(open);
    NoiseStore::Shared().SaveCounts();
    // A text that can't be kept may hold up the end: its window is asked while all others stand.
    Unlock();
    const bool isAllKept = CloseWriteWindows();
    Lock();
    const bool quits = isAllKept && BApplication::QuitRequested();
    // The windows wrote their layout as they closed.
    if (quits)
        _Save(open);
    else if (fWindowCount <= 0) // the last one was faster than the question
        _OpenFirstWindow();
    return quits;
}

// Who waits for an answer holds a window that is going to be asked.
void NPApp::_DismissAlerts() {
    for (int32 i = CountWindows() - 1; i >= 0; i--) {
        BWindow* window = WindowAt(i);
        if (window == nullptr || window->LockWithTimeout(kAlertLockTime) != B_OK)
            continue;
        if (dynamic_cast<BAlert*>(window) != nullptr)
            window->PostMessage(B_QUIT_REQUESTED);
        window->Unlock();
    }
}

void NPApp::AboutRequested() {
    NPAboutWindow::Open();
}

int32 NPApp::GetWriteWindowRect(BRect* out) const {
    return fSettings->Get("writing_window", out) == B_OK ? 0 : -1;
}

void NPApp::SetWriteWindowRect(BRect frame) {
    fSettings->Replace("writing_window", frame);
}

void NPApp::MessageReceived(BMessage* message) {
    switch (message->what) {
    case kMsgFontChanged: _ChangeFont(message); break;
    case kMsgKeysChanged:
    case kMsgNoiseChanged: _Broadcast(*message); break;
    case kMsgToggleOnline: _ToggleOnline(message); break;
    case kMsgToggleClick: _ToggleClick(message); break;
    case kMsgNewWindow: _OpenWindow(message); break;
    case kMsgNextWindow: _ActivateNextWindow(); break;
    case kMsgWindowClosed: _WindowClosed(); break;
    case kMsgThreadInWindow: _OpenThread(message, kMsgThreadSelected); break;
    case kMsgThreadInWindowCached: _OpenThread(message, kMsgThreadSelectedCached); break;
    case kMsgBoardInWindow: _OpenBoard(message, kMsgBoardSelected); break;
    case kMsgBoardInWindowCached: _OpenBoard(message, kMsgBoardSelectedCached); break;
    case kMsgUpdateBoardMenu: _UpdateBoardMenu(message); break;
    case kMsgUpdateEnded: _UpdateEnded(message); break;
    case kMsgBusyCursor: _ChangeBusyCursor(message); break;
    case kMsgSettingsChanged: _SaveSoon(); break;
    default: BApplication::MessageReceived(message);
    }
}

BMessenger NPApp::CreateNewWindow(BRect frame, bool threadOnly, const BMessenger& parent) {
    NPWindow* window = new NPWindow(frame, fSettings, threadOnly, parent);
    const BMessenger messenger(window);
    fOpenCount++;
    window->Show();
    fWindowCount++;
    return messenger;
}

// To every window, of whatever kind. One that has just gone is an invalid target, no more.
void NPApp::_Broadcast(const BMessage& message) {
    for (int32 i = CountWindows() - 1; i >= 0; i--) {
        BMessage copy(message);
        BMessenger(nullptr, WindowAt(i)).SendMessage(&copy);
    }
}

void NPApp::_ChangeFont(BMessage* message) {
    BString family;
    BString style;
    float size = 0;
    if (message->FindString("family", &family) == B_OK &&
        message->FindString("style", &style) == B_OK) {
        fSettings->Replace("font_family", family.String());
        fSettings->Replace("font_style", style.String());
    }
    if (message->FindFloat("size", &size) == B_OK)
        fSettings->Replace("font_size", size);
    _Broadcast(*message);
}

void NPApp::_ToggleOnline(BMessage* message) {
    bool online = true;
    if (fSettings->Get("online_mode", &online) == B_OK)
        fSettings->Replace("online_mode", !online);
    _Broadcast(*message);
}

void NPApp::_ToggleClick(BMessage* message) {
    int8 mode = 0;
    if (fSettings->Get("click_mode", &mode) == B_OK && (mode == 1 || mode == 2))
        fSettings->Replace("click_mode", static_cast<int8>(3 - mode));
    _Broadcast(*message);
}

void NPApp::_OpenWindow(BMessage* message) {
    BRect frame;
    if (message->FindRect("frame", &frame) == B_OK)
        CreateNewWindow(frame.OffsetByCopy(kCascade, kCascade), false, BMessenger());
}

void NPApp::_OpenThread(BMessage* message, uint32 selection) {
    BRect frame;
    BMessenger parent;
    if (message->FindRect("frame", &frame) != B_OK)
        return;
    message->FindMessenger("parent", &parent);
    const BMessenger window = CreateNewWindow(frame.OffsetByCopy(kCascade, kCascade), true, parent);
    BString dat;
    BString url;
    BString title;
    if (message->FindString("dat", &dat) != B_OK || message->FindString("url", &url) != B_OK ||
        message->FindString("title", &title) != B_OK)
        return;
    BMessage select(selection);
    select.AddString("dat", dat);
    select.AddString("url", url);
    select.AddString("title", title);
    int32 jump = 0;
    if (message->FindInt32("jump", &jump) == B_OK)
        select.AddInt32("jump", jump);
    window.SendMessage(&select);
}

void NPApp::_OpenBoard(BMessage* message, uint32 selection) {
    BRect frame;
    if (message->FindRect("frame", &frame) != B_OK)
        return;
    const BMessenger window =
        CreateNewWindow(frame.OffsetByCopy(kCascade, kCascade), false, BMessenger());
    BString board;
    BString url;
    if (message->FindString("board", &board) != B_OK || message->FindString("url", &url) != B_OK)
        return;
    BMessage select(selection);
    select.AddString("board", board);
    select.AddString("url", url);
    window.SendMessage(&select);
}

void NPApp::_ActivateNextWindow() {
    const int32 count = CountWindows();
    int32 active = 0;
    const auto isActive = [](BWindow* window) { return window->IsActive(); };
    while (active < count && !WithWindow(WindowAt(active), isActive))
        active++;
    // Pop-ups, which never have the keyboard, are stepped over.
    const auto activate = [](BWindow* window) {
        const bool takesKeys = (window->Flags() & B_AVOID_FOCUS) == 0;
        if (takesKeys)
            window->Activate(true);
        return takesKeys;
    };
    for (int32 step = 1; active < count && step <= count; step++) {
        if (WithWindow(WindowAt((active + step) % count), activate))
            return;
    }
}

// The window is recorded only while it is being opened: several updates may run at once.
void NPApp::_UpdateBoardMenu(BMessage* message) {
    NPUpdateWindow::Setup setup;
    if (fUpdateWindow != nullptr)
        return;
    const std::string refusal = FindProxy(*fSettings, &setup.proxy);
    if (!refusal.empty()) {
        LeaveAlert(refusal); // everyone waits for this thread, and so does the end
        return;
    }
    _OpenUpdateWindow(&setup).SendMessage(kMsgBeginUpdate);
    _UpdateEnded(message);
}

BMessenger NPApp::_OpenUpdateWindow(NPUpdateWindow::Setup* setup) {
    setup->application = be_app_messenger;
    setup->folder = BbsFolder();
    fUpdateWindow = new NPUpdateWindow(*setup);
    const BMessenger messenger(fUpdateWindow);
    fUpdateWindow->Show();
    return messenger;
}

// Only browser windows heed the news.
void NPApp::_UpdateEnded(BMessage* message) {
    bool complete = false;
    if (message->FindBool("complete", &complete) == B_OK && complete)
        _Broadcast(BMessage(kMsgBoardMenuChanged));
    fUpdateWindow = nullptr;
}

void NPApp::_WindowClosed() {
    if (fWindowCount-- == 1)
        PostMessage(B_QUIT_REQUESTED);
}

// The count may fall below 0: a release that comes before its request is made good by it. Even the
// request that only brings it back to 0 shows the animation.
void NPApp::_ChangeBusyCursor(BMessage* message) {
    bool busy = false;
    if (message->FindBool("cursor", &busy) != B_OK)
        return;
    fBusyCount += busy ? 1 : -1;
    fShowsBusy = busy || fBusyCount > 0;
    if (busy) {
        _SetPulse();
        ShowCursor();
    } else if (!fShowsBusy) {
        _SetPulse();
        SetCursor(B_HAND_CURSOR);
        ShowCursor();
    }
}

void NPApp::Pulse() {
    _SaveIfDue();
    if (fShowsBusy)
        _ShowNextFrame();
}

// None runs while nothing is busy and nothing has changed.
void NPApp::_SetPulse() {
    SetPulseRate(fShowsBusy ? kBusyRate : fSaveTime > 0 ? kSavePause : 0);
}

// Several changes are saved at once; a crash, or a desktop that goes, loses no more than these.
void NPApp::_SaveSoon() {
    fSaveTime = system_time() + kSavePause;
    _SetPulse();
}

void NPApp::_SaveIfDue() {
    if (fSaveTime == 0 || system_time() < fSaveTime)
        return;
    fSaveTime = 0;
    _SetPulse();
    fSettings->Save();
}

void NPApp::_ShowNextFrame() {
    // Goes on from where the last busy time ended.
    static int32 sFrame = 0;
    sFrame = sFrame >= kTimeCursorCount ? 0 : sFrame;
    SetCursor(time_cursors[sFrame++].data());
    ShowCursor();
}
