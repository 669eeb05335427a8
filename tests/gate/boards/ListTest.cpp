#include "gate/TestGate.h"

namespace {

constexpr const char* kList = "/news/subject.txt";
const std::string kRow = "1012345678.dat<>\x83\x58\x83\x8C (12)\n"; // cp932

TEST(List, ComesAsItIsWhateverItsLabelSays) {
    OriginServer origin([](const std::string&) {
        return Reply("200 OK", kRow, "Content-Type: text/plain; charset=utf-8\r\n");
    });
    TestGate gate(&origin);
    const GateAnswer answer = gate.Get(kList);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, kRow);
    EXPECT_NE(answer.Header("Last-Modified"), "");
}

TEST(List, InUtf8BecomesTheProgramsCharset) {
    OriginServer origin(
        [](const std::string&) { return Reply("200 OK", "1012345678.dat<>スレ😀 (12)\n"); });
    TestGate gate(&origin);
    EXPECT_EQ(gate.Get(kList).body, kRow.substr(0, 20) + "(U+1F600) (12)\n");
}

TEST(List, IsNotAskedForMoreOftenThanTheSettingsSay) {
    OriginServer origin([](const std::string&) { return Reply("200 OK", kRow); });
    TestGate gate(&origin, [](gate::Settings* settings) { settings->listSeconds = 600; });
    EXPECT_EQ(gate.Get(kList).body, gate.Get(kList).body);
    gate.Get(kList, "", "old.test"); // an older name of the same board
    EXPECT_EQ(origin.Requests().size(), 1u);
    gate.Get("/other/subject.txt");
    EXPECT_EQ(origin.Requests().size(), 2u);
}

// "old.example" sends its readers to the board's page on "new.example".
std::string Moved(const std::string& request) {
    if (HeaderOf(request, "Host") == "old.example")
        return Reply("302 Found", "", "Location: https://new.example/news/\r\n");
    return PathOf(request) == kList ? Reply("200 OK", kRow) : Reply("200 OK", "<html>a board");
}

TEST(List, OfAMovedBoardIsFoundAndTheMoveRemembered) {
    OriginServer origin(Moved);
    TestGate gate(&origin);
    EXPECT_EQ(gate.Get(kList, "", "old.example").body, kRow);
    const size_t before = origin.Requests().size();
    gate.End();
    gate.Start();
    EXPECT_EQ(gate.Get(kList, "", "old.example").body, kRow);
    ASSERT_EQ(origin.Requests().size(), before + 1);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "Host"), "new.example");
    gate.Get("/news/dat/1012345678.dat", "", "old.example");
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "Host"), "new.example");
}

