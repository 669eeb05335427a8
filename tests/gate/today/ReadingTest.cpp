#include "TodayGate.h"

#include "server/Text.h"

#include <algorithm>

namespace {

constexpr const char* kNews = "news.today.example";
constexpr const char* kPath = "/living/dat/1772755200.dat";
constexpr const char* kBoard = "living";
constexpr const char* kKey = "1772755200";

long LinesOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

TEST_F(TodayGate, TheMenuHoldsTheBoardsOfAllFamiliesAndNothingElse) {
    const GateAnswer menu = Get("portal.itamori.example", "/newbbsmenu.html");
    EXPECT_EQ(menu.status, 200);
    for (const char* board :
         {"<A HREF=http://news.today.example/living/>", "<A HREF=http://rooms.example/room/101/>",
          "<A HREF=http://town.example/town/>"})
        EXPECT_NE(menu.body.find(board), std::string::npos) << board;
    EXPECT_EQ(menu.body.find("http://today.example/>"), std::string::npos);
}

TEST_F(TodayGate, ListsOfEveryFamilyAreOfOneForm) {
    const struct {
        const char *host, *path, *line;
    } kLists[] = {
        {kNews, "/living/subject.txt", "1772755200.dat<>朝ごはんに何を食べましたか (4)\n"},
        {"rooms.example", "/room/101/subject.txt", "1772770000.dat<>談話室へようこそ (3)\n"},
        {"town.example", "/town/subject.txt", "1772780000.dat<>駅前の花壇 (2)\n"}};
    for (const auto& list : kLists) {
        const GateAnswer answer = Get(list.host, list.path);
        EXPECT_EQ(answer.status, 200) << list.host << answer.reason;
        EXPECT_NE(answer.body.find(toCp932(list.line)), std::string::npos) << answer.body;
    }
}

TEST_F(TodayGate, AThreadGrowsByExactlyTheNewBytes) {
    const GateAnswer first = Get(kNews, kPath);
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.body.size(), fServer.Dat(kBoard, kKey).size());
    EXPECT_NE(first.body.find(" http://bread.example"), std::string::npos);
    const std::string date = first.Header("Last-Modified");
    EXPECT_EQ(GetRest(kNews, kPath, first.body.size(), date).status, 304);
    EXPECT_EQ(GetRest(kNews, kPath, first.body.size()).status, 416);
    fServer.ForgetRequests();
    fServer.Grow(kBoard, kKey, 2);
    const GateAnswer rest = GetRest(kNews, kPath, first.body.size(), date);
    EXPECT_EQ(rest.status, 206);
    const std::string added = fServer.Dat(kBoard, kKey).substr(first.body.size());
    EXPECT_EQ(rest.body.size(), added.size());
    EXPECT_EQ(rest.body.substr(0, added.find("https")), added.substr(0, added.find("https")));
    ASSERT_EQ(fServer.Requests().size(), 1u);
    EXPECT_EQ(fServer.Requests()[0].bytes, added.size() + 1);
}

TEST_F(TodayGate, APostDeletedInTheMiddleAppendsNothingToACopy) {
    const size_t size = Get(kNews, kPath).body.size();
    fServer.Delete(kBoard, kKey, 2);
    fServer.Grow(kBoard, kKey, 1);
    const GateAnswer rest = GetRest(kNews, kPath, size);
    EXPECT_EQ(rest.status, 416) << rest.reason;
    EXPECT_FALSE(rest.reason.empty());
    const GateAnswer whole = Get(kNews, kPath);
    EXPECT_EQ(whole.status, 200);
    EXPECT_EQ(LinesOf(whole.body), 5);
}

struct DropCase {
    const char* key;
    const char* board;
    today::Fall fall;
};

