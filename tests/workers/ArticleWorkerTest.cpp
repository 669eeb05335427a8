#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "cache/NPCache.h"
#include "net/lines.h"

#include <gtest/gtest.h>

#include <ScrollBar.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <sys/resource.h>

namespace {

constexpr const char* kDate = "Wed, 23 Jan 2002 12:34:56 GMT";
constexpr const char* kLater = "Thu, 24 Jan 2002 12:34:56 GMT";
constexpr const char* kEpoch = "Thu, 01 Jan 1970 00:00:00 GMT";
constexpr const char* kFile = "2ch/2chCache/board.example/news/1.dat";

std::string Post(int number) {
    const std::string text = std::to_string(number);
    return "n" + text + "<>sage<>d" + text + "<> body" + text + " <>" +
           (number == 1 ? "title" : "") + "\n";
}

std::string Posts(int first, int last) {
    std::string posts;
    for (int i = first; i <= last; i++)
        posts += Post(i);
    return posts;
}

std::string Shown(int first, int last) {
    std::string text;
    for (int i = first; i <= last; i++) {
        const std::string number = std::to_string(i);
        text += number + " 名前：n" + number + " E-mail：sage 投稿日：d" + number + "\nbody" +
                number + " \n\n";
    }
    return text;
}

std::string Answer(const std::string& body, const char* status = "200 OK",
                   const char* date = kDate) {
    return "HTTP/1.1 " + std::string(status) +
           "\r\nContent-Length: " + std::to_string(body.size()) + "\r\nLast-Modified: " + date +
           "\r\n\r\n" + body;
}

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
}

// While it lives no file of the program grows beyond the given bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &fLimit);
        const rlimit limit{bytes, fLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &fLimit); }

private:
    rlimit fLimit;
};

// The reader's way to reload what is on show.
void ReloadFromScratch(Browser& browser) {
    browser.Locked(
        [&] { return BMessenger(browser.Article()).SendMessage(kMsgReloadFromScratch) == B_OK; },
        false);
}

float Place(Browser& browser) {
    return browser.Locked(
        [&] { return browser.Article()->TextView()->ScrollBar(B_VERTICAL)->Value(); }, -1.0F);
}

class ArticleWorker : public testing::Test {
protected:
    static constexpr int32 kPlace = 321; // where the reader left the cached thread, in pixels
    static constexpr int kMany = 60;     // posts that fill the pane and more

    static void CacheWithPlace() {
        Cache(Posts(1, kMany), kMany);
        NPCache("board.example", "news", "1.dat", NPCache::Open::kExisting)
            .WriteAttr("bar_pos", B_INT32_TYPE, &kPlace, sizeof(kPlace));
    }
    static bool WaitForTheCachedPosts(Browser& browser) {
        return browser.WaitUntil([&] {
            return Shown(1, kMany) == browser.Article()->GetText() && Place(browser) == kPlace;
        });
    }
    static void Cache(const std::string& content, int32 count) {
        NPCache cache("board.example", "news", "1.dat", NPCache::Open::kCreate);
        cache.WriteLine(content.data(), content.size());
        cache.WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
        cache.SetModificationTime(kDate);
    }
    static void MarkUnfinished() {
        NPCache("board.example", "news", "1.dat", NPCache::Open::kExisting).MarkUnfinished();
    }
    static std::string Time() {
        return NPCache("board.example", "news", "1.dat", NPCache::Open::kExisting)
            .GetModificationTime();
    }
    static int32 Count() {
        int32 count = -1;
        NPCache cache("board.example", "news", "1.dat", NPCache::Open::kExisting);
        cache.ReadAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
        return count;
    }

    ScratchFolder fFolder;
};

} // namespace

TEST_F(ArticleWorker, AThreadIsShownAndCachedAsServed) {
    RawServer server({RawServer::Reply(Answer(Posts(1, 3)))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(browser.Text(), Shown(1, 3));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 3));
    EXPECT_EQ(Time(), kDate);
    EXPECT_EQ(Count(), 3);
    const std::string request = server.WaitForRequest();
    EXPECT_EQ(request.find("GET http://board.example/news/dat/1.dat HTTP/1.1\r\n"), 0u);
    EXPECT_FALSE(Has(request, "Range"));
    EXPECT_FALSE(Has(request, "If-Modified-Since"));
}

