#include "app/ApplicationPrivate.h"

#include "app/LooperPrivate.h"
#include "app/WindowList.h"
#include "interface/alerts/AlertPrivate.h"
#include "kernel/Threads.h"
#include "net/EndpointRegistry.h"
#include "server/CursorShapes.h"
#include "server/Desktop.h"
#include "server/Server.h"

#include <Cursor.h>
#include <Message.h>
#include <Path.h>
#include <Roster.h>
#include <Window.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <unistd.h>

BApplication* be_app = nullptr;
BMessenger be_app_messenger;

namespace {

const bigtime_t kLockPatience = 300000;
const bigtime_t kGrace = 1000000; // what threads get to end by themselves

std::atomic<bool> sEnding{false};

std::vector<std::string> Arguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

// What people call the program: "application/x-vnd.Maker-Name" is Name.
std::string NameOf(const std::string& signature) {
    const size_t last = signature.find_last_of("/.-");
    return last == signature.npos ? signature : signature.substr(last + 1);
}

// Threads still run: the process ends without destroying anything under them.
void EndAtOnce(int status, void*) {
    fflush(nullptr);
    _exit(status);
}

} // namespace

bool IsProgramEnding() {
    return sEnding;
}

BApplication::BApplication(const char* signature) : BApplication(signature, nullptr) {}

BApplication::BApplication(const char* signature, status_t* error)
    : BLooper("application"), fPrivate(std::make_unique<Private>(this)) {
    const status_t status = fPrivate->Connect(signature);
    if (error != nullptr)
        *error = status;
    else if (status != B_OK)
        exit(EXIT_FAILURE);
}

BApplication::~BApplication() {
    be_app = nullptr;
    be_app_messenger = BMessenger();
    if (fPrivate->threadsRemain) {
        on_exit(EndAtOnce, nullptr);
        return;
    }
    fPrivate->instance.reset();
    server::Disconnect();
}

status_t BApplication::Private::Connect(const char* appSignature) {
    if (be_app != nullptr || appSignature == nullptr)
        return status = B_BAD_VALUE;
    signature = appSignature;
    instance = std::make_unique<Instance>(signature);
    if (instance->Result() == Instance::Claim::kHandedOver)
        exit(EXIT_SUCCESS);
    if (instance->Result() == Instance::Claim::kRefused) {
        fprintf(stderr, "%s is running already and does not answer\n", signature.c_str());
        return status = B_ALREADY_RUNNING;
    }
    if (!server::Start(NameOf(signature)))
        return status = B_ERROR;
    server::ReadSystemFonts();
    be_app = app;
    be_app_messenger = BMessenger(app);
    ListenToDesktop();
    return status = B_OK;
}

// What the desktop wants becomes a message; nothing here waits for the application.
void BApplication::Private::ListenToDesktop() const {
    const BMessenger target = be_app_messenger;
    instance->Listen([target] { target.SendMessage(B_SILENT_RELAUNCH); });
    server::SetQuitHandler([target] {
        // The application itself may be waiting for an answer.
        DismissAlerts();
        target.SendMessage(B_QUIT_REQUESTED);
    });
    server::SetActivationHandler([target](bool active) {
        BMessage message(B_APP_ACTIVATED);
        message.AddBool("active", active);
        target.SendMessage(&message);
    });
}

status_t BApplication::InitCheck() const {
    return fPrivate->status;
}

void BApplication::Private::SendLaunchMessages() const {
    const std::vector<std::string> arguments = Arguments();
    if (arguments.size() > 1) {
        BMessage message(B_ARGV_RECEIVED);
        message.AddInt32("argc", static_cast<int32>(arguments.size()));
        for (const std::string& argument : arguments)
            message.AddString("argv", argument.c_str());
        app->PostMessage(&message);
    }
    app->PostMessage(B_READY_TO_RUN);
}

thread_id BApplication::Run() {
    if (InitCheck() != B_OK)
        return InitCheck();
    fPrivate->SendLaunchMessages();
    const thread_id thread = BLooper::Run();
    if (thread < 0)
        return thread;
    server::Serve();
    fPrivate->TearDown();
    return thread;
}

void BApplication::Private::TearDown() {
    sEnding = true;
    DismissAlerts();
    EndpointRegistry::Instance().ShutDownAll();
    DeleteAllPorts();
    threadsRemain = JoinThreads(kGrace) > 0;
}

void BApplication::_TaskLooper() {
    BLooper::Private loop(this);
    while (!loop.IsTerminating()) {
        Lock();
        const bigtime_t timeout = fPrivate->TimeToPulse();
        Unlock();
        if (BMessage* message = loop.NextMessage(timeout))
            loop.Dispatch(message);
        Lock();
        if (fPrivate->nextPulse != 0 && system_time() >= fPrivate->nextPulse) {
            fPrivate->nextPulse = system_time() + fPrivate->pulseRate;
            Pulse();
        }
        Unlock();
    }
    fPrivate->QuitWindows(false);
    server::Stop();
}

bigtime_t BApplication::Private::TimeToPulse() const {
    return nextPulse == 0 ? B_INFINITE_TIMEOUT : std::max<bigtime_t>(0, nextPulse - system_time());
}

// The object belongs to whoever made it; only its loop ends.
void BApplication::Quit() {
    if (Thread() >= 0 && Thread() != find_thread(nullptr)) {
        PostMessage(kMsgQuitNow);
        return;
    }
    sEnding = true;
    DismissAlerts();
    BLooper::Private(this).SetTerminating();
    // A window that hangs does not keep the process.
    server::PostLater(kGrace, [] { server::Stop(); });
    if (Thread() < 0)
        server::Stop();
}

