#include "net/NPHttp.h"

#include "support/RawServer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr const char* kHead = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n\r\n";

std::unique_ptr<NPHttp> Client(const RawServer& server, const char* path = "/news/subject.txt") {
    auto http = std::make_unique<NPHttp>("127.0.0.1", server.PortText().c_str());
    http->SetPath(path);
    return http;
}

std::unique_ptr<NPHttp> Answered(const RawServer& server) {
    auto http = Client(server);
    EXPECT_GT(http->Send(), 0);
    return http;
}

std::vector<std::string> Lines(NPHttp* http, size_t size = 8191) {
    std::vector<std::string> lines;
    std::vector<char> buffer(size);
    for (;;) {
        const int32 length = http->ReadLine(buffer.data(), size);
        if (length <= 0)
            return lines;
        lines.emplace_back(buffer.data(), length);
    }
}

std::string Body(NPHttp* http) {
    std::string body;
    char buffer[100];
    int32 length = 0;
    while ((length = http->Read(buffer, sizeof(buffer))) > 0)
        body.append(buffer, length);
    return body;
}

int32 HeaderResult(const std::string& answer) {
    RawServer server({RawServer::Reply(answer)});
    const auto http = Client(server);
    EXPECT_GT(http->Send(), 0);
    return http->ReadHeader();
}

} // namespace

TEST(NPHttp, SendsTheRequestInTheOrderOfItsParts) {
    RawServer server({RawServer::Reply(kHead)});
    const auto http = Client(server, "/news/dat/1012345678.dat");
    http->AddHeader("Host", "h");
    http->AddHeader("User-Agent", "agent");
    http->AddHeader("Connection: close");
    const std::string expected = "GET /news/dat/1012345678.dat HTTP/1.1\r\nHost: h\r\n"
                                 "User-Agent: agent\r\nConnection: close\r\n\r\n";
    EXPECT_EQ(http->Send(), static_cast<int32>(expected.size()));
    EXPECT_EQ(server.WaitForRequest(), expected);
}

TEST(NPHttp, PostsABodyAsHttp10) {
    RawServer server({RawServer::Reply(kHead)});
    const auto http = Client(server, "/test/bbs.cgi");
    http->method = NPHttp::kPost;
    http->version = NPHttp::kHttp10;
    http->AddHeader("Content-length: 7");
    http->AddBody("abc");
    http->AddBody("&d=e");
    http->Send();
    EXPECT_EQ(server.WaitForRequest(),
              "POST /test/bbs.cgi HTTP/1.0\r\nContent-length: 7\r\n\r\nabc&d=e");
}

TEST(NPHttp, AsksAProxyForTheWholeAddress) {
    RawServer proxy({RawServer::Reply(kHead)});
    NPHttp http("no.such.host", "80");
    http.SetProxy("127.0.0.1", proxy.PortText().c_str());
    http.SetPath("/news/dat/1.dat");
    EXPECT_TRUE(http.Proxy());
    EXPECT_GT(http.Send(), 0);
    EXPECT_EQ(proxy.WaitForRequest(), "GET http://no.such.host/news/dat/1.dat HTTP/1.1\r\n\r\n");
}

TEST(NPHttp, AProxyWithoutAPortIsNotUsed) {
    RawServer server({RawServer::Reply(kHead)});
    const auto http = Client(server, "/x");
    http->SetProxy("no.such.proxy", "");
    EXPECT_TRUE(http->Proxy());
    EXPECT_GT(http->Send(), 0);
    EXPECT_EQ(server.WaitForRequest(), "GET /x HTTP/1.1\r\n\r\n");
}

TEST(NPHttp, RemoveHeaderCutsFromTheFirstHitToItsLineEnd) {
    RawServer server({RawServer::Reply(kHead)});
    const auto http = Client(server, "/x");
    http->AddHeader("A", "Ranger");
    http->AddHeader("Range", "bytes=1-");
    http->RemoveHeader("Range");
    http->RemoveHeader("Missing");
    http->Send();
    EXPECT_EQ(server.WaitForRequest(), "GET /x HTTP/1.1\r\nA: Range: bytes=1-\r\n\r\n");
}

TEST(NPHttp, ReadsStatusAndHeaders) {
    RawServer server({RawServer::Reply("HTTP/1.1 206 Partial Content\r\ncontent-length: 3\r\n"
                                       "Twice: 1\r\nNoSpace:v\r\nTwo:  v\r\ntwice: 2\r\n"
                                       "no colon\r\n\r\nabc")});
    const auto http = Answered(server);
    ASSERT_NE(http->Status(), nullptr);
    EXPECT_EQ(http->Status()->code, 206);
    EXPECT_EQ(http->Status()->reason, "Partial Content\r");
    EXPECT_STREQ(http->FindHeader("Content-Length"), "3");
    EXPECT_STREQ(http->FindHeader("Twice"), "2");
    EXPECT_STREQ(http->FindHeader("NoSpace"), "v");
    EXPECT_STREQ(http->FindHeader("Two"), " v");
    EXPECT_EQ(http->FindHeader("Missing"), nullptr);
    http->PrintAllHeader();
    EXPECT_EQ(Body(http.get()), "abc");
}

