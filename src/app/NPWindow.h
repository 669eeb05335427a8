#pragma once

#include "app/BookmarkPatrol.h"
#include "app/Session.h"
#include "browser/BrowserWindow.h"
#include "windows/WindowSlot.h"
#include "workers/Jobs.h"

#include <Messenger.h>

#include <memory>
#include <string>
#include <vector>

class BBitmap;
class BMenu;
class BMenuBar;
class NPArticleView;
class NPBitmapButton;
class NPBoardView;
class NPProgressView;
class NPThreadItem;
class NPThreadView;
class SettingsFile;
class SplitPane;

// A browser window: the board list, the thread list of the board chosen there, and the posts of the
// thread chosen there, with a status line below. A thread-only window shows the posts of one
// thread. Starts, replaces and stops the workers; saves its layout into the shared settings as it
// closes.
//
// Everything runs on the window's thread, but for the thread entry points, and for what workers
// call with the window locked.
class NPWindow : public BrowserWindow {
public:
    // The settings are shared and outlive the window. The parent is told when a thread-only
    // window's thread has been read; it may be invalid.
    NPWindow(BRect frame, SettingsFile* settings, bool threadOnly, const BMessenger& parent);
    ~NPWindow() override;

    void MessageReceived(BMessage* message) override;
    void DispatchMessage(BMessage* message, BHandler* handler) override;
    void MenusBeginning() override;
    bool QuitRequested() override;

    // See BrowserWindow.
    bool GetOnlineMode() const override;
    int8 GetClickMode() const override;
    bool SpaceFetches() const override;
    bool GetBoardExpand(const char* name) const override;
    int32 GetFontInfo(char (*family)[64], char (*style)[64], float* size) const override;
    void OpenWriteWindow(const PostTarget& target, const char* title, int32 posts) override;
    void AddThreadItems(BMenu* menu) override;
    void PostProgressData(const char* text, int32 value) override;
    void PostNotice(const char* text) override;
    void addThreadItem(port_id request, int32 number, const char* title, const char* count,
                       const char* dat) override;
    void addBookmarkItem(port_id request, int32 number, const char* title, const char* server,
                         const char* board, const char* dat, const char* count,
                         time_t modified) override;
    void addArticleItem(port_id request, const char* title, int32 number,
                        const _ArticleOut& article) override;
    void restartArticles(port_id request) override;
    void returnToPlace(port_id request) override;

    // The row after this one of the thread list, null behind the last; the length of the article in
    // bytes; the number of threads that are listed: none in a thread-only window.
    NPThreadItem* GetNextThreadItem(int32 index) const;
    int32 GetCurrentArticleLength() const;
    int32 GetCurrentThreadNumber() const;
    int32 GetWriteKeyBinding() const;
    // Always 0. A text that does not fit is left empty rather than cut: it would name another host.
    int32 GetProxy(bool* use, char (*host)[64], char (*port)[64]) const;

    // What is needed to open it again. With the window locked.
    OpenWindow AsOpen() const;

    // Whether a worker is told through its port to stop; the port is then gone, and the busy cursor
    // given back.
    static bool PortReader(port_id port);
    // Asks the application for the busy cursor, or gives one request back.
    static void PostCursorMessage(bool busy);

    // Thread entry points; the argument is the job, which the thread frees as it exits.
    static int32 getSubject(void* job);
    static int32 getSubjectCache(void* job);
    static int32 getBookmark(void* job);
    static int32 getNextThreads(void* job);
    static int32 getArticle(void* job);
    static int32 getArticle_cgi(void* job);
    static int32 getArticleCache(void* job);

private:
    // Layout
    void AddMenuBar();
    void AddView();
    void AddShortcuts();
    BView* _MakePanes(BRect bounds);
    void _AddStatusLine(BView* base);
    int32 SetColumn();
    void _RestoreHeader();
    void _SaveLayout();
    void _SaveHeader();
    void _SaveCategories();
    void _PlaceOnScreen();

    // Modes
    void ToggleOnlineMode();
    void ToggleClickMode();
    void _ReloadBoards();

