#pragma once

#include <OS.h>
#include <Window.h>

#include <ctime>

class BMenu;
struct PostTarget;
struct _ArticleOut;

// What panes and workers know of the browser window that they belong to. Everything needs the
// window locked: a pane's thread has it, a worker comes through the WindowLink.
class BrowserWindow : public BWindow {
public:
    using BWindow::BWindow;

    // By panes
    virtual bool GetOnlineMode() const = 0; // true without the setting
    virtual int8 GetClickMode() const = 0;  // 1 or 2
    // Whether the Space key asks for new posts at a thread's end.
    virtual bool SpaceFetches() const = 0;
    virtual bool GetBoardExpand(const char* name) const = 0;
    // Always 0. A text that does not fit is left empty.
    virtual int32 GetFontInfo(char (*family)[64], char (*style)[64], float* size) const = 0;
    // For the thread that the article pane shows, with the posts that it has.
    virtual void OpenWriteWindow(const PostTarget& target, const char* title, int32 posts) = 0;

    // What the window offers for the thread on show, behind the items of the posts' own menu.
    virtual void AddThreadItems(BMenu* menu) = 0;

    // The status line.
    virtual void PostProgressData(const char* text, int32 value) = 0;
    // A text that stays there when a worker has said its last word, until the next one begins.
    virtual void PostNotice(const char* text) = 0;

    // By workers, under the item lock of their kind. The request is the worker's port; number 0
    // begins a new thread list, with the board's URL as its title.
    virtual void addThreadItem(port_id request, int32 number, const char* title, const char* count,
                               const char* dat) = 0;
    // Number 0, without texts, begins the list of bookmarks. The time is the cached copy's, 0
    // without one.
    virtual void addBookmarkItem(port_id request, int32 number, const char* title,
                                 const char* server, const char* board, const char* dat,
                                 const char* count, time_t modified) = 0;
    // An article without any text ends the thread.
    virtual void addArticleItem(port_id request, const char* title, int32 number,
                                const _ArticleOut& article) = 0;
    // The posts that the request has brought so far go; others follow.
    virtual void restartArticles(port_id request) = 0;
    // The cached posts are on the pane: scrolls to where the reader left them.
    virtual void returnToPlace(port_id request) = 0;
};