TEST(NPHttp, RefusesHeadsThatAreNone) {
    const std::string longLine(5000, 'x');
    const struct {
        std::string answer;
        int32 result;
    } kCases[] = {
        {"HTTP/1.1 200 OK\r\n\r\n", 0},
        {"HTTP/1.1 200\r\n\r\n", 0},
        {"HTTP/1.1 200 " + std::string(4000, 'x') + "\r\n\r\n", 0},
        {"", -1},
        {"HTTP/1.1 200 OK", -1},
        {"HTTP/1.1 200 OK\r\nA: b\r\n", -1},
        {"HTTP/1.1 200 OK\nA: b\n\nbody\n", -1},
        {"HTTP/1.1\r\n\r\n", -1},
        {"HTTP/1.1 OK 200\r\n\r\n", -1},
        {"HTTP/1.1  200 OK\r\n\r\n", -1},
        {"HTTP/1.1 200 " + longLine + "\r\n\r\n", -1},
        {"HTTP/1.1 200 OK\r\nA: " + longLine + "\r\n\r\n", -1},
    };
    for (const auto& item : kCases)
        EXPECT_EQ(HeaderResult(item.answer), item.result) << item.answer.substr(0, 40);
}

TEST(NPHttp, AnAnswerCutAtAnyByteIsNoHead) {
    const std::string head = "HTTP/1.1 200 OK\r\nA: b\r\n\r\n";
    for (size_t length = 0; length < head.size(); length++)
        EXPECT_EQ(HeaderResult(head.substr(0, length)), -1) << length;
}

TEST(NPHttp, ReadsLinesAcrossReceives) {
    const std::string longLine = std::string(8190, 'x') + "\n";
    RawServer server({RawServer::Reply(std::string(kHead) + "a\n\n" + longLine + "cut")});
    const auto http = Answered(server);
    const std::vector<std::string> lines = Lines(http.get());
    ASSERT_EQ(lines.size(), 3u); // an unfinished last line is no line
    EXPECT_EQ(lines[0], "a\n");
    EXPECT_EQ(lines[1], "\n");
    EXPECT_EQ(lines[2], longLine);
}

TEST(NPHttp, ALineOverTheCallersSizeEndsTheReading) {
    RawServer server(
        {RawServer::Reply(std::string(kHead) + "a\n" + std::string(8191, 'x') + "\nb\n")});
    const auto http = Answered(server);
    EXPECT_EQ(Lines(http.get()).size(), 1u);
}

TEST(NPHttp, AnEndlessLineEndsTheReadingAtOnce) {
    RawServer server({RawServer::EndlessLine(std::string(kHead) + "a\n")});
    const auto http = Answered(server);
    EXPECT_EQ(Lines(http.get()).size(), 1u);
}

TEST(NPHttp, ReadHandsOverWhatIsBufferedFirst) {
    const std::string body(20000, 'z');
    RawServer server({RawServer::Reply(std::string(kHead) + "first\n" + body)});
    const auto http = Answered(server);
    char line[100];
    EXPECT_EQ(http->ReadLine(line, sizeof(line)), 6);
    EXPECT_TRUE(Body(http.get()) == body);
}

TEST(NPHttp, AResetConnectionIsAnError) {
    RawServer server({RawServer::Reset("HTTP/1.1 200 OK\r\n")});
    const auto http = Client(server);
    http->Send();
    EXPECT_LT(http->ReadHeader(), 0);
}

TEST(NPHttp, ARefusedConnectionHasAnErrorText) {
    NPHttp http("127.0.0.1", std::to_string(freePort()).c_str());
    http.SetPath("/");
    EXPECT_NE(http.Connect(), B_OK);
    EXPECT_STRNE(http.ErrorStr(), "");
    EXPECT_LT(http.Send(), 0);
    EXPECT_EQ(http.Status(), nullptr);
}

TEST(NPHttp, NothingThatBreaksALineGoesOut) {
    RawServer server({RawServer::Reply(kHead)});
    for (const char* path : {"/a\r\nX: y", "/a\nb"}) {
        const auto http = Client(server, path);
        EXPECT_EQ(http->Connect(), B_BAD_VALUE);
        EXPECT_EQ(http->Send(), B_BAD_VALUE);
    }
    const auto http = Client(server, "/a");
    http->AddHeader("Host", "h\r\nX: y");
    EXPECT_EQ(http->Send(), B_BAD_VALUE);
    EXPECT_EQ(NPHttp("h\r\n", "80").Connect(), B_BAD_VALUE);
    EXPECT_EQ(server.CountConnections(), 0u);
}

TEST(NPHttp, TheSameRequestCanBeSentAgain) {
    RawServer server({RawServer::Reply(std::string(kHead) + "1\n"),
                      RawServer::Reply(std::string(kHead) + "2\n")});
    const auto http = Client(server);
    EXPECT_GT(http->Send(), 0);
    EXPECT_EQ(Lines(http.get()), std::vector<std::string>{"1\n"});
    http->Close();
    EXPECT_EQ(http->FindHeader("Content-Type"), nullptr);
    EXPECT_GT(http->Send(), 0);
    EXPECT_EQ(Lines(http.get()), std::vector<std::string>{"2\n"});
    EXPECT_EQ(server.WaitForRequest(0), server.WaitForRequest(1));
}

TEST(NPHttp, TheUserAgentIsOneThatServersLetIn) {
    const std::string agent = get_user_agent();
    EXPECT_EQ(agent.find("Monazilla/1.00 ("), 0u);
    EXPECT_NE(agent.find("; Itamori-20020123)"), agent.npos);
}
