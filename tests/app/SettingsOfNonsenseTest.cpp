#include "app/DefaultSettings.h"
#include "support/Browser.h"
#include "support/OpenWindow.h"
#include "support/ScratchFolder.h"
#include "windows/NPPrefsWindow.h"

#include <Screen.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

// What somebody may have typed into the file, in every field that is a size or a place.
void FillWith(float number, SettingsFile* settings) {
    settings->AddRect("window_frame", BRect(number, number, number, number));
    for (const char* key :
         {"column_no", "column_thread", "column_res", "column_gotten", "column_modified",
          "column_dat", "font_size", "board_barpos", "board_column", "column_speed"})
        settings->AddFloat(key, number);
    for (const char* key :
         {"bar_position", "mbar_position", "sp_align", "msp_align", "column_speed_place"})
        settings->AddInt32(key, number > 0 ? 0x7FFFFFFF : -0x7FFFFFFF);
    settings->AddString("font_family", std::string(200, 'x').c_str());
    settings->AddString("hidden_columns",
                        "title nonsense speed  no state res gotten modified dat mark");
    settings->AddInt8("click_mode", 77);
    settings->AddInt32("column_order0", 99);
    AddPrefsIfNotExists(settings);
}

} // namespace

TEST(SettingsOfNonsense, StillGiveAWindowToWorkWith) {
    const ScratchFolder folder;
    for (const float number : {std::numeric_limits<float>::quiet_NaN(), -1000.0F, 1000.0F, 1e30F,
                               std::numeric_limits<float>::infinity()}) {
        SettingsFile settings("Itamori", "2ch");
        FillWith(number, &settings);
        BRect frame;
        settings.Get("window_frame", &frame);
        NPWindow* window = new NPWindow(frame, &settings, false, BMessenger());
        const BMessenger messenger(window);
        window->Show();
        ASSERT_TRUE(server::testing::WaitUntilIdle(window));
        ASSERT_TRUE(window->Lock());
        EXPECT_GE(window->Frame().Width(), 200) << number;
        EXPECT_GE(window->Frame().Height(), 300) << number;
        EXPECT_TRUE(BScreen(window).Frame().Contains(window->Frame())) << number;
        static_cast<NPArticleView*>(window->FindView("article pane"))->TextView()->addNumItem(1);
        const NPThreadListView* list =
            static_cast<NPThreadView*>(window->FindView("thread"))->List();
        for (int32 column = 0; column < kThreadColumnCount; column++)
            EXPECT_EQ(list->ColumnAt(column).isShown, column == kColumnTitle) << column;
        window->Unlock();
        EXPECT_TRUE(server::testing::WaitUntilIdle(window));
        messenger.SendMessage(kMsgOpenPrefs);
        NPPrefsWindow* prefs = WaitForOpen<NPPrefsWindow>();
        BMessenger(prefs).SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(WaitForClosed<NPPrefsWindow>());
        messenger.SendMessage(B_QUIT_REQUESTED);
        EXPECT_TRUE(server::testing::WaitUntil([&] { return !messenger.IsValid(); }));
    }
}
