// The program on a real desktop: an X server, a window manager, a server of boards and other
// clients, driven by the events that a user's hands cause. After each step the pixels on the screen
// are compared.
#include "desktop/Process.h"
#include "desktop/XClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;
using Picture = XClient::Picture;

constexpr uint32_t kLinkColor = 0x0000ff;
constexpr int kRounds = 10;
constexpr XClient::Frame kUsual = {40, 60, 900, 620};
constexpr XClient::Frame kOther = {40, 60, 700, 500};

std::string Programs() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::string ScratchFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "desktop-XXXXXX").string();
    return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

// How many pixels two pictures differ in; −1 if they are of different sizes.
int Differences(const Picture& one, const Picture& other) {
    if (one.width != other.width || one.height != other.height)
        return -1;
    int count = 0;
    for (size_t i = 0; i < one.pixels.size(); i++)
        count += one.pixels[i] != other.pixels[i] ? 1 : 0;
    return count;
}

bool IsPlain(const Picture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](uint32_t pixel) { return pixel == picture.pixels.front(); });
}

// For people to look at: a file NAME.ppm in the folder $DESKTOP_PICTURES, if there is one.
void Keep(const Picture& picture, const std::string& name) {
    const char* folder = getenv("DESKTOP_PICTURES");
    if (folder == nullptr)
        return;
    std::ofstream file(std::string(folder) + "/" + name + ".ppm", std::ios::binary);
    file << "P6 " << picture.width << " " << picture.height << " 255\n";
    for (const uint32_t pixel : picture.pixels) {
        for (const int shift : {16, 8, 0})
            file.put(static_cast<char>(pixel >> shift));
    }
}

// An X server with a window manager and the sample boards, for all rounds.
class Desktop : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        sServer = new Process({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x960x24"});
        const std::string number = sServer->FirstLine();
        ASSERT_FALSE(number.empty()) << "no Xvfb: " << sServer->Errors();
        sDisplay = ":" + number;
        sManager = new Process({"openbox"}, {{"DISPLAY", sDisplay}});
        sBoards = new Process({Programs() + "/bbsd"});
        sPort = sBoards->FirstLine();
        ASSERT_FALSE(sPort.empty()) << sBoards->Errors();
    }

    static void TearDownTestSuite() {
        delete sBoards;
        delete sManager;
        delete sServer;
    }

    void SetUp() override {
        ASSERT_TRUE(fDesk.IsConnected());
        ASSERT_TRUE(Eventually([&] { return fDesk.HasManager(); })) << "no openbox";
        const std::string copy = fFolder + "/itamori";
        std::filesystem::copy_file(Programs() + "/itamori", copy);
    }

    void TearDown() override { std::filesystem::remove_all(fFolder); }

    // The keyboard library reads replies of the X server by their length, not up to a zero byte:
    // that is no error, but a strict check of strings takes it for one.
    Process::Environment Settings() const {
        return {{"DISPLAY", sDisplay},
                {"QT_QPA_PLATFORM", "xcb"},
                {"XDG_CONFIG_HOME", fFolder + "/settings"},
                {"LC_ALL", "C.UTF-8"},
                {"ASAN_OPTIONS", "detect_stack_use_after_return=1"}};
    }

    // A window that the manager has shown since, with the keyboard.
    XClient::Window NewWindow(const std::vector<XClient::Window>& before) {
        XClient::Window fresh = 0;
        Eventually([&] {
            for (XClient::Window window : fDesk.Managed()) {
                if (std::find(before.begin(), before.end(), window) == before.end())
                    fresh = window;
            }
            return fresh != 0 && fDesk.Active() == fresh;
        });
        return fresh;
    }

    Picture Screen() { return fDesk.PictureOf(fDesk.Root()); }

    // What stands there once it has stopped changing.
    Picture Settled(XClient::Window window) {
        Picture last = fDesk.PictureOf(window);
        Clock::time_point since = Clock::now();
        Eventually([&] {
            Picture next = fDesk.PictureOf(window);
            if (next != last || IsPlain(next))
                since = Clock::now();
            last = std::move(next);
            return Clock::now() - since > std::chrono::milliseconds(60);
        });
        return last;
    }

    ::testing::AssertionResult Shows(XClient::Window window, const Picture& expected) {
        Picture seen;
        if (Eventually([&] { return (seen = fDesk.PictureOf(window)) == expected; }))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << seen.width << " x " << seen.height << " instead of " << expected.width << " x "
               << expected.height << ", " << Differences(seen, expected) << " pixels differ";
    }

    void ResizeTo(XClient::Window window, const XClient::Frame& frame) {
        fDesk.Resize(window, frame.width, frame.height);
        EXPECT_TRUE(Eventually([&] {
            const XClient::Frame now = fDesk.FrameOf(window);
            return now.width == frame.width && now.height == frame.height;
        }));
    }

    const std::string fFolder = ScratchFolder();
    XClient fDesk{sDisplay};

    static inline Process* sServer = nullptr;
    static inline Process* sManager = nullptr;
    static inline Process* sBoards = nullptr;
    static inline std::string sDisplay;
    static inline std::string sPort;
};

