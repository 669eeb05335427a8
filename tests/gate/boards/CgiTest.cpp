#include "gate/TestGate.h"

#include "boards/CgiPages.h"
#include "convert/Encodings.h"
#include "net/CgiPage.h"

namespace {

constexpr const char* kPath = "/game/123/dat/1012345678.dat";

struct Post {
    int number;
    std::string text;
};

// A rawmode server, by its own account of ranges; a missing number is a deleted post.
OriginServer::Script Rawmode(const std::vector<Post>& posts) {
    return [posts](const std::string& request) {
        const std::string path = PathOf(request);
        const std::string start = "/bbs/rawmode.cgi/game/123/1012345678/";
        if (!path.starts_with(start))
            return Reply("404 Not Found", "");
        const int first = std::max(1, atoi(path.c_str() + start.size()));
        std::string body;
        for (const Post& post : posts) {
            if (post.number >= first || (post.number == 1 && !path.ends_with("n")))
                body += std::to_string(post.number) + "<>name<>sage<>2026<>" + post.text + "<>" +
                        (post.number == 1 ? "title" : "") + "<>id\n";
        }
        return Reply("200 OK", body);
    };
}

class Raw : public testing::Test {
protected:
    static void Become(gate::Settings* settings) {
        gate::Family& family = settings->families[0];
        family.kind = gate::FamilyKind::kRawmode;
        family.wholePath = "/bbs/rawmode.cgi/{board}/{key}/";
        family.restPath = "/bbs/rawmode.cgi/{board}/{key}/{first}-n";
        family.archives = {{"https://{host}/bbs/read_archive.cgi/{board}/{key}/", true}};
    }
    OriginServer fOrigin{Rawmode({{1, "one"}, {2, "two"}})};
    TestGate fGate{&fOrigin, &Become};
};

TEST_F(Raw, TheProgramsOldRowsOfADatBoardAreToldWhereToLook) {
    fGate.Settings().families[0].kind = gate::FamilyKind::kDat;
    const GateAnswer answer = fGate.Get("/bbs/read.cgi?BBS=news&KEY=1012345678&START=1");
    EXPECT_EQ(answer.status, 404);
    EXPECT_NE(answer.reason.find(".dat"), std::string::npos) << answer.reason;
    EXPECT_TRUE(fOrigin.Requests().empty());
}

TEST_F(Raw, AThreadIsADatThatGrowsByExactlyTheNewLines) {
    const GateAnswer first = fGate.Get(kPath);
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.body.find("name<>sage<>2026 ID:id<> one <>title\n"), 0u) << first.body;
    EXPECT_EQ(fGate.GetRest(kPath, first.body.size(), first.Header("Last-Modified")).status, 304);
    EXPECT_EQ(fGate.GetRest(kPath, first.body.size()).Header("Content-Range"),
              "bytes */" + std::to_string(first.body.size()));
    // The third was deleted before anyone read it, the second after.
    fOrigin.Become(Rawmode({{1, "one"}, {4, "https://four"}}));
    const GateAnswer rest = fGate.GetRest(kPath, first.body.size());
    EXPECT_EQ(rest.status, 206);
    EXPECT_EQ(std::count(rest.body.begin(), rest.body.end(), '\n'), 2);
    EXPECT_NE(rest.body.find("  http://four"), std::string::npos) << rest.body;
    EXPECT_TRUE(PathOf(fOrigin.Requests().back()).ends_with("/3-n"));
    fGate.End();
    fGate.Start();
    EXPECT_EQ(fGate.Get(kPath).body, first.body + rest.body);
    // A copy that was cut at a line goes on from there.
    const size_t line = first.body.find('\n') + 1;
    EXPECT_EQ(fGate.GetRest(kPath, line).body, (first.body + rest.body).substr(line));
    EXPECT_EQ(fGate.GetRest(kPath, line + 1).status, 416);
}

TEST_F(Raw, WithoutItsServerAThreadIsReadAsItWasKeptButNothingIsSaidToBeNew) {
    const GateAnswer first = fGate.Get(kPath);
    fOrigin.Become([](const std::string&) { return Reply("503 Busy", ""); });
    EXPECT_EQ(fGate.Get(kPath).body, first.body);
    EXPECT_EQ(fGate.GetRest(kPath, first.body.size()).status, 502);
}

TEST_F(Raw, WhatAServerSaysInsteadOfPostsIsTold) {
    fOrigin.Become(
        [](const std::string&) { return Reply("200 OK", "", "ERROR: THREAD NOT FOUND\r\n"); });
    const GateAnswer answer = fGate.Get(kPath);
    EXPECT_EQ(answer.status, 404);
    EXPECT_NE(answer.reason.find("THREAD NOT FOUND"), std::string::npos) << answer.reason;
    fOrigin.Become([](const std::string&) { return Reply("200 OK", "<html>mending</html>"); });
    EXPECT_EQ(fGate.Get(kPath).status, 502);
}