TEST_F(ArticleWorker, AReloadAsksForTheBytesBehindTheCachedOnes) {
    Cache(Posts(1, 2), 2);
    RawServer server({RawServer::Reply(Answer(Posts(3, 4), "206 Partial Content", kLater))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (4)"));
    EXPECT_EQ(browser.Text(), Shown(1, 4));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 4));
    EXPECT_EQ(Time(), kLater);
    EXPECT_EQ(Count(), 4);
    EXPECT_TRUE(Has(server.WaitForRequest(),
                    std::string("If-Modified-Since: ") + kDate +
                        "\r\nRange: bytes=" + std::to_string(Posts(1, 2).size()) + "-\r\n"));
}

TEST_F(ArticleWorker, AnUnchangedThreadIsShownFromTheCacheAlone) {
    Cache(Posts(1, 2), 99);
    RawServer server({RawServer::Reply("HTTP/1.1 304 Not Modified\r\n\r\n")});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (2)"));
    EXPECT_EQ(browser.Text(), Shown(1, 2));
    EXPECT_EQ(Time(), kDate);
    EXPECT_EQ(Count(), 99); // nothing of the file is touched
}

TEST_F(ArticleWorker, ACutConnectionLeavesTheCacheAtAWholeLine) {
    const std::string whole = Answer(Posts(1, 3));
    RawServer server({RawServer::CutAfter(whole.size() - 5, whole),
                      RawServer::Reply(Answer(Post(3), "206 Partial Content"))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForStatus("途中で切れました"));
    EXPECT_STREQ(browser.Article()->GetTitle(), "title (2)");
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 2));
    EXPECT_EQ(Time(), kEpoch);
    EXPECT_EQ(Count(), 2);
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 3));
    EXPECT_EQ(Time(), kDate);
    const std::string request = server.WaitForRequest(1);
    EXPECT_TRUE(Has(request, std::string("If-Modified-Since: ") + kEpoch));
    EXPECT_TRUE(Has(request, "Range: bytes=" + std::to_string(Posts(1, 2).size()) + "-\r\n"));
}

TEST_F(ArticleWorker, AFullDiskKeepsWholeLinesAndTheNextReloadTheRest) {
    const std::string kept = Posts(1, 40);
    RawServer server({RawServer::Reply(Answer(Posts(1, 50))),
                      RawServer::Reply(Answer(Posts(41, 50), "206 Partial Content"))});
    Browser browser(server.Port());
    {
        const FullDisk disk(kept.size() + 3);
        browser.SelectThread("1.dat");
        server.WaitForRequest();
        EXPECT_TRUE(browser.WaitUntil([&] { return fFolder.Read(kFile) == kept; }));
        EXPECT_TRUE(browser.WaitForStatus("キャッシュに書き込めません"));
    }
    EXPECT_EQ(fFolder.Read(kFile), kept);
    EXPECT_EQ(Time(), kEpoch);
    browser.SelectThread("1.dat");
    EXPECT_TRUE(Has(server.WaitForRequest(1), "Range: bytes=" + std::to_string(kept.size()) + "-"));
    EXPECT_TRUE(browser.WaitUntil([&] { return Time() == kDate; }));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 50));
}

TEST_F(ArticleWorker, ACacheThatACrashCutIsMendedFirst) {
    Cache(Posts(1, 2) + "half a li", 2);
    MarkUnfinished();
    RawServer server({RawServer::Reply(Answer(Post(3), "206 Partial Content"))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 3));
}

TEST_F(ArticleWorker, ACopyThatWasCutAtItsEndIsFoundWhole) {
    const std::string end =
        "Content-Range: bytes */" + std::to_string(Posts(1, 2).size()) + "\r\n\r\n";
    const std::string head = "HTTP/1.1 416 Range Not Satisfiable\r\n";
    Cache(Posts(1, 2), 1);
    MarkUnfinished();
    RawServer server({RawServer::Reply(head + end), RawServer::Reply(head + end),
                      RawServer::Reply(head + "Last-Modified: " + kDate + "\r\n" + end)});
    Browser browser(server.Port());
    // Its own time, the clock's, is of no use to the server: until the server names one the epoch
    // goes out.
    size_t reload = 0;
    for (const char* time : {kEpoch, kEpoch, kDate}) {
        browser.SelectThread("1.dat");
        server.WaitForRequest(reload++);
        EXPECT_TRUE(browser.WaitForThread("title (2)"));
        EXPECT_EQ(browser.Text(), Shown(1, 2));
        EXPECT_EQ(Time(), time);
        EXPECT_EQ(Count(), 2);
    }
    EXPECT_TRUE(Has(server.WaitForRequest(2), std::string("If-Modified-Since: ") + kEpoch));
}

