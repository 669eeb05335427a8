// The program itself, as NPAppTest runs it: in a process of its own, driven by a thread beside it.
#include "support/ChildProgram.h"

#include "app/Messages.h"
#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "support/AlertWatch.h"

#include "server/Testing.h"

#include <OS.h>

#include <cstdio>
#include <cstring>

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

bool WaitForActive(int32 index) {
    return server::testing::WaitUntil(
        [&] { return WithWindow(index, [](BWindow* window) { return window->IsActive(); }); });
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
    WaitForWindows(1);
    BMessenger(nullptr, be_app->WindowAt(0)).SendMessage(kMsgNewWindow);
    if (WaitForWindows(2) && WaitForActive(1))
        PrintFrame(1);
    for (const int32 next : {0, 1, 0}) {
        be_app_messenger.SendMessage(kMsgNextWindow);
        if (WaitForActive(next))
            printf("active %d\n", next);
    }
    Close(0);
    if (WaitForWindows(1))
        printf("one left\n");
    Close(0);
    return 0;
}

int32 ReadTheAlert(void*) {
    printf("%s", WaitForAlert().c_str());
    fflush(stdout);
    DismissAlert();
    return 0;
}

int RunWith(int32 (*driver)(void*)) {
    NPApp application;
    resume_thread(spawn_thread(driver, "driver", B_NORMAL_PRIORITY, nullptr));
    application.Run();
    return 0;
}

} // namespace

int RunTestProgram(const char* name) {
    if (strcmp(name, "start") == 0)
        return RunWith(StartAndQuit);
    return RunWith(strcmp(name, "windows") == 0 ? OpenAndClose : ReadTheAlert);
}
