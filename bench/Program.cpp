#include "Measure.h"
#include "Parts.h"
#include "Scratch.h"

#include "app/NPApp.h"
#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "server/Testing.h"
#include "views/NPArticleView.h"
#include "views/NPProgressView.h"
#include "views/NPThreadView.h"

#include <OS.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr const char* kNews = "http://board.example/news/";
constexpr const char* kToday = "http://news.today.example/news/";
constexpr const char* kMany = "http://many.example/many/";
constexpr bigtime_t kPatience = 30000000; // microseconds
constexpr bigtime_t kPause = 10000;       // looking at the window costs time too
constexpr int kBoardRounds = 5;

// The program's window, driven from outside, as the board list and the thread list would.
class Driver {
public:
    // `url`: the board of the long threads; `gate`: a process whose time counts as the program's.
    Driver(const char* url, pid_t gate) : fUrl(url), fGate(gate) {
        server::testing::WaitUntil([&] {
            fWindow = dynamic_cast<NPWindow*>(be_app->WindowAt(0));
            return fWindow != nullptr;
        });
        fMessenger = BMessenger(fWindow);
        server::testing::WaitUntilIdle(fWindow);
    }

    // The processor time that the whole program takes until all of it is on the screen.
    double OpenThread(int index, uint32 code) {
        BMessage message(code);
        message.AddString("dat", (LongThreadKey(index) + ".dat").c_str());
        message.AddString("url", fUrl);
        const std::string title =
            LongThreadTitle(index) + " (" + std::to_string(kLongThreadPosts) + ")";
        return _Measure(&message,
                        [&] { return title == _Find<NPArticleView>("article pane")->GetTitle(); });
    }
    double OpenBoard(const char* url, int32 threads) {
        BMessage message(kMsgBoardSelected);
        message.AddString("board", "ニュース");
        message.AddString("url", url);
        return _Measure(&message, [&] {
            return _Find<NPThreadView>("thread")->List()->FullListCountItems() == threads;
        });
    }

private:
    template <class View>
    View* _Find(const char* name) {
        return static_cast<View*>(fWindow->FindView(name));
    }
    template <class Predicate>
    double _Measure(BMessage* message, Predicate isShown) {
        const double start = _Time();
        fMessenger.SendMessage(message);
        _WaitUntil(isShown);
        _WaitUntil([this] { return *_Find<NPProgressView>("progress")->Text() == '\0'; });
        server::testing::WaitUntilIdle(fWindow);
        return _Time() - start;
    }
    double _Time() const { return ProcessTime() + (fGate == 0 ? 0 : ProcessTime(fGate)); }
    template <class Predicate>
    void _WaitUntil(Predicate holds) {
        const bigtime_t end = system_time() + kPatience;
        while (!_Locked(holds)) {
            if (system_time() > end) {
                fprintf(stderr, "bench: the program did not get on\n");
                std::_Exit(1);
            }
            snooze(kPause);
        }
    }
    template <class Predicate>
    bool _Locked(Predicate holds) {
        if (!fMessenger.LockTarget())
            return false;
        const bool result = holds();
        fWindow->Unlock();
        return result;
    }

    const char* const fUrl;
    const pid_t fGate;
    NPWindow* fWindow = nullptr;
    BMessenger fMessenger;
};

void MeasureThreads(Driver& driver) {
    PrintResult("cold", driver.OpenThread(0, kMsgThreadSelected));
    double best = driver.OpenThread(1, kMsgThreadSelected);
    PrintResult("memory", static_cast<double>(SetSize()));
    for (int i = 2; i < kLongThreads; i++)
        best = std::min(best, driver.OpenThread(i, kMsgThreadSelected));
    PrintResult("network", best);
    best = driver.OpenThread(0, kMsgThreadSelectedCached);
    for (int i = 1; i < kLongThreads; i++)
        best = std::min(best, driver.OpenThread(i, kMsgThreadSelectedCached));
    PrintResult("cache", best);
}

void MeasureBoards(Driver& driver) {
    double best = 1e9;
    for (int i = 0; i < kBoardRounds; i++) {
        driver.OpenBoard(kNews, kLongThreads);
        best = std::min(best, driver.OpenBoard(kMany, kManyThreads));
    }
    PrintResult("board", best);
}

void MeasureThreadsByGate(Driver& driver) {
    double best = 1e9;
    for (int i = 0; i < kLongThreads; i++)
        best = std::min(best, driver.OpenThread(i, kMsgThreadSelected));
    PrintResult("pair", best);
}

int32 Run(void* gateProcess) {
    const auto gate = static_cast<pid_t>(reinterpret_cast<intptr_t>(gateProcess));
    Driver driver(gate == 0 ? kNews : kToday, gate);
    if (gate != 0) {
        MeasureThreadsByGate(driver);
    } else {
        MeasureThreads(driver);
        MeasureBoards(driver);
    }
    fflush(stdout);
    std::_Exit(0);
}

} // namespace

int RunProgram(const Arguments& arguments) {
    const intptr_t gate = arguments.empty() ? 0 : atoi(arguments[0].c_str());
    NPApp application;
    resume_thread(spawn_thread(Run, "driver", B_NORMAL_PRIORITY, reinterpret_cast<void*>(gate)));
    application.Run();
    return 0;
}