// A new host that has fallen silent leaves time for the old one, to which the board may be back.
TEST(List, OfABoardThatIsBackIsFoundInTimeThoughItsOtherHostIsSilent) {
    OriginServer origin(Moved);
    TestGate gate(&origin, [](gate::Settings* settings) { settings->answerSeconds = 2; });
    EXPECT_EQ(gate.Get(kList, "", "old.example").body, kRow);
    origin.Become([](const std::string& request) {
        return HeaderOf(request, "Host") == "old.example" ? Reply("200 OK", kRow)
                                                          : std::string(OriginServer::kSilence);
    });
    EXPECT_EQ(gate.Get(kList, "", "old.example").body, kRow);
    origin.Become([](const std::string&) { return std::string(OriginServer::kSilence); });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(gate.Get(kList, "", "old.example").status, 502);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

// Two megabytes that are two kilobytes on their way.
std::string Bomb() {
    std::string bytes;
    FILE* gzip = popen("head -c 2097152 /dev/zero | gzip -c", "r");
    for (int c; (c = fgetc(gzip)) != EOF;)
        bytes += static_cast<char>(c);
    pclose(gzip);
    return bytes;
}

struct FailureCase {
    const char* name;
    std::string answer;
    int status;
    const char* part;
};

TEST(List, ThatCannotBeHadIsToldInWords) {
    const std::string here = std::string("Location: ") + kList + "\r\n";
    const FailureCase kCases[] = {
        {"gone", Reply("404 Not Found", ""), 404, "404"},
        {"a loop", Reply("302 Found", "", here), 502, "移動先"},
        {"a stranger", Reply("302 Found", "", "Location: http://evil.test/\r\n"), 502, "知らない"},
        {"home", Reply("302 Found", "", "Location: http://127.0.0.1/\r\n"), 502, "知らない"},
        {"a page", Reply("200 OK", "<html>"), 502, "ページ"},
        {"a page, in its own way", Reply("200 OK", "<script>x</script>"), 502, "ページ"},
        {"a challenge", Reply("503 Busy", "", "CF-Mitigated: challenge\r\n"), 502, "人間"},
        {"cut", "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nx", 502, "切れ"},
        {"a bomb", Reply("200 OK", Bomb(), "Content-Encoding: gzip\r\n"), 502, "大きすぎ"}};
    for (const FailureCase& now : kCases) {
        SCOPED_TRACE(now.name);
        OriginServer origin([&](const std::string&) { return now.answer; });
        TestGate gate(&origin, [](gate::Settings* settings) { settings->mostBytes = 1 << 20; });
        const GateAnswer answer = gate.Get(kList);
        EXPECT_EQ(answer.status, now.status);
        EXPECT_NE(answer.reason.find(now.part), std::string::npos) << answer.reason;
        EXPECT_LE(origin.Requests().size(), 6u);
    }
}

TEST(List, AServerThatStaysSilentIsToldOfInTime) {
    std::mutex hold;
    hold.lock();
    OriginServer origin([&](const std::string&) {
        std::lock_guard guard(hold);
        return Reply("200 OK", kRow);
    });
    TestGate gate(&origin, [](gate::Settings* settings) { settings->answerSeconds = 1; });
    const GateAnswer answer = gate.Get(kList);
    EXPECT_EQ(answer.status, 502);
    EXPECT_NE(answer.reason.find("まだ"), std::string::npos) << answer.reason;
    hold.unlock();
}

const std::string kMenu =
    R"({"menu_list":[{"category_name":"News","category_content":[)"
    R"({"url":"https://board.example/news/","board_name":"News","directory_name":"news"}]}]})";

GateAnswer Menu(TestGate* gate) {
    return gate->Get("/newbbsmenu.html", "", "portal.test");
}

TEST(Menu, TheLastGoodOneStandsInForAnyThatIsNone) {
    OriginServer origin([](const std::string&) { return Reply("404 Not Found", "<html>gone"); });
    TestGate gate(&origin, [](gate::Settings* settings) {
        settings->menus = {"https://menu.example/bbsmenu.json"};
    });
    EXPECT_EQ(Menu(&gate).body, "");
    origin.Become([](const std::string&) { return Reply("200 OK", kMenu); });
    const GateAnswer good = Menu(&gate);
    EXPECT_EQ(good.status, 200);
    EXPECT_NE(good.body.find("<A HREF=http://board.example/news/>News</A>"), std::string::npos)
        << good.body;
    gate.End();
    gate.Start();
    for (const std::string& answer :
         {std::string(), Reply("200 OK", "<html>login</html>"),
          Reply("200 OK", "<b>Hotel</b><a href=http://portal.test/login/>log in</a>"),
          Reply("503 Busy", kMenu), Reply("200 OK", kMenu.substr(0, 60)),
          Reply("302 Found", "", "Location: http://x/\r\n")}) {
        origin.Become([&](const std::string&) { return answer; });
        EXPECT_EQ(Menu(&gate).body, good.body) << answer;
    }
}

TEST(Menu, OfAMovedHostIsFoundThoughTheOldOneIsGone) {
    OriginServer origin([](const std::string& request) {
        return HeaderOf(request, "Host") == "menu.example"
                   ? Reply("301 Moved", "", "Location: https://new.example/bbsmenu.json\r\n")
                   : Reply("200 OK", kMenu);
    });
    TestGate gate(&origin, [](gate::Settings* settings) {
        settings->menus = {"https://menu.example/bbsmenu.json"};
    });
    EXPECT_NE(Menu(&gate).body, "");
    origin.Become([](const std::string& request) {
        std::string menu = kMenu;
        menu.replace(menu.find("News"), 4, "Late");
        return HeaderOf(request, "Host") == "new.example" ? Reply("200 OK", menu) : std::string();
    });
    EXPECT_NE(Menu(&gate).body.find("Late"), std::string::npos);
}

TEST(Menu, SeveralAreJoinedInTheirOrder) {
    OriginServer origin([](const std::string& request) {
        std::string menu = kMenu;
        menu.replace(menu.find("News"), 4, HeaderOf(request, "Host")[0] == 'a' ? "AAAA" : "BBBB");
        return Reply("200 OK", menu);
    });
    TestGate gate(&origin, [](gate::Settings* settings) {
        settings->menus = {"https://b.example/", "https://a.example/"};
    });
    const std::string page = Menu(&gate).body;
    EXPECT_LT(page.find("BBBB"), page.find("AAAA"));
    EXPECT_NE(page.find("AAAA"), std::string::npos);
}

} // namespace
