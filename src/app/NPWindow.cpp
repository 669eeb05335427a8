#include "app/NPWindow.h"

#include "app/NPApp.h"
#include "commands/Commands.h"
#include "messages/Messages.h"
#include "settings/Habits.h"
#include "settings/SettingsFile.h"
#include "views/NPArticleView.h"
#include "views/NPBitmapButton.h"
#include "views/NPBoardView.h"
#include "views/NPProgressView.h"
#include "views/NPThreadView.h"
#include "windows/NPCacheSearchWindow.h"
#include "windows/NPKeysWindow.h"
#include "windows/NPNoiseWindow.h"
#include "windows/WriteWindowSlots.h"

#include <Application.h>
#include <Bitmap.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Screen.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr float kLeastWidth = 200;
constexpr float kLeastHeight = 300;
constexpr float kTitleBar = 24;

// Settings can be edited by hand: what is no place on any screen becomes the default.
BRect UsableFrame(BRect frame) {
    constexpr float kFarthest = 100000;
    for (const float edge : {frame.left, frame.top, frame.right, frame.bottom}) {
        if (!(std::abs(edge) <= kFarthest))
            return BRect(50, 50, 600, 550);
    }
    frame.right = std::max(frame.right, frame.left + kLeastWidth);
    frame.bottom = std::max(frame.bottom, frame.top + kLeastHeight);
    return frame;
}

// All of it, with its title bar, on the screen: moved, and made smaller where it must be.
BRect FrameOnScreen(BRect frame, BRect screen) {
    if (screen.Contains(frame))
        return frame;
    screen.top += kTitleBar;
    const float width = std::min(frame.Width(), screen.Width());
    const float height = std::min(frame.Height(), screen.Height());
    const float left = std::clamp(frame.left, screen.left, screen.right - width);
    const float top = std::clamp(frame.top, screen.top, screen.bottom - height);
    return BRect(left, top, left + width, top + height);
}

// A text of the settings for a buffer of 64 bytes; empty when it is missing or does not fit.
void CopySetting(const SettingsFile& settings, const char* key, char (*buffer)[64]) {
    BString text;
    (*buffer)[0] = '\0';
    if (settings.Get(key, &text) != B_OK)
        return;
    if (text.Length() >= static_cast<int32>(sizeof(*buffer)))
        fprintf(stderr, "settings: \"%s\" is too long\n", key);
    else
        memcpy(*buffer, text.String(), text.Length() + 1);
}

} // namespace

NPWindow::NPWindow(BRect frame, SettingsFile* settings, bool threadOnly, const BMessenger& parent)
    : BrowserWindow(UsableFrame(frame), "Itamori", B_DOCUMENT_WINDOW, 0), fSettings(settings),
      fThreadOnly(threadOnly), fParent(parent), fLink(std::make_shared<WindowLink>(this)) {
    AddMenuBar();
    AddView();
    AddShortcuts();
    const BRect screen = BScreen(this).Frame();
    SetSizeLimits(kLeastWidth, screen.Width(), kLeastHeight, screen.Height());
    _PlaceOnScreen();
}

NPWindow::~NPWindow() {
    fLink->Detach();
}

// One opened beside a maximised window, or saved on another screen, would lie partly off it.
void NPWindow::_PlaceOnScreen() {
    const BRect frame = FrameOnScreen(Frame(), BScreen(this).Frame());
    MoveTo(frame.LeftTop());
    ResizeTo(frame.Width(), frame.Height());
}

// A window with menus has it there.
void NPWindow::AddShortcuts() {
    if (!fThreadOnly)
        return;
    for (const Command& command : Commands()) {
        if (command.code != kMsgNextWindow)
            continue;
        const KeyChord key = KeyOf(*fSettings, command);
        if (key.character != 0)
            AddShortcut(static_cast<uchar>(key.character), key.modifiers,
                        new BMessage(kMsgNextWindow));
    }
}

