#include <cstdio>
#include <cstdlib>

#include <OS.h>

#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "server/Testing.h"
#include "views/NPArticleView.h"
#include "views/NPBoardView.h"
#include "views/NPThreadView.h"

// Takes the picture of the README: demo_screenshot FILE.png opens the program with the settings of
// $XDG_CONFIG_HOME and no display, reads a board and a thread as a user would, writes the main
// window as a PNG and ends.

namespace {

constexpr const char* kBoard = "http://life.example/daily/";
constexpr const char* kThread = "1011700000.dat";

constexpr float kWidth = 960;
constexpr float kHeight = 640;

struct Errand {
    const char* file;
    bool done = false;
};

// The main window, once it is there.
BMessenger findWindow(NPWindow** window) {
    BMessenger messenger;
    server::testing::WaitUntil([&] {
        *window = dynamic_cast<NPWindow*>(be_app->WindowAt(0));
        messenger = BMessenger(*window);
        return *window != nullptr;
    });
    return messenger;
}

bool waitFor(const BMessenger& messenger, const std::function<bool()>& holds) {
    return server::testing::WaitUntil([&] {
        BLooper* looper = nullptr;
        if (!messenger.LockTarget())
            return false;
        messenger.Target(&looper);
        const bool result = holds();
        looper->Unlock();
        return result;
    });
}

void openCategories(NPWindow* window) {
    NPBoardListView* boards = static_cast<NPBoardView*>(window->FindView("board"))->List();
    for (int32 i = 0; i < boards->FullListCountItems(); i++)
        boards->SetExpanded(boards->FullListItemAt(i), true);
}

bool read(const BMessenger& messenger, NPWindow* window) {
    waitFor(messenger, [&] {
        window->ResizeTo(kWidth, kHeight);
        openCategories(window);
        return true;
    });
    BMessage board(kMsgBoardSelected);
    board.AddString("url", kBoard);
    board.AddString("board", "日常会話");
    messenger.SendMessage(&board);
    if (!waitFor(messenger, [&] { return std::string(window->Title()).ends_with(")"); }))
        return false;
    BMessage thread(kMsgThreadSelected);
    thread.AddString("url", kBoard);
    thread.AddString("dat", kThread);
    messenger.SendMessage(&thread);
    NPArticleView* article = static_cast<NPArticleView*>(window->FindView("article pane"));
    NPThreadListView* threads = static_cast<NPThreadView*>(window->FindView("thread"))->List();
    return waitFor(messenger, [&] {
        const NPThreadItem* item = threads->ThreadAt(threads->FullListCountItems() - 1);
        const std::string title = article->GetTitle();
        return title.ends_with(")") && item != nullptr && item->State() == kRead;
    });
}

int32 run(void* data) {
    Errand* errand = static_cast<Errand*>(data);
    NPWindow* window = nullptr;
    const BMessenger messenger = findWindow(&window);
    errand->done = messenger.IsValid() && read(messenger, window) &&
                   server::testing::WaitUntilIdle(window) &&
                   server::testing::SavePicture(window, errand->file);
    be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: %s FILE.png\n", argv[0]);
        return 2;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    Errand errand{argv[1]};
    NPApp application;
    const thread_id thread = spawn_thread(run, "errand", B_NORMAL_PRIORITY, &errand);
    resume_thread(thread);
    application.Run();
    if (!errand.done)
        fprintf(stderr, "%s: no picture could be taken\n", argv[0]);
    return errand.done ? 0 : 1;
}
