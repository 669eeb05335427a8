#include "support/ScratchFolder.h"
#include "support/ThreadFixture.h"

#include "net/lines.h"
#include "views/NPArticleView.h"

using server::testing::ChooseMenuLine;
using server::testing::Key;
using server::testing::MenuIsOpen;
using server::testing::MenuLabels;
using server::testing::MouseLeave;
using server::testing::MouseMove;
using server::testing::WaitUntil;
using Texts = std::vector<std::string>;

namespace {

constexpr const char* kDay = "2026/11/22(日) 10:00:00.00";

// A thread whose posts have writers, and what the user does with it.
class People : public ThreadFixture {
protected:
    void TearDown() override {
        if (MenuIsOpen())
            server::testing::DismissMenu();
        ThreadFixture::TearDown();
    }
    void AddPostBy(int32 number, const std::string& name, const std::string& id,
                   const std::string& body) {
        Do([&] {
            fView->addNumItem(number);
            fView->addNameItem(name.c_str());
            fView->addMailItem("sage");
            fView->addDateItem((std::string(kDay) + (id.empty() ? "" : " ID:" + id)).c_str());
            fView->addArticleItem(body.c_str());
            fView->addLineFeed();
        });
        Settle();
    }
    // 1 a, 2 b >>1, 3 a >>2 (twice), 4 ? >>1, 5 plain, 6 the last.
    void AddThread() {
        AddPostBy(1, "太郎 ◆trip", "aaa", "最初");
        AddPostBy(2, "名無し", "bbb", Anchor(">>1") + " 二番");
        AddPostBy(3, "太郎 ◆trip", "aaa", Anchor(">>2") + " 三番 ＞＞２");
        AddPostBy(4, "名無し", "???", ">>1,2 四番");
        AddPostBy(5, "名無し", "", "五番");
        AddPostBy(6, "名無し", "bbb", "六番");
    }
    int32 PostAt(int32 number) { return OffsetOf(std::to_string(number) + " 名前") + 1; }
    // The lines that speak of people.
    Texts MenuOf(int32 number) {
        ClickAt(PostAt(number), B_SECONDARY_MOUSE_BUTTON);
        EXPECT_TRUE(WaitUntil(MenuIsOpen));
        return AddedLines();
    }
    static Texts AddedLines() {
        Texts lines = MenuLabels();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("のレス") == line.npos && line.find("への返信") == line.npos;
        });
        return lines;
    }
    static void Choose(const std::string& line) {
        EXPECT_TRUE(WaitUntil(MenuIsOpen));
        EXPECT_TRUE(ChooseMenuLine(line)) << line;
        EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
    }
    void Dismiss() {
        server::testing::DismissMenu();
        EXPECT_TRUE(WaitUntil([] { return !MenuIsOpen(); }));
        Settle();
    }
    PopUpWindow* OpenFromMenu(int32 number, const std::string& line) {
        MenuOf(number);
        Choose(line);
        return Topmost(1);
    }
    // The one that was opened last.
    PopUpWindow* Topmost(size_t count) {
        EXPECT_TRUE(WaitForPopUps(count));
        Settle();
        PopUpWindow* popUp = PopUps().empty() ? nullptr : PopUps().back();
        EXPECT_TRUE(popUp == nullptr || server::testing::WaitUntilIdle(popUp));
        return popUp;
    }
    static BPoint PointIn(PopUpWindow* popUp, const std::string& part) {
        popUp->Lock();
        const PopUpTextView* text = popUp->TextView();
        float height = 0;
        const auto offset = static_cast<int32>(std::string(text->Text()).find(part));
        const BPoint point = text->PointAt(offset, &height) + BPoint(1, height / 2);
        popUp->Unlock();
        return point;
    }
    void Press(char key) {
        Key(fWindow, key);
        Settle();
    }
    static bool WaitForChoiceIn(PopUpWindow* popUp, const std::string& text) {
        return WaitUntil([&] {
            popUp->Lock();
            const LinkTextView::Link* link = popUp->TextView()->ChosenReference();
            const bool isChosen = link != nullptr && link->text == text;
            popUp->Unlock();
            return isChosen;
        });
    }
    std::string Chosen() {
        return Ask([this] {
            const LinkTextView::Link* url = fView->ChosenUrl();
            const LinkTextView::Link* link = url != nullptr ? url : fView->ChosenReference();
            return link != nullptr ? link->text : std::string();
        });
    }
};

} // namespace

