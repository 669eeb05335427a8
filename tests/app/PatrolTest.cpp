#include "support/Patrol.h"
#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/MessageCounter.h"
#include "support/ScratchFolder.h"

#include "cache/NPCache.h"
#include "server/DemoServer.h"

#include <Alert.h>
#include <OS.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>

namespace {

constexpr const char* kFolder = "many";
constexpr const char* kHost = "many.example";

// One browser window, a demo server, and bookmarks of the first threads of its board.
class PatrolTest : public testing::Test {
protected:
    void SetUp() override { Begin(4); }

    void Begin(int threads) {
        fServer = std::make_unique<DemoServer>();
        fServer->AddBoard(kFolder, threads);
        ASSERT_TRUE(fServer->Start());
        fKeys = fServer->Keys(kFolder);
        std::sort(fKeys.begin(), fKeys.end());
        for (const std::string& key : fKeys)
            ASSERT_EQ(NPBookmark::Make("http://many.example/many/", Dat(key).c_str(), key.c_str()),
                      B_OK);
        fBrowser = std::make_unique<Browser>(fServer->Port());
    }
    void TearDown() override {
        fBrowser->Close();
        EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen(); }));
        fServer->Stop();
        ExpectNothingLeft();
    }

    // Neither thread nor port, and no cached file is locked.
    void ExpectNothingLeft() {
        EXPECT_TRUE(server::testing::WaitUntil([] {
            return find_thread("getArticle") < 0 && find_thread("getBookmark") < 0 &&
                   find_port("article_port") < 0 && find_port("subject_port") < 0;
        }));
        for (const std::string& key : fKeys) {
            NPCache cache(kHost, kFolder, Dat(key).c_str(), NPCache::Open::kExisting);
            EXPECT_TRUE(cache.Status() != 0 || cache.Lock() == B_OK) << key;
        }
    }

    static std::string Dat(const std::string& key) { return key + ".dat"; }
    static std::string Path(const std::string& key) { return "/many/dat/" + Dat(key); }
    std::string Cached(const std::string& key) const {
        return fFolder.Read("2ch/2chCache/many.example/many/" + Dat(key));
    }
    void StartPatrol() { fBrowser->Messenger().SendMessage(kMsgStartPatrol); }
    bool PatrolOnce() {
        StartPatrol();
        return server::testing::WaitUntil([] { return Patrol::IsOpen(); }) && Patrol::WaitForEnd();
    }
    // The row of a thread: what one of its columns shows.
    std::string Cell(const std::string& key, int32 column) {
        const std::vector<std::string> dats = fBrowser->Column(kColumnDat);
        const auto found = std::find(dats.begin(), dats.end(), Dat(key));
        return found == dats.end() ? "" : fBrowser->Column(column)[found - dats.begin()];
    }
    // The key of the thread that is visited after so many others.
    std::string VisitedAfter(int32 visits) {
        return fBrowser->Locked(
            [&] {
                const NPThreadItem* item = fBrowser->Threads()->GetNextNumber(visits);
                return std::string(item->ColumnText(kColumnTitle));
            },
            std::string());
    }
    void ListBookmarks() {
        fBrowser->Messenger().SendMessage(kMsgListBookmarks);
        EXPECT_TRUE(fBrowser->WaitForTitle("ブックマーク (" + std::to_string(fKeys.size()) + ")"));
        EXPECT_TRUE(fBrowser->WaitForStatus(""));
    }

    ScratchFolder fFolder;
    std::unique_ptr<DemoServer> fServer;
    std::vector<std::string> fKeys;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_F(PatrolTest, WhatIsNewIsFetchedAndTheListSortedByIt) {
    const std::string shown = fBrowser->Text();
    EXPECT_TRUE(PatrolOnce());
    for (const std::string& key : fKeys) {
        EXPECT_EQ(Cached(key), fServer->Dat(kFolder, key));
        EXPECT_EQ(Cell(key, kColumnGotten), "1");
    }
    fServer->ForgetRequests();
    fServer->Grow(kFolder, fKeys[2], 5);
    EXPECT_TRUE(PatrolOnce());
    EXPECT_TRUE(fBrowser->WaitUntil(
        [&] { return fBrowser->Threads()->List()->ThreadAt(0)->Gotten() == 6; }));
    EXPECT_EQ(fBrowser->Column(kColumnDat)[0], Dat(fKeys[2])); // the newest
    EXPECT_EQ(Cell(fKeys[2], kColumnGotten), "6");
    EXPECT_EQ(Cached(fKeys[2]), fServer->Dat(kFolder, fKeys[2]));
    for (const DemoServer::Request& request : fServer->Requests())
        EXPECT_EQ(request.status, request.path == Path(fKeys[2]) ? 206 : 304) << request.path;
    EXPECT_EQ(fBrowser->Text(), shown); // the article pane stays as it is
}

