#include "desktop/Desktop.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t kLinkColor = 0x0000ff;

Process* sServer = nullptr;
Process* sManager = nullptr;
Process* sBoards = nullptr;
std::string sDisplay;
std::string sPort;

std::string Programs() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

} // namespace

// −1 if they are of different sizes.
int CountDifferences(const XClient::Picture& one, const XClient::Picture& other) {
    if (one.width != other.width || one.height != other.height)
        return -1;
    int count = 0;
    for (size_t i = 0; i < one.pixels.size(); i++)
        count += one.pixels[i] != other.pixels[i] ? 1 : 0;
    return count;
}

bool IsPlain(const XClient::Picture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(),
                       [&](uint32_t pixel) { return pixel == picture.pixels.front(); });
}

void Keep(const XClient::Picture& picture, const std::string& name) {
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

Desktop::Desktop() : fFolder(MakeScratchFolder()), fDesk(sDisplay) {}

void Desktop::SetUpTestSuite() {
    sServer = new Process({"Xvfb", "-displayfd", "1", "-screen", "0", "1280x960x24"});
    const std::string number = sServer->FirstLine();
    ASSERT_FALSE(number.empty()) << "no Xvfb: " << sServer->Errors();
    sDisplay = ":" + number;
    sManager = new Process({"openbox"}, {{"DISPLAY", sDisplay}});
    sBoards = new Process({Programs() + "/bbsd"});
    sPort = sBoards->FirstLine();
    ASSERT_FALSE(sPort.empty()) << sBoards->Errors();
}

void Desktop::TearDownTestSuite() {
    for (Process** process : {&sBoards, &sManager, &sServer}) {
        delete *process;
        *process = nullptr;
    }
}

void Desktop::SetUp() {
    ASSERT_TRUE(fDesk.IsConnected());
    ASSERT_TRUE(Eventually([&] { return fDesk.HasManager(); })) << "no openbox";
    std::filesystem::copy_file(Programs() + "/itamori", fFolder + "/itamori");
}

void Desktop::TearDown() {
    fProgram.reset();
    std::filesystem::remove_all(fFolder);
}

// The keyboard library reads replies of the X server by their length, not up to a zero byte: that
// is no error, but a strict check of strings takes it for one.
Process::Environment Desktop::Settings(const std::string& folder) {
    return {{"DISPLAY", sDisplay},
            {"QT_QPA_PLATFORM", "xcb"},
            {"XDG_CONFIG_HOME", folder + "/settings"},
            {"LC_ALL", "C.UTF-8"},
            {"ASAN_OPTIONS", "detect_stack_use_after_return=1"}};
}

void Desktop::Start() {
    std::filesystem::remove_all(fFolder + "/settings");
    Process seed({Programs() + "/demo_seed", fFolder, sPort});
    ASSERT_EQ(0, seed.Wait()) << seed.Errors();
    fProgram.emplace(std::vector<std::string>{fFolder + "/itamori"}, Settings(fFolder));
    fWindow = NewWindow({});
    ASSERT_NE(0u, fWindow) << fProgram->Errors();
    fDesk.MoveTo(fWindow, kUsual.x, kUsual.y);
    ResizeTo(fWindow, kUsual);
    ASSERT_FALSE(IsPlain(Settled(fWindow)));
}

XClient::Window Desktop::NewWindow(const std::vector<XClient::Window>& before) {
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

Desktop::Picture Desktop::Settled(XClient::Window window, int milliseconds) {
    Picture last = fDesk.PictureOf(window);
    Clock::time_point since = Clock::now();
    Eventually([&] {
        Picture next = fDesk.PictureOf(window);
        if (next != last || IsPlain(next))
            since = Clock::now();
        last = std::move(next);
        return Clock::now() - since > std::chrono::milliseconds(milliseconds);
    });
    return last;
}

::testing::AssertionResult Desktop::Shows(XClient::Window window, const Picture& expected) {
    Picture seen;
    if (Eventually([&] { return (seen = fDesk.PictureOf(window)) == expected; }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << seen.width << " x " << seen.height << " instead of " << expected.width << " x "
           << expected.height << ", " << CountDifferences(seen, expected) << " pixels differ";
}

void Desktop::ResizeTo(XClient::Window window, const XClient::Frame& frame) {
    fDesk.Resize(window, frame.width, frame.height);
    XClient::Frame now{};
    EXPECT_TRUE(Eventually([&] {
        now = fDesk.FrameOf(window);
        return now.width == frame.width && now.height == frame.height;
    })) << now.width
        << " x " << now.height << " instead of " << frame.width << " x " << frame.height << "\n"
        << fProgram->Errors();
}

XClient::Point Desktop::At(int x, int y) {
    const XClient::Frame frame = fDesk.FrameOf(fWindow);
    return {frame.x + x, frame.y + y};
}

void Desktop::ClickAt(int x, int y, unsigned button, int times) {
    const XClient::Point point = At(x, y);
    fDesk.Click(point.x, point.y, button, times);
}

Desktop::Picture Desktop::Changed(const Picture& before) {
    PointAside();
    EXPECT_TRUE(Eventually([&] { return fDesk.PictureOf(fWindow) != before; }));
    return Settled(fWindow);
}

void Desktop::OpenThread() {
    const Picture closed = Settled(fWindow);
    ClickAt(11, 58);
    const Picture open = Changed(closed);
    ClickAt(70, 78, 1, 2);
    const Picture board = Changed(open);
    ClickAt(260, 58, 1, 2);
    Changed(board);
    XClient::Point link;
    ASSERT_TRUE(Eventually([&] { return FindLink(&link); })) << "no reference is shown\n"
                                                             << fProgram->Errors();
}

bool Desktop::FindLink(XClient::Point* point) {
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

Desktop::Picture Desktop::WhenAnswered() {
    for (const char* key : {"Next", "Prior"}) {
        const Picture before = Settled(fWindow);
        fDesk.Key(key);
        EXPECT_TRUE(Eventually([&] { return fDesk.PictureOf(fWindow) != before; }));
    }
    return Settled(fWindow);
}