TEST_F(People, TheMenuTellsWhoWroteAndHowManyAnswered) {
    AddThread();
    const Texts kMenus[] = {
        {"このIDのレス (1/2)", "このトリップのレス (1/2)", "このレスへの返信 (2)"},
        {"このIDのレス (1/2)", "このレスへの返信 (2)"},
        {"このIDのレス (2/2)", "このトリップのレス (2/2)"},
        {},
        {},
        {"このIDのレス (2/2)"},
    };
    for (int32 number = 1; number <= 6; number++) {
        EXPECT_EQ(MenuOf(number), kMenus[number - 1]) << number;
        Dismiss();
    }
    AddPostBy(7, "名無し", "aaa", ">>6");
    EXPECT_EQ(MenuOf(1)[0], "このIDのレス (1/3)");
    Dismiss();
    EXPECT_EQ(MenuOf(6)[1], "このレスへの返信 (1)");
    Dismiss();
    Do([this] { fView->clearText(); });
    AddPostBy(1, "別", "aaa", "x");
    EXPECT_EQ(MenuOf(1), Texts{"このIDのレス (1/1)"});
    Dismiss();
}

TEST_F(People, ALineOpensItsPosts) {
    AddThread();
    const std::string text = Text();
    const auto post = [&](int32 number, const char* indent) {
        const size_t start = text.find(std::to_string(number) + " 名前");
        const size_t next = text.find(std::to_string(number + 1) + " 名前");
        std::string lines;
        for (size_t at = start; at < std::min(next, text.size());) {
            const size_t end = text.find('\n', at) + 1;
            lines += indent + text.substr(at, end - at);
            at = end;
        }
        return lines;
    };
    // Without the last line feed.
    const struct {
        int32 number;
        const char* line;
        std::string shown;
    } kCases[] = {
        {3, "このIDのレス (2/2)", post(1, "") + post(3, "")},
        {6, "このIDのレス (2/2)", post(2, "") + post(6, "")},
        {1, "このトリップのレス (1/2)", post(1, "") + post(3, "")},
        {1, "このレスへの返信 (2)", post(2, "") + post(3, "　　") + post(4, "")},
    };
    for (const auto& item : kCases) {
        PopUpWindow* popUp = OpenFromMenu(item.number, item.line);
        ASSERT_NE(popUp, nullptr);
        EXPECT_EQ(TextOf(popUp) + "\n", item.shown) << item.line;
        ClickAt(0);
        EXPECT_TRUE(WaitForPopUps(0));
    }
}

// A narrow thread: what wraps in an indented post is indented too, and a reference there still is
// one.
TEST_F(People, IndentedLinesWrapInTheirOwnWidth) {
    AddPostBy(1, "a", "", "x");
    AddPostBy(2, "a", "", ">>1");
    std::string wide;
    for (int i = 0; i < 40; i++)
        wide += "長い文です。";
    AddPostBy(3, "a", "", ">>2 " + wide + Anchor(">>4") + " 終");
    AddPostBy(4, "a", "", "x");
    AddPostBy(5, "a", "", "x");
    PopUpWindow* popUp = OpenFromMenu(1, "このレスへの返信 (1)");
    ASSERT_NE(popUp, nullptr);
    popUp->Lock();
    const PopUpTextView* text = popUp->TextView();
    const std::string shown = text->Text();
    for (int32 line = 3; line < text->CountLines(); line++) {
        const std::string start = shown.substr(static_cast<size_t>(text->OffsetAt(line)), 6);
        EXPECT_TRUE(start == "　　" || start.empty()) << line << start;
    }
    EXPECT_GT(text->CountLines(), 6);
    popUp->Unlock();
    server::testing::Click(popUp, PointIn(popUp, ">>4 終") + BPoint(3, 0));
    PopUpWindow* next = Topmost(2);
    EXPECT_EQ(TextOf(next).substr(0, 2), "4 ");
}

TEST_F(People, AHundredPostsStandInAPopUpAndTheRestIsCounted) {
    for (int32 i = 1; i <= 123; i++)
        Do([&] {
            fView->addNumItem(i);
            fView->addNameItem("a");
            fView->addMailItem("");
            fView->addDateItem((std::string(kDay) + " ID:x").c_str());
            fView->addArticleItem("x");
            fView->addLineFeed();
        });
    PopUpWindow* popUp = OpenFromMenu(1, "このIDのレス (1/123)");
    ASSERT_NE(popUp, nullptr);
    const std::string shown = TextOf(popUp);
    EXPECT_NE(shown.find("100 名前"), std::string::npos);
    EXPECT_EQ(shown.find("101 名前"), std::string::npos);
    EXPECT_TRUE(shown.ends_with("\n\nほか 23 レス\n"));
    EXPECT_TRUE(popUp->Scrolls());
}