// One run of the program, from its start to its end.
class DesktopRound : public Desktop {
public:
    void Start() {
        std::filesystem::remove_all(fFolder + "/settings");
        Process seed({Programs() + "/demo_seed", fFolder, sPort});
        ASSERT_EQ(0, seed.Wait()) << seed.Errors();
        fProgram.emplace(std::vector<std::string>{fFolder + "/itamori"}, Settings());
        fWindow = NewWindow({});
        ASSERT_NE(0u, fWindow) << fProgram->Errors();
        fDesk.MoveTo(fWindow, kUsual.x, kUsual.y);
        ResizeTo(fWindow, kUsual);
        ASSERT_FALSE(IsPlain(Settled(fWindow)));
    }

    // A point of the window, on the screen.
    XClient::Point At(int x, int y) {
        const XClient::Frame frame = fDesk.FrameOf(fWindow);
        return {frame.x + x, frame.y + y};
    }

    void PointAside() { fDesk.PointAt(1270, 950); }

    // The window once it differs from what it was; the pointer is put aside, where it changes
    // nothing.
    Picture Changed(const Picture& before) {
        PointAside();
        EXPECT_TRUE(Eventually([&] { return fDesk.PictureOf(fWindow) != before; }));
        return Settled(fWindow);
    }

    void DoubleClick(int x, int y) {
        const XClient::Point point = At(x, y);
        fDesk.Click(point.x, point.y, 1, 2);
    }

    void OpenThread() {
        const Picture closed = Settled(fWindow);
        const XClient::Point category = At(11, 58);
        fDesk.Click(category.x, category.y);
        const Picture open = Changed(closed);
        DoubleClick(70, 78);
        const Picture board = Changed(open);
        DoubleClick(260, 58);
        Changed(board);
        ASSERT_TRUE(Eventually([&] { return FindLink(&fLink); }))
            << "no reference is shown, active is " << fDesk.Active() << " of " << fWindow << "\n"
            << fProgram->Errors();
        fUsual = Settled(fWindow);
    }

    bool FindLink(XClient::Point* point) {
        const Picture picture = fDesk.PictureOf(fWindow);
        for (int y = 240; y < picture.height; y++) {
            for (int x = 130; x < picture.width; x++) {
                if (picture.At(x, y) == kLinkColor) {
                    *point = {x - 10, y};
                    return true;
                }
            }
        }
        return false;
    }

    // What it shows once it has handled all that came before: the answer to a key comes later.
    Picture WhenAnswered() {
        for (const char* key : {"Next", "Prior"}) {
            const Picture before = Settled(fWindow);
            fDesk.Key(key);
            EXPECT_TRUE(Eventually([&] { return fDesk.PictureOf(fWindow) != before; }));
        }
        return Settled(fWindow);
    }

    // A window that is alive answers a key with other pixels, and the opposite key with the old
    // ones.
    void ExpectAlive(const Picture& expected) {
        ASSERT_TRUE(Shows(fWindow, expected));
        fDesk.Key("Next");
        EXPECT_TRUE(Eventually([&] { return fDesk.PictureOf(fWindow) != expected; }));
        fDesk.Key("Prior");
        EXPECT_TRUE(Shows(fWindow, expected));
    }

    void FocusArticle() {
        const XClient::Point point = At(fUsual.width - 100, fUsual.height - 60);
        fDesk.Click(point.x, point.y);
        PointAside();
        Pause(700); // past a double click, and the caret has no say here
        fUsual = Settled(fWindow);
    }

    void ResizeQuickly(const XClient::Frame& last) {
        std::uniform_int_distribution<int> by(-200, 200);
        for (int i = 0; i < 29; i++) {
            fDesk.Resize(fWindow, kUsual.width + by(fRandom), kUsual.height + by(fRandom) / 2);
            Pause(33);
        }
        ResizeTo(fWindow, last);
    }

    void TryResizing() {
        ResizeTo(fWindow, kOther);
        const Picture other = WhenAnswered();
        ExpectAlive(other);
        ResizeTo(fWindow, kUsual);
        ExpectAlive(fUsual);
        ResizeQuickly(kOther);
        ExpectAlive(other);
        ResizeQuickly(kUsual);
        ExpectAlive(fUsual);
    }

    void TryTheManager() {
        fDesk.Maximise(fWindow, true);
        ASSERT_TRUE(Eventually([&] { return fDesk.FrameOf(fWindow).width == 1280; }));
        ExpectAlive(WhenAnswered());
        fDesk.Maximise(fWindow, false);
        ASSERT_TRUE(Eventually([&] { return fDesk.FrameOf(fWindow).width == kUsual.width; }));
        ExpectAlive(fUsual);
        fDesk.Minimise(fWindow);
        ASSERT_TRUE(Eventually([&] { return fDesk.Active() != fWindow; }));
        fDesk.Activate(fWindow);
        ASSERT_TRUE(Eventually([&] { return fDesk.Active() == fWindow; }));
        ExpectAlive(fUsual);
    }