TEST_F(ArticleWorker, AThreadWithoutATimeGoesOnBeingAskedForFromTheEpoch) {
    RawServer server({RawServer::Reply(Answer(Posts(1, 2), "200 OK", "no date")),
                      RawServer::Reply("HTTP/1.1 206 Partial Content\r\n\r\n" + Post(3))});
    Browser browser(server.Port());
    for (const char* title : {"title (2)", "title (3)"}) {
        browser.SelectThread("1.dat");
        EXPECT_TRUE(browser.WaitForThread(title));
        EXPECT_EQ(Time(), kEpoch);
    }
    EXPECT_EQ(Count(), 3);
    EXPECT_FALSE(
        Has(fFolder.Read("2ch/2chCache/board.example/news/.attributes/1.dat"), "unfinished"));
}

TEST_F(ArticleWorker, AnOverlongLineCostsNoOtherPost) {
    std::string body;
    while (body.size() < 9000)
        body += "\x82\xA0"; // a letter of two bytes
    const std::string thread =
        Post(1) + "n2<>sage<>d2<> " + body + " <>\n" + std::string(20000, 'x') + "\n" + Post(4);
    const std::string whole = Answer(thread);
    RawServer server(
        {RawServer::CutAfter(whole.size() - 15000, whole),
         RawServer::Reply(Answer(thread.substr(thread.find('x')), "206 Partial Content"))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForStatus("途中で切れました"));
    EXPECT_EQ(fFolder.Read(kFile), thread.substr(0, thread.find('x')));
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (4)"));
    EXPECT_EQ(fFolder.Read(kFile), thread);
    EXPECT_EQ(Count(), 4);
    const std::string shown = browser.Text();
    const std::string second = "2 名前：n2 E-mail：sage 投稿日：d2\nああああ";
    const size_t mark = shown.find("あ…（以下略）");
    EXPECT_TRUE(Has(shown, second));
    EXPECT_GT(mark, 8000 / 2 * 3u);
    EXPECT_LT(mark, 8192 / 2 * 3u + Shown(1, 1).size() + second.size());
    EXPECT_TRUE(shown.ends_with(Shown(4, 4)));
    Browser offline(freePort());
    offline.SelectThread("1.dat", kMsgThreadSelectedCached);
    EXPECT_TRUE(offline.WaitForThread("title (4)"));
    EXPECT_EQ(offline.Text(), shown);
}

TEST_F(ArticleWorker, ALineThatDoesNotParseTakesItsNumber) {
    RawServer server({RawServer::Reply(Answer(Post(1) + "garbage\n" + Post(3)))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(browser.Text(), Shown(1, 1) + Shown(3, 3));
    EXPECT_EQ(fFolder.Read(kFile), Post(1) + "garbage\n" + Post(3));
}

TEST_F(ArticleWorker, AReloadThatFailsLeavesTheCachedPostsAtTheReadersPlace) {
    CacheWithPlace();
    RawServer server({RawServer::Reply(Answer("", "302 Found")),
                      RawServer::Reply(Answer("", "416 Range Not Satisfiable")),
                      RawServer::Reply("HTTP/1.1 404 Not Found\r\n\r\n"),
                      RawServer::Reply("HTTP/1.1 503 Busy\r\n\r\n"), RawServer::Reset()});
    Browser browser(server.Port());
    size_t reload = 0;
    for (const char* text :
         {"302 Found\r", "416 Range Not Satisfiable\r", "404 Not Found\r", "503 Busy\r", ""}) {
        browser.SelectThread("1.dat");
        if (*text != '\0') {
            EXPECT_EQ(WaitForAlert(), text);
            EXPECT_TRUE(WaitForTheCachedPosts(browser)) << text; // under the alert
            DismissAlert();
        }
        server.WaitForRequest(reload++);
        EXPECT_TRUE(browser.WaitForThread("title (60)"));
        EXPECT_TRUE(WaitForTheCachedPosts(browser)) << text;
    }
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, kMany));
}

TEST_F(ArticleWorker, AnUnreachableServerLeavesTheCachedPosts) {
    CacheWithPlace();
    Browser browser(freePort());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(WaitForAlert().starts_with("接続エラー: "));
    DismissAlert();
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    EXPECT_TRUE(WaitForTheCachedPosts(browser));
}

TEST_F(ArticleWorker, ReloadsDuringAStallShowTheCachedPostsAtOnce) {
    CacheWithPlace();
    RawServer server({RawServer::Stall("HTTP/1.1 206 Partial Content\r\n\r\nhalf"),
                      RawServer::Reply(Answer(Post(1), "206 Partial Content")),
                      RawServer::Stall()});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForStatus("board.exampleから受信中"));
    browser.SelectThread("1.dat"); // finds the file locked
    server.WaitForRequest(1);
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    for (size_t reload = 2; reload < 8; reload++) {
        browser.SelectThread("1.dat");
        server.WaitForRequest(reload);
        EXPECT_EQ(browser.Text(), Shown(1, kMany));
        EXPECT_EQ(Place(browser), kPlace);
    }
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, kMany));
}