    // Workers
    using Entry = int32 (*)(void*);
    void BoardSelected(BMessage* message);
    void BoardSelectedCache(BMessage* message);
    void ThreadSelected(BMessage* message);
    void ThreadSelectedCache(BMessage* message);
    bool _ReadProxy(ProxySetting* proxy);
    std::unique_ptr<SubjectJob> _MakeSubjectJob(const BMessage* message) const;
    void _StartSubject(std::unique_ptr<SubjectJob> job, Entry entry, const char* name);
    std::unique_ptr<ThreadJob> _MakeThreadJob(const BMessage* message) const;
    void _RefuseName(const BMessage* message);
    void _NameWindow(const BMessage* message);
    void _StartThread(std::unique_ptr<ThreadJob> job, Entry entry, const char* name);
    bool _Replace(std::shared_ptr<WorkerControl>* worker,
                  const std::shared_ptr<WorkerControl>& next);
    bool _ListsFor(port_id request) const;
    void _StopWorker(std::shared_ptr<WorkerControl>* worker);
    bool _EndWorker(std::shared_ptr<WorkerControl>* worker, const BMessage* completion);
    void BookmarkSelected();
    void _BoardComplete(BMessage* message);
    void _ThreadComplete(BMessage* message);
    void _ShowNews();

    // Bookmarks and their patrol
    void _ListBookmarks();
    void OpenBookmarkFolder();
    void _StartPatrol();
    void _BeginPatrol();
    void _VisitNext(const BMessage* message);
    void _Visit(NPThreadItem* item);
    void _EndPatrol();

    // Keys
    bool _PerformKey(const BMessage& keyDown);
    void _UseKeys();
    void _OpenNextNews();

    // Search and preferences
    enum : uint8 { kSearchTitles = 1, kSearchArticle = 2 };
    void OpenPrefsWindow();
    void _OpenSearch();
    void _SearchStep(const BMessage* message);
    void _SearchClosed(const BMessage* message);
    void Search(const char* text, uint8 where);
    void _SearchTitles(const char* text);
    void _SearchArticle(const char* text);

    void _FilterThreads();

    // The thread behind the one on show
    void _FindNextThread();
    void _FetchNextThreads(const ListedThread& thread);
    void _NextThreadsFound(const BMessage* message);
    void _OfferThreads(const std::vector<ListedThread>& threads);
    void _OpenNextThread(const BMessage* message);
    void _AskForBookmark(const BMessage& move);
    void _MoveBookmark(const BMessage* message);

    bool _MustStay() const;

    // Requests for new windows
    void _ForwardWithFrame(BMessage* message);
    void _ForwardThread(BMessage* message);

    // Constant after construction
    SettingsFile* fSettings;
    const bool fThreadOnly;
    const BMessenger fParent;
    std::shared_ptr<WindowLink> fLink;

    // Window thread only; the panes and splitters of a thread-only window are null
    BMenuBar* fMenuBar = nullptr;
    NPThreadView* fThreadView = nullptr;
    NPArticleView* fArticleView = nullptr;
    NPBoardView* fBoardView = nullptr;
    SplitPane* fThreadSplit = nullptr;
    SplitPane* fBoardSplit = nullptr;
    NPProgressView* fProgressView = nullptr;
    NPBitmapButton* fNetworkButton = nullptr;
    std::unique_ptr<BBitmap> fOnlineBitmap;
    std::unique_ptr<BBitmap> fOfflineBitmap;
    std::shared_ptr<WorkerControl> fSubjectWorker; // null when there is none
    std::shared_ptr<WorkerControl> fArticleWorker;
    std::shared_ptr<WorkerControl> fNextWorker; // looks for a next thread
    std::string fNextFor;                       // the dat of the thread that it goes on from
    std::string fBoardUrl;                      // of the board that was chosen last; empty before
    std::string fBoardName;
    std::string fNotice; // what stays on the status line; empty: nothing
    std::string fNews;   // the same with what the thread on show has brought
    BookmarkPatrol fPatrol;
    WindowSlot fSearchWindow;
    int32 fSearchPosition = -1; // the row of the last match; −1: from the top
    int32 fSearchIndex = 0;     // the article's byte where the next step looks
};
