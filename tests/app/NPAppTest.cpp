#include "app/DefaultSettings.h"

#include "server/Testing.h"
#include "settings/SettingsFile.h"
#include "support/ChildProgram.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kKeys[] = {
    "window_frame",   "bar_position", "font_family",   "font_style",      "font_size",
    "proxy",          "proxy_host",   "proxy_port",    "enable_cache",    "column_no",
    "column_thread",  "column_res",   "column_gotten", "column_modified", "column_dat",
    "writing_window", "sp_align",     "mbar_position", "msp_align",       "board_barpos",
    "online_mode",    "click_mode",   "key_binding",   "column_order0",   "column_order14",
};

bool Has(const BMessage& settings, const char* key) {
    type_code type;
    return settings.GetInfo(key, &type) == B_OK;
}

} // namespace

TEST(DefaultSettings, AnEmptyFileGetsThemAll) {
    BMessage settings;
    AddPrefsIfNotExists(&settings);
    for (const char* key : kKeys)
        EXPECT_TRUE(Has(settings, key)) << key;
    BRect frame;
    int8 mode = 0;
    int32 order = -1;
    EXPECT_EQ(settings.FindRect("window_frame", &frame), B_OK);
    EXPECT_EQ(frame, BRect(50, 50, 600, 550));
    EXPECT_EQ(settings.FindInt8("click_mode", &mode), B_OK);
    EXPECT_EQ(mode, 2);
    EXPECT_EQ(settings.FindInt32("column_order5", &order), B_OK);
    EXPECT_EQ(order, 7);
    EXPECT_EQ(settings.FindInt32("column_order14", &order), B_OK);
    EXPECT_EQ(order, 0);
}

TEST(DefaultSettings, TheRestOfAGroupFollowsItsFirstKey) {
    BMessage settings;
    settings.AddBool("proxy", true);
    settings.AddFloat("column_no", 99);
    settings.AddInt32("column_order0", 3);
    AddPrefsIfNotExists(&settings);
    for (const char* key : {"proxy_host", "proxy_port", "enable_cache", "column_thread",
                            "column_dat", "column_order1"})
        EXPECT_FALSE(Has(settings, key)) << key;
    bool proxy = false;
    EXPECT_EQ(settings.FindBool("proxy", &proxy), B_OK);
    EXPECT_TRUE(proxy);
}

using testprograms::ChildProgram;

TEST(NPApp, AFirstStartMakesItsFoldersAndEverySetting) {
    const ScratchFolder folder;
    ChildProgram program("start", folder.Path());
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_EQ(program.Output(), "frame 50 50 550 500\n");
    EXPECT_TRUE(folder.Has("2ch/2chCache"));
    SettingsFile settings("Itamori", "2ch");
    EXPECT_EQ(settings.Load(), B_OK);
    for (const char* key : kKeys)
        EXPECT_TRUE(Has(settings, key)) << key;
    bool cached = false;
    EXPECT_EQ(settings.Get("enable_cache", &cached), B_OK);
    EXPECT_TRUE(cached);
}

TEST(NPApp, WindowsOpenInACascadeAndTheLastOneEndsTheProgram) {
    const ScratchFolder folder;
    ChildProgram program("windows", folder.Path());
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_EQ(program.Output(), "frame 70 70 550 500\nactive 0\nactive 1\nactive 0\none left\n");
    SettingsFile settings("Itamori", "2ch");
    EXPECT_EQ(settings.Load(), B_OK);
    BRect frame;
    EXPECT_EQ(settings.Get("window_frame", &frame), B_OK);
    EXPECT_EQ(frame.left, 70);
}

TEST(NPApp, AChangedSettingIsOnDiskBeforeTheEnd) {
    const ScratchFolder folder;
    const ChildProgram program("change a setting", folder.Path());
    const auto isSaved = [] {
        SettingsFile settings("Itamori", "2ch");
        int8 mode = 0;
        return settings.Load() == B_OK && settings.Get("click_mode", &mode) == B_OK && mode == 1;
    };
    EXPECT_TRUE(server::testing::WaitUntil(isSaved));
}

TEST(NPApp, WithoutItsFolderItSaysSoAndEnds) {
    const ScratchFolder folder;
    const std::string path = folder.Write("2ch", "a file in the way");
    ChildProgram program("alert", folder.Path());
    EXPECT_EQ(program.Wait(), 1);
    EXPECT_EQ(program.Output(), path + "\nにアクセスできません。\n");
}
