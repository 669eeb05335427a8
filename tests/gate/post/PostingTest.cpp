#include "gate/post/AskingServer.h"

#include <condition_variable>

namespace {

std::string Refused(const std::string& code) {
    return Reply(
        "200 OK",
        Sjis("<html><head><title>ERROR!!</title></head><body>ERROR: だめです</body></html>"),
        "X-Chx-Error: " + code + "\r\n");
}

TEST_F(Posting, AFirstPostIsAcceptedInTheBrowserAndSentOnceMoreByTheProgram) {
    const GateAnswer asked = fGate.Post(Program("やあ &"));
    EXPECT_FALSE(IsSuccess(asked));
    EXPECT_NE(
        Text(asked).find("書き込み確認の画面をブラウザで開きました。承諾すると書き込まれます。"),
        std::string::npos)
        << Text(asked);
    const std::string first = fOrigin.Requests().at(0);
    EXPECT_EQ(first.find("POST /test/bbs.cgi HTTP/1.1\r\n"), 0u) << first;
    EXPECT_EQ(HeaderOf(first, "Referer"), "http://board.example/test/read.cgi/news/1012345678/");
    EXPECT_EQ(HeaderOf(first, "Content-Type"), "application/x-www-form-urlencoded");
    EXPECT_EQ(HeaderOf(first, "Cookie"), "");
    EXPECT_EQ(HeaderOf(first, "User-Agent"), fGate.Settings().userAgent);
    const gate::FormPairs pairs = gate::ParseFormBody(BodyOf(first));
    EXPECT_EQ(pairs.at(2).second, Sjis("やあ &"));
    EXPECT_GT(std::stoll(gate::ValueOf(pairs, "time").value()), time(nullptr) - 90);

    EXPECT_EQ(Page().body, kConfirmation);
    EXPECT_EQ(Page().Header("Content-Type"), "text/html; charset=Shift_JIS");
    EXPECT_NE(Page().Header("Content-Security-Policy").find("form-action 'self'"),
              std::string::npos);
    // Sent again before that, it is not posted, and the page is named.
    EXPECT_NE(Text(fGate.Post(Program("やあ &", 2))).find(fGate.Opened().at(0)), std::string::npos);
    EXPECT_EQ(Sent(), 1u);

    // The page in the browser and what became of it outlive the gate's end.
    Restart();
    EXPECT_EQ(Accept(Accepted()).body, kPosted);
    Restart();
    ASSERT_EQ(Sent(), 2u);
    const std::string second = fOrigin.Requests().at(1);
    EXPECT_EQ(PathOf(second), "/test/bbs.cgi?guid=ON");
    EXPECT_EQ(BodyOf(second), Accepted());
    EXPECT_EQ(HeaderOf(second, "Referer"), "http://board.example/test/bbs.cgi");
    EXPECT_EQ(HeaderOf(second, "Cookie"), "acorn=xyz");
    EXPECT_EQ(Accept(Accepted()).status, 404);
    EXPECT_EQ(Page().status, 404);

    EXPECT_TRUE(IsSuccess(fGate.Post(Program("やあ &", 3))));
    EXPECT_EQ(Sent(), 2u);
    Restart();
    EXPECT_TRUE(IsSuccess(fGate.Post(Program("次です"))));
    EXPECT_EQ(HeaderOf(fOrigin.Requests().at(2), "Cookie"), "acorn=xyz; MonaTicket=opqr");
    EXPECT_EQ(fGate.Opened().size(), 1u);
}

TEST_F(Posting, ASuccessIsToldOnceMoreAndThenForgotten) {
    fOrigin.Become([](const std::string&) { return Reply("200 OK", kPosted); });
    for (const size_t sent : {1u, 1u, 2u}) {
        EXPECT_TRUE(IsSuccess(fGate.Post(Program("同じ"))));
        EXPECT_EQ(Sent(), sent);
    }
    EXPECT_TRUE(IsSuccess(fGate.Post(Program("違う"))));
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(Posting, OnlyThePageItselfMayBeAccepted) {
    fGate.HaveBrowser(false);
    EXPECT_NE(Text(fGate.Post(Program("やあ &"))).find(fGate.Opened().at(0)), std::string::npos);
    const std::string own = "http://localhost:" + std::to_string(fGate.PagePort());
    for (const std::string& headers :
         {std::string("Origin: http://evil.test\r\n"), std::string("Origin: null\r\n"),
          "Origin: http://localhost:" + fGate.PortText() + "\r\n",
          "Origin: " + own + "\r\nSec-Fetch-Site: cross-site\r\n",
          std::string("Sec-Fetch-Site: same-site\r\n")})
        EXPECT_EQ(Accept(Accepted(), headers).status, 403) << headers;
    EXPECT_EQ(Accept(Accepted("confirmed%3Aother")).status, 403);
    EXPECT_EQ(Accept(Accepted() + "&more=1").status, 403);
    EXPECT_EQ(Accept(Accepted(), "", "/" + std::string(32, '0')).status, 404);
    EXPECT_EQ(Accept(Accepted(), "", "/x").status, 404);
    EXPECT_EQ(Sent(), 1u);
    EXPECT_EQ(Accept(Accepted(), "Origin: " + own + "\r\n").body, kPosted);
}

TEST_F(Posting, ATicketThatTheServerCallsBrokenIsDroppedAndThatIsSaid) {
    fGate.Settings().answerMarks.codes = {{"E3000", "チケットが無効です。", "MonaTicket"}};
    fOrigin.Become([](const std::string&) { return Reply("200 OK", kPosted, kTicket); });
    fGate.Post(Program("一"));
    fOrigin.Become([](const std::string& request) {
        return HeaderOf(request, "Cookie").empty() ? AskFirst(request) : Refused("E3000 expired");
    });
    const std::string text = Text(fGate.Post(Program("二")));
    EXPECT_NE(text.find("だめです"), std::string::npos) << text;
    EXPECT_NE(text.find("MonaTicket を消しました"), std::string::npos) << text;
    EXPECT_TRUE(fGate.Store().ListCookies("test").empty());
    fGate.Post(Program("二"));
    EXPECT_EQ(fGate.Opened().size(), 1u);
    // The answer that calls one broken may bring the next.
    for (const char* value : {"old", "new"}) {
        fOrigin.Become([value](const std::string&) {
            return Reply("200 OK", kConfirmation,
                         "X-Chx-Error: 0000 Confirmation [Broken MonaTicket]\r\nSet-Cookie: "
                         "MonaTicket=" +
                             std::string(value) + "; domain=.example; path=/\r\n");
        });
        fGate.Post(Program(value));
        EXPECT_EQ(fGate.Store().ListCookies("test").back().value, value);
    }
}

TEST_F(Posting, ARefusedPostMayBeSentAgain) {
    fOrigin.Become([](const std::string&) { return Refused("9801 wait"); });
    EXPECT_NE(Text(fGate.Post(Program("一"))).find("9801 wait"), std::string::npos);
    fOrigin.Become(AskFirst);
    fGate.Post(Program("やあ &"));
    fOrigin.Become([](const std::string&) { return Refused("9990 banned"); });
    EXPECT_NE(Utf8(Accept(Accepted()).body).find("だめです"), std::string::npos);
    EXPECT_FALSE(IsSuccess(fGate.Post(Program("やあ &"))));
    EXPECT_EQ(Sent(), 4u);
}

TEST_F(Posting, OfTwoEqualPostsAtOnceOneIsSent) {
    std::mutex mutex;
    std::condition_variable changed;
    bool hasCome = false;
    bool mayGo = false;
    fOrigin.Become([&](const std::string&) {
        std::unique_lock guard(mutex);
        hasCome = true;
        changed.notify_all();
        changed.wait(guard, [&] { return mayGo; });
        return Reply("200 OK", kPosted);
    });
    GateAnswer first;
    std::thread poster([&] { first = fGate.Post(Program("同時")); });
    {
        std::unique_lock guard(mutex);
        changed.wait(guard, [&] { return hasCome; });
    }
    EXPECT_NE(Text(fGate.Post(Program("同時", 2))).find("最中"), std::string::npos);
    {
        std::lock_guard guard(mutex);
        mayGo = true;
        changed.notify_all();
    }
    poster.join();
    EXPECT_TRUE(IsSuccess(first));
    EXPECT_EQ(Sent(), 1u);
}

// Answers a post by a cut page, and the thread with these lines.
OriginServer::Script CutAndThread(const std::string& lines) {
    return [lines](const std::string& request) {
        return request.starts_with("POST") ? "HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n<html>"
                                           : Reply("200 OK", lines);
    };
}

std::string Euc(const std::string& utf8) {
    return gate::FromCp932(Sjis(utf8), gate::Charset::kEucJp);
}

TEST_F(Posting, AfterAnUnclearAnswerTheThreadIsLookedAtBeforeAnythingIsSent) {
    struct Case {
        const char* what;
        std::string lines;
        bool isThere;
        gate::FamilyKind kind = gate::FamilyKind::kDat;
    };
    const Case kCases[] = {
        {"found, with what servers add",
         "a<>b<>2099/01/01(木) 00:00:00.00 ID:x<> 一&lt;二 <br> <a "
         "href=\"x\">&gt;&gt;1</a> 三 <>t\n",
         true},
        {"another's of long ago",
         "a<>b<>2020/01/01(水) 00:00:00 ID:x<> 一&lt;二<br>&gt;&gt;1三 <>t\n", false},
        {"another text", "a<>b<>2099/01/01(木) 00:00:00<> 一 <>t\n", false},
        {"no such thread", "<html></html>", false},
        {"found by its number, in EUC-JP",
         "7<>a<>b<>2099/01/01(木) 00:00:00<> 一&lt;二<br>&gt;&gt;1 三<><>x\n", true,
         gate::FamilyKind::kRawmode},
        {"the other posts by number", "7<>a<>b<>2099/01/01(木) 00:00:00<> 一<><>x\n", false,
         gate::FamilyKind::kRawmode},
        {"found by its number",
         "7<>a<>b<>2099/01/01(木) 00:00:00 ID:x<>一&lt;二<br>&gt;&gt;1 三<><>h\n", true,
         gate::FamilyKind::kOfflaw}};
    gate::Family& family = fGate.Settings().families[0];
    family.wholePath = "/whole/{board}/{key}/";
    for (const Case& row : kCases) {
        family.kind = row.kind;
        ForgetPosts();
        const std::string post = Program("一<二\n>>1 三");
        const bool isRawmode = row.kind == gate::FamilyKind::kRawmode;
        fOrigin.Become(CutAndThread(isRawmode ? Euc(row.lines) : Sjis(row.lines)));
        EXPECT_NE(Text(fGate.Post(post)).find("わかりません"), std::string::npos) << row.what;
        const size_t sent = Sent();
        EXPECT_EQ(IsSuccess(fGate.Post(post)), row.isThere) << row.what;
        EXPECT_EQ(PathOf(fOrigin.Requests().at(sent)), row.kind == gate::FamilyKind::kDat
                                                           ? "/news/dat/1012345678.dat"
                                                           : "/whole/news/1012345678/")
            << row.what;
        const bool isSentAnew = !row.lines.starts_with("<html>") && !row.isThere;
        EXPECT_EQ(Sent(), sent + (isSentAnew ? 2 : 1)) << row.what;
    }
}

TEST_F(Posting, ASilentServerLeavesAPostUnclearBeforeTheProgramGivesUp) {
    fGate.End();
    fGate.Settings().answerSeconds = 1;
    fGate.Start();
    fOrigin.Become([](const std::string&) { return OriginServer::kSilence; });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_NE(Text(fGate.Post(Program("一"))).find("わかりません"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    // The thread can't be looked at either: nothing is sent again.
    EXPECT_NE(Text(fGate.Post(Program("一"))).find("送り直していません"), std::string::npos);
    ASSERT_EQ(Sent(), 2u);
    EXPECT_EQ(PathOf(fOrigin.Requests().back()), "/news/dat/1012345678.dat");
}

TEST_F(Posting, WhatNeverReachedTheServerIsSaidAndForgotten) {
    fGate.End();
    fGate.Settings().families[0].reach = "127.0.0.1:1";
    fGate.Start();
    EXPECT_NE(Text(fGate.Post(Program("一"))).find("送られていません"), std::string::npos);
    fGate.End();
    fGate.Settings().families[0].reach = fOrigin.Address();
    fGate.Start();
    fOrigin.Become([](const std::string&) {
        return "HTTP/1.1 302 Found\r\nLocation: /test/read.cgi/news/1012345678/\r\n"
               "Content-Length: 0\r\n\r\n";
    });
    EXPECT_NE(Text(fGate.Post(Program("一"))).find("わかりません"), std::string::npos);
    EXPECT_EQ(Sent(), 1u);
}

TEST_F(Posting, OtherFamiliesGetTheirOwnForm) {
    struct Case {
        gate::PostKind kind;
        std::string body, asked, path, referer, text;
    };
    const std::string bbs = Program("あ");
    const Case kCases[] = {{gate::PostKind::kUtf8, bbs, "/test/bbs.cgi", "/test/bbs.cgi",
                            "/test/read.cgi/news/1012345678/", "\xE3\x81\x82"},
                           {gate::PostKind::kRawmode,
                            "NAME=&MAIL=&MESSAGE=%82%A0&BBS=123&KEY=1012345678&TIME=1",
                            "/game/bbs/write.cgi", "/bbs/write.cgi/game/123/1012345678/",
                            "/bbs/read.cgi/game/123/1012345678/", "\xA4\xA2"},
                           {gate::PostKind::kOfflaw, bbs, "/test/bbs.cgi", "/bbs/write.cgi",
                            "/bbs/read.cgi/news/1012345678/", "\x82\xA0"}};
    fOrigin.Become([](const std::string&) { return Reply("200 OK", kPosted); });
    for (const Case& row : kCases) {
        fGate.Settings().families[0].post = row.kind;
        ForgetPosts();
        EXPECT_TRUE(IsSuccess(fGate.Post(row.body, row.asked))) << row.path;
        const std::string sent = fOrigin.Requests().back();
        EXPECT_EQ(PathOf(sent), row.path);
        EXPECT_EQ(HeaderOf(sent, "Referer"), "http://board.example" + row.referer);
        EXPECT_EQ(gate::ValueOf(gate::ParseFormBody(BodyOf(sent)), "MESSAGE"), row.text);
        EXPECT_EQ(HeaderOf(sent, "Content-Type").ends_with("; charset=UTF-8"),
                  row.kind == gate::PostKind::kUtf8);
    }
}

TEST_F(Posting, CookiesAreShownByNameAndForgottenByTheirButtonAlone) {
    fOrigin.Become([](const std::string&) { return Reply("200 OK", kPosted, kTicket); });
    fGate.Post(Program("一"));
    const std::string host = "Host: localhost:" + fGate.PortText() + "\r\n";
    const std::string page = Exchange(fGate.Port(), "GET / HTTP/1.1\r\n" + host + "\r\n").body;
    EXPECT_NE(page.find("MonaTicket"), std::string::npos);
    EXPECT_EQ(page.find("opqr"), std::string::npos);
    const size_t start = page.find("action=\"/") + 8;
    const std::string button = page.substr(start, page.find('"', start) - start);
    const auto press = [&](const std::string& path, const std::string& headers) {
        return Exchange(fGate.Port(), "POST " + path + " HTTP/1.1\r\n" + host + headers +
                                          "Content-Length: 11\r\n\r\nfamily=test")
            .status;
    };
    EXPECT_EQ(press(button, "Origin: http://evil.test\r\n"), 403);
    EXPECT_EQ(press("/" + std::string(32, '0') + "/forget", ""), 404);
    EXPECT_EQ(fGate.Store().ListCookies("test").size(), 1u);
    EXPECT_EQ(press(button, "Origin: http://localhost:" + fGate.PortText() + "\r\n"), 303);
    EXPECT_TRUE(fGate.Store().ListCookies("test").empty());
    EXPECT_TRUE(fGate.Cookies().NamesOf(fGate.Settings().families[0]).empty());
}

TEST_F(Posting, WhatIsNoPostIsRefusedAsTheProgramReadsIt) {
    for (const std::string& body : {std::string(), std::string("bbs=../x&key=1012345678&MESSAGE=a"),
                                    std::string("bbs=news&key=abc&MESSAGE=a")}) {
        const GateAnswer answer = fGate.Post(body);
        EXPECT_EQ(answer.status, 200);
        EXPECT_NE(Text(answer).find("送られていません"), std::string::npos) << body;
    }
    EXPECT_NE(Text(fGate.Post(Program("a"), "/other.cgi")).find("送られていません"),
              std::string::npos);
    EXPECT_EQ(Sent(), 0u);
}

} // namespace
