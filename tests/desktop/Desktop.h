#pragma once

#include "desktop/Process.h"
#include "desktop/XClient.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

// A real desktop: an X server with a window manager and the sample boards, for all tests of a
// program, and the program itself, from its start to its end, driven by the events that a user's
// hands cause.
class Desktop : public ::testing::Test {
protected:
    using Picture = XClient::Picture;

    static constexpr XClient::Frame kUsual = {40, 60, 900, 620};

    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;
    void TearDown() override;

    // With settings of its own, in the frame kUsual.
    void Start();
    static Process::Environment Settings(const std::string& folder);

    // A window that the manager has shown since, with the keyboard; 0 if none comes.
    XClient::Window NewWindow(const std::vector<XClient::Window>& before);
    // What stands there once it has stopped changing.
    Picture Settled(XClient::Window window, int milliseconds = 60);
    Picture Screen() { return fDesk.PictureOf(fDesk.Root()); }
    ::testing::AssertionResult Shows(XClient::Window window, const Picture& expected);
    void ResizeTo(XClient::Window window, const XClient::Frame& frame);

    // A point of the program's window, on the screen.
    XClient::Point At(int x, int y);
    void ClickAt(int x, int y, unsigned button = 1, int times = 1);
    void PointAside() { fDesk.PointAt(1270, 950); }
    // The window once it differs from what it was; the pointer is put aside, where it changes
    // nothing.
    Picture Changed(const Picture& before);
    // The first board of the first category, and its first thread.
    void OpenThread();
    // A point of the first reference of the thread on show, in the window.
    bool FindLink(XClient::Point* point);
    // What the window shows once it has handled all that came before: the answer to a key comes
    // later. The article has the keyboard.
    Picture WhenAnswered();

    const std::string fFolder;
    XClient fDesk;
    std::optional<Process> fProgram;
    XClient::Window fWindow = 0;

    Desktop();
};

int CountDifferences(const XClient::Picture& one, const XClient::Picture& other);
bool IsPlain(const XClient::Picture& picture);
// For people to look at: a file NAME.ppm in the folder $DESKTOP_PICTURES, if there is one.
void Keep(const XClient::Picture& picture, const std::string& name);