TEST_F(PatrolTest, NewPostsChangeTheIconButNotTheState) {
    ListBookmarks();
    const auto iconOf = [&](const std::string& key) {
        return fBrowser->Locked(
            [&] {
                NPThreadListView* list = fBrowser->Threads()->List();
                for (int32 i = 0; i < list->FullListCountItems(); i++) {
                    if (Dat(key) == list->ThreadAt(i)->Dat())
                        return list->ThreadAt(i)->GetColumnContentBitmap(kColumnState);
                }
                return static_cast<const BBitmap*>(nullptr);
            },
            static_cast<const BBitmap*>(nullptr));
    };
    EXPECT_TRUE(PatrolOnce());
    const BBitmap* const newPosts = iconOf(fKeys[0]);
    fServer->Grow(kFolder, fKeys[0], 1);
    fBrowser->Messenger().SendMessage(kMsgListBookmarks);
    EXPECT_TRUE(server::testing::WaitUntil([&] {
        const BBitmap* icon = iconOf(fKeys[1]);
        return icon != nullptr && icon != newPosts;
    }));
    const BBitmap* const upToDate = iconOf(fKeys[1]);
    EXPECT_TRUE(PatrolOnce());
    EXPECT_EQ(iconOf(fKeys[0]), newPosts);
    EXPECT_EQ(iconOf(fKeys[1]), upToDate);
    EXPECT_EQ(fBrowser->Locked([&] { return fBrowser->Threads()->List()->ThreadAt(0)->State(); },
                               kNotFetched),
              kCached);
}

TEST_F(PatrolTest, ThreadsThatVanishedOrMovedAreToldAndTheRestIsVisited) {
    EXPECT_TRUE(PatrolOnce());
    const std::string gone = VisitedAfter(0);
    const std::string moved = VisitedAfter(1);
    const std::string last = VisitedAfter(3);
    fServer->SetFate(kFolder, gone, Fate::kGone);
    fServer->SetFate(kFolder, moved, Fate::kMoved);
    fServer->Grow(kFolder, last, 2);
    const std::string kept = Cached(gone);
    // The list is built anew in the same order: newest first, as the folder gives them.
    StartPatrol();
    std::vector<std::string> alerts;
    for (int i = 0; i < 2; i++) {
        alerts.push_back(WaitForAlert());
        DismissAlert();
    }
    std::sort(alerts.begin(), alerts.end());
    EXPECT_EQ(alerts, (std::vector<std::string>{"302 Found\r", "404 Not Found\r"}));
    EXPECT_TRUE(Patrol::WaitForEnd());
    EXPECT_EQ(Cached(last), fServer->Dat(kFolder, last));
    EXPECT_EQ(Cell(last, kColumnGotten), "3");
    EXPECT_EQ(Cached(gone), kept);
}

TEST_F(PatrolTest, AStalledThreadHoldsItUpUntilItAnswers) {
    ListBookmarks();
    const std::string stalled = VisitedAfter(1);
    fServer->SetFate(kFolder, stalled, Fate::kStalled);
    StartPatrol();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fServer->CountStalled() == 1; }));
    EXPECT_TRUE(Patrol::WaitForStatus(stalled));
    // Boards and the list wait for the patrol's end; a second patrol is the first.
    fBrowser->SelectBoard("http://many.example/many/");
    fBrowser->Messenger().SendMessage(kMsgListBookmarks);
    StartPatrol();
    fServer->SetFate(kFolder, stalled, Fate::kServed);
    EXPECT_TRUE(Patrol::WaitForEnd());
    EXPECT_EQ(fServer->CountRequests("/many/subject.txt"), 0u);
    for (const std::string& key : fKeys)
        EXPECT_EQ(fServer->CountRequests(Path(key)), 1u) << key;
}

