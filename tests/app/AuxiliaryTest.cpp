#include "support/ChildProgram.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "server/DemoServer.h"
#include "settings/SettingsFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sstream>

using testprograms::ChildProgram;

namespace {

namespace fs = std::filesystem;

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// This program in a folder of its own, where it may change its board menu; the server is the proxy.
std::string CopyProgram(const ScratchFolder& folder, const std::string& port) {
    const std::string copy = folder / "program";
    fs::copy_file(fs::read_symlink("/proc/self/exe"), copy);
    SettingsFile settings("Itamori", "2ch");
    settings.AddBool("proxy", true);
    settings.AddString("proxy_host", "127.0.0.1");
    settings.AddString("proxy_port", port.c_str());
    EXPECT_EQ(settings.Save(), B_OK);
    return copy;
}

} // namespace

TEST(Auxiliary, EveryWindowShowsTheUpdatedMenuWithItsCategoriesAsOpenAsBefore) {
    const ScratchFolder folder;
    DemoServer server;
    std::string error;
    ASSERT_TRUE(server.LoadBoards(DEMO_BOARDS, &error)) << error;
    const std::string old = server.Menu();
    folder.Write("bbs/newbbsmenu.html", old);
    server.AddBoard("more", 1);
    ASSERT_TRUE(server.Start());
    ChildProgram program("update", folder.Path(), "C", CopyProgram(folder, server.PortText()));
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    const std::vector<std::string> windows = LinesOf(program.Output());
    ASSERT_EQ(windows.size(), 2u) << program.Output();
    EXPECT_TRUE(windows[0].starts_with("生活+ 趣味 ")) << windows[0];
    EXPECT_TRUE(windows[1].starts_with("生活 趣味+ ")) << windows[1];
    for (const std::string& window : windows)
        EXPECT_TRUE(window.ends_with("たくさん ")) << window;
    EXPECT_EQ(folder.Read("bbs/newbbsmenu.html"), server.Menu());
    EXPECT_EQ(server.CountRequests("/newbbsmenu.html"), 1u);
}

TEST(Auxiliary, TheProgramEndsInTheMiddleOfAnUpdate) {
    const ScratchFolder folder;
    folder.Write("bbs/newbbsmenu.html", "old");
    RawServer server({RawServer::Stall("HTTP/1.1 200 OK\r\n\r\nhalf of")});
    ChildProgram program("quit in the update", folder.Path(), "C",
                         CopyProgram(folder, server.PortText()));
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    EXPECT_EQ(server.CountConnections(), 1u);
    EXPECT_EQ(folder.Read("bbs/newbbsmenu.html"), "old");
}

TEST(Auxiliary, AnUpdateThroughARefusedProxyIsAnAlertThatHoldsUpNothing) {
    const ScratchFolder folder;
    folder.Write("bbs/newbbsmenu.html", "old");
    ChildProgram program("quit under an alert", folder.Path(), "C", CopyProgram(folder, "65536"));
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    EXPECT_EQ(program.Output(), "プロキシのポートが正しくありません: 65536");
}

TEST(Auxiliary, NoWindowGoesBeforeATextThatCantBeKept) {
    const ScratchFolder folder;
    const std::string inTheWay = folder.Write("2ch/Drafts", "a file");
    ChildProgram program("quit with a text", folder.Path());
    const std::string question =
        ": 下書きを保存できません。\n閉じると書いた文章は失われます。\n2 windows\n";
    const std::string all = "the program" + question + "the last window" + question;
    EXPECT_TRUE(program.WaitForOutput(all)) << program.Output();
    fs::remove(inTheWay);
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    EXPECT_EQ(folder.Read("2ch/Drafts/h.jp/news/12.txt"), "\n\ntext");
}

TEST(Auxiliary, AChosenFontIsEveryWindowsAtOnceAndKept) {
    const ScratchFolder folder;
    ChildProgram program("choose font", folder.Path());
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    const std::vector<std::string> fonts = LinesOf(program.Output());
    ASSERT_EQ(fonts.size(), 3u) << program.Output();
    EXPECT_EQ(fonts[0], fonts[2]);
    EXPECT_EQ(fonts[1], fonts[2]);
    ChildProgram again("print font", folder.Path());
    EXPECT_EQ(again.Wait(), 0) << again.Errors();
    EXPECT_EQ(LinesOf(again.Output()), std::vector<std::string>{fonts[2]});
}
