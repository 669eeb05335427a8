#include "server/DemoServer.h"

#include <algorithm>
#include <cstring>
#include <thread>
#include <tuple>

#include <NetEndpoint.h>

#include <gtest/gtest.h>

#include "server/Text.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"
#include "views/BBSTable.h"

namespace {

constexpr bigtime_t kTimeout = 60 * 1000000;

struct Reply {
    int status = 0;
    std::string head;
    std::string body;
};

std::string header(const Reply& reply, const std::string& name) {
    size_t place = reply.head.find("\r\n" + name + ": ");
    if (place == std::string::npos)
        return {};
    place += name.size() + 4;
    return reply.head.substr(place, reply.head.find("\r\n", place) - place);
}

} // namespace

class DemoServerTest : public testing::Test {
protected:
    DemoServerTest() {
        std::string error;
        EXPECT_TRUE(fServer.LoadBoards(DEMO_BOARDS, &error)) << error;
        EXPECT_TRUE(fServer.Start());
    }

    Reply _Send(const std::string& request) {
        BNetEndpoint endpoint;
        endpoint.SetTimeout(kTimeout);
        EXPECT_EQ(B_OK, endpoint.Connect("127.0.0.1", fServer.Port()));
        endpoint.Send(request.data(), request.size());
        std::string all;
        char buffer[4096];
        int32 count = 0;
        while ((count = endpoint.Receive(buffer, sizeof(buffer))) > 0)
            all.append(buffer, static_cast<size_t>(count));
        EXPECT_EQ(0, count) << endpoint.ErrorStr();
        size_t end = std::min(all.find("\r\n\r\n"), all.size());
        Reply reply = {0, all.substr(0, end + 2), all.substr(std::min(end + 4, all.size()))};
        sscanf(all.c_str(), "HTTP/1.%*d %d", &reply.status);
        return reply;
    }
    Reply _Get(const std::string& target, const std::string& headers = "") {
        return _Send("GET " + target + " HTTP/1.1\r\nHost: x\r\nConnection: close\r\n" + headers +
                     "\r\n");
    }
    Reply _Post(const std::string& target, const std::string& form,
                const std::string& headers = "Referer: http://x/daily/index.html\r\n") {
        return _Send("POST " + target + " HTTP/1.0\r\nHost: x\r\n" + headers +
                     "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
                     std::to_string(form.size()) + "\r\n\r\n" + form);
    }

    DemoServer fServer;
    const std::string fKey = "1011700000";
    const std::string fDat = "/daily/dat/1011700000.dat";
};

TEST_F(DemoServerTest, ServesADatAndItsDate) {
    Reply reply = _Get(fDat);
    EXPECT_EQ(200, reply.status);
    EXPECT_EQ(fServer.Dat("daily", fKey), reply.body);
    EXPECT_EQ(9, std::count(reply.body.begin(), reply.body.end(), '\n'));
    EXPECT_TRUE(reply.body.starts_with(toCp932("案内係<><>02/01/22 20:46<> ここは")));
    EXPECT_NE("", header(reply, "Last-Modified"));
}

TEST_F(DemoServerTest, AnUnchangedThreadIsA304WithoutABody) {
    std::string date = header(_Get(fDat), "Last-Modified");
    std::string since = "If-Modified-Since: " + date + "\r\n";
    Reply reply = _Get(fDat, since + "Range: bytes=100-\r\n");
    EXPECT_EQ(304, reply.status);
    EXPECT_EQ("", reply.body);
}

TEST_F(DemoServerTest, AGrownThreadSendsExactlyTheNewBytes) {
    Reply first = _Get(fDat);
    fServer.ForgetRequests();
    ASSERT_TRUE(fServer.Grow("daily", fKey, 3));
    std::string size = std::to_string(first.body.size());
    Reply reply = _Get(fDat, "If-Modified-Since: " + header(first, "Last-Modified") +
                                 "\r\nRange: bytes=" + size + "-\r\n");
    EXPECT_EQ(206, reply.status);
    EXPECT_EQ(fServer.Dat("daily", fKey), first.body + reply.body);
    EXPECT_EQ(3, std::count(reply.body.begin(), reply.body.end(), '\n'));
    EXPECT_EQ("bytes " + size + "-", header(reply, "Content-Range").substr(0, size.size() + 7));
    EXPECT_EQ(reply.body.size(), fServer.CountBytes(fDat));
    EXPECT_EQ(1U, fServer.CountRequests(fDat));
    EXPECT_EQ("bytes=" + size + "-", fServer.Requests()[0].range);
}

