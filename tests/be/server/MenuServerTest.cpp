#include "server/MenuServer.h"
#include "support/TestWindow.h"

#include <Screen.h>

#include <mutex>
#include <optional>

namespace {

using server::MenuLine;
using server::MenuOutcome;
using server::MenuRequest;

MenuLine Line(const char* label, int32 token) {
    MenuLine line;
    line.label = label;
    line.token = token;
    return line;
}

struct MenuFixture : testing::Test {
    MenuFixture() {
        MenuLine separator;
        separator.separator = true;
        MenuLine marked = Line("Marked", 2);
        marked.marked = true;
        MenuLine disabled = Line("Disabled", 3);
        disabled.enabled = false;
        disabled.shortcut = "Ctrl+D";
        MenuLine submenu = Line("More", 0);
        submenu.hasSubmenu = true;
        submenu.submenu = {Line("Inner & outer", 4), Line("1000\tpoints", 5)};
        request.menu = {Line("First", 1), separator, marked, disabled, submenu};
        request.where = BPoint(200, 200);
        request.done = [this](const MenuOutcome& result) {
            std::lock_guard lock(mutex);
            EXPECT_FALSE(outcome.has_value());
            outcome = result;
        };
    }
    void Open() {
        server::ShowMenu(request);
        ASSERT_TRUE(server::testing::WaitUntil(server::testing::MenuIsOpen));
    }
    MenuOutcome Outcome() {
        EXPECT_TRUE(server::testing::WaitUntil([this] {
            std::lock_guard lock(mutex);
            return outcome.has_value();
        }));
        std::lock_guard lock(mutex);
        return outcome.value_or(MenuOutcome());
    }

    std::mutex mutex;
    std::optional<MenuOutcome> outcome; // guarded by mutex
    MenuRequest request;
};

} // namespace

using NativeMenu = MenuFixture;

TEST_F(NativeMenu, ShowsItsLinesAsTheyAre) {
    Open();
    EXPECT_EQ((Lines{"First", "-", "Marked", "Disabled", "More", "More/Inner & outer",
                     "More/1000 points"}),
              server::testing::MenuLabels());
    EXPECT_TRUE(server::testing::MenuLineIsMarked("Marked"));
    EXPECT_FALSE(server::testing::MenuLineIsMarked("First"));
    EXPECT_FALSE(server::testing::MenuLineIsEnabled("Disabled"));
    server::testing::DismissMenu();
    EXPECT_EQ(MenuOutcome::Kind::kDismissed, Outcome().kind);
    EXPECT_FALSE(server::testing::MenuIsOpen());
}

TEST_F(NativeMenu, AChosenLineGivesItsToken) {
    Open();
    EXPECT_FALSE(server::testing::ChooseMenuLine("Disabled"));
    EXPECT_TRUE(server::testing::ChooseMenuLine("More/Inner & outer"));
    EXPECT_EQ(MenuOutcome::Kind::kChosen, Outcome().kind);
    EXPECT_EQ(4, Outcome().token);
}

TEST_F(NativeMenu, ALineWithASubmenuIsChosenOnlyWithATokenOfItsOwn) {
    Open();
    EXPECT_FALSE(server::testing::ChooseMenuLine("More"));
    server::testing::DismissMenu();
    Outcome();
    outcome.reset();
    request.menu.back().token = 6;
    Open();
    EXPECT_TRUE(server::testing::ChooseMenuLine("More"));
    EXPECT_EQ(MenuOutcome::Kind::kChosen, Outcome().kind);
    EXPECT_EQ(6, Outcome().token);
    for (const char key : {B_ENTER, B_SPACE}) {
        outcome.reset();
        request.selected = static_cast<int32>(request.menu.size()) - 1;
        Open();
        server::testing::KeyInMenu(key);
        EXPECT_EQ(6, Outcome().token);
    }
}

TEST_F(NativeMenu, HundredsOfLinesStayOnTheScreen) {
    for (int32 i = 0; i < 500; i++)
        request.menu.push_back(Line("a line among many", 100 + i));
    Open();
    const BRect frame = server::testing::MenuFrame();
    EXPECT_LE(frame.Height(), BScreen().Frame().Height());
    EXPECT_LT(frame.Width(), 400);
    server::testing::DismissMenu();
}

TEST_F(NativeMenu, ASecondMenuEndsTheFirst) {
    Open();
    MenuRequest second;
    second.menu = {Line("Second", 9)};
    server::ShowMenu(second);
    EXPECT_EQ(MenuOutcome::Kind::kDismissed, Outcome().kind);
    EXPECT_EQ(Lines{"Second"}, server::testing::MenuLabels());
    server::testing::DismissMenu();
}

TEST_F(NativeMenu, ChangesReachTheOpenMenu) {
    Open();
    request.menu[0].marked = true;
    request.menu[3].enabled = true;
    request.menu[4].submenu[0].label = "Changed";
    server::UpdateMenu(request.menu);
    EXPECT_TRUE(server::testing::MenuLineIsMarked("First"));
    EXPECT_TRUE(server::testing::MenuLineIsEnabled("Disabled"));
    EXPECT_TRUE(server::testing::ChooseMenuLine("More/Changed"));
}

TEST_F(NativeMenu, AnotherTitleOfTheBarEndsIt) {
    request.titles = {BRect(0, 0, 49, 19), BRect(50, 0, 99, 19), BRect(100, 0, 149, 19)};
    request.currentTitle = 0;
    Open();
    server::testing::KeyInMenu(B_LEFT_ARROW);
    EXPECT_EQ(MenuOutcome::Kind::kTitle, Outcome().kind);
    EXPECT_EQ(2, Outcome().title);
}

TEST_F(NativeMenu, TheWindowStaysActiveUnderItsMenu) {
    TestWindow<> window;
    window.Show();
    ASSERT_TRUE(server::testing::WaitUntil(
        [&] { return window.Locked([&] { return window->IsActive(); }); }));
    request.window = window.Get();
    Open();
    window.Settle();
    EXPECT_TRUE(window.Locked([&] { return window->IsActive(); }));
    server::testing::DismissMenu();
    window.Settle();
    EXPECT_TRUE(window.Locked([&] { return window->IsActive(); }));
}