TEST_F(ArticleWorker, ANewLayoutWhileTheServerIsWaitedForCostsNoPlace) {
    CacheWithPlace();
    auto server = std::make_unique<RawServer>(std::vector<RawServer::Script>{RawServer::Stall()});
    Browser browser(server->Port());
    browser.SelectThread("1.dat");
    ASSERT_TRUE(WaitForTheCachedPosts(browser));
    const auto top = [&] {
        const NPTextView* text = browser.Article()->TextView();
        return text->OffsetAt(text->Bounds().LeftTop());
    };
    const auto enlarge = [&] {
        const int32 before = top();
        browser.Article()->TextView()->SetArticleFont("", "", 24);
        return before;
    };
    const int32 before = browser.Locked(enlarge, -1);
    const float place = Place(browser);
    EXPECT_NE(place, kPlace);
    server.reset();
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    EXPECT_EQ(browser.Locked(top, -2), before);
    EXPECT_EQ(Place(browser), place);
}

// From scratch, the cached posts on show go once others come: the reader may have gone on in them.
TEST_F(ArticleWorker, APlaceGoneToInPostsThatAreDroppedIsKept) {
    constexpr port_id kRequest = 77;
    constexpr float kTop = 555;
    CacheWithPlace();
    Browser browser(freePort());
    const auto readOnAndRestart = [&] {
        NPArticleView* pane = browser.Article();
        std::string text = "a";
        _ArticleOut post = {};
        post.name = post.date = post.message = post.mail = text.data();
        pane->ShowThread(kRequest, Browser::kBoard, "1.dat");
        for (int32 i = 1; i <= kMany; i++)
            pane->addArticleItem(kRequest, "title", i, post);
        pane->ReturnToPlace(kRequest);
        pane->TextView()->ScrollTo(BPoint(0, kTop));
        pane->Restart(kRequest);
        for (int32 i = 1; i <= kMany; i++)
            pane->addArticleItem(kRequest, "title", i, post);
        pane->ReturnToPlace(kRequest);
        return true;
    };
    EXPECT_TRUE(browser.Locked(readOnAndRestart, false));
    EXPECT_EQ(Place(browser), kTop);
}

TEST_F(ArticleWorker, AFailedReloadFromScratchLosesNothing) {
    const std::string half = Answer(Posts(1, 3));
    RawServer server({RawServer::Reply("HTTP/1.1 304 Not Modified\r\n\r\n"),
                      RawServer::Reply("HTTP/1.1 404 Not Found\r\n\r\n"),
                      RawServer::CutAfter(half.size() - 5, half),
                      RawServer::Reply(Answer(Posts(1, 2), "206 Partial Content")),
                      RawServer::Stall("HTTP/1.1 200 OK\r\n\r\n" + Posts(1, 2))});
    CacheWithPlace();
    const std::string attributes =
        fFolder.Read("2ch/2chCache/board.example/news/.attributes/1.dat");
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    for (const char* alert : {"404 Not Found\r", "", "206 Partial Content\r"}) {
        ReloadFromScratch(browser);
        if (*alert != '\0') {
            EXPECT_EQ(WaitForAlert(), alert);
            DismissAlert();
        }
        EXPECT_TRUE(browser.WaitForStatus(*alert == '\0' ? "途中で切れました" : ""));
        EXPECT_TRUE(WaitForTheCachedPosts(browser)) << alert;
        EXPECT_EQ(Time(), kDate);
        EXPECT_EQ(Count(), kMany);
    }
    ReloadFromScratch(browser);
    EXPECT_TRUE(browser.WaitUntil([&] { return Shown(1, 2) == browser.Article()->GetText(); }));
    // What a kill at this point leaves, and what other windows see.
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, kMany));
    EXPECT_EQ(Time(), kDate);
    EXPECT_EQ(fFolder.Read("2ch/2chCache/board.example/news/.attributes/1.dat"), attributes);
    browser.SelectBoard(Browser::kBoard, kMsgBoardSelectedCached);
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    EXPECT_EQ(browser.Column(kColumnDat), std::vector<std::string>{"1.dat"});
}

