#include "gate/TestGate.h"

#include <array>

namespace {

constexpr const char* kPath = "/news/dat/1012345678.dat";
constexpr const char* kDate = "Fri, 02 Jan 2026 03:04:05 GMT";
constexpr const char* kEpoch = "Thu, 01 Jan 1970 00:00:00 GMT";

std::string Line(int number, const std::string& text = "text") {
    return "name<>sage<>2026/01/02 ID:x<> " + text + std::to_string(number) + " <>" +
           (number == 1 ? "title" : "") + "\n";
}

std::string Lines(int first, int last) {
    std::string lines;
    for (int number = first; number <= last; number++)
        lines += Line(number);
    return lines;
}

const std::string kDated = std::string("Last-Modified: ") + kDate + "\r\n";

size_t StartOf(const std::string& request) {
    const std::string range = HeaderOf(request, "Range");
    return range.empty() ? 0 : strtoul(range.c_str() + strlen("bytes="), nullptr, 10);
}

// Ranges as most servers have them.
OriginServer::Script Honest(const std::string& file) {
    return [file](const std::string& request) {
        const size_t start = StartOf(request);
        const std::string total = std::to_string(file.size());
        if (HeaderOf(request, "If-Modified-Since") == kDate)
            return std::string("HTTP/1.1 304 Not Modified\r\n\r\n");
        if (HeaderOf(request, "Range").empty())
            return Reply("200 OK", file, kDated);
        if (start >= file.size())
            return Reply("416 Range Not Satisfiable", "",
                         "Content-Range: bytes */" + total + "\r\n");
        return Reply("206 Partial Content", file.substr(start),
                     kDated + "Content-Range: bytes " + std::to_string(start) + "-" +
                         std::to_string(file.size() - 1) + "/" + total + "\r\n");
    };
}

// Whatever is asked for, the whole file comes.
OriginServer::Script Whole(const std::string& file) {
    return [file](const std::string&) { return Reply("200 OK", file, kDated); };
}

// The same, with its end told by the connection's.
OriginServer::Script Endless(const std::string& file) {
    return [file](const std::string&) { return "HTTP/1.1 200 OK\r\n" + kDated + "\r\n" + file; };
}

// Nothing is ever beyond the end: the part is empty.
OriginServer::Script Empty(const std::string& file) {
    return [file](const std::string& request) {
        const size_t start = std::min(StartOf(request), file.size());
        return Reply("206 Partial Content", file.substr(start), kDated);
    };
}

using Kind = OriginServer::Script (*)(const std::string&);

struct RangeCase {
    const char* name;
    Kind server;
    std::string file;
    size_t held;
    const char* since;
    int status;
    std::string contentRange, body;
};

const std::string kThree = Lines(1, 3);
const std::string kFive = Lines(1, 5);
const std::string kRest = Lines(4, 5);
const std::string kRestRange = "bytes " + std::to_string(kThree.size()) + "-" +
                               std::to_string(kFive.size() - 1) + "/" +
                               std::to_string(kFive.size());
const std::string kAllHeld = "bytes */" + std::to_string(kThree.size());
const std::string kShifted = Line(1) + Line(2, "deleted: ") + Lines(3, 5);

TEST(Dat, ARangeIsAnsweredHonestlyWhateverTheServerSends) {
    const RangeCase kCases[] = {
        {"grown", Honest, kFive, kThree.size(), kEpoch, 206, kRestRange, kRest},
        {"grown, whole", Whole, kFive, kThree.size(), kEpoch, 206, kRestRange, kRest},
        {"grown, endless", Endless, kFive, kThree.size(), kEpoch, 206, kRestRange, kRest},
        {"grown, bare", Empty, kFive, kThree.size(), kEpoch, 206, kRestRange, kRest},
        {"same, dated", Honest, kThree, kThree.size(), kDate, 304, "", ""},
        {"same", Honest, kThree, kThree.size(), kEpoch, 416, kAllHeld, ""},
        {"same, whole", Whole, kThree, kThree.size(), kEpoch, 416, kAllHeld, ""},
        {"same, whole, dated", Whole, kThree, kThree.size(), kDate, 304, "", ""},
        {"same, endless", Endless, kThree, kThree.size(), kEpoch, 416, kAllHeld, ""},
        {"same, bare", Empty, kThree, kThree.size(), kDate, 304, "", ""},
        {"shifted", Honest, kShifted, kThree.size(), kEpoch, 416, "", "-"},
        {"shifted, whole", Whole, kShifted, kThree.size(), kEpoch, 416, "", "-"},
        {"shifted, endless", Endless, kShifted, kThree.size(), kEpoch, 416, "", "-"},
        {"shrunk", Honest, kThree, kFive.size(), kEpoch, 416, "", "-"},
        {"shrunk, whole", Whole, kThree, kFive.size(), kEpoch, 416, "", "-"},
        {"shrunk, bare", Empty, kThree, kFive.size(), kEpoch, 416, "", "-"}};
    for (const RangeCase& now : kCases) {
        SCOPED_TRACE(now.name);
        OriginServer origin(Whole(now.file.substr(0, now.held)));
        TestGate gate(&origin);
        gate.Get(kPath); // from now on the gate has given the date
        origin.Become(now.server(now.file));
        const GateAnswer answer = gate.GetRest(kPath, now.held, now.since);
        EXPECT_EQ(answer.status, now.status);
        EXPECT_EQ(answer.Header("Content-Range"), now.contentRange);
        if (now.body == "-") {
            EXPECT_EQ(answer.body.find("<>"), std::string::npos);
        } else {
            EXPECT_EQ(answer.body, now.body);
        }
        const std::string length = std::to_string(answer.body.size());
        EXPECT_EQ(answer.Header("Content-Length"), now.status == 304 ? "" : length);
        EXPECT_EQ(answer.Header("Last-Modified"), now.status == 206 ? kDate : "");
        EXPECT_EQ(HeaderOf(origin.Requests().back(), "Range"),
                  "bytes=" + std::to_string(now.held - 1) + "-");
    }
}

TEST(Dat, OnlyADateThatTheGateHasGivenGoesOutward) {
    OriginServer origin(Honest(kThree));
    TestGate gate(&origin);
    gate.GetRest(kPath, kThree.size(), kDate);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "If-Modified-Since"), "");
    gate.Get(kPath);
    gate.GetRest(kPath, kThree.size(), kDate);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "If-Modified-Since"), kDate);
    gate.End();
    gate.Start();
    gate.GetRest(kPath, kThree.size(), kDate);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "If-Modified-Since"), kDate);
}

