#include "gate/TestGate.h"

#include "front/Doorkeeper.h"

#include <sys/resource.h>
#include <sys/wait.h>

namespace {

OriginServer::Script Lists() {
    return [](const std::string&) { return Reply("200 OK", "1012345678.dat<>a (1)\n"); };
}

class Front : public testing::Test {
protected:
    GateAnswer Send(std::string bytes) {
        const std::string mark = "PORT";
        for (size_t at; (at = bytes.find(mark)) != std::string::npos;)
            bytes.replace(at, mark.size(), fGate.PortText());
        return Exchange(fGate.Port(), bytes);
    }
    OriginServer fOrigin{Lists()};
    TestGate fGate{&fOrigin};
};

const std::string kList = "http://board.example/news/subject.txt";
const std::string kHost = "Host: board.example\r\n";

struct RequestCase {
    const char* name;
    std::string bytes;
    int status;
};

TEST_F(Front, OnlyTheProgramsOwnRequestsReachAServer) {
    const std::string get = "GET " + kList + " HTTP/1.1\r\n" + kHost;
    const RequestCase kCases[] = {
        {"the program's", get + "\r\n", 200},
        {"with a port",
         "GET http://board.example:80/news/subject.txt HTTP/1.0\r\n" + kHost + "\r\n", 200},
        {"the port in Host", "GET " + kList + " HTTP/1.1\r\nHost: board.example:80\r\n\r\n", 200},
        {"a page's fetch", get + "Origin: http://evil.test\r\n\r\n", 403},
        {"a page's image", get + "Sec-Fetch-Site: cross-site\r\n\r\n", 403},
        {"a page's form",
         "POST http://board.example/test/bbs.cgi HTTP/1.1\r\n" + kHost +
             "Origin: null\r\nContent-Length: 0\r\n\r\n",
         403},
        {"another Host", "GET " + kList + " HTTP/1.1\r\nHost: evil.test\r\n\r\n", 400},
        {"no Host", "GET " + kList + " HTTP/1.1\r\n\r\n", 400},
        {"two Hosts", get + kHost + "\r\n", 400},
        {"an unknown host", "GET http://evil.test/ HTTP/1.1\r\nHost: evil.test\r\n\r\n", 403},
        {"a look-alike", "GET http://xexample/a/subject.txt HTTP/1.1\r\nHost: xexample\r\n\r\n",
         403},
        {"an address", "GET http://127.0.0.1/ HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n", 403},
        {"another port", "GET http://board.example:8080/ HTTP/1.1\r\n" + kHost + "\r\n", 403},
        {"a login in it", "GET http://a@board.example/ HTTP/1.1\r\n" + kHost + "\r\n", 400},
        {"TLS", "GET https://board.example/ HTTP/1.1\r\n" + kHost + "\r\n", 400},
        {"a tunnel", "CONNECT board.example:443 HTTP/1.1\r\n" + kHost + "\r\n", 501},
        {"a rebinding Host", "GET / HTTP/1.1\r\nHost: evil.test:PORT\r\n\r\n", 403},
        {"its own page of another port", "GET / HTTP/1.1\r\nHost: localhost:1\r\n\r\n", 403},
        {"a board by origin-form", "GET /news/subject.txt HTTP/1.1\r\n" + kHost + "\r\n", 403},
        {"a folder above", "GET http://board.example/../subject.txt HTTP/1.1\r\n" + kHost + "\r\n",
         404},
        {"chunks", "POST " + kList + " HTTP/1.1\r\n" + kHost + "Transfer-Encoding: chunked\r\n\r\n",
         501},
        {"a split header", get + "X: a\rb\r\n\r\n", 400},
        {"a folded header", get + "X: a\r\n b\r\n\r\n", 400},
        {"a negative length", get + "Content-Length: -1\r\n\r\n", 400},
        {"an endless body", get + "Content-Length: 99999999\r\n\r\n", 413},
        {"an endless head", get + "X: " + std::string(20000, 'x') + "\r\n\r\n", 431},
        {"garbage", "\x16\x03\x01\x02 \r\n\r\n", 400},
        {"another version", "GET " + kList + " HTTP/2.0\r\n" + kHost + "\r\n", 505}};
    for (const RequestCase& now : kCases) {
        SCOPED_TRACE(now.name);
        const size_t before = fOrigin.Requests().size();
        const GateAnswer answer = Send(now.bytes);
        EXPECT_EQ(answer.status, now.status) << answer.reason;
        EXPECT_EQ(answer.Header("Content-Length"), std::to_string(answer.body.size()));
        EXPECT_EQ(answer.Header("Connection"), "close");
        EXPECT_EQ(answer.Header("Access-Control-Allow-Origin"), "");
        EXPECT_EQ(fOrigin.Requests().size() - before, now.status == 200 ? 1u : 0u);
    }
}

TEST_F(Front, ItsOwnPageShowsWhatItDidAsTextAlone) {
    fGate.Get("/<b>x</b>/subject.txt?secret");
    for (const char* name : {"localhost", "127.0.0.1", "[::1]"}) {
        const GateAnswer page =
            Send(std::string("GET / HTTP/1.1\r\nHost: ") + name + ":PORT\r\n\r\n");
        EXPECT_EQ(page.status, 200);
        EXPECT_NE(page.body.find("GET board.example/&lt;b&gt;x"), std::string::npos) << page.body;
        EXPECT_NE(page.body.find("*.example"), std::string::npos);
        EXPECT_EQ(page.body.find("secret"), std::string::npos);
        EXPECT_NE(page.Header("Content-Security-Policy").find("frame-ancestors 'none'"),
                  std::string::npos);
    }
}

TEST_F(Front, AHeadRequestGetsTheHeadAlone) {
    const GateAnswer answer = Send("HEAD " + kList + " HTTP/1.1\r\n" + kHost + "\r\n");
    EXPECT_EQ(answer.status, 200);
    EXPECT_NE(answer.Header("Content-Length"), "0");
    EXPECT_EQ(answer.body, "");
}

int Connect(int port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    EXPECT_EQ(connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    return handle;
}

TEST_F(Front, AThousandConnectionsBesideIdleOnesAreAllAnswered) {
    rlimit most = {};
    getrlimit(RLIMIT_NOFILE, &most);
    most.rlim_cur = most.rlim_max;
    setrlimit(RLIMIT_NOFILE, &most);
    std::vector<int> idle;
    for (int i = 0; i < 60; i++)
        idle.push_back(Connect(fGate.Port()));
    const std::string request = "GET " + kList + " HTTP/1.1\r\n" + kHost + "\r\n";
    std::vector<int> askers;
    for (int i = 0; i < 1000; i++) {
        askers.push_back(Connect(fGate.Port()));
        send(askers.back(), request.data(), request.size(), MSG_NOSIGNAL);
    }
    int good = 0;
    for (const int handle : askers) {
        std::string answer(4096, '\0');
        const ssize_t count = recv(handle, answer.data(), answer.size(), MSG_WAITALL);
        answer.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
        good += answer.starts_with("HTTP/1.1 200") && answer.ends_with("1012345678.dat<>a (1)\n");
        close(handle);
    }
    EXPECT_EQ(good, 1000);
    for (const int handle : idle)
        close(handle);
}

TEST_F(Front, ARequestThatEndsEarlyIsNone) {
    const std::string request = "POST http://board.example/test/bbs.cgi HTTP/1.1\r\n" + kHost +
                                "Content-Length: 3\r\n\r\na=b";
    for (size_t length = 0; length < request.size(); length++) {
        const GateAnswer answer = Exchange(fGate.Port(), request.substr(0, length), true);
        EXPECT_EQ(answer.status, 400) << length;
        EXPECT_EQ(answer.body, answer.reason + "\n") << length;
    }
    EXPECT_TRUE(fOrigin.Requests().empty());
}

// The child speaks as another user and returns the first byte of the status.
TEST_F(Front, AnotherUsersProcessIsRefused) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    const int port = fGate.Port();
    const pid_t child = fork();
    if (child == 0) {
        const bool isOther = setuid(65534) == 0;
        const GateAnswer answer = Exchange(port, "GET " + kList + " HTTP/1.1\r\n" + kHost + "\r\n");
        _exit(isOther ? answer.status / 100 : 9);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 4);
    EXPECT_TRUE(fOrigin.Requests().empty());
}

} // namespace
