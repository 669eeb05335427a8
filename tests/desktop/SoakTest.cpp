// Random hands on the program, for as many seconds as $DESKTOP_SOAK says. The seed is printed;
// $DESKTOP_SEED sets it.
#include "desktop/Desktop.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <random>

namespace {

constexpr int kShort = 5; // seconds, in everyday runs
constexpr int kActionsBetweenLooks = 40;
constexpr int kLongEnough = 500; // milliseconds for the last frame, on a machine with other work
constexpr XClient::Frame kSmall = {40, 60, 640, 480};

int FromEnvironment(const char* name, int otherwise) {
    const char* value = getenv(name);
    return value != nullptr ? atoi(value) : otherwise;
}

class DesktopSoak : public Desktop {
public:
    void ChooseBoard() { ClickAt(70, 58 + 20 * Below(12), 1, 1 + Below(2)); }
    void ChooseThread() { ClickAt(260, 58 + 20 * Below(4), 1, 2); }
    void Reload() { ClickAt(Width() - 78, 204); }
    void ReloadFromScratch() { ClickAt(Width() - 50, 204); }
    void SortByColumn() { ClickAt(140 + Below(500), 36); }
    void ClickInTheThread() { ClickAt(140 + Below(400), 240 + Below(300), 1, 1 + Below(2)); }
    void OpenAMenu() {
        ClickAt(140 + Below(400), 100 + Below(400), 3);
        Press("Down");
        Press(Below(3) == 0 ? "Return" : "Escape");
    }
    void OpenTheMenuBar() {
        ClickAt(30 + Below(200), 12);
        Press("Escape");
        Press("Escape");
    }
    void Scroll() { Press(Any({"Next", "Prior", "Home", "End", "Down", "Up", "Tab"})); }
    void Resize() {
        fDesk.Resize(fWindow, 500 + Below(700), 350 + Below(500));
        if (Below(2) == 0)
            fDesk.MoveTo(fWindow, Below(200), Below(200));
    }
    void ResizeQuickly() {
        for (int i = 0; i < 10; i++) {
            fDesk.Resize(fWindow, 500 + Below(700), 350 + Below(500));
            Pause(20);
        }
    }
    void Maximise() { fDesk.Maximise(fWindow, Below(2) == 0); }
    void SwitchNetwork() {
        Press("l", true);
        Press("l", true);
    }
    void OpenSecondWindow() { Press("n", true); }
    void Search() {
        Press("s", true);
        Pause(100);
        fDesk.Key("a");
        Press("Return");
    }
    void Bookmarks() { Press("b", true); }
    void Write() {
        ClickAt(Width() - 22, 204);
        Pause(300);
        for (const char* key : {"t", "e", "s", "t"})
            fDesk.Key(key);
        if (Below(2) == 0)
            Press("Return", true);
    }
    // What stands before the window: alerts answer to a key, other windows to the manager.
    void CloseOthers() {
        for (XClient::Window window : fDesk.Managed()) {
            if (window == fWindow)
                continue;
            fDesk.Activate(window);
            Pause(30);
            fDesk.Key("Return");
            fDesk.Close(window);
            Pause(30);
        }
        fDesk.Activate(fWindow);
        Pause(30);
    }

    bool IsAlone() {
        const auto windows = fDesk.Managed();
        return windows.size() == 1 && windows.front() == fWindow;
    }