TEST(Dat, WhatTheProgramCannotKnowIsRewrittenWithoutMovingAByte) {
    const std::string file = Line(1, "https://a/ &#128512; ") + Line(2, "ttps://b/ ");
    OriginServer origin(Honest(file));
    TestGate gate(&origin);
    const GateAnswer whole = gate.Get(kPath);
    EXPECT_EQ(whole.body.size(), file.size());
    EXPECT_NE(whole.body.find("  http://a/ (U+1F600)"), std::string::npos) << whole.body;
    EXPECT_NE(whole.body.find("  ttp://b/ 2"), std::string::npos) << whole.body;
}

TEST(Dat, AnAnswerWithoutItsEndIsCutOffAndNeverCompleted) {
    const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: 5000\r\n\r\n";
    OriginServer origin([&](const std::string&) { return head + kThree; });
    TestGate gate(&origin);
    const GateAnswer answer = gate.Get(kPath);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.Header("Content-Length"), "5000");
    EXPECT_LT(answer.body.size(), 5000u);
    EXPECT_TRUE(kThree.starts_with(answer.body));
    // And in chunks, whose end is missing too.
    origin.Become([](const std::string&) {
        return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\na<>b\r\n";
    });
    EXPECT_EQ(gate.Get(kPath).status, 502);
}

