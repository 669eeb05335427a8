#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "cache/NPBookmark.h"

#include <gtest/gtest.h>

using namespace server::testing;

namespace {

using Texts = std::vector<std::string>;

constexpr const char* kOld = "1012345678.dat";
constexpr const char* kNew = "1012999999.dat";
constexpr const char* kOldLine = "1012345678.dat<>talk &amp; tea Part9 (980)\n";
constexpr const char* kLater = "1012999999.dat<>talk &amp; tea Part10 (5)\n"
                               "1012888888.dat<>talk &amp; teas (7)\n"
                               "1012777777.dat<>something else (9)\n";
const Texts kOffered = {"talk & tea Part10 (5)", "talk & teas (7)"};

std::string Answer(const std::string& body) {
    return "HTTP/1.1 200 OK\r\n\r\n" + body;
}

std::string Thread(const char* title, int posts) {
    std::string dat = std::string("name<>mail<>date<>first<>") + title + "\n";
    for (int i = 1; i < posts; i++)
        dat += "name<>mail<>date<>post<>\n";
    return dat;
}

// A browser with a thread on show, and a server that answers in this order.
class NextThread : public testing::Test {
protected:
    void Begin(std::vector<std::string> answers, const char* title = "talk & tea Part9",
               int posts = 980, bool threadOnly = false) {
        std::vector<RawServer::Script> scripts;
        scripts.push_back(RawServer::Reply(Answer(Thread(title, posts))));
        for (const std::string& answer : answers)
            scripts.push_back(RawServer::Reply(Answer(answer)));
        fServer = std::make_unique<RawServer>(scripts);
        fBrowser = std::make_unique<Browser>(fServer->Port(), threadOnly);
        Activate(fBrowser->Window(), true);
        fBrowser->SelectThread(kOld);
        ASSERT_TRUE(
            fBrowser->WaitForThread(std::string(title) + " (" + std::to_string(posts) + ")"));
    }
    void OpenPostsMenu() {
        fBrowser->Locked(
            [this] {
                fBrowser->Article()->TextView()->MakeFocus(true);
                return true;
            },
            false);
        MenuKey(fBrowser->Window());
        ASSERT_TRUE(WaitUntil([] { return MenuIsOpen(); }));
    }
    // Chooses the item of the posts' menu; the threads that are offered.
    Texts Find() {
        OpenPostsMenu();
        EXPECT_EQ(MenuLabels().back(), "次スレを探す");
        EXPECT_TRUE(ChooseMenuLine("次スレを探す"));
        return Offered();
    }
    Texts Offered() {
        WaitUntil([] { return MenuIsOpen() && MenuLabels().back() != "次スレを探す"; });
        return MenuLabels();
    }
    void ShowBoard(const std::string& title) {
        fBrowser->SelectBoard();
        ASSERT_TRUE(fBrowser->WaitForTitle(title));
        ASSERT_TRUE(fBrowser->WaitForStatus(""));
    }
    bool HasBookmark(const char* dat) {
        return NPBookmark::HasBookmark("board.example", "news", dat);
    }
    bool IsMarked(const char* dat) {
        return fBrowser->Locked(
            [&] {
                NPThreadListView* list = fBrowser->Threads()->List();
                for (int32 i = 0; i < list->FullListCountItems(); i++) {
                    const NPThreadItem* item = list->ThreadAt(i);
                    if (std::string(item->Dat()) == dat)
                        return item->GetColumnContentBitmap(kColumnMark) != nullptr;
                }
                return false;
            },
            false);
    }

    ScratchFolder fFolder;
    std::unique_ptr<RawServer> fServer;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_F(NextThread, IsOfferedFromTheListAndTakesTheBookmarkAlong) {
    Begin({std::string(kOldLine) + kLater, Thread("talk & tea Part10", 5)});
    ShowBoard("ニュース (4)");
    ASSERT_EQ(NPBookmark::Make(Browser::kBoard, kOld, "talk & tea Part9"), B_OK);
    EXPECT_EQ(Find(), kOffered);
    EXPECT_TRUE(ChooseMenuLine(kOffered[0]));
    EXPECT_NE(WaitForAlert().find("talk & tea Part10"), std::string::npos);
    EXPECT_TRUE(fBrowser->WaitForThread("talk & tea Part10 (5)")); // without waiting for the answer
    EXPECT_EQ(fServer->Requests().size(), 3u);
    AnswerAlert(B_ENTER);
    EXPECT_TRUE(WaitUntil([&] { return HasBookmark(kNew) && !HasBookmark(kOld); }));
    EXPECT_TRUE(WaitUntil([&] { return IsMarked(kNew); }));
    EXPECT_EQ(fBrowser->Locked(
                  [&] { return fBrowser->Threads()->List()->FullListCurrentSelection(); }, -1),
              1);
}

TEST_F(NextThread, IsLookedForAtTheServerWhereTheListDoesNotHaveIt) {
    Begin({kOldLine, std::string(kOldLine) + kLater, Thread("talk & teas", 7)});
    ShowBoard("ニュース (1)");
    EXPECT_EQ(Find(), kOffered);
    EXPECT_EQ(fBrowser->Column(kColumnDat), Texts{kOld}); // what is on show stays
    EXPECT_EQ(std::string(fBrowser->Window()->Title()), "ニュース (1)");
    EXPECT_TRUE(ChooseMenuLine(kOffered[1]));
    EXPECT_TRUE(fBrowser->WaitForThread("talk & teas (7)"));
    EXPECT_EQ(CountAlerts(), 0); // there was no bookmark
}

TEST_F(NextThread, IsFoundFromAWindowOfOneThread) {
    Begin({kLater, Thread("talk & tea Part10", 5)}, "talk & tea Part9", 980, true);
    ASSERT_EQ(NPBookmark::Make(Browser::kBoard, kOld, "talk & tea Part9"), B_OK);
    EXPECT_EQ(Find(), kOffered);
    EXPECT_TRUE(ChooseMenuLine(kOffered[0]));
    EXPECT_NE(WaitForAlert(), "");
    AnswerAlert(B_ESCAPE);
    EXPECT_TRUE(fBrowser->WaitForThread("talk & tea Part10 (5)"));
    EXPECT_TRUE(HasBookmark(kOld));
    EXPECT_FALSE(HasBookmark(kNew));
}

TEST_F(NextThread, NoneIsSaidInTheStatusLine) {
    Begin({kOldLine, "gone"});
    OpenPostsMenu();
    EXPECT_TRUE(ChooseMenuLine("次スレを探す"));
    EXPECT_TRUE(fBrowser->WaitForStatus("次スレは見つかりませんでした"));
    EXPECT_FALSE(MenuIsOpen());
}

TEST_F(NextThread, IsOnlyOfferedAtAThreadsEnd) {
    Begin({}, "talk", 979);
    OpenPostsMenu();
    EXPECT_EQ(MenuLabels().back().find("次スレ"), std::string::npos);
    DismissMenu();
    fBrowser->Messenger().SendMessage(kMsgFindNextThread);
    WaitUntilIdle(fBrowser->Window());
    EXPECT_EQ(fServer->Requests().size(), 1u);
}
