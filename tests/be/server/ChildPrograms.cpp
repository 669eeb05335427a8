// The small programs that ApplicationTest runs, each in a process of its own.
#include "support/ChildProgram.h"

#include "server/Server.h"
#include "server/Testing.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Application.h>
#include <Message.h>
#include <OS.h>
#include <Roster.h>
#include <View.h>
#include <Window.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <unistd.h>

namespace {

void Say(const std::string& line) {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
}

class Program : public BApplication {
public:
    Program() : BApplication("application/x-vnd.Itamori-Child") {}

    void ReadyToRun() override {
        if (fReady)
            fReady(*this);
        else
            Say("ready");
    }
    bool QuitRequested() override {
        if (fSaysAsked)
            Say("quit asked");
        return BApplication::QuitRequested();
    }
    void MessageReceived(BMessage* message) override {
        if (message->what == B_SILENT_RELAUNCH)
            Say("relaunched");
        BApplication::MessageReceived(message);
    }
    void ArgvReceived(int32 argc, char** argv) override {
        for (int32 i = 1; i < argc; i++)
            fArguments += (i > 1 ? std::string(" ") : std::string()) + argv[i];
    }
    void Pulse() override {
        if (fPulses == 3)
            return;
        Say("pulse");
        if (++fPulses < 3)
            return;
        SetPulseRate(0);
        PostMessage(B_QUIT_REQUESTED);
    }

    std::function<void(Program&)> fReady;
    bool fSaysAsked = false;
    std::string fArguments;
    int fPulses = 0;
};

class AskedWindow : public BWindow {
public:
    explicit AskedWindow(int refusals)
        : BWindow(BRect(0, 0, 99, 99), "asked", B_TITLED_WINDOW, 0), fRefusals(refusals) {}

