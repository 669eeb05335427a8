#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/ScratchFolder.h"

#include "server/DemoServer.h"
#include "settings/Habits.h"
#include "views/NPBoardListView.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace server::testing;

namespace {

constexpr int32 kThreads = 30;

// A browser window at the demo server with its board pane in focus, driven by keys alone.
class Keyboard : public testing::Test {
protected:
    void SetUp() override {
        fServer.AddBoard("walk", kThreads);
        fServer.Grow("walk", fServer.Keys("walk").front(), 60);
        ASSERT_TRUE(fServer.Start());
        fBrowser = std::make_unique<Browser>(fServer.Port());
        Activate(Window(), true);
        Settle();
        for (int i = 0; i < 5 && Focus() != "board list"; i++)
            Press(B_TAB);
        ASSERT_EQ(Focus(), "board list");
    }

    BWindow* Window() const { return fBrowser->Window(); }
    void Settle() { EXPECT_TRUE(WaitUntilIdle(Window())); }
    void Press(char key) {
        Key(Window(), key);
        Settle();
    }
    std::string Focus() {
        return fBrowser->Locked(
            [this] {
                const BView* focus = Window()->CurrentFocus();
                return std::string(focus != nullptr ? focus->Name() : "");
            },
            std::string());
    }
    // Of the lists; -1 without a selected row.
    int32 Selected(ColumnListView* list) {
        return fBrowser->Locked([&] { return list->FullListCurrentSelection(); }, int32(-1));
    }
    NPThreadListView* Threads() { return fBrowser->Threads()->List(); }
    // Opens the board "散歩" of the first category and goes to the thread list.
    void OpenBoard() {
        for (const char key : {B_HOME, B_RIGHT_ARROW, B_DOWN_ARROW, B_DOWN_ARROW, B_ENTER})
            Press(key);
        ASSERT_TRUE(fBrowser->WaitUntil(
            [this] { return std::string(Window()->Title()).starts_with("散歩 ("); }));
        Press(B_TAB);
    }

    ScratchFolder fFolder;
    DemoServer fServer;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_F(Keyboard, OpensABoardAThreadAndReadsIt) {
    OpenBoard();
    ASSERT_EQ(Focus(), "thread list");
    Press(B_END);
    EXPECT_EQ(Selected(Threads()), kThreads - 1);
    Press(B_UP_ARROW);
    EXPECT_EQ(Selected(Threads()), kThreads - 2);
    Press(B_PAGE_UP);
    EXPECT_LT(Selected(Threads()), kThreads - 4);
    Press(B_HOME);
    EXPECT_EQ(Selected(Threads()), 0);
    Press(B_ENTER);
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return fBrowser->Article()->GetTitle()[0] != 0; }));
    EXPECT_TRUE(fBrowser->WaitForStatus(""));

    for (int i = 0; i < 5 && Focus() != "article"; i++)
        Press(B_TAB);
    const auto top = [this] { return fBrowser->Article()->TextView()->Bounds().top; };
    Press(B_END);
    EXPECT_GT(fBrowser->Locked(top, -1.0f), 0);
    Press(B_HOME);
    EXPECT_EQ(fBrowser->Locked(top, -1.0f), 0);
}

TEST_F(Keyboard, TheMenuKeyOpensTheRowsMenu) {
    OpenBoard();
    Press(B_HOME);
    MenuKey(Window());
    EXPECT_TRUE(WaitUntil([] { return MenuIsOpen(); }));
    EXPECT_FALSE(MenuLabels().empty());
    DismissMenu();
    EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
}

TEST_F(Keyboard, TabGoesThroughThePanesAndComesBack) {
    std::vector<std::string> visited;
    do {
        visited.push_back(Focus());
        Press(B_TAB);
    } while (Focus() != "board list" && visited.size() < 10);
    for (const char* name : {"thread list", "article"})
        EXPECT_NE(std::find(visited.begin(), visited.end(), name), visited.end()) << name;
    EXPECT_LT(visited.size(), 10u);
}

