#pragma once

#include <Bitmap.h>
#include <OS.h>
#include <View.h>

#include <memory>
#include <string>

class BStringView;
class NPStringView;
class NPTextView;
class TickScrollView;
struct _ArticleOut;

// The article pane: a thread's title, its web address, its buttons and its posts. Takes the posts
// of the worker that its present selection started, and of no other. Keeps where the reader left a
// thread with the cached copy. The window's thread, or with the window locked.
class NPArticleView : public BView {
public:
    explicit NPArticleView(BRect frame);
    ~NPArticleView() override;

    // Turns to another thread: what comes next are the posts that the request brings.
    void ShowThread(port_id request, const char* url, const char* dat);
    // One post, numbered from 1; an article without any text ends the thread, with its count of
    // posts.
    void addArticleItem(port_id request, const char* title, int32 number,
                        const _ArticleOut& article);

    // The posts of the request that have come are dropped; it brings others.
    void Restart(port_id request);
    // Its cached posts have come: scrolls to where the reader left them.
    void ReturnToPlace(port_id request);

    // The thread on show; empty before the first. Its title comes with its first post.
    const std::string& Url() const { return fUrl; }
    const std::string& Dat() const { return fDat; }
    const std::string& ThreadTitle() const { return fThreadTitle; }
    int32 CountPosts() const { return fPosts; }
    // Whether it takes no more posts, or few.
    bool IsThreadAtItsEnd() const;
    // How many posts the present request has brought behind the cached ones.
    int32 CountNew() const { return fHasReturned ? fPosts - fCachedPosts : 0; }

    // When the thread on show has come, this post is where its reader is taken; 0: to where he left
    // it.
    void GoTo(int32 number) { fGoTo = number; }

    NPTextView* TextView() const { return fTextView; }
    const char* GetTitle() const;
    const char* GetText() const;
    int32 TextLength() const;
    // And scrolls there.
    void SelectText(int32 start, int32 end);

    void AttachedToWindow() override;
    void MessageReceived(BMessage* message) override;

    // " <br> " and "<br>" become line feeds; other tags stay.
    static void replaceBRtag(class BString* text);

private:
    enum class Reload { kNew, kFromScratch };

    void _AddButtons();
    void _AddText(BRect frame);
    void _AddPost(int32 number, const _ArticleOut& article);
    void _EndThread(int32 count);
    void _Clear();
    bool _HasPlace() const; // the reader's, of which the cache does not know yet
    void _ShowTitle(const char* title);
    void _ChangeFont(const BMessage* message);
    void _UseNoise();
    void _NoteNoise();
    void _Reload(Reload how);
    void _OpenWriteWindow();
    void ReloadRequest(bool fromScratch);
    void _ReturnOrGo();
    void _ShowOwnPosts();
    void ReadBarPosition();
    void WriteBarPosition();

    BStringView* fTitleLabel = nullptr;
    NPStringView* fUrlLabel = nullptr;
    TickScrollView* fScrollView = nullptr;
    NPTextView* fTextView = nullptr;
    std::unique_ptr<BBitmap> fReloadIcon;
    std::unique_ptr<BBitmap> fScratchIcon;
    std::unique_ptr<BBitmap> fWriteIcon;

    std::shared_ptr<const class NoiseFilter> fNoise; // null: nothing is hidden

    // The thread on show; empty before the first
    std::string fUrl;
    std::string fDat;
    port_id fRequest = -1;
    bool fHasTitle = false;
    bool fHasReturned = false; // to where the reader left the cached posts
    bool fHasEnded = false;    // all its posts have come
    int32 fGoTo = 0;
    int32 fCachedPosts = 0;   // before the reload brought any
    int32 fPosts = 0;         // that have come
    std::string fTitle;       // as it is shown, with the count of posts at the end
    std::string fThreadTitle; // without it
};
