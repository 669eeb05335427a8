#include "support/ChildProgram.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using testprograms::ChildProgram;

namespace {

namespace fs = std::filesystem;

constexpr const char* kSettings = "2ch/Itamori";

// What a run of the program prints, with what it complained about in `errors`.
std::string RunProgram(const std::string& scenario, const std::string& settings,
                       std::string* errors = nullptr,
                       const std::string& executable = "/proc/self/exe") {
    ChildProgram program(scenario, settings, "C", executable);
    EXPECT_EQ(program.Wait(), 0) << program.Errors();
    if (errors != nullptr)
        *errors = program.Errors();
    return program.Output();
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
}

// This program with a board folder of the test's own beside it.
std::string CopyWithBoardMenu(const ScratchFolder& folder, const char* menu) {
    const std::string copy = folder / "program";
    fs::copy_file(fs::read_symlink("/proc/self/exe"), copy, fs::copy_options::overwrite_existing);
    fs::remove_all(folder / "bbs");
    if (menu != nullptr)
        folder.Write("bbs/newbbsmenu.html", menu);
    return copy;
}

} // namespace

TEST(Program, KeepsItsArrangementForTheNextStart) {
    ScratchFolder folder;
    const std::string first = RunProgram("arrange", folder.Path());
    EXPECT_TRUE(Contains(first, "frame 50 50 600 550\n")) << first;
    EXPECT_TRUE(Contains(first, "category 暮らし 0\n")) << first;
    const std::string second = RunProgram("report", folder.Path());
    for (const char* line :
         {"frame 80 90 780 510\n", "column 2 333\n", "boards 177\n", "category 暮らし 1\n"})
        EXPECT_TRUE(Contains(second, line)) << line << second;
}

TEST(Program, OpensWhatWasOpenWhereItsUserWantsThat) {
    ScratchFolder folder;
    folder.Write("2ch/2chCache/h.example/news/1700000000.dat", "a<>b<>c<>d<>t\n");
    const std::string left = RunProgram("leave open", folder.Path());
    EXPECT_EQ(left, "browser 50 50 \nthread 211 122 題1700000000.dat\n");
    EXPECT_EQ(RunProgram("find open", folder.Path()), left);
    RunProgram("close both at once", folder.Path());
    const std::string last = RunProgram("find the last", folder.Path());
    EXPECT_TRUE(last.starts_with("1 frame 300 300 ")) << last;
}

TEST(Program, OpensSwitchesAndClosesWindowsInEveryOrder) {
    ScratchFolder folder;
    EXPECT_EQ(RunProgram("every order", folder.Path()),
              "thread\nboard\ncached thread\ncached board\nswitched\nclosed in 24 orders\n");
}

TEST(Program, StartsWithDefaultsFromABrokenSettingsFile) {
    ScratchFolder folder;
    RunProgram("arrange", folder.Path());
    const std::string whole = folder.Read(kSettings);
    ASSERT_FALSE(whole.empty());
    for (const std::string& broken :
         {whole.substr(0, whole.size() / 2), std::string(), std::string(5000, '\xa7')}) {
        fs::remove(folder / "2ch/Itamori.broken");
        folder.Write(kSettings, broken);
        std::string errors;
        const std::string output = RunProgram("report", folder.Path(), &errors);
        EXPECT_TRUE(Contains(output, "frame 50 50 600 550\n")) << broken.size() << output;
        EXPECT_TRUE(Contains(errors, "can't be understood")) << errors;
        EXPECT_TRUE(folder.Read("2ch/Itamori.broken") == broken);
        EXPECT_FALSE(folder.Read(kSettings) == broken);
    }
}

// No user, not even the superuser, can make files in that folder.
TEST(Program, SettingsThatCantBeWrittenStopNothing) {
    ScratchFolder folder;
    folder.MakeFolder("2ch/2chCache");
    fs::create_symlink("/proc/self/Itamori", folder / kSettings);
    const std::string output = RunProgram("arrange", folder.Path());
    EXPECT_TRUE(Contains(output, "frame 50 50 600 550\n")) << output;
}

TEST(Program, SaysThatTheBoardMenuIsMissingOrCutAndGoesOn) {
    ScratchFolder folder;
    for (const char* menu : {static_cast<const char*>(nullptr), "\n<BR><BR><B>cut <A HREF=\xff"}) {
        const std::string program = CopyWithBoardMenu(folder, menu);
        const std::string output =
            RunProgram("alert, report", folder / "settings", nullptr, program);
        EXPECT_TRUE(Contains(output, "bbs/newbbsmenu.htmlの読み込みに失敗しました。")) << output;
        EXPECT_TRUE(Contains(output, "frame 50 50 600 550\n")) << output;
    }
}

TEST(Program, ShowsWhatAStrangeBoardMenuHolds) {
    ScratchFolder folder;
    const std::string program =
        CopyWithBoardMenu(folder, "\x81\n\n<BR><BR><B>one</B>\n<A HREF=http://h.example/a/>a</A>\n"
                                  "<B></B>\n\x81<A HREF=\n");
    const std::string output = RunProgram("report", folder / "settings", nullptr, program);
    EXPECT_TRUE(Contains(output, "category one 0\n")) << output;
}
