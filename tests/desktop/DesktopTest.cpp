// What a user and a window manager do to the program's windows. After each step the pixels on the
// screen are compared.
#include "desktop/Desktop.h"

#include <random>

namespace {

constexpr int kRounds = 10;
constexpr XClient::Frame kOther = {40, 60, 700, 500};

class DesktopRound : public Desktop {
public:
    void Begin() {
        Start();
        OpenThread();
        ASSERT_TRUE(FindLink(&fLink));
        fUsual = Settled(fWindow);
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
        Keep(Screen(), "with pop-up " + std::to_string(fPopUps++));
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
            Process other({"xclip", "-selection", "clipboard", "-o"}, Settings(fFolder));
            copied = other.FirstLine();
            return copied.find("名前：数え人") != copied.npos;
        })) << copied;
        Process owner({"xclip", "-selection", "clipboard", "-quiet", "-i", WriteFile("ねこ\n")},
                      Settings(fFolder));
        const auto before = fDesk.Managed();
        fDesk.Key("s", true);
        const XClient::Window search = NewWindow(before);
        ASSERT_NE(0u, search);
        const Picture empty = Settled(search);
        fDesk.Key("v", true);
        EXPECT_TRUE(
            Eventually([&] { return CountDifferences(fDesk.PictureOf(search), empty) > 20; }));
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
        Keep(Screen(), "with alert");
        // A click on the window that waits, and another start, leave the keyboard with the alert.
        fDesk.Click(frame.x + 300, frame.y + 400);
        EXPECT_TRUE(Eventually([&] { return fDesk.Active() == alert; }));
        Process again({fFolder + "/itamori"}, Settings(fFolder));
        EXPECT_EQ(0, again.Wait()) << again.Errors();
        EXPECT_TRUE(Eventually([&] { return fDesk.Active() == alert; }));
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

    XClient::Point fLink{};
    int fPopUps = 0;
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
        } steps[] = {{"thread", &DesktopRound::Begin},
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
