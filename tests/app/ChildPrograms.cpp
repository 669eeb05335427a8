// The program itself, as NPAppTest runs it: in a process of its own, driven by a thread beside it.
#include "WindowsDriver.h"
#include "support/ChildProgram.h"

#include "app/ChildDrivers.h"
#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "settings/Habits.h"
#include "support/AlertWatch.h"
#include "views/NPBoardListView.h"
#include "views/NPThreadView.h"

#include "server/Testing.h"

#include <OS.h>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

NPWindow* WaitForBrowser() {
    NPWindow* found = nullptr;
    server::testing::WaitUntil([&] {
        for (int32 i = 0; i < be_app->CountWindows() && found == nullptr; i++)
            found = dynamic_cast<NPWindow*>(be_app->WindowAt(i));
        return found != nullptr;
    });
    server::testing::WaitUntilIdle(found);
    return found;
}

void Do(BWindow* window, const std::function<void()>& work) {
    if (!window->Lock())
        return;
    work();
    window->Unlock();
}

namespace {

bool WaitForWindows(int32 count) {
    return server::testing::WaitUntil([&] { return be_app->CountWindows() == count; });
}

// Window numbers are those of the order of opening.
template <typename Call>
auto WithWindow(int32 index, Call call) -> decltype(call(nullptr)) {
    BWindow* window = be_app->WindowAt(index);
    if (window == nullptr || !window->Lock())
        return {};
    const auto result = call(window);
    window->Unlock();
    return result;
}

void PrintFrame(int32 index) {
    const BRect frame = WithWindow(index, [](BWindow* window) { return window->Frame(); });
    printf("frame %g %g %g %g\n", frame.left, frame.top, frame.Width(), frame.Height());
}

void Close(int32 index) {
    BMessenger(nullptr, be_app->WindowAt(index)).SendMessage(B_QUIT_REQUESTED);
}

int32 StartAndQuit(void*) {
    if (WaitForWindows(1))
        PrintFrame(0);
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 OpenAndClose(void*) {
    if (!WaitForWindows(1) || !WaitForActive(0))
        return 0;
    BMessenger(nullptr, be_app->WindowAt(0)).SendMessage(kMsgNewWindow);
    if (WaitForWindows(2) && WaitForActive(1))
        PrintFrame(1);
    // One like a pop-up, which never has the keyboard
    auto* popUp =
        new BWindow(BRect(0, 0, 9, 9), "", B_BORDERED_WINDOW, B_AVOID_FOCUS | B_NOT_CLOSABLE);
    popUp->Show();
    for (const int32 next : {0, 1, 0}) {
        be_app_messenger.SendMessage(kMsgNextWindow);
        if (WaitForActive(next))
            printf("active %d\n", next);
    }
    BMessenger(popUp).SendMessage(B_QUIT_REQUESTED);
    Close(0);
    if (WaitForWindows(1))
        printf("one left\n");
    Close(0);
    return 0;
}

int32 ChangeASetting(void*) {
    WaitForBrowser();
    be_app_messenger.SendMessage(kMsgToggleClick);
    return 0;
}

int32 ReadTheAlert(void*) {
    printf("%s", WaitForAlert().c_str());
    fflush(stdout);
    DismissAlert();
    return 0;
}

void PrintOpen() {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        auto* window = dynamic_cast<NPWindow*>(be_app->WindowAt(i));
        server::testing::WaitUntilIdle(window);
        Do(window, [&] {
            const OpenWindow open = window->AsOpen();
            printf("%s %g %g %s%s\n", open.isThreadOnly ? "thread" : "browser", open.frame.left,
                   open.frame.top, open.title.c_str(), open.threadDat.c_str());
        });
    }
}

int32 LeaveOpen(void*) {
    NPWindow* first = WaitForBrowser();
    static_cast<NPApp*>(be_app)->Settings()->PutAt(kReopensWindows, 0, true);
    BMessage open(kMsgThreadInWindowCached);
    open.AddString("url", "http://h.example/news/index.html");
    open.AddString("dat", "1700000000.dat");
    open.AddString("title", "題");
    BMessenger(first).SendMessage(&open);
    if (WaitForWindows(2)) {
        auto* second = static_cast<NPWindow*>(be_app->WindowAt(1));
        Do(second, [&] { second->MoveTo(211, 122); });
        server::testing::WaitUntil([&] {
            bool isNamed = false;
            Do(second, [&] { isNamed = second->AsOpen().title == "題"; });
            return isNamed;
        });
    }
    PrintOpen();
    // One that waits for an answer is open, too.
    BMessenger(first).SendMessage(kMsgReloadThread);
    WaitForAlert();
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

// Before the application hears of either.
int32 CloseBothAtOnce(void*) {
    if (!WaitForWindows(2))
        return 0;
    for (int32 i = 0; i < 2; i++)
        Do(be_app->WindowAt(i), [i] { be_app->WindowAt(i)->MoveTo(300, 300); });
    be_app->Lock();
    Close(0);
    Close(1);
    WaitForWindows(0);
    be_app->Unlock();
    return 0;
}

int32 FindTheLast(void*) {
    WaitForBrowser();
    printf("%d ", be_app->CountWindows());
    PrintFrame(0);
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 FindOpen(void*) {
    WaitForWindows(2);
    PrintOpen();
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

// What the next start must find again.
void Print(NPWindow* window) {
    Do(window, [&] {
        const BRect frame = window->Frame();
        printf("frame %g %g %g %g\n", frame.left, frame.top, frame.right, frame.bottom);
        auto* threads = static_cast<NPThreadView*>(window->FindView("thread"))->List();
        for (int32 i = 0; i < threads->CountColumns(); i++)
            printf("column %d %g\n", i, threads->ColumnWidth(i));
        auto* boards = static_cast<NPBoardListView*>(window->FindView("board list"));
        printf("boards %g\n", boards->ColumnWidth(2));
        for (int32 i = 0; i < boards->CountCategories(); i++)
            printf("category %s %d\n", boards->CategoryNameAt(i), boards->CategoryExpandedAt(i));
    });
}

void Arrange(NPWindow* window) {
    Do(window, [&] {
        window->MoveTo(80, 90);
        window->ResizeTo(700, 420);
        auto* boards = static_cast<NPBoardListView*>(window->FindView("board list"));
        boards->SetExpanded(boards->FullListItemAt(0), true);
        boards->SetColumnWidth(2, 177);
        auto* threads = static_cast<NPThreadView*>(window->FindView("thread"))->List();
        threads->SetColumnWidth(kColumnTitle, 333);
    });
    server::testing::WaitUntilIdle(window);
    server::testing::CloseByUser(window);
}

int32 ArrangeAndClose(void*) {
    NPWindow* window = WaitForBrowser();
    Print(window);
    Arrange(window);
    return 0;
}

int32 PrintAndQuit(void*) {
    Print(WaitForBrowser());
    be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 ReadTheAlertAndQuit(void*) {
    ReadTheAlert(nullptr);
    return PrintAndQuit(nullptr);
}

int RunWith(int32 (*driver)(void*)) {
    NPApp application;
    resume_thread(spawn_thread(driver, "driver", B_NORMAL_PRIORITY, nullptr));
    application.Run();
    return 0;
}

const std::map<std::string, int32 (*)(void*)> kDrivers = {
    {"start", StartAndQuit},
    {"windows", OpenAndClose},
    {"alert", ReadTheAlert},
    {"change a setting", ChangeASetting},
    {"leave open", LeaveOpen},
    {"find open", FindOpen},
    {"close both at once", CloseBothAtOnce},
    {"find the last", FindTheLast},
    {"arrange", ArrangeAndClose},
    {"report", PrintAndQuit},
    {"alert, report", ReadTheAlertAndQuit},
    {"every order", OpenAndCloseInEveryOrder},
    {"update", UpdateBoardMenu},
    {"quit in the update", QuitInTheUpdate},
    {"quit with a text", QuitWithAText},
    {"quit under an alert", QuitUnderAnAlert},
    {"choose font", ChooseFont},
    {"print font", PrintFont},
};

} // namespace

int RunTestProgram(const char* name) {
    return RunWith(kDrivers.at(name));
}
