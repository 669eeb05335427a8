#include <NetEndpoint.h>

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "net/EndpointRegistry.h"
#include "support/RawServer.h"

namespace {

constexpr bigtime_t kSecond = 1000000;
constexpr const char* kRequest = "GET / HTTP/1.0\r\n\r\n";

// Everything until the end of the stream; the last result goes into `end`.
std::string receiveAll(BNetEndpoint& endpoint, int32* end) {
    std::string all;
    char buffer[64];
    while ((*end = endpoint.Receive(buffer, sizeof(buffer))) > 0)
        all.append(buffer, static_cast<size_t>(*end));
    return all;
}

struct Waiting {
    BNetEndpoint endpoint;
    int port = 0;
    static int32 Receive(void* data) {
        auto* self = static_cast<Waiting*>(data);
        char byte;
        self->endpoint.Connect("127.0.0.1", self->port);
        self->endpoint.Send(kRequest, strlen(kRequest));
        return self->endpoint.Receive(&byte, 1);
    }
};

} // namespace

class NetEndpointTest : public testing::Test {
protected:
    NetEndpointTest() { fEndpoint.SetTimeout(5 * kSecond); }
    void _Ask(const RawServer& server) {
        ASSERT_EQ(B_OK, fEndpoint.Connect("127.0.0.1", server.Port())) << fEndpoint.ErrorStr();
        int32 size = static_cast<int32>(strlen(kRequest));
        ASSERT_EQ(size, fEndpoint.Send(kRequest, strlen(kRequest)));
    }

    BNetEndpoint fEndpoint;
    int32 fEnd = 0;
};

TEST_F(NetEndpointTest, SendsARequestAndReceivesTheAnswerToItsEnd) {
    RawServer server({RawServer::Reply("HTTP/1.0 200 OK\r\n\r\n" + std::string(500, 'x'))});
    _Ask(server);
    EXPECT_EQ(519U, receiveAll(fEndpoint, &fEnd).size());
    EXPECT_EQ(0, fEnd);
    EXPECT_EQ(B_OK, fEndpoint.Error());
    EXPECT_EQ(kRequest, server.WaitForRequest());
}

TEST_F(NetEndpointTest, ANameIsLookedUp) {
    RawServer server({RawServer::Reply("abc")});
    ASSERT_EQ(B_OK, fEndpoint.Connect("localhost", server.Port())) << fEndpoint.ErrorStr();
}

TEST_F(NetEndpointTest, ARefusedConnectionIsSaid) {
    EXPECT_LT(fEndpoint.Connect("127.0.0.1", freePort()), 0);
    EXPECT_STREQ("Connection refused", fEndpoint.ErrorStr());
    EXPECT_LT(fEndpoint.Error(), 0);
    EXPECT_LT(fEndpoint.Send("a", 1), 0);
    char byte;
    EXPECT_LT(fEndpoint.Receive(&byte, 1), 0);
}

TEST_F(NetEndpointTest, AFailedLookUpNamesTheHost) {
    EXPECT_LT(fEndpoint.Connect("no-such-host.invalid", 80), 0);
    EXPECT_NE(nullptr, strstr(fEndpoint.ErrorStr(), "no-such-host.invalid"));
    EXPECT_NE(nullptr, strstr(fEndpoint.ErrorStr(), "looked up"));
}

TEST_F(NetEndpointTest, WhatIsNoAddressIsRefused) {
    EXPECT_EQ(B_BAD_VALUE, fEndpoint.Connect("127.0.0.1", 0));
    EXPECT_EQ(B_BAD_VALUE, fEndpoint.Connect("127.0.0.1", 65536));
    EXPECT_EQ(B_BAD_VALUE, fEndpoint.Connect("", 80));
    EXPECT_EQ(B_BAD_VALUE, fEndpoint.Connect(nullptr, 80));
}

TEST_F(NetEndpointTest, ASilentServerTimesOut) {
    RawServer server({RawServer::Stall("abc")});
    _Ask(server);
    fEndpoint.SetTimeout(kSecond / 20);
    EXPECT_EQ("abc", receiveAll(fEndpoint, &fEnd));
    EXPECT_EQ(B_TIMED_OUT, fEnd);
    EXPECT_STREQ("Connection timed out", fEndpoint.ErrorStr());
}

TEST_F(NetEndpointTest, AResetIsAnErrorAndNoSignal) {
    RawServer server({RawServer::Reset()});
    _Ask(server);
    receiveAll(fEndpoint, &fEnd);
    EXPECT_LT(fEnd, 0);
    int32 result = 0;
    for (int i = 0; i < 5 && result >= 0; i++)
        result = fEndpoint.Send("more", 4);
    EXPECT_LT(result, 0);
}

TEST_F(NetEndpointTest, APeerThatReadsNothingMakesSendingTimeOut) {
    RawServer server({{"", RawServer::Script::End::kStall, true}});
    _Ask(server);
    fEndpoint.SetTimeout(kSecond / 20);
    std::string big(32 * 1024 * 1024, 'x');
    EXPECT_EQ(B_TIMED_OUT, fEndpoint.Send(big.data(), big.size()));
}

TEST_F(NetEndpointTest, ConnectingAgainBeginsAnew) {
    RawServer server({RawServer::Reply("first"), RawServer::Reply("second")});
    _Ask(server);
    EXPECT_EQ("first", receiveAll(fEndpoint, &fEnd));
    _Ask(server);
    EXPECT_EQ("second", receiveAll(fEndpoint, &fEnd));
    fEndpoint.Close();
    fEndpoint.Close();
    EXPECT_EQ("", receiveAll(fEndpoint, &fEnd));
    EXPECT_LT(fEnd, 0);
}

TEST_F(NetEndpointTest, KnowsWhetherDataIsThere) {
    RawServer server({RawServer::Stall("abc")});
    _Ask(server);
    EXPECT_TRUE(fEndpoint.IsDataPending(5 * kSecond));
    char buffer[8];
    EXPECT_EQ(3, fEndpoint.Receive(buffer, sizeof(buffer)));
    EXPECT_FALSE(fEndpoint.IsDataPending(1000));
}

TEST_F(NetEndpointTest, TheEndOfTheProcessEndsEveryWait) {
    RawServer server({RawServer::Stall()});
    Waiting waiting;
    waiting.port = server.Port();
    thread_id thread = spawn_thread(Waiting::Receive, "receiver", B_NORMAL_PRIORITY, &waiting);
    resume_thread(thread);
    server.WaitForRequest();
    EndpointRegistry::Instance().ShutDownAll();
    status_t result = 0;
    wait_for_thread(thread, &result);
    EXPECT_EQ(B_CANCELED, result);
    EXPECT_EQ(B_CANCELED, fEndpoint.Connect("127.0.0.1", server.Port()));
}