TEST_F(PatrolTest, StoppedDuringAVisitItEndsAtOnceAndNoAlertComes) {
    ListBookmarks();
    const std::string stalled = VisitedAfter(2);
    fServer->SetFate(kFolder, stalled, Fate::kStalled);
    StartPatrol();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fServer->CountStalled() == 1; }));
    Patrol::PressStop();
    EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen(); }));
    EXPECT_TRUE(server::testing::WaitUntilIdle(fBrowser->Window()));
    fServer->SetFate(kFolder, stalled, Fate::kGone);
    EXPECT_TRUE(
        server::testing::WaitUntil([] { return find_thread("getArticle") == B_NAME_NOT_FOUND; }));
    EXPECT_EQ(CountAlerts(), 0);
    EXPECT_TRUE(fBrowser->WaitUntil(
        [&] { return fBrowser->Threads()->List()->SortKey() == kColumnModified; }));
    EXPECT_EQ(fBrowser->Column(kColumnGotten), (std::vector<std::string>{"1", "1", "", ""}));
    fBrowser->SelectBoard("http://many.example/many/");
    EXPECT_TRUE(fBrowser->WaitForTitle("ニュース (4)"));
}

TEST_F(PatrolTest, StoppedWhileAnAlertIsOpenTheAlertGoesToo) {
    for (const std::string& key : fKeys)
        fServer->SetFate(kFolder, key, Fate::kGone);
    StartPatrol();
    EXPECT_EQ(WaitForAlert(), "404 Not Found\r");
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return server::testing::IsBlocked(fBrowser->Window()); }));
    BWindow* patrol = nullptr;
    Patrol::With([&](BWindow* window) { patrol = window; });
    EXPECT_FALSE(server::testing::IsBlocked(patrol));
    Patrol::PressStop();
    EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen() && CountAlerts() == 0; }));
    EXPECT_EQ(fServer->Requests().size(), 1u);
    ExpectNothingLeft();
    EXPECT_EQ(CountAlerts(), 0);
}

TEST_F(PatrolTest, WithoutBookmarksItEndsAtOnce) {
    for (const std::string& key : fKeys)
        EXPECT_EQ(NPBookmark::RemovePlain(kHost, kFolder, Dat(key).c_str()), B_OK);
    StartPatrol(); // its window may have come and gone before it is looked for
    EXPECT_TRUE(fBrowser->WaitForTitle("ブックマーク (0)"));
    EXPECT_TRUE(Patrol::WaitForEnd());
    EXPECT_TRUE(fServer->Requests().empty());
}

TEST_F(PatrolTest, AnUnreadableFolderIsToldAndTheBoardOnShowIsNotVisited) {
    fBrowser->SelectBoard("http://many.example/many/");
    EXPECT_TRUE(fBrowser->WaitForTitle("ニュース (4)"));
    for (const std::string& key : fKeys)
        NPBookmark::RemovePlain(kHost, kFolder, Dat(key).c_str());
    std::filesystem::remove_all(fFolder / "2ch/2chBookmark");
    fFolder.Write("2ch/2chBookmark", "a file");
    fServer->ForgetRequests();
    StartPatrol();
    EXPECT_EQ(WaitForAlert(), "ブックマークの読み込み失敗！");
    DismissAlert();
    EXPECT_TRUE(Patrol::WaitForEnd());
    EXPECT_TRUE(fServer->Requests().empty());
}

TEST_F(PatrolTest, AThreadThatTheUserChoosesMeanwhileIsReadAndThePatrolGoesOn) {
    ListBookmarks();
    const std::string first = VisitedAfter(0);
    const std::string chosen = VisitedAfter(3);
    fServer->SetFate(kFolder, first, Fate::kStalled);
    StartPatrol();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fServer->CountStalled() == 1; }));
    BMessage select(kMsgThreadSelected);
    select.AddString("dat", Dat(chosen).c_str());
    select.AddString("url", "http://many.example/many/");
    fBrowser->Messenger().SendMessage(&select);
    EXPECT_TRUE(Patrol::WaitForEnd());
    EXPECT_TRUE(fBrowser->WaitUntil(
        [&] { return std::string(fBrowser->Article()->GetTitle()).ends_with(" (1)"); }));
    for (const std::string& key : fKeys)
        EXPECT_EQ(Cell(key, kColumnGotten), key == first ? "" : "1") << key;
}

TEST_F(PatrolTest, NoVisitBeginsBeforeTheListIsWhole) {
    fBrowser->Locked(
        [&] {
            StartPatrol();
            BMessage early(
                kMsgVisitNext); // as a thread that ends just then would have it asked for
            early.AddInt32("index", 0);
            return fBrowser->Messenger().SendMessage(&early);
        },
        status_t(B_ERROR));
    EXPECT_TRUE(server::testing::WaitUntil([] { return Patrol::IsOpen(); }));
    EXPECT_TRUE(Patrol::WaitForEnd());
    for (const std::string& key : fKeys)
        EXPECT_EQ(fServer->CountRequests(Path(key)), 1u) << key;
}