TEST_F(ArticleWorker, ACutInsideAnOverlongLineLeavesNothingOfItBehind) {
    CacheWithPlace();
    const std::string whole = Answer(Post(1) + "n2<>sage<>d2<> " + std::string(30000, 'x'));
    RawServer server({RawServer::Reply("HTTP/1.1 304 Not Modified\r\n\r\n"),
                      RawServer::CutAfter(whole.size() - 5000, whole)});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    ReloadFromScratch(browser);
    EXPECT_TRUE(browser.WaitForStatus("途中で切れました"));
    EXPECT_TRUE(WaitForTheCachedPosts(browser));
}

TEST_F(ArticleWorker, AReloadFromScratchPutsTheWholeThreadInThePlaceOfTheCopy) {
    RawServer server({RawServer::Reply("HTTP/1.1 304 Not Modified\r\n\r\n"),
                      RawServer::Reply(Answer(Posts(1, 3), "200 OK", kLater)),
                      RawServer::Reply(Answer(Post(4), "206 Partial Content"))});
    CacheWithPlace();
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (60)"));
    ReloadFromScratch(browser);
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(browser.Text(), Shown(1, 3));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 3));
    EXPECT_EQ(Time(), kLater);
    EXPECT_EQ(Count(), 3);
    EXPECT_FALSE(Has(server.WaitForRequest(1), "Range"));
    EXPECT_FALSE(Has(server.WaitForRequest(1), "If-Modified-Since"));
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (4)"));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 4));
}

