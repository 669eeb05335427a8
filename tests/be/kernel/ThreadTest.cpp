#include <OS.h>

#include <atomic>
#include <string>

#include <pthread.h>

#include <gtest/gtest.h>

#include "kernel/Threads.h"

namespace {

thread_id start(thread_func function, void* data, const char* name = "worker") {
    thread_id thread = spawn_thread(function, name, B_NORMAL_PRIORITY, data);
    resume_thread(thread);
    return thread;
}

struct Flags {
    std::string order;
    std::atomic<bool> mayEnd{false};
};

int32 waitForTheFlag(void* data) {
    while (!static_cast<Flags*>(data)->mayEnd)
        snooze(100);
    return 0;
}

int32 registerTwoHandlers(void* data) {
    on_exit_thread([](void* flags) { static_cast<Flags*>(flags)->order += "first "; }, data);
    on_exit_thread([](void* flags) { static_cast<Flags*>(flags)->order += "second "; }, data);
    static_cast<Flags*>(data)->order += "body ";
    return 7;
}

int32 exitInTheMiddle(void* data) {
    registerTwoHandlers(data);
    exit_thread(9);
}

int32 nameOfTheThread(void* data) {
    pthread_getname_np(pthread_self(), static_cast<char*>(data), 16);
    return find_thread(nullptr);
}

} // namespace

TEST(Thread, StandsStillUntilItIsResumed) {
    Flags flags;
    thread_id thread = spawn_thread(registerTwoHandlers, "still", B_NORMAL_PRIORITY, &flags);
    ASSERT_GT(thread, 0);
    EXPECT_EQ(thread, find_thread("still"));
    EXPECT_EQ(0, JoinThreads(0));
    EXPECT_EQ("", flags.order);
    status_t result = 0;
    EXPECT_EQ(B_OK, wait_for_thread(thread, &result));
    EXPECT_EQ(7, result);
}

TEST(Thread, ExitHandlersRunTheLatestFirst) {
    Flags flags;
    wait_for_thread(start(registerTwoHandlers, &flags), nullptr);
    EXPECT_EQ("body second first ", flags.order);
}

TEST(Thread, MayEndInTheMiddle) {
    Flags flags;
    status_t result = 0;
    EXPECT_EQ(B_OK, wait_for_thread(start(exitInTheMiddle, &flags), &result));
    EXPECT_EQ(9, result);
    EXPECT_EQ("body second first ", flags.order);
}

TEST(Thread, CanNotBeResumedTwice) {
    Flags flags;
    thread_id thread = start(waitForTheFlag, &flags);
    EXPECT_EQ(B_BAD_THREAD_STATE, resume_thread(thread));
    flags.mayEnd = true;
    EXPECT_EQ(B_OK, wait_for_thread(thread, nullptr));
    EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(thread));
}

TEST(Thread, UnknownThreadsAreRefused) {
    EXPECT_EQ(B_BAD_THREAD_ID, wait_for_thread(123456, nullptr));
    EXPECT_EQ(B_BAD_THREAD_ID, resume_thread(-1));
    EXPECT_EQ(B_BAD_VALUE, spawn_thread(nullptr, "none", B_NORMAL_PRIORITY, nullptr));
    EXPECT_EQ(B_NAME_NOT_FOUND, find_thread("nobody"));
}

TEST(Thread, ItsSystemNameIsCutAtACharacter) {
    char name[16] = {};
    thread_id thread = spawn_thread(nameOfTheThread, "スレッド一覧", B_NORMAL_PRIORITY, name);
    status_t self = 0;
    wait_for_thread(thread, &self);
    EXPECT_EQ(thread, self);
    EXPECT_STREQ("スレッド一", name);
}

TEST(Thread, JoiningGivesUpAtItsTimeOut) {
    Flags flags;
    start(waitForTheFlag, &flags);
    EXPECT_EQ(1, JoinThreads(1000));
    flags.mayEnd = true;
    EXPECT_EQ(0, JoinThreads(60000000));
}

TEST(Thread, ManyComeAndGo) {
    for (int i = 0; i < 200; i++) {
        Flags flags;
        ASSERT_EQ(B_OK, wait_for_thread(start(registerTwoHandlers, &flags), nullptr));
    }
}