// Whatever part of the answer comes, the program gets a part of the log or words, and nothing that
// is cut passes for whole.
TEST(Dat, AnAnswerCutAtAnyByteIsNeverTakenForWhole) {
    const std::string file = Line(1) + Line(2, std::string(20, 'x'));
    const std::string first = Line(1);
    OriginServer origin(Honest(file));
    TestGate gate(&origin);
    const std::string whole = Reply("200 OK", file, kDated);
    const std::string chunked =
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\na<>\r\n2\r\n \n\r\n0\r\n\r\n";
    const std::string part = Honest(file)(
        "GET x HTTP/1.1\r\nRange: bytes=" + std::to_string(first.size() - 1) + "-\r\n\r\n");
    struct CutCase {
        std::string answer, all; // what the gate would give of it
        size_t end;              // from here on nothing is missing
    };
    const CutCase kCases[] = {{whole, file, whole.size()},
                              {part, file.substr(first.size()), part.size()},
                              {chunked, "a<> \n", chunked.size() - 2}};
    for (const CutCase& now : kCases) {
        for (size_t length = 0; length < now.end; length++) {
            SCOPED_TRACE(std::to_string(length) + " of " + now.answer);
            origin.Become(
                [sent = now.answer.substr(0, length)](const std::string&) { return sent; });
            const GateAnswer got =
                now.answer == part ? gate.GetRest(kPath, first.size()) : gate.Get(kPath);
            if (got.status == 200 || got.status == 206) {
                EXPECT_EQ(got.Header("Content-Length"), std::to_string(now.all.size()));
                EXPECT_TRUE(now.all.starts_with(got.body)) << got.body;
                EXPECT_LT(got.body.size(), now.all.size());
            } else {
                EXPECT_GE(got.status, 500) << got.head;
                EXPECT_EQ(got.body, got.reason + "\n");
            }
        }
    }
    origin.Become(Honest(file));
    EXPECT_EQ(gate.GetRest(kPath, first.size()).body, file.substr(first.size()));
}

TEST(Dat, OddButWholeAnswersComeThrough) {
    const std::string longLine = Line(1, std::string(8192, 'x') + " ");
    const std::string broken = Line(1, "\xE3\x81 \xFF\x81 ");
    const std::string kFiles[] = {longLine, broken, "<>" + Line(1), "</b>name <b>" + Line(1)};
    for (const std::string& file : kFiles) {
        // With a second answer behind the first, and a label that is wrong.
        OriginServer origin([&](const std::string&) {
            return Reply("200 OK", file, "Content-Type: text/html; charset=utf-8\r\n") +
                   Reply("200 OK", "x");
        });
        TestGate gate(&origin);
        EXPECT_EQ(gate.Get(kPath).body, file);
    }
}

// A connection of the program's that has asked for the thread.
int AskFor(const TestGate& gate) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(gate.Port()));
    EXPECT_EQ(connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    const std::string request = std::string("GET http://board.example") + kPath +
                                " HTTP/1.1\r\nHost: board.example\r\n\r\n";
    send(handle, request.data(), request.size(), MSG_NOSIGNAL);
    return handle;
}

TEST(Dat, WhatHasComeIsGivenWithoutWaitingForTheRest) {
    const std::string hold(OriginServer::kHold);
    const std::string whole = Reply("200 OK", kThree);
    const std::string answer =
        whole.substr(0, whole.size() - Lines(2, 3).size()) + hold + Line(2) + hold + Line(3);
    OriginServer origin([&](const std::string&) { return answer; });
    TestGate gate(&origin, [](gate::Settings* settings) { settings->transferSeconds = 5; });
    const int handle = AskFor(gate);
    std::string got;
    std::array<char, 4096> piece;
    const auto receive = [&] {
        const ssize_t count = recv(handle, piece.data(), piece.size(), 0);
        got.append(piece.data(), static_cast<size_t>(std::max<ssize_t>(count, 0)));
        return count > 0;
    };
    for (const int line : {1, 2, 3}) {
        while (!got.ends_with(Line(line)) && receive()) {
        }
        EXPECT_TRUE(got.ends_with(Lines(1, line))) << got;
        origin.GoOn();
    }
    close(handle);
}