TEST_F(Raw, RowsOfEarlierCachesAreServedAsPages) {
    const std::string page = fGate.Get("/game/bbs/read.cgi?BBS=123&KEY=1012345678&START=2").body;
    EXPECT_NE(page.find("<dl>\n<b>title</b>\n<dt>1"), std::string::npos) << page;
    EXPECT_NE(page.find("<dd> two  <br><br>\n<table"), std::string::npos) << page;
    fOrigin.Become(Rawmode({{1, "one"}, {2, "two"}, {3, "three"}}));
    const std::string grown = fGate.Get("/game/bbs/read.cgi?BBS=123&KEY=1012345678&START=3").body;
    EXPECT_EQ(grown.find("two"), std::string::npos);
    EXPECT_NE(grown.find("<dt>1"), std::string::npos);
    EXPECT_NE(grown.find("<dt>3"), std::string::npos);
}

// A server of this family moves old threads into storage, whose pages have other bytes.
TEST_F(Raw, AThreadInStorageGoesOnBehindTheLinesThatWereGiven) {
    const GateAnswer first = fGate.Get(kPath);
    fOrigin.Become([](const std::string& request) {
        if (PathOf(request) != "/bbs/read_archive.cgi/game/123/1012345678/")
            return Reply("200 OK", "", "ERROR: STORAGE IN\r\n");
        std::string page = "<html><title>title</title>\n<dl>";
        for (int number = 1; number <= 3; number++)
            page += "<dt>" + std::to_string(number) +
                    " :<a href=\"mailto:sage\"><b>name</b></a>:2026 ID:x<dd> text <br><br>\n";
        return Reply("200 OK", page + "</dl></html>");
    });
    const GateAnswer rest = fGate.GetRest(kPath, first.body.size());
    EXPECT_EQ(rest.status, 206) << rest.reason;
    EXPECT_EQ(std::count(rest.body.begin(), rest.body.end(), '\n'), 1) << rest.body;
}

// The program takes the parts of such a page by counting bytes.
TEST(CgiPage, IsReadBackByTheProgramAsTheLinesItWasMadeOf) {
    const std::string dat = "name<>sage<>2026/01/02 ID:x<> one <br> two <>title\n"
                            "other<><>2026<> three <>\nlast<>a@b<>2026<> <a href=x>y</a> <>\n";
    CgiPage page;
    std::string lines;
    const std::string made = gate::ToUtf8(gate::MakeCgiPage(dat, 1), gate::Charset::kCp932);
    for (size_t at = 0; at < made.size();) {
        const size_t end = made.find('\n', at) + 1;
        if (page.TakeLine(made.substr(at, end - at)))
            lines += page.TakeDatLine();
        at = end;
    }
    EXPECT_EQ(lines, dat);
}

TEST_F(Raw, AListIsRewrittenForTheProgram) {
    fOrigin.Become([](const std::string&) {
        return Reply("200 OK", "1012345678.cgi,\xA5\xB9\xA5\xEC(12)\n1012345678.cgi,x(12)\n");
    });
    EXPECT_EQ(fGate.Get("/game/123/subject.txt").body, "1012345678.dat<>\x83\x58\x83\x8C (12)\n");
}

TEST(Offlaw, ErrorsThatComeWithAGoodStatusAreToldInTheServersWords) {
    OriginServer origin([](const std::string& request) {
        return PathOf(request) == "/bbs/offlaw.cgi/2/town/1012345678/"
                   ? Reply("200 OK", "1<>name<><>2026 ID:x<>one<>title<>host\n")
                   : Reply("200 OK", "<ERROR>too fast</ERROR>\n");
    });
    TestGate gate(&origin, [](gate::Settings* settings) {
        gate::Family& family = settings->families[0];
        family.kind = gate::FamilyKind::kOfflaw;
        family.wholePath = "/bbs/offlaw.cgi/2/{board}/{key}/";
        family.restPath = "/bbs/offlaw.cgi/2/{board}/{key}/{first}-";
        family.archives.clear();
    });
    const GateAnswer first = gate.Get("/town/dat/1012345678.dat");
    EXPECT_EQ(first.status, 200);
    const GateAnswer second = gate.GetRest("/town/dat/1012345678.dat", first.body.size());
    EXPECT_NE(second.reason.find("too fast"), std::string::npos) << second.reason;
}

} // namespace
