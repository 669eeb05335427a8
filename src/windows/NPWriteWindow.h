#pragma once

#include "post/PostDraft.h"
#include "post/PostHistory.h"
#include "post/PostTarget.h"
#include "windows/NPWriteTextView.h"
#include "windows/OnceWindow.h"
#include "workers/Jobs.h"

#include <Messenger.h>
#include <String.h>

#include <functional>
#include <memory>
#include <string>

class BButton;
class BMenu;
class BTextControl;
class BStringView;

// What a write window is opened with; constant for its life.
struct WriteWindowSetup {
    BRect frame; // all zero: none was kept, a place is found
    PostTarget target;
    int32 res = 0;     // the posts that the thread had
    std::string title; // the thread's
    ProxySetting proxy;
    BFont font;
    NPWriteTextView::Bindings bindings = NPWriteTextView::Bindings::kPlatform;
    BMessenger browser;                   // the window that shows the thread
    std::function<void(BRect)> keepFrame; // called with the last frame, on the window's thread
};

// The window in which a post is composed and sent. While a post is under way nothing can be
// changed or sent again; a failed one leaves everything as it was. What was written is kept in the
// thread's draft, some seconds after the last key too, until a post of it has been confirmed.
// Deletes itself as it closes; everything runs on its thread, the post on a worker's that talks to
// it by messages.
class NPWriteWindow : public OnceWindow {
public:
    // Opens the window for a thread, or brings the one to the front that is open already. Any
    // thread.
    static void Open(const WriteWindowSetup& setup);

    explicit NPWriteWindow(const WriteWindowSetup& setup);
    ~NPWriteWindow() override;

    void MessageReceived(BMessage* message) override;
    bool QuitRequested() override;

private:
    void _AddFields(BView* base);
    BTextControl* _AddField(BView* base, float top, const char* name, const char* label,
                            const PostHistory& history, uint32 chosen);
    void _AddEditor(BView* base, const BFont& font, NPWriteTextView::Bindings bindings);
    void _AddButtons(BView* base);
    void _ShowDraft();
    void _KeepSoon();
    void _KeepNow();
    WrittenPost _Text() const;
    void _SetText(BTextControl* field, const BMessage* message);

    void _Send();
    void _Start(std::unique_ptr<PostForm> form);
    void _SetUsable(bool usable);
    void _EndWorker();
    void _ShowProgress(const BMessage* message);
    void _PostFailed(const BMessage* message);
    void _PostDone(const BMessage* message);
    void _ReloadThread();
    bool _KeepDraft();

    // Constant after construction
    const PostTarget fTarget;
    const int32 fRes;
    const ProxySetting fProxy;
    const BMessenger fBrowser;
    const std::function<void(BRect)> fKeepFrame; // empty: nobody keeps it

    // Window thread only
    PostDraft fDraft;
    PostHistory fNames;
    PostHistory fMails;
    BTextControl* fName = nullptr;
    BTextControl* fMail = nullptr;
    NPWriteTextView* fMessage = nullptr;
    BStringView* fStatus = nullptr;
    BButton* fSendButton = nullptr;
    std::shared_ptr<WorkerControl> fWorker; // null when no post is under way
    // A post has been finished: the window only waits to be closed
    enum class Finish { kNone, kUnconfirmed, kConfirmed } fFinish = Finish::kNone;
    BView* fFocus = nullptr; // what had the focus before nothing could be used
};