TEST_F(People, APopUpHasTheMenuOfItsPosts) {
    AddThread();
    PopUpWindow* first = OpenFromMenu(1, "このレスへの返信 (2)");
    ASSERT_NE(first, nullptr);
    const BPoint point = PointIn(first, "二番");
    MouseMove(first, point);
    server::testing::Click(first, point, B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(WaitUntil(MenuIsOpen));
    MouseLeave(first); // the menu has the pointer
    EXPECT_TRUE(server::testing::WaitUntilIdle(first));
    EXPECT_EQ(AddedLines(), (Texts{"このIDのレス (1/2)", "このレスへの返信 (2)"}));
    EXPECT_EQ(MenuLabels()[1], "2 をコピー");
    Choose("このIDのレス (1/2)");
    PopUpWindow* second = Topmost(2);
    EXPECT_EQ(TextOf(second).substr(0, 2), "2 ");
    EXPECT_NE(TextOf(second).find("六番"), std::string::npos);
    first->Lock();
    EXPECT_NEAR(second->Frame().left, first->ConvertToScreen(point).x + 5, 1);
    first->Unlock();
    // And from there, each on its own ground.
    const BPoint deeper = PointIn(second, "六番");
    MouseMove(second, deeper);
    server::testing::Click(second, deeper, B_SECONDARY_MOUSE_BUTTON);
    Choose("このIDのレス (2/2)");
    PopUpWindow* third = Topmost(3);
    const auto ground = [](PopUpWindow* popUp) {
        return static_cast<int>(server::testing::Snapshot(popUp).At(3, 3).red);
    };
    EXPECT_EQ(ground(first), 239);
    EXPECT_NE(ground(second), 239);
    EXPECT_NE(ground(third), ground(second));

    // Not chosen from, the menu leaves the pop-up to the pointer again.
    Press(B_ESCAPE);
    EXPECT_TRUE(WaitForPopUps(0));
    first = OpenFromMenu(1, "このレスへの返信 (2)");
    MouseMove(first, point);
    server::testing::Click(first, point, B_SECONDARY_MOUSE_BUTTON);
    ASSERT_TRUE(WaitUntil(MenuIsOpen));
    MouseLeave(first);
    Dismiss();
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(People, LinksAreChosenAndOpenedByTheKeyboard) {
    AddPostBy(1, "a", "", "最初");
    AddPostBy(2, "a", "", Anchor(">>1") + " http://www.example/ 二番");
    AddPostBy(3, "a", "", Anchor(">>2") + " " + Anchor(">>1"));
    AddPostBy(4, "a", "", "x");
    Do([this] { fView->MakeFocus(); });
    const int32 link = OffsetOf(">>1");
    const auto edge = [&] {
        const BPoint at = PointOf(link) + BPoint(-2, 0);
        const rgb_color color = server::testing::Snapshot(fWindow).At(static_cast<int32>(at.x),
                                                                      static_cast<int32>(at.y));
        return color.red == 0 && color.blue == 255;
    };
    EXPECT_FALSE(edge());
    EXPECT_EQ(Chosen(), "");
    Press(B_ENTER);
    for (const char* chosen : {">>1", "http://www.example/", ">>2", ">>1", ">>1"}) {
        Press(']');
        EXPECT_EQ(Chosen(), chosen);
    }
    for (const char* chosen : {">>2", "http://www.example/"}) {
        Press('[');
        EXPECT_EQ(Chosen(), chosen);
    }
    Press(B_ENTER);
    EXPECT_EQ(server::testing::Launches(), Texts{"http://www.example/"});
    Press('[');
    EXPECT_TRUE(edge());
    Press(']');
    Press(']');
    EXPECT_FALSE(edge());

    // The pointer does not close what the keyboard opened, and the keys go on in it.
    Press(B_ENTER);
    PopUpWindow* first = Topmost(1);
    MouseMove(first, BPoint(5, 5));
    MouseLeave(first);
    Press(']');
    EXPECT_TRUE(WaitForChoiceIn(first, ">>1"));
    EXPECT_EQ(Chosen(), ">>2");
    Press(B_ENTER);
    PopUpWindow* second = Topmost(2);
    EXPECT_NE(TextOf(second).find("最初"), std::string::npos);
    MouseLeave(second);
    // That one has no links: its opener's are chosen again, and another takes its place.
    const BMessenger old(second);
    Press('[');
    EXPECT_TRUE(WaitForChoiceIn(first, ">>1"));
    Press(B_ENTER);
    EXPECT_TRUE(WaitUntil([&] { return !old.IsValid(); }));
    Topmost(2);
    Press(B_ESCAPE);
    EXPECT_TRUE(WaitForPopUps(1));
    Press(B_ESCAPE);
    EXPECT_TRUE(WaitForPopUps(0));
}

TEST_F(People, AHairlineStandsBeforeTheFirstNewPost) {
    AddThread();
    for (int32 i = 7; i < 40; i++)
        AddPostBy(i, "a", "", "x");
    Do([this] { fView->MakeFocus(); });
    const BPoint at = PointOf(OffsetOf("4 名前") - 1);
    const auto hasLine = [&] {
        const server::testing::Picture picture = server::testing::Snapshot(fWindow);
        int lines = 0;
        for (int32 y = static_cast<int32>(at.y) - 8; y <= static_cast<int32>(at.y) + 8; y++)
            lines += picture.At(100, y).blue < 100 ? 1 : 0;
        return lines;
    };
    const std::string before = Text();
    EXPECT_EQ(hasLine(), 0);
    Do([this] { fView->SetFirstNew(4); });
    Settle();
    EXPECT_EQ(hasLine(), 1);
    EXPECT_EQ(Text(), before);
    Press('n');
    EXPECT_EQ(Ask([this] { return fView->Bounds().top; }),
              Ask([this] { return fView->PointAt(fView->ArticleAt(4)).y; }));
    Do([this] { fView->ScrollTo(BPoint(0, 0)); });
    Do([this] { fView->SetFirstNew(0); });
    Settle();
    EXPECT_EQ(hasLine(), 0);
}

TEST_F(People, OwnPostsHaveABarInTheListOfAnswersToo) {
    AddThread();
    Do([this] { fView->SetOwnPosts({2, 99}); });
    const auto ticks = Ask([this] { return fView->Ticks(); });
    std::string text;
    for (const NPTextView::Tick& tick : ticks)
        text += (tick.isOwn ? "own " : "answer ") + Text().substr(tick.offset, 2);
    EXPECT_EQ(text, "own 2 answer 3 answer 4 ");
    PopUpWindow* popUp = OpenFromMenu(1, "このレスへの返信 (2)");
    ASSERT_NE(popUp, nullptr);
    const server::testing::Picture picture = server::testing::Snapshot(popUp);
    const auto hasBar = [&](const std::string& part) {
        return picture.At(3, static_cast<int32>(PointIn(popUp, part).y)).red < 100;
    };
    EXPECT_TRUE(hasBar("2 名前") && hasBar("二番"));
    EXPECT_FALSE(hasBar("3 名前") || hasBar("四番"));
}

TEST(FirstNewPost, IsThatOfTheLastReload) {
    const ScratchFolder folder;
    BWindow* window = new BWindow(BRect(0, 0, 400, 400), "pane", B_TITLED_WINDOW, 0);
    NPArticleView* pane = new NPArticleView(window->Bounds());
    window->Lock();
    window->AddChild(pane);
    struct Case {
        const char* dat;
        int32 cached;
        int32 all;
        bool restarts;
        int32 firstNew;
    };
    port_id request = 1;
    for (const Case& row : {Case{"1.dat", 0, 3, false, 0}, Case{"1.dat", 3, 5, false, 4},
                            Case{"1.dat", 5, 5, false, 0}, Case{"1.dat", 5, 6, false, 6},
                            Case{"1.dat", 6, 7, true, 0}, Case{"1.dat", 7, 8, false, 8},
                            Case{"2.dat", 2, 2, false, 0}, Case{"1.dat", 8, 8, false, 0}}) {
        std::string text = "a";
        _ArticleOut post = {};
        post.name = post.date = post.message = post.mail = text.data();
        pane->ShowThread(++request, "http://board.example/news/", row.dat);
        if (row.restarts)
            pane->Restart(request);
        for (int32 i = 1; i <= row.all; i++) {
            pane->addArticleItem(request, "title", i, post);
            if (i == row.cached && !row.restarts)
                pane->ReturnToPlace(request);
        }
        pane->addArticleItem(request, "title", row.all, _ArticleOut{});
        EXPECT_EQ(pane->TextView()->FirstNew(), row.firstNew) << row.dat << row.cached << row.all;
    }
    window->Quit();
}