// A thread that was read, grew unread and left its board goes on from its line, whatever the
// archive's bytes are.
TEST_F(TodayGate, AThreadThatLeftGoesOnInItsArchiveBehindTheLastLine) {
    const DropCase kCases[] = {{"1772755200", "living", {404, true, false}},
                               {"1772800000", "living", {404, false, true}},
                               {"1772760000", "hobby", {302, false, true}}};
    for (const DropCase& drop : kCases) {
        SCOPED_TRACE(drop.key);
        const std::string path = std::string("/") + drop.board + "/dat/" + drop.key + ".dat";
        const std::string before = Get(kNews, path).body;
        fServer.Grow(drop.board, drop.key, 2);
        fServer.Drop(drop.board, drop.key, drop.fall);
        const GateAnswer rest = GetRest(kNews, path, before.size());
        EXPECT_EQ(rest.status, 206) << rest.reason;
        EXPECT_EQ(LinesOf(rest.body), 2);
        const std::string number = std::to_string(LinesOf(before) + 1);
        EXPECT_EQ(rest.body.find(toCp932("名無しさん<>sage<>")), 0u) << rest.body;
        EXPECT_NE(rest.body.find("<> " + number + toCp932(" 番目です。")), std::string::npos);
        EXPECT_EQ(GetRest(kNews, path, before.size() + rest.body.size()).status, 416);
    }
}

TEST_F(TodayGate, AThreadThatIsNowhereIsSaidToHaveGone) {
    const size_t size = Get(kNews, kPath).body.size();
    fServer.Drop(kBoard, kKey, {404, false, false});
    const GateAnswer rest = GetRest(kNews, kPath, size);
    EXPECT_EQ(rest.status, 404) << rest.reason;
}

struct NumberCase {
    const char *host, *board, *key, *part;
};

TEST_F(TodayGate, ThreadsAskedForByNumberReadAsDats) {
    const NumberCase kCases[] = {{"rooms.example", "room/101", "1772770000",
                                  "管理人<><>2026/03/06(金) 13:06:40 ID:keeper01<> "},
                                 {"town.example", "town", "1772780000",
                                  "町民さん<><>2026/03/06(金) 15:53:20 ID:flowers0<> "}};
    for (const NumberCase& one : kCases) {
        SCOPED_TRACE(one.host);
        const std::string path = std::string("/") + one.board + "/dat/" + one.key + ".dat";
        const GateAnswer first = Get(one.host, path);
        EXPECT_EQ(first.status, 200) << first.reason;
        EXPECT_EQ(first.body.find(toCp932(one.part)), 0u) << first.body;
        EXPECT_EQ(LinesOf(first.body), LinesOf(fServer.Dat(one.board, one.key)));
        fServer.Delete(one.board, one.key, 2);
        fServer.Grow(one.board, one.key, 3);
        const GateAnswer rest = GetRest(one.host, path, first.body.size());
        EXPECT_EQ(rest.status, 206) << rest.reason;
        EXPECT_EQ(LinesOf(rest.body), 3);
        EXPECT_NE(rest.body.find(toCp932(" 番目です。 http://x.example/ <>")), std::string::npos);
    }
}

TEST_F(TodayGate, ARoomsThreadGoesOnInItsStorage) {
    const std::string path = "/room/101/dat/1772770000.dat";
    fServer.Drop("room/101", "1772770000", {404, false, true});
    const GateAnswer whole = Get("rooms.example", path);
    EXPECT_EQ(whole.status, 200) << whole.reason;
    EXPECT_EQ(LinesOf(whole.body), 3);
    EXPECT_NE(whole.body.find(toCp932("おじゃまします。")), std::string::npos);
}

TEST_F(TodayGate, AnOldNameOfAHostLeadsToThePresentOne) {
    EXPECT_EQ(Get("news.yesterday.example", kPath).status, 200);
}

TEST_F(TodayGate, AServerWithACertificateOfAnotherAuthorityIsNotRead) {
    TodayServer other;
    ScratchFolder folder;
    std::string error;
    ASSERT_TRUE(other.LoadBoards(TODAY_BOARDS, &error) && other.Start(folder.Path(), &error));
    fGate->End();
    for (gate::Family& family : fGate->Settings().families)
        family.reach = "127.0.0.1:" + std::to_string(other.Port());
    fGate->Start();
    const GateAnswer answer = Get(kNews, kPath);
    EXPECT_EQ(answer.status, 502);
    EXPECT_TRUE(other.Requests().empty());
}

} // namespace