TEST_F(Keyboard, ReadsOn) {
    const std::string key = fServer.Keys("walk").front();
    OpenBoard();
    Press(B_HOME);
    Press(B_ENTER);
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return fBrowser->Article()->GetTitle()[0] != 0; }));
    EXPECT_TRUE(fBrowser->WaitForStatus(""));
    for (int i = 0; i < 5 && Focus() != "article"; i++)
        Press(B_TAB);
    const auto top = [this] {
        return fBrowser->Locked([this] { return fBrowser->Article()->TextView()->Bounds().top; },
                                -1.0f);
    };
    Press(B_HOME);
    Press(B_SPACE);
    const float page = top();
    EXPECT_GT(page, 100);
    Press(B_SPACE);
    EXPECT_GT(top(), page);
    Key(Window(), B_SPACE, B_SHIFT_KEY);
    Settle();
    EXPECT_EQ(top(), page);

    const auto press = [this](uint32 functionKey) {
        Key(Window(), B_FUNCTION_KEY, 0, functionKey);
        Settle();
    };
    fServer.Grow("walk", key, 5);
    press(B_F5_KEY);
    EXPECT_TRUE(fBrowser->WaitForStatus("新着 5件"));
    // At the end Space asks only where its user wants that, and not again at once.
    for (const bool wants : {false, true}) {
        fBrowser->Settings().PutAt(kSpaceFetches, 0, wants);
        fServer.Grow("walk", key, 2);
        Press(B_END);
        Press(B_SPACE);
        EXPECT_TRUE(fBrowser->WaitForStatus(wants ? "新着 4件" : "新着 5件"));
    }
    fServer.Grow("walk", key, 1);
    Press(B_END);
    Press(B_SPACE);
    EXPECT_TRUE(fBrowser->WaitForStatus("新着 4件"));

    press(B_F6_KEY);
    EXPECT_TRUE(fBrowser->WaitForStatus("新着のあるスレッドはありません"));
    fBrowser->SelectBoard("http://demo.itamori.example/walk/");
    EXPECT_TRUE(fBrowser->WaitForStatus(""));
    EXPECT_TRUE(fBrowser->WaitUntil([this] {
        NPThreadItem* item = Threads()->ThreadAt(0);
        return item != nullptr && item->State() == kNewPosts;
    }));
    // The list's own last word on the status line may come behind that of the thread.
    press(B_F6_KEY);
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return fBrowser->Article()->CountNew() == 1; }));
}

TEST_F(Keyboard, SpaceAsksForNothingWithoutAThread) {
    fBrowser->Settings().PutAt(kSpaceFetches, 0, true);
    for (int i = 0; i < 5 && Focus() != "article"; i++)
        Press(B_TAB);
    Press(B_SPACE);
    EXPECT_EQ(CountAlerts(), 0);
}

TEST_F(Keyboard, AKeyThatWasGivenAwayIsItsNewCommandsAlone) {
    fBrowser->Settings().PutAt("shortcut_next_window", 0, "Ctrl+J");
    fBrowser->Settings().PutAt("shortcut_filter", 0, "Ctrl+G");
    auto* window =
        new NPWindow(BRect(30, 30, 830, 630), &fBrowser->Settings(), false, BMessenger());
    const BMessenger messenger(window);
    window->Show();
    Activate(window, true);
    server::testing::Key(window, 'g', B_COMMAND_KEY);
    EXPECT_TRUE(WaitUntilIdle(window));
    ASSERT_TRUE(window->Lock());
    EXPECT_NE(window->FindView("filter"), nullptr);
    window->Unlock();
    messenger.SendMessage(B_QUIT_REQUESTED);
    EXPECT_TRUE(WaitUntil([&] { return !messenger.IsValid(); }));
}