bool BApplication::QuitRequested() {
    // Who waits for an answer holds a window that is going to be asked.
    DismissAlerts();
    // Windows may lock the application while they are asked and while they go.
    Unlock();
    const bool mayQuit = fPrivate->QuitWindows(true);
    Lock();
    return mayQuit;
}

namespace {

// A window that was never shown belongs to the thread that made it, which may have gone with the
// lock.
bool LockToQuit(const WindowList::Listed& listed, bool ask) {
    const status_t status = listed.messenger.LockTargetWithTimeout(kLockPatience);
    if (status != B_TIMED_OUT)
        return status == B_OK;
    return ask && WindowList::Contains(listed.window) && listed.window->Thread() >= 0 &&
           listed.messenger.LockTarget();
}

} // namespace

bool BApplication::Private::QuitWindows(bool ask) const {
    for (std::vector<WindowList::Listed> windows = WindowList::AllListed(); !windows.empty();
         windows = WindowList::AllListed()) {
        bool quitOne = false;
        for (const WindowList::Listed& listed : windows) {
            if (!LockToQuit(listed, ask))
                continue;
            BWindow* window = listed.window;
            if (ask && !window->QuitRequested()) {
                window->Unlock();
                return false;
            }
            window->Quit();
            quitOne = true;
        }
        if (!quitOne)
            break;
    }
    return true;
}

void BApplication::Pulse() {}
void BApplication::ReadyToRun() {}
void BApplication::ArgvReceived(int32, char**) {}
void BApplication::AppActivated(bool) {}
void BApplication::RefsReceived(BMessage*) {}

void BApplication::AboutRequested() {}

void BApplication::MessageReceived(BMessage* message) {
    switch (message->what) {
    // No window is locked: one may show an alert.
    case B_SILENT_RELAUNCH: server::BringForward(); break;
    case B_ABOUT_REQUESTED: AboutRequested(); break;
    default: BLooper::MessageReceived(message);
    }
}

namespace {

void DispatchArguments(BApplication* app, const BMessage* message) {
    std::vector<char*> arguments;
    const char* argument = nullptr;
    for (int32 i = 0; message->FindString("argv", i, &argument) == B_OK; i++)
        arguments.push_back(const_cast<char*>(argument));
    const int32 count = static_cast<int32>(arguments.size());
    arguments.push_back(nullptr);
    app->ArgvReceived(count, arguments.data());
}

} // namespace

void BApplication::DispatchMessage(BMessage* message, BHandler* handler) {
    if (handler != this)
        return BLooper::DispatchMessage(message, handler);
    switch (message->what) {
    case B_READY_TO_RUN:
        ReadyToRun();
        fPrivate->launching = false;
        break;
    case B_ARGV_RECEIVED: DispatchArguments(this, message); break;
    case B_REFS_RECEIVED: RefsReceived(message); break;
    case B_PULSE: Pulse(); break;
    case B_APP_ACTIVATED: {
        bool active = false;
        message->FindBool("active", &active);
        AppActivated(active);
        break;
    }
    default: BLooper::DispatchMessage(message, handler);
    }
}

void BApplication::ShowCursor() {
    if (fPrivate->cursorHidden > 0 && --fPrivate->cursorHidden == 0)
        server::SetCursorHidden(false);
}

void BApplication::HideCursor() {
    if (++fPrivate->cursorHidden == 1)
        server::SetCursorHidden(true);
}

void BApplication::ObscureCursor() {}
bool BApplication::IsCursorHidden() const {
    return fPrivate->cursorHidden > 0;
}

void BApplication::SetCursor(const void* cursorData) {
    const BCursor cursor(cursorData);
    SetCursor(&cursor);
}

void BApplication::SetCursor(const BCursor* cursor, bool) {
    if (cursor == nullptr || cursor->InitCheck() == B_OK)
        server::SetApplicationCursor(cursor);
}

int32 BApplication::CountWindows() const {
    return static_cast<int32>(WindowList::All().size());
}

BWindow* BApplication::WindowAt(int32 index) const {
    const std::vector<BWindow*> windows = WindowList::All();
    return index >= 0 && static_cast<size_t>(index) < windows.size()
               ? windows[static_cast<size_t>(index)]
               : nullptr;
}

int32 BApplication::CountLoopers() const {
    return CountWindows();
}
BLooper* BApplication::LooperAt(int32 index) const {
    return WindowAt(index);
}
bool BApplication::IsLaunching() const {
    return fPrivate->launching;
}
const char* BApplication::Signature() const {
    return fPrivate->signature.c_str();
}

status_t BApplication::GetAppInfo(app_info* info) const {
    if (info == nullptr)
        return B_BAD_VALUE;
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path) - 1);
    if (length <= 0)
        return B_ERROR;
    path[length] = 0;
    info->thread = Thread();
    info->team = static_cast<team_id>(getpid());
    snprintf(info->signature, sizeof(info->signature), "%s", Signature());
    return get_ref_for_path(path, &info->ref);
}

void BApplication::SetPulseRate(bigtime_t rate) {
    fPrivate->pulseRate = std::max<bigtime_t>(0, rate);
    fPrivate->nextPulse = rate > 0 ? system_time() + rate : 0;
    // The loop may be waiting with the old rate.
    if (Thread() >= 0 && Thread() != find_thread(nullptr))
        PostMessage('_WAK');
}