    bool QuitRequested() override {
        if (fRefusals-- > 0) {
            Say("window refused");
            return false;
        }
        Say("window asked");
        return true;
    }

private:
    int fRefusals;
};

// Its thread needs the application while the application waits for it to go.
class LockingWindow : public BWindow {
public:
    LockingWindow() : BWindow(BRect(0, 0, 99, 99), "locking", B_TITLED_WINDOW, 0) {}
    ~LockingWindow() override {
        be_app->Lock();
        Say("window gone");
        be_app->Unlock();
    }
};

int32 HangForever(void*) {
    for (;;)
        snooze(1000000);
}

int32 WaitAtAPort(void* port) {
    int32 code = 0;
    if (read_port(*static_cast<port_id*>(port), &code, nullptr, 0) == B_BAD_PORT_ID)
        Say("port gone");
    return 0;
}

int32 QuitWhenTold(void*) {
    char line[16];
    if (read(STDIN_FILENO, line, sizeof(line)) > 0)
        be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

int32 AskWithAnAlert(void*) {
    auto* alert = new BAlert("title", "text", "OK");
    Say("ready");
    Say("answer " + std::to_string(alert->Go()));
    return 0;
}

port_id sPort = -1;

constexpr const char* kOpensLinks = "opens links";

void Start(thread_func function, void* data = nullptr) {
    resume_thread(spawn_thread(function, "child", B_NORMAL_PRIORITY, data));
}

// What each program does once it runs; the exit status is what the function gives.
int RunWindows(Program& program, int refusals) {
    program.fReady = [refusals](Program&) {
        (new AskedWindow(refusals))->Show();
        Start(QuitWhenTold);
        Say("ready");
    };
    program.Run();
    Say("ended");
    return 0;
}

int RunQuits(Program& program, int status) {
    program.fSaysAsked = true;
    program.fReady = [](Program& self) {
        Say("ready");
        self.PostMessage(B_QUIT_REQUESTED);
    };
    program.Run();
    Say("ended");
    return status;
}

int TellLocale(Program&) {
    char day[32];
    const time_t epoch = 0;
    strftime(day, sizeof(day), "%a %b", gmtime(&epoch));
    char line[64];
    snprintf(line, sizeof(line), "%s %.1f", day, 1.5);
    Say(line);
    return 0;
}

int TellArguments(Program& program) {
    program.fReady = [](Program& self) {
        Say(self.fArguments);
        self.PostMessage(B_QUIT_REQUESTED);
    };
    program.Run();
    return 0;
}

int RunPulses(Program& program) {
    program.fReady = [](Program& self) { self.SetPulseRate(5000); };
    program.Run();
    return 0;
}

int RunAlert(Program& program) {
    program.fReady = [](Program&) { Start(AskWithAnAlert); };
    program.Run();
    return 0;
}

const rgb_color kStripes[] = {make_color(250, 0, 0), make_color(0, 250, 0), make_color(0, 0, 250)};

// Rows of one, two and three pixels in three colours, again and again.
class Stripes : public BView {
public:
    Stripes() : BView(BRect(0, 0, 59, 89), "stripes", B_FOLLOW_ALL, B_WILL_DRAW) {
        SetViewColor(255, 255, 255);
    }
    void Draw(BRect) override {
        for (int row = 0; row < 600; row++) {
            const float top = static_cast<float>(row / 3 * 6 + row % 3 * (row % 3 + 1) / 2);
            SetHighColor(kStripes[row % 3]);
            FillRect(BRect(0, top, 29, top + static_cast<float>(row % 3)));
            FillRect(BRect(30, top, 59, top + static_cast<float>(row % 3)));
        }
    }
};

bool IsStripe(rgb_color color) {
    return std::find(std::begin(kStripes), std::end(kStripes), color) != std::end(kStripes);
}

int32 CheckStripes(void* data) {
    auto* window = static_cast<BWindow*>(data);
    server::testing::WaitUntilIdle(window);
    window->Lock();
    window->ChildAt(0)->ScrollBy(0, 4);
    window->ChildAt(0)->ScrollBy(0, 9);
    window->ChildAt(0)->ScrollBy(0, -1);
    window->Unlock();
    server::testing::WaitUntilIdle(window);
    const server::testing::Picture scrolled = server::testing::Snapshot(window);
    const auto gaps = std::count_if(scrolled.pixels.begin(), scrolled.pixels.end(),
                                    [](rgb_color color) { return !IsStripe(color); });
    window->Lock();
    window->ChildAt(0)->Invalidate();
    window->Unlock();
    server::testing::WaitUntilIdle(window);
    const server::testing::Picture drawn = server::testing::Snapshot(window);
    int wrong = 0;
    for (size_t i = 0; i < drawn.pixels.size(); i++)
        wrong += drawn.pixels[i] != scrolled.pixels[i];
    char line[100];
    snprintf(line, sizeof(line), "scale %g gaps %d wrong %d", drawn.width / 60.0,
             static_cast<int>(gaps), wrong);
    Say(line);
    be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

// Its window is not shown, so that the application leaves it to this thread.
int32 DeleteWindowAtTheEnd(void*) {
    BWindow* window = new BWindow(BRect(0, 0, 99, 99), "late", B_TITLED_WINDOW, 0);
    while (server::Call([] {}))
        snooze(1000);
    window->Quit();
    return 0;
}

int RunStripes(Program& program) {
    program.fReady = [](Program&) {
        auto* window = new BWindow(BRect(100, 100, 159, 189), "stripes", B_TITLED_WINDOW, 0);
        window->AddChild(new Stripes);
        window->Show();
        Start(CheckStripes, window);
    };
    program.Run();
    return 0;
}

// The addresses come in its standard input, a line each.
int32 OpenLinks(void*) {
    for (std::string address; std::getline(std::cin, address);) {
        const char* const arguments[] = {address.c_str()};
        const status_t status = be_roster->Launch("application/x-vnd.Be.URL.http", 1, arguments);
        Say(status == B_OK ? "opened" : status == B_LAUNCH_FAILED ? "failed" : "refused");
    }
    be_app->PostMessage(B_QUIT_REQUESTED);
    return 0;
}

int RunOpenLinks(Program& program) {
    program.fReady = [](Program&) { Start(OpenLinks); };
    program.Run();
    return 0;
}

const std::map<std::string, std::function<int(Program&)>> kPrograms = {
    {"quits", [](Program& program) { return RunQuits(program, 0); }},
    {"waits", [](Program& program) { return RunWindows(program, 0); }},
    {"refuses once", [](Program& program) { return RunWindows(program, 1); }},
    {"never quits", [](Program& program) { return RunWindows(program, 1000); }},
    {"leaves a thread",
     [](Program& program) {
         Start(HangForever);
         return RunQuits(program, 7);
     }},
    {"waits at a port",
     [](Program& program) {
         sPort = create_port(1, "port");
         Start(WaitAtAPort, &sPort);
         return RunQuits(program, 0);
     }},
    {"has a window that locks it",
     [](Program& program) {
         program.fReady = [](Program& self) {
             (new LockingWindow)->Show();
             self.PostMessage(B_QUIT_REQUESTED);
         };
         program.Run();
         return 0;
     }},
    {"has a thread that deletes its window at the end",
     [](Program& program) {
         Start(DeleteWindowAtTheEnd);
         return RunQuits(program, 0);
     }},
    {"tells its locale", TellLocale},
    {"tells its arguments", TellArguments},
    {"pulses", RunPulses},
    {"shows an alert", RunAlert},
    {"draws stripes", RunStripes},
    {kOpensLinks, RunOpenLinks},
};

} // namespace

constexpr const char* kScaledBy = ", scaled by ";
constexpr const char* kLivingIn = ", living in ";

// "NAME, living in FOLDER" has it as home and current folder, and settings by a relative name;
// "NAME, scaled by SCALE" runs the program on a screen of that scale, which has to be known before
// it starts.
int RunTestProgram(const char* name) {
    std::string what = name;
    const size_t at = what.find(kScaledBy);
    if (at != what.npos) {
        setenv("QT_SCALE_FACTOR", what.c_str() + at + strlen(kScaledBy), 1);
        what.resize(at);
    }
    // The desktop's opener is the one that stands in its settings folder, if any.
    if (what == kOpensLinks)
        setenv("PATH", getenv("XDG_CONFIG_HOME"), 1);
    const size_t home = what.find(kLivingIn);
    if (home != what.npos) {
        const std::string folder = what.substr(home + strlen(kLivingIn));
        setenv("HOME", folder.c_str(), 1);
        setenv("XDG_CONFIG_HOME", "relative", 1);
        if (chdir(folder.c_str()) != 0)
            return EXIT_FAILURE;
        what.resize(home);
    }
    Program program;
    return kPrograms.at(what)(program);
}
