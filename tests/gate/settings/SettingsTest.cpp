#include "settings/GateSettings.h"
#include "support/ScratchFolder.h"

#include "convert/MenuPage.h"
#include "convert/ReadCgiPage.h"
#include "post/Answer.h"
#include "post/Draft.h"

#include <gtest/gtest.h>

namespace {

TEST(Settings, TheUsersFileChangesOnlyWhatItNames) {
    ScratchFolder folder;
    const std::string shipped = folder.Write(
        "gate.toml",
        "[gate]\nport = 8080\n[origin]\nconnect_seconds = 7\n"
        "[[family]]\nname = \"a\"\nscheme = \"http\"\nhosts = [\"*.a.test\"]\n"
        "archives = [{ dat = \"https://{host}/x\" }, { page = \"https://{host}/y\" }]\n");
    const std::string own = folder.Write(
        "own.toml", "[gate]\nport = 9\nprot = 1\n[[family]]\nname = \"a\"\n"
                    "hosts = [\"b.test\"]\n[[family]]\nname = \"c\"\nkind = \"offlaw\"\n"
                    "hosts = [\"c.test\"]\nrenamed = { \"Old.test\" = \"c.test\" }\n");
    gate::Settings settings;
    std::string error;
    std::vector<std::string> remarks;
    ASSERT_TRUE(gate::ReadSettings(shipped, &settings, &error, &remarks)) << error;
    ASSERT_TRUE(gate::ReadSettings(own, &settings, &error, &remarks)) << error;
    EXPECT_EQ(settings.port, 9);
    EXPECT_EQ(settings.connectSeconds, 7);
    ASSERT_EQ(settings.families.size(), 2u);
    EXPECT_FALSE(settings.families[0].usesTls);
    EXPECT_TRUE(settings.families[0].archives[1].isPage);
    EXPECT_EQ(settings.FindFamily("x.a.test"), nullptr);
    EXPECT_EQ(settings.FindFamily("B.test"), &settings.families[0]);
    EXPECT_EQ(settings.FindFamily("old.TEST"), &settings.families[1]);
    EXPECT_EQ(settings.families[1].PresentHost("x.old.test"), "x.c.test");
    EXPECT_EQ(settings.families[1].PresentHost("xold.test"), "xold.test");
    ASSERT_EQ(remarks.size(), 1u);
    EXPECT_NE(remarks[0].find("own.toml:3: \"prot\""), std::string::npos) << remarks[0];
}

// Whoever copies a line of the shipped file and changes it starts from what the gate goes by.
TEST(Settings, TheShippedFileSaysWhatTheGateGoesByWithoutIt) {
    gate::Settings without;
    gate::Settings shipped;
    std::string error;
    std::vector<std::string> remarks;
    ASSERT_TRUE(gate::ReadSettings(SHIPPED_SETTINGS, &shipped, &error, &remarks)) << error;
    EXPECT_TRUE(remarks.empty()) << remarks[0];
    EXPECT_EQ(shipped.pageMarks, without.pageMarks);
    EXPECT_EQ(shipped.menuMarks, without.menuMarks);
    EXPECT_FALSE(shipped.answerMarks.codes.empty());
    without.answerMarks.codes = shipped.answerMarks.codes; // in the file alone
    EXPECT_EQ(shipped.answerMarks, without.answerMarks);
    EXPECT_EQ(shipped.forms, without.forms);
    EXPECT_EQ(shipped.challengeHeaders, without.challengeHeaders);
    EXPECT_EQ(shipped.families[0].droppedCookies, gate::Family().droppedCookies);
    EXPECT_EQ(shipped.families[0].droppedErrors, gate::Family().droppedErrors);
}

struct OverrideCase {
    const char* file;
    bool (*holds)(const gate::Settings&);
};

TEST(Settings, EveryMarkOfServersCanBeChanged) {
    using gate::Settings;
    const OverrideCase kCases[] = {
        {"[page]\npost = [\"res\"]\npictures = []",
         [](const Settings& now) {
             const std::string page =
                 "<html><title>t</title><div class=res id=1><b class=name>n</b>"
                 "<p class=message>a<img src=//o.x/y></div></html>";
             const auto read = gate::ParseReadPage(page, now.pageMarks);
             return read && read->posts[0].body == "a" && !gate::ParseReadPage(page);
         }},
        {"[portal]\nother_hosts = [\"x.\"]",
         [](const Settings& now) {
             const std::string menu = "<b>c</b><a href=http://x.test/a/>n</a>";
             return gate::ParseHtmlMenu(menu, now.menuMarks).empty() &&
                    !gate::ParseHtmlMenu(menu).empty();
         }},
        {"[answer]\nposted_titles = [\"done\"]",
         [](const Settings& now) {
             const gate::PostReply reply{200, "<title>done</title>", "", ""};
             return gate::JudgeAnswer(reply, now.answerMarks).outcome ==
                    gate::PostAnswer::Outcome::kPosted;
         }},
        {"[answer]\ncode_header = \"X-Code\"\n"
         "[answer.codes]\n1 = { meaning = \"new\", broken_cookie = \"a\" }\n"
         "1930 = { meaning = \"other\" }",
         [](const Settings& now) {
             const auto words = [&](const char* code) {
                 return gate::JudgeAnswer({200, "", code, ""}, now.answerMarks).words;
             };
             return words("1 x") == "(1: new)\n" && words("1930") == "(1930: other)\n" &&
                    now.answerMarks.codeHeader == "x-code";
         }},
        {"[form.bbs]\npath = \"/new.cgi\"\nfields = [[\"go\", \"書\"], [\"k\", \"$key\"]]\n"
         "charset = \"utf-8\"\n[[family]]\nname = \"a\"",
         [](const Settings& now) {
             const gate::FormShape shape = gate::ShapeOf(now.families[0]);
             return gate::MakeFirstBody({"", "", "", "b", "12345"}, shape, 0) ==
                        "go=%E6%9B%B8&k=12345" &&
                    shape.path == "/new.cgi" && now.families[0].form == shape;
         }},
        {"[[family]]\nname = \"a\"\ndropped_cookies = [\"x\"]\ndropped_errors = [\"y\"]\n"
         "charset = \"utf-8\"",
         [](const Settings& now) {
             return now.families[0].droppedCookies == std::vector<std::string>{"x"} &&
                    now.families[0].droppedErrors == std::vector<std::string>{"y"} &&
                    now.families[0].charset == gate::Charset::kUtf8;
         }}};
    for (const OverrideCase& now : kCases) {
        SCOPED_TRACE(now.file);
        ScratchFolder folder;
        gate::Settings settings;
        std::string error;
        std::vector<std::string> remarks;
        const std::string own = folder.Write("own.toml", now.file);
        ASSERT_TRUE(gate::ReadSettings(SHIPPED_SETTINGS, &settings, &error, &remarks)) << error;
        settings.families.clear();
        ASSERT_TRUE(gate::ReadSettings(own, &settings, &error, &remarks)) << error;
        EXPECT_TRUE(remarks.empty());
        EXPECT_TRUE(now.holds(settings));
    }
}

TEST(Settings, AWrongValueIsNamedWithItsLineAndChangesNothing) {
    const char* const kWrong[] = {"port = \"8080\"",
                                  "port = 0",
                                  "connections = 0",
                                  "[[family]]\nhosts = []",
                                  "[[family]]\nname = 3",
                                  "[[family]]\nname = \"a\"\nkind = \"x\"",
                                  "[[family]]\nname = \"a\"\narchives = [{ x = \"\" }]",
                                  "[[family]]\nname = \"a\"\nrenamed = [\"x\"]",
                                  "[page]\npost = \"post\"",
                                  "[answer.codes]\n1 = \"x\"",
                                  "[form.bbs]\nfields = [[\"a\"]]",
                                  "[form.bbs]\ncharset = \"x\""};
    for (const char* wrong : kWrong) {
        SCOPED_TRACE(wrong);
        ScratchFolder folder;
        gate::Settings settings;
        settings.port = 77;
        std::string error;
        std::vector<std::string> remarks;
        const std::string file = folder.Write("x.toml", std::string("[gate]\n") + wrong + "\n");
        EXPECT_FALSE(gate::ReadSettings(file, &settings, &error, &remarks));
        EXPECT_NE(error.find("x.toml:"), std::string::npos) << error;
        EXPECT_EQ(settings.port, 77);
        EXPECT_TRUE(settings.families.empty());
    }
}

} // namespace