void NPWindow::MessageReceived(BMessage* message) {
    switch (message->what) {
    // Requests that the application serves
    case kMsgNewWindow:
    case kMsgBoardInWindow:
    case kMsgBoardInWindowCached: _ForwardWithFrame(message); break;
    case kMsgNextWindow: be_app_messenger.SendMessage(message); break;
    case kMsgThreadInWindow:
    case kMsgThreadInWindowCached: _ForwardThread(message); break;

    // Selections
    case kMsgBoardSelected: BoardSelected(message); break;
    case kMsgBoardSelectedCached: BoardSelectedCache(message); break;
    case kMsgThreadSelected: ThreadSelected(message); break;
    case kMsgThreadSelectedCached: ThreadSelectedCache(message); break;

    // Bookmarks and their patrol
    case kMsgListBookmarks: _ListBookmarks(); break;
    case kMsgOpenBookmarkFolder: OpenBookmarkFolder(); break;
    case kMsgStartPatrol: _StartPatrol(); break;
    case kMsgVisitNext: _VisitNext(message); break;
    case kMsgPatrolEnded: _EndPatrol(); break;

    // Search and preferences
    case kMsgOpenPrefs: OpenPrefsWindow(); break;
    case kMsgOpenKeys: NPKeysWindow::Open(fSettings); break;
    case kMsgReloadThread: PostMessage(message, fArticleView); break;
    case kMsgNextNews: _OpenNextNews(); break;
    case kMsgKeysChanged: _UseKeys(); break;
    case kMsgOpenCacheSearch: NPCacheSearchWindow::Open(); break;
    case kMsgOpenNoise: NPNoiseWindow::Open(); break;
    case kMsgOpenSearch: _OpenSearch(); break;
    case kMsgSearchStep: _SearchStep(message); break;
    case kMsgSearchClosed: _SearchClosed(message); break;
    case kMsgFilterThreads: _FilterThreads(); break;

    // The next thread
    case kMsgFindNextThread: _FindNextThread(); break;
    case kMsgNextThreads: _NextThreadsFound(message); break;
    case kMsgOpenNextThread: _OpenNextThread(message); break;
    case kMsgMoveBookmark: _MoveBookmark(message); break;

    // From workers
    case kMsgBoardComplete: _BoardComplete(message); break;
    case kMsgThreadComplete: _ThreadComplete(message); break;

    // Broadcasts of the application
    case kMsgFontChanged:
    case kMsgNoiseChanged: PostMessage(message, fArticleView); break;
    case kMsgToggleOnline: ToggleOnlineMode(); break;
    case kMsgToggleClick: ToggleClickMode(); break;
    case kMsgBoardMenuChanged: _ReloadBoards(); break;
    default: BrowserWindow::MessageReceived(message);
    }
}

void NPWindow::_ForwardWithFrame(BMessage* message) {
    BMessage request(*message);
    request.AddRect("frame", Frame());
    be_app_messenger.SendMessage(&request);
}

void NPWindow::_ForwardThread(BMessage* message) {
    BMessage request(*message);
    BString title;
    bool noParent = false;
    if (request.FindString("title", &title) != B_OK)
        request.AddString("title", Title());
    BRect frame = fArticleView->ConvertToScreen(fArticleView->Bounds());
    frame.right += 2;
    frame.bottom += 14;
    request.AddRect("frame", frame);
    if (request.FindBool("no_parent", &noParent) != B_OK || !noParent)
        request.AddMessenger("parent", BMessenger(this));
    be_app_messenger.SendMessage(&request);
}

bool NPWindow::GetOnlineMode() const {
    bool online = true;
    return fSettings->Get("online_mode", &online) != B_OK || online;
}

int8 NPWindow::GetClickMode() const {
    int8 mode = 2;
    return fSettings->Get("click_mode", &mode) == B_OK && mode == 1 ? 1 : 2;
}

