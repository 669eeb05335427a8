#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/MessageCounter.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "browser/WindowLink.h"
#include "cache/NPCache.h"
#include "net/NPHttp.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kDate = "Wed, 23 Jan 2002 12:34:56 GMT";
constexpr const char* kLater = "Thu, 24 Jan 2002 12:34:56 GMT";

std::string Answer(const std::string& body, const std::string& status = "200 OK") {
    return "HTTP/1.1 " + status + "\r\nContent-Type: text/plain\r\n\r\n" + body;
}

void MakeCached(const char* dat, const std::string& content, int32 count, const char* date) {
    NPCache cache("board.example", "news", dat, NPCache::Open::kCreate);
    cache.WriteLine(content.data(), content.size());
    cache.WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
    cache.WriteAttr("title", B_STRING_TYPE, "T", 1);
    cache.SetModificationTime(date);
}

using Texts = std::vector<std::string>;

} // namespace

TEST(SubjectWorker, ABoardIsListedWithItsCountInTheTitle) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply(Answer("1.dat<>a &amp; b (5)\nno thread\n2.dat<>c (3)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (3)"));
    EXPECT_EQ(browser.Column(kColumnNumber), (Texts{"1", "3"})); // a bad line uses up its number
    EXPECT_EQ(browser.Column(kColumnTitle), (Texts{"a & b ", "c "}));
    EXPECT_EQ(browser.Column(kColumnRes), (Texts{"5", "3"}));
    EXPECT_EQ(browser.Column(kColumnDat), (Texts{"1.dat", "2.dat"}));
    EXPECT_EQ(server.WaitForRequest(),
              "GET http://board.example/news/subject.txt HTTP/1.1\r\nHost: board.example\r\n"
              "User-Agent: " +
                  std::string(get_user_agent()) + "\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(browser.WaitForStatus(""));
}

