#include <Autolock.h>
#include <Locker.h>

#include <memory>

#include <gtest/gtest.h>

namespace {

status_t lockBriefly(void* locker) {
    return static_cast<BLocker*>(locker)->LockWithTimeout(1000);
}

status_t lockForever(void* locker) {
    return static_cast<BLocker*>(locker)->LockWithTimeout(B_INFINITE_TIMEOUT);
}

status_t inAnotherThread(thread_func function, BLocker& locker) {
    thread_id thread = spawn_thread(function, "locker", B_NORMAL_PRIORITY, &locker);
    status_t result = B_ERROR;
    wait_for_thread(thread, &result);
    return result;
}

} // namespace

TEST(BLocker, ItsHolderTakesItAgain) {
    BLocker locker("lock");
    EXPECT_TRUE(locker.Lock());
    EXPECT_TRUE(locker.Lock());
    EXPECT_EQ(2, locker.CountLocks());
    EXPECT_EQ(find_thread(nullptr), locker.LockingThread());
    locker.Unlock();
    EXPECT_EQ(B_TIMED_OUT, inAnotherThread(lockBriefly, locker));
    locker.Unlock();
    EXPECT_FALSE(locker.IsLocked());
    EXPECT_EQ(B_OK, inAnotherThread(lockBriefly, locker));
}

TEST(BLocker, OnlyItsHolderUnlocksIt) {
    BLocker locker;
    thread_id thread = spawn_thread(lockForever, "holder", B_NORMAL_PRIORITY, &locker);
    wait_for_thread(thread, nullptr);
    locker.Unlock();
    EXPECT_EQ(thread, locker.LockingThread());
}

TEST(BLocker, WhoWaitsForADeletedOneComesBack) {
    auto locker = std::make_unique<BLocker>();
    locker->Lock();
    thread_id thread = spawn_thread(lockForever, "waiter", B_NORMAL_PRIORITY, locker.get());
    resume_thread(thread);
    while (locker->CountLockRequests() < 2)
        snooze(100);
    locker.reset();
    status_t result = B_OK;
    EXPECT_EQ(B_OK, wait_for_thread(thread, &result));
    EXPECT_EQ(B_BAD_SEM_ID, result);
}

TEST(BAutolock, HoldsForAScope) {
    BLocker locker;
    {
        BAutolock lock(locker);
        EXPECT_TRUE(lock.IsLocked());
        EXPECT_TRUE(locker.IsLocked());
    }
    EXPECT_FALSE(locker.IsLocked());
    EXPECT_FALSE(BAutolock(static_cast<BLocker*>(nullptr)).IsLocked());
}