int32 NPWindow::GetWriteKeyBinding() const {
    int32 binding = 0;
    return fSettings->Get("key_binding", &binding) == B_OK ? binding : 0;
}

bool NPWindow::SpaceFetches() const {
    bool fetches = false;
    fSettings->Get(kSpaceFetches, &fetches);
    return fetches;
}

bool NPWindow::GetBoardExpand(const char* name) const {
    BString category;
    for (int32 i = 0; fSettings->Get("category_name", &category, i) == B_OK; i++) {
        bool expanded = false;
        if (category == name && fSettings->Get("category_expand", &expanded, i) == B_OK)
            return expanded;
    }
    return false;
}

int32 NPWindow::GetProxy(bool* use, char (*host)[64], char (*port)[64]) const {
    *use = false;
    fSettings->Get("proxy", use);
    CopySetting(*fSettings, "proxy_host", host);
    CopySetting(*fSettings, "proxy_port", port);
    return 0;
}

int32 NPWindow::GetFontInfo(char (*family)[64], char (*style)[64], float* size) const {
    CopySetting(*fSettings, "font_family", family);
    CopySetting(*fSettings, "font_style", style);
    fSettings->Get("font_size", size);
    return 0;
}

void NPWindow::ToggleOnlineMode() {
    bool online = true;
    if (fThreadOnly || fSettings->Get("online_mode", &online) != B_OK)
        return;
    fNetworkButton->SetBitmap(online ? fOnlineBitmap.get() : fOfflineBitmap.get());
}

void NPWindow::ToggleClickMode() {
    int8 mode = 0;
    if (fThreadOnly || fSettings->Get("click_mode", &mode) != B_OK || (mode != 1 && mode != 2))
        return;
    fBoardView->SetClickMode(static_cast<click_mode>(mode));
    fThreadView->SetClickMode(static_cast<click_mode>(mode));
}

void NPWindow::_ReloadBoards() {
    if (!fThreadOnly)
        fBoardView->UpdateBBSMenu();
}

// A worker empties the line as its last word, before or behind its completion: what the thread has
// brought stays on it.
void NPWindow::PostProgressData(const char* text, int32 value) {
    if (*text != '\0') {
        fNotice.clear();
        fNews.clear();
    }
    fProgressView->DrawBar(*text != '\0' ? text : fNews.c_str(), value);
}

void NPWindow::PostNotice(const char* text) {
    PostProgressData(text, 0);
    fNotice = fNews = text;
}

// The program would end with the last one: the application asks for the texts first that are not
// sent, and then closes this window with the others.
bool NPWindow::_MustStay() const {
    const NPApp* application = dynamic_cast<NPApp*>(be_app);
    if (application == nullptr || !application->IsLastWindow() || OpenWriteWindows().empty())
        return false;
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return true;
}

bool NPWindow::QuitRequested() {
    if (_MustStay())
        return false;
    _StopWorker(&fSubjectWorker);
    _StopWorker(&fArticleWorker);
    _StopWorker(&fNextWorker);
    fPatrol.Stop();
    fSearchWindow.Window().SendMessage(B_QUIT_REQUESTED);
    if (!fThreadOnly)
        _SaveLayout();
    if (NPApp* application = dynamic_cast<NPApp*>(be_app);
        application != nullptr && application->WindowCloses())
        fSettings->PutAt(kOpenWindows, 0, WriteSession({AsOpen()}).c_str());
    be_app_messenger.SendMessage(kMsgWindowClosed);
    return BrowserWindow::QuitRequested();
}

OpenWindow NPWindow::AsOpen() const {
    OpenWindow open;
    open.frame = Frame();
    open.isThreadOnly = fThreadOnly;
    open.title = fThreadOnly ? Title() : "";
    open.boardUrl = fBoardUrl;
    open.boardName = fBoardName;
    open.threadUrl = fArticleView->Url();
    open.threadDat = fArticleView->Dat();
    return open;
}
