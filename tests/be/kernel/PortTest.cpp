#include <OS.h>

#include <algorithm>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "kernel/Threads.h"

namespace {

struct Reading {
    port_id port;
    int32 code = 0;
};

int32 readOnce(void* data) {
    auto* reading = static_cast<Reading*>(data);
    char byte = 0;
    return static_cast<int32>(read_port(reading->port, &reading->code, &byte, 1));
}

int32 writeOnce(void* data) {
    return write_port(*static_cast<port_id*>(data), 'pMQT', "x", 1);
}

ssize_t poll(port_id port, int32* code = nullptr) {
    char buffer[8];
    return read_port_etc(port, code, buffer, sizeof(buffer), B_RELATIVE_TIMEOUT, 10);
}

status_t resultOf(thread_id thread) {
    status_t result = 1;
    wait_for_thread(thread, &result);
    return result;
}

} // namespace

class PortTest : public testing::Test {
protected:
    ~PortTest() override { delete_port(fPort); }

    port_id fPort = create_port(1, "test_port");
};

TEST_F(PortTest, DeliversCodeAndBody) {
    EXPECT_EQ(B_OK, write_port(fPort, 'pMQT', "\x01", 1));
    EXPECT_EQ(1, port_buffer_size(fPort));
    EXPECT_EQ(1, port_count(fPort));
    int32 code = 0;
    char body[4] = {};
    EXPECT_EQ(1, read_port(fPort, &code, body, sizeof(body)));
    EXPECT_EQ('pMQT', code);
    EXPECT_EQ(1, body[0]);
}

TEST_F(PortTest, WhatDoesNotFitTheBufferIsLost) {
    write_port(fPort, 1, "abcdef", 6);
    char body[2] = {};
    EXPECT_EQ(2, read_port(fPort, nullptr, body, sizeof(body)));
    EXPECT_EQ(0, memcmp(body, "ab", 2));
    EXPECT_EQ(B_TIMED_OUT, poll(fPort));
}

TEST_F(PortTest, AShortTimeOutPolls) {
    // The best of some rounds: the machine may be busy with something else during one.
    bigtime_t best = B_INFINITE_TIMEOUT;
    for (int round = 0; round < 10; round++) {
        bigtime_t before = system_time();
        for (int i = 0; i < 100; i++)
            EXPECT_EQ(B_TIMED_OUT, poll(fPort));
        best = std::min(best, system_time() - before);
    }
    // Real waits would take more than 50 microseconds each.
    EXPECT_LT(best, 100 * 30);
}

TEST_F(PortTest, SaysWhyItDidNotWait) {
    char byte;
    EXPECT_EQ(B_WOULD_BLOCK, read_port_etc(fPort, nullptr, &byte, 1, B_RELATIVE_TIMEOUT, 0));
    EXPECT_EQ(B_TIMED_OUT, read_port_etc(fPort, nullptr, &byte, 1, B_RELATIVE_TIMEOUT, 500));
    EXPECT_EQ(B_TIMED_OUT,
              read_port_etc(fPort, nullptr, &byte, 1, B_ABSOLUTE_TIMEOUT, system_time() + 500));
    write_port(fPort, 1, nullptr, 0);
    EXPECT_EQ(B_WOULD_BLOCK, write_port_etc(fPort, 2, nullptr, 0, B_RELATIVE_TIMEOUT, 0));
    EXPECT_EQ(B_TIMED_OUT, write_port_etc(fPort, 2, nullptr, 0, B_RELATIVE_TIMEOUT, 500));
}

TEST_F(PortTest, AClosedPortIsReadToItsEnd) {
    write_port(fPort, 5, nullptr, 0);
    EXPECT_EQ(B_OK, close_port(fPort));
    EXPECT_EQ(B_BAD_PORT_ID, write_port(fPort, 6, nullptr, 0));
    int32 code = 0;
    EXPECT_EQ(0, poll(fPort, &code));
    EXPECT_EQ(5, code);
    EXPECT_EQ(B_BAD_PORT_ID, poll(fPort));
}

TEST_F(PortTest, ADeletedPortIsGone) {
    EXPECT_EQ(B_OK, delete_port(fPort));
    EXPECT_EQ(B_BAD_PORT_ID, delete_port(fPort));
    EXPECT_EQ(B_BAD_PORT_ID, close_port(fPort));
    EXPECT_EQ(B_BAD_PORT_ID, poll(fPort));
    EXPECT_EQ(B_BAD_PORT_ID, write_port(fPort, 1, nullptr, 0));
}

TEST_F(PortTest, BadArgumentsAreRefused) {
    EXPECT_EQ(B_BAD_VALUE, create_port(0, "none"));
    EXPECT_EQ(B_BAD_VALUE, create_port(5000, "huge"));
    EXPECT_EQ(B_BAD_VALUE, write_port(fPort, 1, nullptr, 3));
    std::string tooLong(256 * 1024 + 1, 'x');
    EXPECT_EQ(B_BAD_VALUE, write_port(fPort, 1, tooLong.data(), tooLong.size()));
    EXPECT_EQ(fPort, find_port("test_port"));
    EXPECT_EQ(B_NAME_NOT_FOUND, find_port("no_port"));
}

TEST_F(PortTest, AReaderWaitsForTheWriter) {
    Reading reading{fPort};
    thread_id thread = spawn_thread(readOnce, "reader", B_NORMAL_PRIORITY, &reading);
    resume_thread(thread);
    EXPECT_EQ(B_OK, write_port(fPort, 'code', "x", 1));
    EXPECT_EQ(1, resultOf(thread));
    EXPECT_EQ('code', reading.code);
}

TEST_F(PortTest, AWriterWaitsForRoom) {
    write_port(fPort, 1, nullptr, 0);
    thread_id thread = spawn_thread(writeOnce, "writer", B_NORMAL_PRIORITY, &fPort);
    resume_thread(thread);
    EXPECT_EQ(0, read_port(fPort, nullptr, nullptr, 0));
    EXPECT_EQ(B_OK, resultOf(thread));
    EXPECT_EQ(1, port_count(fPort));
}

TEST_F(PortTest, ClosingAndDeletingWakeWhoWaits) {
    Reading reading{fPort};
    thread_id reader = spawn_thread(readOnce, "reader", B_NORMAL_PRIORITY, &reading);
    resume_thread(reader);
    snooze(2000);
    close_port(fPort);
    EXPECT_EQ(B_BAD_PORT_ID, resultOf(reader));

    port_id full = create_port(1, "full");
    write_port(full, 1, nullptr, 0);
    thread_id writer = spawn_thread(writeOnce, "writer", B_NORMAL_PRIORITY, &full);
    resume_thread(writer);
    snooze(2000);
    DeleteAllPorts();
    EXPECT_EQ(B_BAD_PORT_ID, resultOf(writer));
}
