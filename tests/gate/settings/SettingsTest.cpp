#include "settings/GateSettings.h"
#include "support/ScratchFolder.h"

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

TEST(Settings, AWrongValueIsNamedWithItsLineAndChangesNothing) {
    const char* const kWrong[] = {"port = \"8080\"",
                                  "port = 0",
                                  "connections = 0",
                                  "[[family]]\nhosts = []",
                                  "[[family]]\nname = 3",
                                  "[[family]]\nname = \"a\"\nkind = \"x\"",
                                  "[[family]]\nname = \"a\"\narchives = [{ x = \"\" }]",
                                  "[[family]]\nname = \"a\"\nrenamed = [\"x\"]"};
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