TEST_F(DemoServerTest, RangesAreCutOrRefused) {
    size_t size = fServer.Dat("daily", fKey).size();
    EXPECT_EQ(416, _Get(fDat, "Range: bytes=" + std::to_string(size) + "-\r\n").status);
    Reply reply = _Get(fDat, "Range: bytes=0-3\r\n");
    EXPECT_EQ(206, reply.status);
    EXPECT_EQ(4U, reply.body.size());
}

TEST_F(DemoServerTest, IsAProxyForEveryHost) {
    EXPECT_EQ(fServer.Dat("daily", fKey), _Get("http://any.host.example" + fDat).body);
    EXPECT_EQ(fServer.Dat("daily", fKey), _Get("http://other.example:80" + fDat).body);
    EXPECT_EQ(2U, fServer.CountRequests(fDat));
    EXPECT_EQ(404, _Get("http://nothing.example").status);
}

TEST_F(DemoServerTest, WhatIsNotThereIsA404) {
    for (const char* target : {"/", "/none/subject.txt", "/daily/dat/9999999999.dat", "/daily/dat/",
                               "/.dat", "/dat/.dat", "/test/read.cgi/", "/bbs/read.cgi"})
        EXPECT_EQ(404, _Get(target).status) << target;
}

TEST_F(DemoServerTest, ListsABoardTheLatestWrittenFirst) {
    EXPECT_EQ("1012000000", fServer.Keys("daily")[0]);
    fServer.Grow("daily", fKey, 1);
    EXPECT_EQ("1012000000", fServer.Keys("daily")[0]) << "a post with sage lifted its thread";
    Reply reply = _Get("/daily/subject.txt");
    EXPECT_EQ(200, reply.status);
    EXPECT_TRUE(
        reply.body.starts_with(toCp932("1012000000.dat<>みんなで３００まで数えるスレ (300)\n")));
}

TEST_F(DemoServerTest, TheMenuIsReadAsTheProgramReadsIt) {
    std::string page = _Get("/newbbsmenu.html").body;
    BString text(page.c_str());
    BBSTable table(&text);
    ASSERT_EQ(0, table.parseBBSTable());
    EXPECT_EQ(4, table.countCategories());
    EXPECT_NE(std::string::npos, page.find("<A HREF=http://life.example/daily/>"));
}

TEST_F(DemoServerTest, AGoodPostIsAppended) {
    std::string form =
        "FROM=%82%E4%82%B8&mail=&MESSAGE=%3Cb%3E+%83%5C%0D%0A%3E%3E1&bbs=daily&key=" + fKey +
        "&time=1&submit=x";
    Reply reply = _Post("/test/bbs.cgi", form);
    EXPECT_EQ(200, reply.status);
    EXPECT_NE(std::string::npos, reply.body.find("http-equiv=refresh"));
    std::string dat = fServer.Dat("daily", fKey);
    EXPECT_EQ(10, std::count(dat.begin(), dat.end(), '\n'));
    EXPECT_NE(std::string::npos, dat.find(toCp932("<> &lt;b&gt; ソ <br> <a href=\"../test/read.cgi/"
                                                  "daily/1011700000/1\" target=\"_blank\">"
                                                  "&gt;&gt;1</a> <>\n")));
    EXPECT_EQ(fKey, fServer.Keys("daily")[0]);
}

TEST_F(DemoServerTest, ABadPostGetsTheErrorPageAndChangesNothing) {
    std::string good = "MESSAGE=x&bbs=daily&key=" + fKey;
    struct Case {
        std::string form;
        std::string headers;
    };
    const Case kCases[] = {
        {"MESSAGE=+%0D%0A&bbs=daily&key=" + fKey, "Referer: http://x/\r\n"},
        {"MESSAGE=x&bbs=daily&key=1", "Referer: http://x/\r\n"},
        {"MESSAGE=x&bbs=none&key=" + fKey, "Referer: http://x/\r\n"},
        {"MESSAGE=" + std::string(100000, 'x') + "&bbs=daily&key=" + fKey,
         "Referer: http://x/\r\n"},
        {good, ""},
        {"%%%&&=&=", "Referer: http://x/\r\n"},
    };
    std::string before = fServer.Dat("daily", fKey);
    for (const Case& current : kCases) {
        Reply reply = _Post("/test/bbs.cgi", current.form, current.headers);
        EXPECT_EQ(200, reply.status);
        EXPECT_EQ(std::string::npos, reply.body.find("http-equiv=refresh"));
        EXPECT_NE(std::string::npos, reply.body.find(toCp932("ＥＲＲＯＲ")));
    }
    EXPECT_EQ(before, fServer.Dat("daily", fKey));
}