TEST(SubjectWorker, CachedThreadsShowTheirState) {
    ScratchFolder folder;
    MakeCached("1.dat", "x\n", 5, kDate);
    MakeCached("2.dat", "x\n", 2, kDate);
    MakeCached("4.dat", "", 9, kDate);
    RawServer server(
        {RawServer::Reply(Answer("1.dat<>a (5)\n2.dat<>b (3)\n3.dat<>c (1)\n4.dat<>d (9)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (4)"));
    EXPECT_EQ(browser.Column(kColumnGotten), (Texts{"5", "2", "", ""}));
    const auto state = [&](int32 i) { return browser.Threads()->List()->ThreadAt(i)->State(); };
    browser.WaitUntil([&] {
        EXPECT_EQ(state(0), kCached);
        EXPECT_EQ(state(1), kNewPosts);
        EXPECT_EQ(state(2), kNotFetched);
        EXPECT_EQ(state(3), kNotFetched);
        return true;
    });
    EXPECT_FALSE(folder.Has("2ch/2chCache/board.example/news/3.dat"));
    EXPECT_FALSE(folder.Has("2ch/2chCache/board.example/news/4.dat")); // empty: no copy at all
}

TEST(SubjectWorker, NamesThatLeadElsewhereAreListedButOpenNothing) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply(
        Answer("../../x.dat<>a (5)\na/b.dat<>b (3)\n" + std::string(300, '1') + ".dat<>c (1)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (3)"));
    EXPECT_EQ(browser.Column(kColumnDat), (Texts{"../../x.dat", "a/b.dat"}));
    EXPECT_FALSE(folder.Has("2ch"));
}

// Each takes two locks, which the sanitizers make slow.
#if defined(__SANITIZE_THREAD__)
constexpr int kManyLines = 5000;
#elif defined(__SANITIZE_ADDRESS__)
constexpr int kManyLines = 20000;
#else
constexpr int kManyLines = 100000;
#endif

TEST(SubjectWorker, AVeryLongListIsListedWhole) {
    ScratchFolder folder;
    std::string list;
    for (int i = 0; i < kManyLines; i++)
        list += std::to_string(1000000000 + i) + ".dat<>t (1)\n";
    RawServer server({RawServer::Reply(Answer(list))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (" + std::to_string(kManyLines) + ")"));
    EXPECT_EQ(browser.Column(kColumnDat).size(), size_t(kManyLines));
}

TEST(SubjectWorker, WhatIsNoListIsShownAsAnAlert) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply(Answer("gone", "404 Not Found"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_EQ(WaitForAlert(), "404 Not Found\r");
    DismissAlert();
    EXPECT_TRUE(browser.WaitForStatus(""));
    EXPECT_TRUE(browser.WaitForTitle("Itamori"));
}

TEST(SubjectWorker, ARefusedConnectionIsShownAsAnAlert) {
    ScratchFolder folder;
    Browser browser(freePort());
    browser.SelectBoard();
    EXPECT_EQ(WaitForAlert().find("接続エラー: "), 0u);
    DismissAlert();
    EXPECT_TRUE(browser.WaitForStatus(""));
}

TEST(SubjectWorker, OfTwoBoardsOnlyTheLastIsListed) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall(Answer("1.dat<>old (1)\n")),
                      RawServer::Reply(Answer("2.dat<>new (2)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForStatus("board.exampleから受信中"));
    browser.SelectBoard("http://board.example/other/");
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    EXPECT_EQ(browser.Column(kColumnTitle), Texts{"new "});
}

TEST(SubjectWorker, OfflineABoardIsListedFromItsFolderNewestFirst) {
    ScratchFolder folder;
    MakeCached("1.dat", "x\n", 5, kDate);
    MakeCached("2.dat", "x\n", 2, kLater);
    Browser browser(freePort());
    browser.SelectBoard(Browser::kBoard, kMsgBoardSelectedCached);
    EXPECT_TRUE(browser.WaitForTitle("ニュース (2)"));
    EXPECT_TRUE(
        browser.WaitUntil([&] { return browser.Threads()->List()->SortKey() == kColumnModified; }));
    EXPECT_EQ(browser.Column(kColumnDat), (Texts{"2.dat", "1.dat"}));
    EXPECT_EQ(browser.Column(kColumnGotten), (Texts{"2", "5"}));
}

TEST(SubjectWorker, OfflineABoardThatWasNeverReadIsEmpty) {
    ScratchFolder folder;
    Browser browser(freePort());
    browser.SelectBoard(Browser::kBoard, kMsgBoardSelectedCached);
    EXPECT_TRUE(browser.WaitForTitle("ニュース (0)"));
    EXPECT_FALSE(folder.Has("2ch"));
}

TEST(SubjectWorker, AWindowClosesWhileItsBoardLoads) {
    ScratchFolder folder;
    RawServer server({RawServer::Stall(Answer("1.dat<>old (1)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForStatus("board.exampleから受信中"));
    browser.Close();
    EXPECT_FALSE(browser.Messenger().IsValid());
}

// A worker that has been replaced sees its stop only at its next step.
TEST(SubjectWorker, AReplacedWorkerTouchesNothing) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply(Answer("1.dat<>a (5)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    WindowLink link(browser.Window());
    const port_id replaced = 1 << 30;
    EXPECT_TRUE(link.CallForThreads([](BrowserWindow* window) {
        window->addThreadItem(replaced, 0, "http://board.example/old/", nullptr, nullptr);
        window->addThreadItem(replaced, 1, "old", "1", "9.dat");
        window->addBookmarkItem(replaced, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
    }));
    EXPECT_EQ(browser.Column(kColumnDat), Texts{"1.dat"});
}

TEST(NewWorkers, OneThatCantBeStartedStopsNothing) {
    ScratchFolder folder;
    MessageCounter cursor(kMsgBusyCursor);
    RawServer server({RawServer::Stall(Answer("1.dat<>a (1)\n"))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForStatus("board.exampleから受信中"));
    browser.SelectThread("1.dat");
    server.WaitForRequest(1);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return cursor.Count() == 2; }));
    const struct {
        const char* key;
        std::string value;
        std::string name;
    } cases[] = {
        {"proxy_port", "12345678", "ポート"},
        {"proxy_port", "65536", "ポート"},
        {"proxy_port", "x", "ポート"},
        {"proxy_host", std::string(64, 'h'), "ホスト"},
    };
    const auto expectAlert = [](const std::string& text) {
        EXPECT_EQ(WaitForAlert(), text);
        DismissAlert();
    };
    for (const auto& test : cases) {
        browser.Settings().Replace(test.key, test.value.c_str());
        const std::string text = "プロキシの" + test.name + "が正しくありません: " + test.value;
        browser.SelectBoard("http://other.example/news/");
        expectAlert(text);
        browser.SelectThread("2.dat");
        expectAlert(text);
        browser.Messenger().SendMessage(kMsgStartPatrol);
        expectAlert(text);
        browser.Settings().Replace(test.key, "1");
    }
    std::vector<port_id> ports; // all that there are: none is left to stop a worker by
    while (ports.empty() || ports.back() >= 0)
        ports.push_back(create_port(1, "all of them"));
    browser.SelectBoard("http://other.example/news/");
    browser.SelectThread("2.dat");
    browser.Messenger().SendMessage(kMsgListBookmarks);
    EXPECT_TRUE(server::testing::WaitUntilIdle(browser.Window()));
    for (const port_id port : ports)
        delete_port(port);
    MessageCounter mark(kMsgToggleClick); // comes behind all that were sent before it
    be_app_messenger.SendMessage(kMsgToggleClick);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return mark.Count() == 1; }));
    EXPECT_EQ(cursor.Count(), 2); // nobody gave it back
}

TEST(CgiDownload, ALineThatCantBeSplitIsCountedAndTraced) {
    ScratchFolder folder;
    MakeCached("1.cgi", "no post\n", 1, kDate);
    RawServer server({RawServer::Reply(Answer("<dl>\n"))});
    Browser browser(server.Port());
    testing::internal::CaptureStdout();
    browser.SelectThread("1.cgi");
    EXPECT_TRUE(browser.WaitUntil(
        [&] { return std::string(browser.Article()->GetTitle()).ends_with("(1)"); }));
    fflush(stdout);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("parseArticle() error\n"),
              std::string::npos);
}
