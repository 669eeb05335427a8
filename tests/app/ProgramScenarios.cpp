// The whole program, run as a child of the tests: the real application, driven through its windows.

#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "support/AlertWatch.h"
#include "support/ChildProgram.h"
#include "views/NPBoardListView.h"
#include "views/NPThreadView.h"

#include "server/Testing.h"

#include <AppDefs.h>
#include <Application.h>
#include <OS.h>
#include <Window.h>

#include <cstdio>
#include <functional>
#include <string>

using namespace server::testing;

namespace {

NPWindow* FirstWindow() {
    for (int32 i = 0; i < be_app->CountWindows(); i++) {
        if (NPWindow* window = dynamic_cast<NPWindow*>(be_app->WindowAt(i)))
            return window;
    }
    return nullptr;
}

NPWindow* WaitForWindow() {
    WaitUntil([] { return FirstWindow() != nullptr; });
    NPWindow* window = FirstWindow();
    WaitUntilIdle(window);
    return window;
}

void Do(NPWindow* window, const std::function<void()>& work) {
    if (!window->Lock())
        return;
    work();
    window->Unlock();
}

void Print(NPWindow* window) {
    Do(window, [&] {
        const BRect frame = window->Frame();
        printf("frame %g %g %g %g\n", frame.left, frame.top, frame.right, frame.bottom);
        auto* threads = static_cast<NPThreadView*>(window->FindView("thread"))->List();
        for (int32 i = 0; i < threads->CountColumns(); i++)
            printf("column %d %g\n", i, threads->ColumnWidth(i));
        auto* boards = static_cast<NPBoardListView*>(window->FindView("board list"));
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
        auto* threads = static_cast<NPThreadView*>(window->FindView("thread"))->List();
        threads->SetColumnWidth(kColumnTitle, 333);
    });
    WaitUntilIdle(window);
    CloseByUser(window);
}

int32 Drive(void* name) {
    const std::string scenario = static_cast<const char*>(name);
    if (scenario == "program with an alert") {
        printf("alert %s\n", WaitForAlert().c_str());
        DismissAlert();
    }
    NPWindow* window = WaitForWindow();
    if (window == nullptr)
        return 1;
    Print(window);
    if (scenario == "arranged program")
        Arrange(window);
    else
        be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

} // namespace

int RunTestProgram(const char* name) {
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    NPApp application;
    resume_thread(spawn_thread(Drive, "driver", B_NORMAL_PRIORITY, const_cast<char*>(name)));
    application.Run();
    puts("ended");
    return 0;
}
