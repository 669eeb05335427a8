#include "WindowsDriver.h"

#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "views/NPArticleView.h"

#include "server/DemoServer.h"
#include "server/Testing.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <string>
#include <vector>

namespace {

constexpr const char* kBoard = "http://many.example/many/";
constexpr int kPosts = 60;

// The first window, which is only closed at the end, and the demo server that all read from.
class Windows {
public:
    Windows() {
        fServer.AddBoard("many", 20);
        fServer.Start();
        fKey = fServer.Keys("many").front();
        fServer.Grow("many", fKey, kPosts);
        _Wait(1);
        WaitForActive(0);
        fFirst = BMessenger(be_app->WindowAt(0));
        SettingsFile* settings = static_cast<NPApp*>(be_app)->Settings();
        settings->Replace("proxy_host", "127.0.0.1");
        settings->Replace("proxy_port", fServer.PortText().c_str());
        settings->Replace("proxy", true);
    }
    ~Windows() { fFirst.SendMessage(B_QUIT_REQUESTED); }

    // Asks the first window for another one, and waits until it is there.
    BMessenger Open(uint32 code) {
        BMessage request(code);
        const bool isBoard = code == kMsgBoardInWindow || code == kMsgBoardInWindowCached;
        request.AddString("url", kBoard);
        request.AddString(isBoard ? "board" : "dat",
                          isBoard ? "いろいろ" : (fKey + ".dat").c_str());
        if (!isBoard)
            request.AddString("title", code == kMsgThreadInWindow ? "受信" : "キャッシュ");
        const int32 before = be_app->CountWindows();
        fFirst.SendMessage(&request);
        _Wait(before + 1);
        return BMessenger(be_app->WindowAt(be_app->CountWindows() - 1));
    }
    static void Close(const BMessenger& window) {
        window.SendMessage(B_QUIT_REQUESTED);
        server::testing::WaitUntil([&] { return !window.IsValid(); });
    }
    static bool WaitForTitle(const BMessenger& window, const std::string& title) {
        return server::testing::WaitUntil([&] {
            return With(window, [&](BWindow* target) { return title == target->Title(); });
        });
    }
    bool WaitForPosts(const BMessenger& window) const {
        const std::string ending = "(" + std::to_string(kPosts + 1) + ")";
        return server::testing::WaitUntil([&] {
            return With(window, [&](BWindow* target) {
                auto* pane = static_cast<NPArticleView*>(target->FindView("article pane"));
                return std::string(pane->GetTitle()).ends_with(ending);
            });
        });
    }
    // Command-G, pressed in the active window.
    static bool PressSwitches(int32 active, int32 next) {
        server::testing::Key(be_app->WindowAt(active), 'g', B_COMMAND_KEY);
        return WaitForActive(next);
    }

private:
    template <typename Call>
    static bool With(const BMessenger& window, Call call) {
        BLooper* looper = nullptr;
        if (!window.LockTarget())
            return false;
        window.Target(&looper);
        const bool result = call(static_cast<BWindow*>(looper));
        looper->Unlock();
        return result;
    }
    static void _Wait(int32 count) {
        server::testing::WaitUntil([&] { return be_app->CountWindows() == count; });
    }

    DemoServer fServer;
    std::string fKey;
    BMessenger fFirst;
};

constexpr std::array<uint32, 4> kKinds = {kMsgThreadInWindow, kMsgBoardInWindow,
                                          kMsgThreadInWindowCached, kMsgBoardInWindowCached};

void OpenEachKind(Windows& windows) {
    const BMessenger thread = windows.Open(kMsgThreadInWindow);
    const BMessenger board = windows.Open(kMsgBoardInWindow);
    if (windows.WaitForPosts(thread) && Windows::WaitForTitle(thread, "受信"))
        printf("thread\n");
    if (Windows::WaitForTitle(board, "いろいろ (20)"))
        printf("board\n");
    const BMessenger cachedThread = windows.Open(kMsgThreadInWindowCached);
    const BMessenger cachedBoard = windows.Open(kMsgBoardInWindowCached);
    if (windows.WaitForPosts(cachedThread) && Windows::WaitForTitle(cachedThread, "キャッシュ"))
        printf("cached thread\n");
    if (Windows::WaitForTitle(cachedBoard, "いろいろ (1)"))
        printf("cached board\n");
    for (const BMessenger& window : {thread, cachedBoard, board, cachedThread})
        Windows::Close(window);
}

void SwitchAround(Windows& windows) {
    const BMessenger thread = windows.Open(kMsgThreadInWindow);
    WaitForActive(1);
    const BMessenger board = windows.Open(kMsgBoardInWindow);
    if (WaitForActive(2) && Windows::PressSwitches(2, 0) && Windows::PressSwitches(0, 1) &&
        Windows::PressSwitches(1, 2))
        printf("switched\n");
    Windows::Close(board);
    Windows::Close(thread);
}

void CloseInEveryOrder(Windows& windows) {
    std::array<size_t, kKinds.size()> order;
    std::iota(order.begin(), order.end(), 0);
    int orders = 0;
    do {
        std::vector<BMessenger> open;
        for (const uint32 kind : kKinds)
            open.push_back(windows.Open(kind));
        for (const size_t index : order)
            Windows::Close(open[index]);
        orders++;
    } while (std::next_permutation(order.begin(), order.end()));
    printf("closed in %d orders\n", orders);
}

bool IsActive(int32 index) {
    BWindow* window = be_app->WindowAt(index);
    if (window == nullptr || !window->Lock())
        return false;
    const bool isActive = window->IsActive();
    window->Unlock();
    return isActive;
}

} // namespace

bool WaitForActive(int32 index) {
    const bool isActive = server::testing::WaitUntil([index] {
        for (int32 i = 0; i < be_app->CountWindows(); i++) {
            if (IsActive(i) != (i == index))
                return false;
        }
        return true;
    });
    for (int32 i = 0; i < be_app->CountWindows(); i++)
        server::testing::WaitUntilIdle(be_app->WindowAt(i));
    return isActive;
}

int32 OpenAndCloseInEveryOrder(void*) {
    Windows windows;
    OpenEachKind(windows);
    SwitchAround(windows);
    CloseInEveryOrder(windows);
    fflush(stdout);
    return 0;
}