TEST_F(ArticleWorker, ACopyBehindASymbolicLinkIsAskedForOnce) {
    Cache(Posts(1, 2), 2);
    std::filesystem::rename(fFolder / kFile, fFolder / "elsewhere");
    std::filesystem::create_symlink(fFolder / "elsewhere", fFolder / kFile);
    RawServer server({RawServer::Reply(Answer(Post(3), "206 Partial Content"))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(fFolder.Read("elsewhere"), Posts(1, 3));
    EXPECT_EQ(server.CountConnections(), 1u);
}

TEST_F(ArticleWorker, AStoppedDownloadKeepsWhatCameAndShowsNothingMore) {
    RawServer server({RawServer::Stall("HTTP/1.1 200 OK\r\n\r\n" + Posts(1, 2)),
                      RawServer::Reply(Answer(Post(1)))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitUntil([&] { return Shown(1, 2) == browser.Article()->GetText(); }));
    browser.SelectThread("2.dat");
    EXPECT_TRUE(browser.WaitForThread("title (1)"));
    EXPECT_EQ(browser.Text(), Shown(1, 1));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 2));
    EXPECT_EQ(Time(), kEpoch);
}

TEST_F(ArticleWorker, TwoWindowsOnOneThreadDoNotMixTheirLines) {
    RawServer server({RawServer::Stall("HTTP/1.1 200 OK\r\n\r\n" + Posts(1, 2)),
                      RawServer::Reply(Answer(Posts(1, 3)))});
    Browser first(server.Port());
    Browser second(server.Port());
    first.SelectThread("1.dat");
    EXPECT_TRUE(first.WaitUntil([&] { return Shown(1, 2) == first.Article()->GetText(); }));
    second.SelectThread("1.dat");
    EXPECT_TRUE(second.WaitForThread("title (2)"));
    EXPECT_EQ(second.Text(), Shown(1, 2));
    EXPECT_EQ(fFolder.Read(kFile), Posts(1, 2));
}

TEST_F(ArticleWorker, OfflineAThreadIsShownFromTheCache) {
    Cache(Posts(1, 2), 2);
    Browser browser(freePort());
    browser.SelectThread("1.dat", kMsgThreadSelectedCached);
    EXPECT_TRUE(browser.WaitForThread("title (2)"));
    EXPECT_EQ(browser.Text(), Shown(1, 2));
}

TEST_F(ArticleWorker, OfflineAThreadThatWasNeverReadIsAnAlert) {
    Browser browser(freePort());
    browser.SelectThread("1.dat", kMsgThreadSelectedCached);
    EXPECT_EQ(WaitForAlert(), "読み込み失敗：board.example/news/1.dat");
    DismissAlert();
    EXPECT_TRUE(browser.WaitForStatus(""));
    EXPECT_FALSE(fFolder.Has("2ch"));
}

TEST_F(ArticleWorker, NamesThatLeadElsewhereAreNotEvenAskedFor) {
    RawServer server({RawServer::Reply(Answer(Post(1)))});
    Browser browser(server.Port());
    browser.SelectThread("2.dat");
    EXPECT_TRUE(browser.WaitForThread("title (1)"));
    for (const char* name : {"../../x.dat", "1234567890123456.dat", ".attributes", "", "a/b"}) {
        browser.Locked([&] { return browser.Status()->DrawBar("", 0), true; }, false);
        browser.SelectThread(name);
        EXPECT_TRUE(browser.WaitForStatus("この名前のスレッドは開けません")) << name;
        EXPECT_EQ(browser.Text(), Shown(1, 1));
    }
    EXPECT_EQ(server.CountConnections(), 1u);
    EXPECT_FALSE(fFolder.Has("2ch/x.dat"));
}

// Whatever told that the body was not all.
TEST_F(ArticleWorker, ACutIsToldAndGivesTheRowNoTick) {
    const std::string rows = "1.dat<>title (9)\n";
    RawServer server({RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n" + rows),
                      RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n" + Posts(1, 2) + "n3<>"),
                      RawServer::Reply("HTTP/1.1 206 Partial Content\r\nContent-Range: bytes " +
                                       std::to_string(Posts(1, 2).size()) + "-" +
                                       std::to_string(Posts(1, 3).size() - 1) + "/" +
                                       std::to_string(Posts(1, 4).size()) + "\r\n\r\n" + Post(3))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    for (int32 count : {2, 3}) {
        browser.SelectThread("1.dat");
        EXPECT_TRUE(browser.WaitUntil([&] { return Count() == count; }));
        EXPECT_TRUE(browser.WaitForStatus("途中で切れました"));
        EXPECT_EQ(browser.Text(), Shown(1, count));
        EXPECT_EQ(Time(), kEpoch);
        EXPECT_TRUE(browser.WaitUntil([&] {
            const NPThreadItem* row = browser.Threads()->List()->ThreadAt(0);
            return row->State() == kNewPosts && row->Gotten() == count;
        }));
    }
}

TEST_F(ArticleWorker, ReadingARowsThreadUpdatesTheRow) {
    RawServer server({RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n1.dat<>title (3)\n"),
                      RawServer::Reply(Answer(Posts(1, 3)))});
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    browser.SelectThread("1.dat");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_TRUE(browser.WaitUntil(
        [&] { return browser.Threads()->List()->ThreadAt(0)->State() == kRead; }));
    EXPECT_EQ(browser.Column(kColumnGotten), std::vector<std::string>{"3"});
}

// A reader who has gone on while posts arrive stays where he is, and finds that place again.
TEST_F(ArticleWorker, AReaderWhoMovesWhilePostsArriveKeepsHisPlace) {
    const std::string posts = Posts(1, 400);
    const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(posts.size()) +
                             "\r\nLast-Modified: " + kDate + "\r\n\r\n";
    RawServer server({RawServer::Stall(head + posts.substr(0, posts.size() - 40)),
                      RawServer::Reply(Answer(Posts(1, 2)))});
    Browser browser(server.Port());
    browser.SelectThread("1.dat");
    ASSERT_TRUE(
        browser.WaitUntil([&] { return browser.Article()->TextView()->ArticleAt(301) >= 0; }));
    browser.Locked(
        [&] {
            browser.Article()->TextView()->ScrollTo(BPoint(0, 777));
            return true;
        },
        true);
    browser.SelectThread("2.dat");
    EXPECT_TRUE(browser.WaitForThread("title (2)"));
    int32 position = 0;
    NPCache("board.example", "news", "1.dat", NPCache::Open::kExisting)
        .ReadAttr("bar_pos", B_INT32_TYPE, &position, sizeof(position));
    EXPECT_EQ(777, position);
}
