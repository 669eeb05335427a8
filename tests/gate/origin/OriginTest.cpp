#include "gate/OriginServer.h"
#include "support/ScratchFolder.h"

#include "origin/Addresses.h"
#include "origin/Location.h"
#include "origin/Origin.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sys/wait.h>

namespace {

using namespace std::chrono_literals;

gate::Deadline Soon() {
    return std::chrono::steady_clock::now() + 20s;
}

bool IsKeptAway(const char* text, const std::vector<std::string>& allowed = {}) {
    sockaddr_in6 v6 = {};
    sockaddr_in v4 = {};
    v6.sin6_family = AF_INET6;
    v4.sin_family = AF_INET;
    if (inet_pton(AF_INET, text, &v4.sin_addr) == 1)
        return gate::IsKeptAway(reinterpret_cast<sockaddr&>(v4), allowed);
    EXPECT_EQ(inet_pton(AF_INET6, text, &v6.sin6_addr), 1) << text;
    return gate::IsKeptAway(reinterpret_cast<sockaddr&>(v6), allowed);
}

TEST(Addresses, ThoseOfThisMachineAndItsNetworkAreKeptAwayInEveryForm) {
    for (const char* inner : {"0.0.0.0",
                              "10.1.2.3",
                              "100.64.0.1",
                              "127.0.0.1",
                              "127.255.255.254",
                              "169.254.169.254",
                              "172.16.0.1",
                              "172.31.255.255",
                              "192.168.0.1",
                              "224.0.0.1",
                              "255.255.255.255",
                              "::",
                              "::1",
                              "fc00::1",
                              "fe80::1",
                              "ff02::1",
                              "::ffff:127.0.0.1",
                              "::ffff:10.0.0.1",
                              "64:ff9b::127.0.0.1",
                              "2002:7f00:1::1",
                              "::127.0.0.1",
                              "2001:0:1::1"})
        EXPECT_TRUE(IsKeptAway(inner)) << inner;
    for (const char* outer :
         {"1.1.1.1", "9.255.255.255", "11.0.0.0", "100.128.0.1", "128.0.0.1", "172.32.0.1",
          "192.169.0.1", "223.255.255.255", "2606:4700::1", "::ffff:1.1.1.1", "2002:101:101::1"})
        EXPECT_FALSE(IsKeptAway(outer)) << outer;
    EXPECT_FALSE(IsKeptAway("127.0.0.1", {"127.0.0.1"}));
    EXPECT_TRUE(IsKeptAway("127.0.0.2", {"127.0.0.1"}));
}

struct LocationCase {
    const char* location;
    const char* host;
    const char* path;
};

TEST(Location, LeadsWhereAServerSays) {
    const gate::Place from{"a.test", "/b/c?d"};
    const LocationCase kCases[] = {{"https://X.test/y?z#w", "x.test", "/y?z"},
                                   {"http://x.test:80", "x.test", "/"},
                                   {"//x.test/y", "x.test", "/y"},
                                   {"/y", "a.test", "/y"},
                                   {"y", "a.test", "/b/y"},
                                   {"http://x.test:8080/", "", ""},
                                   {"https://u@x.test/", "", ""},
                                   {"ftp://x.test/", "", ""},
                                   {"/a\tb", "", ""},
                                   {"http:///x", "", ""}};
    for (const LocationCase& now : kCases) {
        const gate::Place to =
            gate::ResolveLocation(from, now.location).value_or(gate::Place{"", ""});
        EXPECT_EQ(to.host, now.host) << now.location;
        EXPECT_EQ(to.path, now.path) << now.location;
    }
}

class OriginWay : public testing::Test {
protected:
    OriginWay() {
        fFamily.name = "test";
        fFamily.hosts = {"localhost"};
        fFamily.usesTls = false;
        fRequest.family = &fFamily;
        fRequest.host = "localhost";
        fRequest.path = "/";
    }
    gate::Settings fSettings;
    gate::Family fFamily;
    gate::OriginRequest fRequest;
};

TEST_F(OriginWay, EqualRequestsOnTheirWayAreOne) {
    std::mutex hold;
    hold.lock();
    OriginServer server([&](const std::string&) {
        std::lock_guard guard(hold);
        return Reply("200 OK", "x");
    });
    fFamily.reach = server.Address();
    gate::Origin origin(fSettings);
    const auto first = origin.Start(fRequest);
    EXPECT_EQ(origin.Start(fRequest), first);
    gate::OriginRequest other = fRequest;
    other.rangeStart = 1;
    EXPECT_NE(origin.Start(other), first);
    hold.unlock();
    EXPECT_EQ(first->WaitForEnd(Soon()), gate::Transfer::State::kWhole);
    EXPECT_EQ(first->Body(), "x");
}

TEST_F(OriginWay, WhoAsksAfterAnAnswerIsAskedForAnew) {
    OriginServer server([](const std::string&) { return Reply("200 OK", "x"); });
    fFamily.reach = server.Address();
    gate::Origin origin(fSettings);
    for (size_t i = 1; i <= 200; i++) {
        origin.Start(fRequest)->WaitForEnd(Soon());
        ASSERT_EQ(server.Requests().size(), i);
    }
}

TEST_F(OriginWay, ANameOfThisMachineIsNotConnectedToUnlessTheSettingsNameIt) {
    OriginServer server([](const std::string&) { return Reply("200 OK", "x"); });
    fRequest.host = "localhost:" + std::to_string(server.Port());
    {
        gate::Origin origin(fSettings);
        const auto transfer = origin.Start(fRequest);
        EXPECT_FALSE(transfer->WaitForHead(Soon()));
        EXPECT_NE(transfer->Failure().find("内部"), std::string::npos) << transfer->Failure();
    }
    EXPECT_TRUE(server.Requests().empty());
    fSettings.allowedAddresses = {"127.0.0.1", "::1"};
    gate::Origin origin(fSettings);
    EXPECT_TRUE(origin.Start(fRequest)->WaitForHead(Soon()));
}

TEST_F(OriginWay, ItsEndEndsWhatIsOnItsWay) {
    std::mutex hold;
    hold.lock();
    OriginServer server([&](const std::string&) {
        std::lock_guard guard(hold);
        return std::string();
    });
    fFamily.reach = server.Address();
    std::shared_ptr<gate::Transfer> transfer;
    {
        gate::Origin origin(fSettings);
        transfer = origin.Start(fRequest);
    }
    EXPECT_EQ(transfer->Now(), gate::Transfer::State::kFailed);
    hold.unlock();
}

// A TLS server with a certificate of its own, which may be trusted or not.
class Tls : public OriginWay {
protected:
    Tls() {
        fFamily.hosts = {"*.test"};
        fFamily.usesTls = true;
        fRequest.host = "board.test";
        fRequest.path = "/answer";
        fFolder.Write("answer", "HTTP/1.0 200 OK\r\nContent-Length: 2\r\n\r\nok");
    }
    ~Tls() override {
        if (fServer > 0) {
            kill(fServer, SIGKILL);
            waitpid(fServer, nullptr, 0);
        }
    }
    void Serve(const std::string& name, const std::string& days) {
        const std::string make =
            "cd " + fFolder.Path() +
            " && openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout "
            "key -out made -days 2 -subj /CN=" +
            name + " -addext subjectAltName=DNS:" + name +
            " 2>/dev/null && openssl x509 -in made -signkey key -days " + days +
            " -out certificate 2>/dev/null";
        ASSERT_EQ(system(make.c_str()), 0);
        const int port = _FreePort();
        fFamily.reach = "127.0.0.1:" + std::to_string(port);
        fServer = fork();
        if (fServer == 0) {
            if (chdir(fFolder.Path().c_str()) == 0)
                execlp("openssl", "openssl", "s_server", "-quiet", "-HTTP", "-key", "key", "-cert",
                       "certificate", "-accept", std::to_string(port).c_str(), nullptr);
            _exit(127);
        }
        _WaitForListener(port);
    }
    // "ok", or why not.
    std::string Ask() {
        gate::Origin origin(fSettings);
        const auto transfer = origin.Start(fRequest);
        return transfer->WaitForEnd(Soon()) == gate::Transfer::State::kWhole ? transfer->Body()
                                                                             : transfer->Failure();
    }
    void Trust() { fSettings.certificates = fFolder / "certificate"; }

private:
    static int _FreePort() {
        return OriginServer([](const std::string&) { return std::string(); }).Port();
    }
    static void _WaitForListener(int port) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<in_port_t>(port));
        for (int i = 0; i < 1000; i++) {
            const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
            const int result =
                connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address));
            close(handle);
            if (result == 0)
                return;
            poll(nullptr, 0, 10);
        }
    }
    ScratchFolder fFolder;
    pid_t fServer = -1;
};

TEST_F(Tls, ATrustedCertificateOfTheHostOpensTheWay) {
    Serve("board.test", "2");
    Trust();
    EXPECT_EQ(Ask(), "ok");
}

TEST_F(Tls, ACertificateThatNobodyTrustsDoesNot) {
    Serve("board.test", "2");
    EXPECT_NE(Ask().find("証明書"), std::string::npos);
}

TEST_F(Tls, ACertificateOfAnotherHostDoesNot) {
    Serve("other.test", "2");
    Trust();
    EXPECT_NE(Ask().find("証明書"), std::string::npos);
}

TEST_F(Tls, AnExpiredCertificateDoesNot) {
    Serve("board.test", "-1");
    Trust();
    EXPECT_NE(Ask().find("証明書"), std::string::npos);
}

} // namespace
