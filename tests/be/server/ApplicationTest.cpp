// Whole programs: this executable runs itself again as a child that does one thing, named by a
// variable.
#include "support/ChildProgram.h"
#include "support/ScratchFolder.h"

#include "server/Testing.h"

#include <AppDefs.h>
#include <Application.h>
#include <Message.h>
#include <OS.h>
#include <Window.h>

#include <gtest/gtest.h>

#include <clocale>
#include <csignal>
#include <ctime>
#include <fstream>
#include <unistd.h>

using testprograms::ChildProgram;

TEST(Application, EndsWhenItIsAskedTo) {
    ChildProgram child("quits");
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("ready\nquit asked\nended\n", child.Output());
}

TEST(Application, AskedByASignalItAsksItsWindows) {
    ChildProgram child("waits");
    ASSERT_TRUE(child.WaitForOutput("ready"));
    child.Signal(SIGTERM);
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("ready\nwindow asked\nended\n", child.Output());
}

TEST(Application, AWindowThatGoesMayLockIt) {
    ChildProgram child("has a window that locks it");
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("window gone\n", child.Output());
}

TEST(Application, AWindowMayRefuse) {
    ChildProgram child("refuses once");
    ASSERT_TRUE(child.WaitForOutput("ready"));
    child.Signal(SIGINT);
    ASSERT_TRUE(child.WaitForOutput("window refused"));
    child.Tell("quit");
    EXPECT_EQ(0, child.Wait());
}

TEST(Application, ASecondSignalEndsAProgramThatDoesNot) {
    ChildProgram child("never quits");
    ASSERT_TRUE(child.WaitForOutput("ready"));
    child.Signal(SIGTERM);
    ASSERT_TRUE(child.WaitForOutput("window refused"));
    child.Signal(SIGTERM);
    EXPECT_EQ(128 + SIGTERM, child.Wait());
}

TEST(Application, AThreadThatHangsDoesNotKeepTheProcess) {
    ChildProgram child("leaves a thread");
    const bigtime_t start = system_time();
    EXPECT_EQ(7, child.Wait());
    EXPECT_LT(system_time() - start, 5000000);
    EXPECT_EQ("ready\nquit asked\nended\n", child.Output());
}

TEST(Application, AWindowMayGoAfterTheServerHasStopped) {
    ChildProgram child("has a thread that deletes its window at the end");
    EXPECT_EQ(0, child.Wait()) << child.Errors();
}

TEST(Application, APortThatIsWaitedAtIsDeletedAtTheEnd) {
    ChildProgram child("waits at a port");
    EXPECT_EQ(0, child.Wait());
    EXPECT_NE(std::string::npos, child.Output().find("port gone"));
}

TEST(Application, ASecondStartActivatesTheFirstAndEnds) {
    ChildProgram first("waits");
    ASSERT_TRUE(first.WaitForOutput("ready"));
    ChildProgram second("waits", first.Settings());
    EXPECT_EQ(0, second.Wait());
    EXPECT_EQ("", second.Output());
    EXPECT_TRUE(first.WaitForOutput("relaunched"));
    first.Signal(SIGTERM);
    EXPECT_EQ(0, first.Wait());
}

TEST(Application, AStartWithOtherSettingsIsAnotherProgram) {
    ChildProgram first("waits");
    ASSERT_TRUE(first.WaitForOutput("ready"));
    ChildProgram second("quits");
    EXPECT_EQ(0, second.Wait());
    EXPECT_EQ("ready\nquit asked\nended\n", second.Output());
    first.Signal(SIGTERM);
    EXPECT_EQ(0, first.Wait());
}

TEST(Application, AStartRightAfterTheEndIsTheOnlyOne) {
    ChildProgram first("waits");
    ASSERT_TRUE(first.WaitForOutput("ready"));
    first.Kill();
    first.Wait();
    ChildProgram second("quits", first.Settings());
    EXPECT_EQ(0, second.Wait());
    EXPECT_EQ("ready\nquit asked\nended\n", second.Output());
}

// A variable that names no absolute folder must not put files wherever the program was started.
TEST(Application, AStartLeavesNothingInTheCurrentFolder) {
    const ScratchFolder folder;
    ChildProgram child("quits, living in " + folder.Path());
    EXPECT_EQ(0, child.Wait());
    EXPECT_TRUE(folder.Has(".config"));
    EXPECT_FALSE(folder.Has("relative"));
}

TEST(Application, DatesAndNumbersAreWrittenAsInC) {
    ChildProgram child("tells its locale", "", "ja_JP.UTF-8");
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("Thu Jan 1.5\n", child.Output());
}

TEST(Application, AnOpenAlertEndsWithTheProgram) {
    ChildProgram child("shows an alert");
    ASSERT_TRUE(child.WaitForOutput("ready"));
    child.Signal(SIGTERM);
    EXPECT_EQ(0, child.Wait());
    EXPECT_NE(std::string::npos, child.Output().find("answer -1"));
}

TEST(Application, ArgumentsAreHandedOver) {
    ChildProgram child("tells its arguments");
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("one argument two\n", child.Output());
}

class Scales : public testing::TestWithParam<const char*> {};

// Neighbouring rectangles meet, a frame is closed, and scrolled pixels stay in step, whatever a
// pixel is.
TEST_P(Scales, DrawWithoutGaps) {
    ChildProgram child(std::string("draws stripes, scaled by ") + GetParam());
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ(std::string("scale ") + GetParam() + " gaps 0 wrong 0\n", child.Output());
}

INSTANTIATE_TEST_SUITE_P(All, Scales, testing::Values("1", "1.25", "1.5", "2"));

TEST(Application, PulsesUntilItIsToldNotTo) {
    ChildProgram child("pulses");
    EXPECT_EQ(0, child.Wait());
    EXPECT_EQ("pulse\npulse\npulse\n", child.Output());
}