    void Act() {
        static constexpr void (DesktopSoak::*kActions[])() = {&DesktopSoak::ChooseBoard,
                                                              &DesktopSoak::ChooseThread,
                                                              &DesktopSoak::ChooseThread,
                                                              &DesktopSoak::Reload,
                                                              &DesktopSoak::ReloadFromScratch,
                                                              &DesktopSoak::SortByColumn,
                                                              &DesktopSoak::ClickInTheThread,
                                                              &DesktopSoak::ClickInTheThread,
                                                              &DesktopSoak::OpenAMenu,
                                                              &DesktopSoak::OpenTheMenuBar,
                                                              &DesktopSoak::Scroll,
                                                              &DesktopSoak::Scroll,
                                                              &DesktopSoak::Resize,
                                                              &DesktopSoak::ResizeQuickly,
                                                              &DesktopSoak::Maximise,
                                                              &DesktopSoak::SwitchNetwork,
                                                              &DesktopSoak::OpenSecondWindow,
                                                              &DesktopSoak::Search,
                                                              &DesktopSoak::Bookmarks,
                                                              &DesktopSoak::Write,
                                                              &DesktopSoak::CloseOthers,
                                                              &DesktopSoak::CloseOthers};
        (this->*kActions[Below(static_cast<int>(std::size(kActions)))])();
        Pause(Below(80));
    }

    // Everything else closed, the window answers to being resized with a picture that is whole.
    void Look() {
        fDesk.Key("Escape");
        ASSERT_TRUE(Eventually([&] {
            CloseOthers();
            return IsAlone();
        })) << fProgram->Errors();
        fDesk.Maximise(fWindow, false);
        PointAside();
        WaitForQuiet();
        // What a larger window brought into sight stays there: only the second time is the same.
        for (const XClient::Frame& frame : {kUsual, kSmall, kUsual}) {
            ResizeTo(fWindow, frame);
            Settled(fWindow);
        }
        const Picture usual = Settled(fWindow, kLongEnough);
        ResizeTo(fWindow, kSmall);
        const Picture small = Settled(fWindow, kLongEnough);
        ResizeTo(fWindow, kUsual);
        EXPECT_TRUE(Shows(fWindow, usual));
        ResizeTo(fWindow, kSmall);
        EXPECT_TRUE(Shows(fWindow, small));
        if (!HasFailure())
            return;
        Keep(usual, "usual");
        Keep(small, "small");
        Keep(fDesk.PictureOf(fWindow), "seen");
        const std::string trace = fProgram->Errors();
        printf("%s\n", trace.substr(trace.size() - std::min<size_t>(trace.size(), 3000)).c_str());
    }

    // What a post or a reload still brings is no business of a look: each leaves a trace.
    void WaitForQuiet() {
        size_t last = 0;
        for (int quiet = 0; quiet < 10; quiet++) {
            Pause(50);
            const size_t now = fProgram->Errors().size();
            if (now != last)
                quiet = 0;
            last = now;
        }
    }

    void End() {
        fDesk.Close(fWindow);
        EXPECT_EQ(0, fProgram->Wait());
        const std::string errors = fProgram->Errors();
        const size_t report = errors.find("Sanitizer");
        if (report != errors.npos)
            ADD_FAILURE() << errors.substr(report > 500 ? report - 500 : 0, 8000);
    }

protected:
    int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(fRandom); }
    const char* Any(std::initializer_list<const char*> names) {
        return *(names.begin() + Below(static_cast<int>(names.size())));
    }
    int Width() { return fDesk.FrameOf(fWindow).width; }
    void Press(const char* key, bool control = false) {
        fDesk.Key(key, control);
        Pause(30);
    }

    const int fSeed =
        FromEnvironment("DESKTOP_SEED", static_cast<int>(std::random_device()() >> 1));
    std::mt19937 fRandom{static_cast<unsigned>(fSeed)};
};

} // namespace

TEST_F(DesktopSoak, RandomHandsFindNothing) {
    const auto length = std::chrono::seconds(FromEnvironment("DESKTOP_SOAK", kShort));
    const auto end = std::chrono::steady_clock::now() + length;
    SCOPED_TRACE("DESKTOP_SEED=" + std::to_string(fSeed));
    Start();
    OpenThread();
    int actions = 0;
    while (!HasFailure() && std::chrono::steady_clock::now() < end) {
        for (int i = 0; i < kActionsBetweenLooks && !HasFailure(); i++, actions++)
            Act();
        Look();
    }
    if (HasFailure())
        Keep(Screen(), "soak");
    End();
    printf("%d actions\n", actions);
}