TEST_F(DemoServerTest, BoardsOfReadCgiArePostedToThroughWriteCgi) {
    fServer.AddBoard("circle/tea", 2, BoardKind::kCgi);
    std::string key = fServer.Keys("circle/tea")[1];
    EXPECT_EQ(404, _Get("/circle/tea/dat/" + key + ".dat").status);
    EXPECT_NE(std::string::npos, _Get("/circle/tea/subject.txt").body.find(key + ".cgi<>"));
    Reply reply = _Post("http://x/circle/bbs/write.cgi", "NAME=n&MESSAGE=hello&BBS=tea&KEY=" + key);
    EXPECT_NE(std::string::npos, reply.body.find("http-equiv=refresh"));
    std::string page = _Get("/circle/bbs/read.cgi?BBS=tea&KEY=" + key + "&START=2").body;
    EXPECT_NE(std::string::npos, page.find(toCp932("<dt>2 名前：")));
    EXPECT_NE(std::string::npos, page.find("<dd>hello <br><br>\n"));
    fServer.AddBoard("bbs/old", 1, BoardKind::kCgi);
    reply = _Post("/bbs/write.cgi", "MESSAGE=x&BBS=old&KEY=" + fServer.Keys("bbs/old")[0]);
    EXPECT_NE(std::string::npos, reply.body.find("http-equiv=refresh"));
}

TEST_F(DemoServerTest, ReadCgiShowsTheFirstPostAndThoseAskedFor) {
    std::string page = _Get("/test/read.cgi/daily/" + fKey + "/8-").body;
    auto shows = [&](int number) {
        return page.find("<dt>" + std::to_string(number) + " ") != std::string::npos;
    };
    EXPECT_TRUE(shows(1) && !shows(2) && !shows(7) && shows(8) && shows(9));
}

TEST_F(DemoServerTest, MakesLargeBoardsOnDemand) {
    fServer.AddBoard("many", 1000);
    std::string subjects = _Get("/many/subject.txt").body;
    EXPECT_EQ(1000, std::count(subjects.begin(), subjects.end(), '\n'));
}

TEST_F(DemoServerTest, AThreadMayVanishMoveOrStall) {
    fServer.AddBoard("many", 1);
    const std::string key = fServer.Keys("many").front();
    const std::string dat = "/many/dat/" + key + ".dat";
    const std::tuple<Fate, int, std::string> cases[] = {
        {Fate::kGone, 404, ""},
        {Fate::kMoved, 302, "/many/kako/" + key + ".dat"},
        {Fate::kMovedForGood, 301, "/many/kako/" + key + ".dat"},
        {Fate::kServed, 200, ""},
    };
    for (const auto& [fate, status, location] : cases) {
        EXPECT_TRUE(fServer.SetFate("many", key, fate));
        const Reply reply = _Get(dat);
        EXPECT_EQ(status, reply.status);
        EXPECT_EQ(location, header(reply, "Location"));
    }
    fServer.SetFate("many", key, Fate::kStalled);
    Reply late;
    std::thread asks([&] { late = _Get(dat); });
    while (fServer.CountStalled() == 0)
        std::this_thread::yield();
    fServer.SetFate("many", key, Fate::kServed);
    asks.join();
    EXPECT_EQ(200, late.status);
    EXPECT_EQ(1, fServer.Requests().back().together);
}

TEST_F(DemoServerTest, APortInUseIsRefused) {
    DemoServer second;
    EXPECT_FALSE(second.Start(fServer.Port()));
    int port = fServer.Port();
    fServer.Stop();
    EXPECT_TRUE(second.Start(port));
}

TEST(BoardSet, ADamagedSampleSaysWhere) {
    ScratchFolder folder;
    BoardSet boards;
    std::string error;
    EXPECT_FALSE(boards.Load(folder.Path(), &error));
    folder.Write("boards.txt", "[c] host\nnonsense\n");
    EXPECT_FALSE(boards.Load(folder.Path(), &error));
    EXPECT_NE(std::string::npos, error.find("boards.txt:2:"));
    folder.Write("boards.txt", "[c] host\nb title\n");
    folder.Write("b/1234567890.txt", "title\nstray text\n");
    EXPECT_FALSE(boards.Load(folder.Path(), &error));
    EXPECT_NE(std::string::npos, error.find("1234567890.txt:2:"));
    folder.Write("b/1234567890.txt", "title\n* n; ; d\n\\* starred\n\\\\ back\n\n");
    ASSERT_TRUE(boards.Load(folder.Path(), &error)) << error;
    EXPECT_EQ("n<><>d<> * starred <br> \\ back <>title\n", boards.Find("b")->Threads().front().dat);
}