// With one connection at a time, the next is served when the first one has ended.
TEST(Dat, AClientThatGoesAwayHoldsNothingForLong) {
    OriginServer origin([](const std::string& request) {
        return PathOf(request) == kPath ? std::string(OriginServer::kHold)
                                        : Reply("200 OK", "1012345678.dat<>a (1)\n");
    });
    TestGate gate(&origin, [](gate::Settings* settings) {
        settings->connections = 1;
        settings->transferSeconds = 1;
    });
    close(AskFor(gate));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(gate.Get("/news/subject.txt").status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

struct WordsCase {
    const char* name;
    std::string answer;
    int status;
    const char* part; // of the reason
};

TEST(Dat, WhatIsNoLogIsToldInWordsAndNeverGivenAsOne) {
    const WordsCase kCases[] = {
        {"a portal's page", Reply("200 OK", "<!DOCTYPE html><p>login</p>"), 502, "ページ"},
        {"a portal's page, in its own way",
         Reply("200 OK", "<script>location='http://login/'</script>"), 502, "ページ"},
        {"a portal's words", Reply("200 OK", "please log in\n"), 502, "ページ"},
        {"nothing in it", Reply("200 OK", ""), 502, ""},
        {"a challenge", Reply("403 Forbidden", "<title>Just a moment...</title>"), 503, "人間"},
        {"tired", Reply("503 Busy", "x", "Retry-After: 60\r\n"), 503, "混雑"},
        {"broken", Reply("500 Oops", "x"), 502, "500"},
        {"nothing", "", 502, "応答"},
        {"garbage", "\x01\x02\x03\r\n\r\n", 502, "board.example"},
        {"dropped everywhere", Reply("404 Not Found", "x"), 404, "過去ログ"},
        {"a loop", Reply("302 Found", "", std::string("Location: ") + kPath + "\r\n"), 404, ""},
        {"elsewhere", Reply("302 Found", "", "Location: http://evil.test/news/dat/1.dat\r\n"), 404,
         ""},
        {"too long", "HTTP/1.1 200 OK\r\n\r\na<>" + std::string(2 << 20, 'x'), 502, "大きすぎ"}};
    for (const WordsCase& now : kCases) {
        SCOPED_TRACE(now.name);
        OriginServer origin([&](const std::string&) { return now.answer; });
        TestGate gate(&origin, [](gate::Settings* settings) {
            settings->mostBytes = 1 << 20;
            settings->challengeMarks = {"Just a moment..."};
        });
        const GateAnswer answer = gate.Get(kPath);
        EXPECT_EQ(answer.status, now.status);
        EXPECT_NE(answer.reason.find(now.part), std::string::npos) << answer.reason;
        EXPECT_EQ(answer.Header("Content-Length"), std::to_string(answer.body.size()));
        EXPECT_EQ(answer.body, answer.reason + "\n");
    }
}

TEST(Dat, ATiredServerIsLeftAloneForAsLongAsItSays) {
    OriginServer origin(
        [](const std::string&) { return Reply("429 Too Many", "x", "Retry-After: 60\r\n"); });
    TestGate gate(&origin);
    gate.Get(kPath);
    const GateAnswer answer = gate.Get("/news/subject.txt");
    EXPECT_EQ(origin.Requests().size(), 1u);
    EXPECT_NE(answer.reason.find("秒待って"), std::string::npos) << answer.reason;
}

// The server drops the thread; its archive has other bytes for the same posts.
class Drop : public testing::Test {
protected:
    OriginServer::Script Archive(const std::string& file) const {
        return [file](const std::string& request) {
            return PathOf(request) == "/news/oyster/1012/1012345678.dat"
                       ? Reply("200 OK", file, kDated)
                       : Reply("302 Found", "", "Location: http://board.example/news/\r\n");
        };
    }
    const std::string fOther = "NAME<>sage<>2026 ID:longer<> https://one <>title\n" + Lines(2, 7);
    OriginServer fOrigin{Honest(kThree)};
    TestGate fGate{&fOrigin};
};

TEST_F(Drop, OfACachedThreadContinuesBehindTheLinesThatWereGiven) {
    fGate.Get(kPath);
    fOrigin.Become(Archive(fOther));
    const GateAnswer rest = fGate.GetRest(kPath, kThree.size(), kDate);
    EXPECT_EQ(rest.status, 206);
    EXPECT_EQ(rest.body, Lines(4, 7));
    const size_t now = kThree.size() + rest.body.size();
    EXPECT_EQ(rest.Header("Content-Range"), "bytes " + std::to_string(kThree.size()) + "-" +
                                                std::to_string(now - 1) + "/" +
                                                std::to_string(now));
    EXPECT_EQ(fGate.GetRest(kPath, now, kDate).status, 304);
    // It is kept: neither another start nor a server that is away loses it.
    fGate.End();
    fGate.Start();
    fOrigin.Become([](const std::string&) { return std::string(); });
    EXPECT_EQ(fGate.GetRest(kPath, now).status, 416);
    EXPECT_EQ(fGate.GetRest(kPath, now).Header("Content-Range"), "bytes */" + std::to_string(now));
}

TEST_F(Drop, OfACachedThreadOfUnknownLengthAppendsNothing) {
    fOrigin.Become(Archive(fOther));
    const GateAnswer answer = fGate.GetRest(kPath, kThree.size());
    EXPECT_EQ(answer.status, 416);
    EXPECT_NE(answer.reason.find("ログを削除"), std::string::npos) << answer.reason;
}

TEST_F(Drop, ThatWasAnErrorGoesOnWithTheServersOwnBytes) {
    fGate.Get(kPath);
    fOrigin.Become(Archive(fOther));
    const size_t now = kThree.size() + fGate.GetRest(kPath, kThree.size()).body.size();
    fOrigin.Become(Honest(Lines(1, 9)));
    EXPECT_EQ(fGate.GetRest(kPath, now).body, Lines(8, 9));
    const size_t then = now + Lines(8, 9).size();
    fOrigin.Become(Honest(Lines(1, 10)));
    EXPECT_EQ(fGate.GetRest(kPath, then).body, Lines(10, 10));
    EXPECT_NE(HeaderOf(fOrigin.Requests().back(), "Range"), "");
}

TEST_F(Drop, IsReadFromTheServersPagesWhenTheyShowTheWholeThread) {
    const auto page = [](int first, int last) {
        std::string html = "<html><title>title</title><body>";
        for (int number = first; number <= last; number++)
            html += "<article id=\"" + std::to_string(number) +
                    "\" class=\"clear post\"><span class=\"postid\">" + std::to_string(number) +
                    "</span><span class=\"postusername\"><b>name</b></span><span class=\"date\">"
                    "2026</span><section class=\"post-content\"> text </section></article>";
        return html + "</body></html>";
    };
    std::string shown = page(1, 1) + page(51, 52);
    fOrigin.Become([&](const std::string& request) {
        return PathOf(request).starts_with("/test/read.cgi/news/1012345678/")
                   ? Reply("200 OK", shown)
                   : Reply("404 Not Found", "");
    });
    EXPECT_EQ(fGate.Get(kPath).status, 404);
    shown = page(1, 3);
    const GateAnswer answer = fGate.Get(kPath);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(std::count(answer.body.begin(), answer.body.end(), '\n'), 3);
    EXPECT_TRUE(answer.body.starts_with("name<>")) << answer.body;
    // Such a page of the server itself may grow.
    shown = page(1, 5);
    const GateAnswer rest = fGate.GetRest(kPath, answer.body.size());
    EXPECT_EQ(rest.status, 206);
    EXPECT_EQ(std::count(rest.body.begin(), rest.body.end(), '\n'), 2) << rest.body;
    shown = page(1, 2);
    EXPECT_EQ(fGate.Get(kPath).body, answer.body + rest.body);
}

TEST_F(Drop, ToAnArchiveThatIsSilentOrWantsAProofIsTriedElsewhereOrTold) {
    fGate.Settings().answerSeconds = 2;
    fGate.Settings().challengeMarks = {"Just a moment..."};
    fGate.Settings().families[0].archives.push_back({"https://far.example/{key}.dat", false});
    const auto archives = [this](const std::string& near, const std::string& far) {
        fOrigin.Become([near, far](const std::string& request) {
            if (HeaderOf(request, "Host") == "far.example")
                return far;
            return PathOf(request).starts_with("/news/oyster/") ? near : Reply("404 Not Found", "");
        });
    };
    archives(OriginServer::kSilence, Reply("200 OK", fOther));
    EXPECT_EQ(fGate.Get(kPath).status, 200);
    archives(OriginServer::kSilence, OriginServer::kSilence);
    const auto start = std::chrono::steady_clock::now();
    const GateAnswer late = fGate.Get("/news/dat/1012345679.dat");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(late.status, 503);
    EXPECT_NE(late.reason.find("応答がまだ"), std::string::npos) << late.reason;
    // Nor is what a network between says a log of an archive's.
    archives(Reply("200 OK", "please log in\n<>"), Reply("404 Not Found", ""));
    EXPECT_EQ(fGate.Get("/news/dat/1012345671.dat").status, 404);
    archives(Reply("404 Not Found", ""), Reply("403 Forbidden", "<title>Just a moment...</title>"));
    const GateAnswer proof = fGate.Get("/news/dat/1012345670.dat");
    EXPECT_EQ(proof.status, 503);
    EXPECT_NE(proof.reason.find("人間"), std::string::npos) << proof.reason;
}

// The program's length stands for lines: what the server counts is another.
TEST(Dat, InUtf8IsGivenInTheProgramsCharsetAndGoesOnBehindItsLines) {
    const std::string one = "名<>sage<>2026<> \u00e9 😀 https://a/ <>題\n";
    const std::string two = "名<>sage<>2026<> 二 <>\n";
    const std::string oneCoded = "\x96\xBC<>sage<>2026<> &#233; (U+1F600)  http://a/ <>\x91\xE8\n";
    const std::string twoCoded = "\x96\xBC<>sage<>2026<> \x93\xF1 <>\n";
    OriginServer origin(Honest(one));
    const auto change = [](gate::Settings* settings) {
        settings->families[0].charset = gate::Charset::kUtf8;
    };
    TestGate gate(&origin, change);
    EXPECT_EQ(gate.Get(kPath).body, oneCoded);
    EXPECT_EQ(gate.GetRest(kPath, oneCoded.size(), kDate).status, 304);
    origin.Become(Honest(one + two + two.substr(0, 2))); // which the server is just writing
    EXPECT_EQ(gate.GetRest(kPath, oneCoded.size(), kDate).body, twoCoded);
    EXPECT_EQ(gate.GetRest(kPath, oneCoded.size() + twoCoded.size(), kDate).status, 304);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "Range"), "");
    EXPECT_EQ(gate.GetRest(kPath, 7).status, 416);
    // A board of the family in the usual charset stays as it is.
    origin.Become(Honest(twoCoded));
    EXPECT_EQ(gate.Get("/other/dat/1012345678.dat").body, twoCoded);
}

TEST(Dat, AMovedDatIsFollowedToTheSamePathOnly) {
    OriginServer origin([](const std::string& request) {
        if (HeaderOf(request, "Host") == "board.example")
            return Reply("301 Moved", "",
                         std::string("Location: https://new.example") + kPath + "\r\n");
        return Reply("200 OK", kThree);
    });
    TestGate gate(&origin);
    EXPECT_EQ(gate.Get(kPath).body, kThree);
}

TEST(Dat, AnOldHostNameIsAskedForByItsPresentName) {
    OriginServer origin(Honest(kThree));
    TestGate gate(&origin);
    EXPECT_EQ(gate.Get(kPath, "", "news.old.test").body, kThree);
    EXPECT_EQ(HeaderOf(origin.Requests().back(), "Host"), "news.board.example");
    const std::string request = origin.Requests().back();
    EXPECT_EQ(HeaderOf(request, "Accept-Encoding"), "");
    EXPECT_EQ(HeaderOf(request, "Via"), "");
    EXPECT_EQ(HeaderOf(request, "User-Agent"), gate.Settings().userAgent);
}

} // namespace