TEST_F(PatrolTest, AThreadThatIsStillArrivingAsItStartsIsWaitedFor) {
    fServer->SetFate(kFolder, fKeys[0], Fate::kStalled);
    BMessage select(kMsgThreadSelected);
    select.AddString("dat", Dat(fKeys[0]).c_str());
    select.AddString("url", "http://many.example/many/");
    fBrowser->Messenger().SendMessage(&select);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fServer->CountStalled() == 1; }));
    StartPatrol();
    EXPECT_TRUE(fBrowser->WaitForTitle("ブックマーク (4)"));
    EXPECT_TRUE(server::testing::WaitUntilIdle(fBrowser->Window()));
    fServer->SetFate(kFolder, fKeys[0], Fate::kServed);
    EXPECT_TRUE(Patrol::WaitForEnd());
    for (const std::string& key : fKeys)
        EXPECT_EQ(fServer->CountRequests(Path(key)), key == fKeys[0] ? 2u : 1u) << key;
}

TEST_F(PatrolTest, ItTurnsTheProgramOnlineAndNeverOffline) {
    MessageCounter toggles(kMsgToggleOnline);
    EXPECT_TRUE(PatrolOnce());
    EXPECT_EQ(toggles.Count(), 0);
    fBrowser->Settings().Replace("online_mode", false);
    EXPECT_TRUE(PatrolOnce());
    EXPECT_EQ(toggles.Count(), 1);
}

TEST_F(PatrolTest, TheWindowClosesInTheMiddle) {
    fServer->SetFate(kFolder, fKeys[1], Fate::kStalled);
    StartPatrol();
    EXPECT_TRUE(server::testing::WaitUntil([&] { return fServer->CountStalled() == 1; }));
    fBrowser->Close();
    EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen(); }));
}

TEST_F(PatrolTest, TheWindowClosesWhileAnAlertIsOpen) {
    fServer->SetFate(kFolder, fKeys[1], Fate::kGone);
    StartPatrol();
    EXPECT_EQ(WaitForAlert(), "404 Not Found\r");
    fBrowser->Close();
    EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen() && CountAlerts() == 0; }));
}

TEST_F(PatrolTest, TheProgramEndsInTheMiddle) {
    ListBookmarks();
    fServer->SetFate(kFolder, VisitedAfter(0), Fate::kGone); // an alert is open
    StartPatrol();
    EXPECT_NE(WaitForAlert(), "");
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return server::testing::IsBlocked(fBrowser->Window()); }));
    be_app->Lock();
    EXPECT_TRUE(be_app->QuitRequested());
    be_app->Unlock();
    EXPECT_FALSE(Patrol::IsOpen());
    EXPECT_TRUE(server::testing::WaitUntil([] { return be_app->CountWindows() == 0; }));
}

TEST_F(PatrolTest, PatrolsStartAndStopAtAnyMoment) {
    for (int i = 0; i < 8; i++) {
        StartPatrol();
        EXPECT_TRUE(server::testing::WaitUntil([] { return Patrol::IsOpen(); }));
        snooze(i * 3000);
        Patrol::PressStop();
        EXPECT_TRUE(server::testing::WaitUntil([] { return !Patrol::IsOpen(); }));
    }
}

TEST_F(PatrolTest, OfManyEachIsAskedForOnceFromItsOwnSizeOn) {
    constexpr size_t kThreads = 120;
    fBrowser->Close();
    fServer->Stop();
    Begin(kThreads);
    EXPECT_TRUE(PatrolOnce());
    EXPECT_EQ(fServer->Requests().size(), kThreads);
    std::map<std::string, size_t> sizes;
    for (const std::string& key : fKeys) {
        EXPECT_EQ(Cached(key), fServer->Dat(kFolder, key));
        sizes[Path(key)] = Cached(key).size();
    }
    for (size_t i = 0; i < fKeys.size(); i += 10)
        fServer->Grow(kFolder, fKeys[i], 2);
    fServer->ForgetRequests();
    EXPECT_TRUE(PatrolOnce());
    EXPECT_EQ(fServer->Requests().size(), kThreads);
    size_t grown = 0;
    for (const DemoServer::Request& request : fServer->Requests()) {
        ASSERT_EQ(sizes.count(request.path), 1u) << request.path; // each thread once
        EXPECT_EQ(request.range, "bytes=" + std::to_string(sizes[request.path]) + "-");
        EXPECT_NE(request.ifModifiedSince, "");
        EXPECT_EQ(request.together, 1);
        sizes.erase(request.path);
        grown += request.status == 206;
    }
    EXPECT_EQ(grown, kThreads / 10);
    for (const std::string& key : fKeys)
        EXPECT_EQ(Cached(key), fServer->Dat(kFolder, key));
}