    XClient::Window ExpectPopUp() {
        std::vector<XClient::Window> shown;
        EXPECT_TRUE(Eventually([&] { return !(shown = fDesk.PopUps()).empty(); }));
        if (shown.empty())
            return 0;
        EXPECT_FALSE(IsPlain(Settled(shown.front())));
        return shown.front();
    }

    void ExpectNoPopUp() {
        EXPECT_TRUE(Eventually([&] { return fDesk.PopUps().empty(); }));
        EXPECT_TRUE(Shows(fWindow, fUsual));
    }

    void TryMenu() {
        const XClient::Point title = At(30, 12);
        fDesk.Click(title.x, title.y);
        const XClient::Window file = ExpectPopUp();
        fDesk.Key("Right");
        EXPECT_TRUE(Eventually([&] {
            const auto shown = fDesk.PopUps();
            return shown.size() == 1 && shown.front() != file;
        }));
        fDesk.Key("Escape");
        PointAside();
        ExpectNoPopUp();
    }

    void TryReference() {
        const XClient::Point link = At(fLink.x, fLink.y);
        fDesk.Click(link.x, link.y);
        ExpectPopUp();
        PointAside();
        ExpectNoPopUp();
    }

    void TryCopyAndPaste() {
        fDesk.Key("a", true);
        fDesk.Key("c", true);
        std::string copied;
        EXPECT_TRUE(Eventually([&] {
            Process other({"xclip", "-selection", "clipboard", "-o"}, Settings());
            copied = other.FirstLine();
            return copied.find("名前：数え人") != copied.npos;
        })) << copied;
        Process owner({"xclip", "-selection", "clipboard", "-quiet", "-i", WriteFile("ねこ\n")},
                      Settings());
        const auto before = fDesk.Managed();
        fDesk.Key("s", true);
        const XClient::Window search = NewWindow(before);
        ASSERT_NE(0u, search);
        const Picture empty = Settled(search);
        fDesk.Key("v", true);
        EXPECT_TRUE(Eventually([&] { return Differences(fDesk.PictureOf(search), empty) > 20; }));
        fDesk.Close(search);
        EXPECT_TRUE(Eventually([&] { return fDesk.Active() == fWindow; }));
    }

    std::string WriteFile(const std::string& text) {
        const std::string path = fFolder + "/pasted";
        FILE* file = fopen(path.c_str(), "w");
        fputs(text.c_str(), file);
        fclose(file);
        return path;
    }

    // In a second window, which shows no thread.
    void TryAlert() {
        const auto before = fDesk.Managed();
        fDesk.Key("n", true);
        const XClient::Window second = NewWindow(before);
        ASSERT_NE(0u, second);
        const Picture empty = Settled(second);
        const XClient::Frame frame = fDesk.FrameOf(second);
        const auto windows = fDesk.Managed();
        fDesk.Click(frame.x + frame.width - 78, frame.y + 204);
        const XClient::Window alert = NewWindow(windows);
        ASSERT_NE(0u, alert);
        EXPECT_FALSE(IsPlain(Settled(alert)));
        fDesk.Key("Return");
        EXPECT_TRUE(Eventually([&] { return fDesk.Managed() == windows; }));
        PointAside();
        EXPECT_TRUE(Shows(second, empty));
        fDesk.Close(second);
        EXPECT_TRUE(Eventually([&] { return fDesk.Managed() == before; }));
    }

    void CloseByTheManager() {
        fDesk.Close(fWindow);
        EXPECT_EQ(0, fProgram->Wait()) << fProgram->Errors();
    }

    std::optional<Process> fProgram;
    XClient::Window fWindow = 0;
    XClient::Point fLink{};
    Picture fUsual;
    std::mt19937 fRandom{12};
};

} // namespace

TEST_F(DesktopRound, WhatAUserDoesToWindowsLeavesThemWholeTenTimesOver) {
    for (int round = 0; round < kRounds && !HasFatalFailure() && !HasNonfatalFailure(); round++) {
        SCOPED_TRACE(round);
        const struct {
            const char* name;
            void (DesktopRound::*work)();
        } steps[] = {{"start", &DesktopRound::Start},
                     {"thread", &DesktopRound::OpenThread},
                     {"focus", &DesktopRound::FocusArticle},
                     {"resizing", &DesktopRound::TryResizing},
                     {"manager", &DesktopRound::TryTheManager},
                     {"menu", &DesktopRound::TryMenu},
                     {"reference", &DesktopRound::TryReference},
                     {"alert", &DesktopRound::TryAlert},
                     {"copy and paste", &DesktopRound::TryCopyAndPaste},
                     {"close", &DesktopRound::CloseByTheManager}};
        for (const auto& step : steps) {
            SCOPED_TRACE(step.name);
            (this->*step.work)();
            Keep(Screen(), std::to_string(round) + " " + step.name);
            if (HasFatalFailure() || HasNonfatalFailure())
                break;
        }
    }
}
