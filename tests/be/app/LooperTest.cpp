#include <Looper.h>

#include <atomic>
#include <memory>
#include <vector>

#include <Autolock.h>
#include <Invoker.h>
#include <Message.h>
#include <MessageFilter.h>
#include <MessageQueue.h>
#include <Messenger.h>

#include <gtest/gtest.h>

namespace {

constexpr uint32 kMsgCount = 'coun';
constexpr uint32 kMsgAsk = 'ask_';
constexpr uint32 kMsgQuitYourself = 'quit';
constexpr uint32 kMsgKeep = 'keep';

struct Log {
    std::atomic<int> counted{0};
    std::atomic<int> deleted{0};
    std::atomic<bool> mayQuit{true};
};

class Counter : public BHandler {
public:
    explicit Counter(Log& log) : BHandler("counter"), fLog(log) {}
    ~Counter() override { fLog.deleted++; }
    void MessageReceived(BMessage* message) override {
        if (message->what == kMsgCount)
            fLog.counted += 100;
        else
            BHandler::MessageReceived(message);
    }

private:
    Log& fLog;
};

class TestLooper : public BLooper {
public:
    explicit TestLooper(Log& log) : BLooper("test looper"), fLog(log) {}
    ~TestLooper() override {
        delete fKept;
        fLog.deleted++;
    }
    bool QuitRequested() override { return fLog.mayQuit; }
    void MessageReceived(BMessage* message) override {
        switch (message->what) {
        case kMsgCount: fLog.counted++; break;
        case kMsgAsk: _Answer(message); break;
        case kMsgQuitYourself: Quit(); break;
        case kMsgKeep: fKept = DetachCurrentMessage(); break;
        default: BLooper::MessageReceived(message);
        }
    }

private:
    void _Answer(BMessage* message) {
        BMessage reply('answ');
        reply.AddInt32("counted", fLog.counted);
        fFirstReply = message->SendReply(&reply);
        fSecondReply = message->SendReply(&reply);
    }

    Log& fLog;
    BMessage* fKept = nullptr;

public:
    std::atomic<status_t> fFirstReply{B_ERROR};
    std::atomic<status_t> fSecondReply{B_ERROR};
};

filter_result skipCounting(BMessage* message, BHandler**, BMessageFilter*) {
    return message->what == kMsgCount ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
}

} // namespace

class LooperTest : public testing::Test {
protected:
    LooperTest() { fLooper->Run(); }
    ~LooperTest() override { _Quit(); }
    void _Quit() {
        if (BMessenger(fMessenger).LockTarget())
            fLooper->Quit();
    }
    // Returns when everything posted so far has been handled.
    void _WaitForTheQueue() {
        BMessage reply;
        fMessenger.SendMessage(kMsgAsk, &reply);
    }

    Log fLog;
    TestLooper* fLooper = new TestLooper(fLog);
    BMessenger fMessenger{fLooper};
};

TEST_F(LooperTest, HandlesMessagesInOrderOnItsOwnThread) {
    for (int i = 0; i < 1000; i++)
        EXPECT_EQ(B_OK, fLooper->PostMessage(kMsgCount));
    BMessage reply;
    EXPECT_EQ(B_OK, fMessenger.SendMessage(kMsgAsk, &reply));
    int32 counted = 0;
    EXPECT_EQ(B_OK, reply.FindInt32("counted", &counted));
    EXPECT_EQ(1000, counted);
    EXPECT_TRUE(reply.IsReply());
    EXPECT_EQ(fLooper, BLooper::LooperForThread(fLooper->Thread()));
}

TEST_F(LooperTest, QuittingFromOutsideWorksOffTheQueueFirst) {
    for (int i = 0; i < 100; i++)
        fLooper->PostMessage(kMsgCount);
    _Quit();
    EXPECT_EQ(100, fLog.counted);
    EXPECT_EQ(1, fLog.deleted);
}

TEST_F(LooperTest, MayQuitItselfInTheMiddleOfAMessage) {
    thread_id thread = fLooper->Thread();
    fLooper->PostMessage(kMsgQuitYourself);
    fMessenger.SendMessage(kMsgCount);
    wait_for_thread(thread, nullptr);
    EXPECT_EQ(1, fLog.deleted);
    EXPECT_EQ(0, fLog.counted);
}

TEST_F(LooperTest, AQuitRequestMayBeRefused) {
    fLog.mayQuit = false;
    BMessage reply;
    EXPECT_EQ(B_OK, fMessenger.SendMessage(B_QUIT_REQUESTED, &reply));
    bool result = true;
    EXPECT_EQ(B_OK, reply.FindBool("result", &result));
    EXPECT_FALSE(result);
    fLog.mayQuit = true;
    thread_id thread = fLooper->Thread();
    fMessenger.SendMessage(B_QUIT_REQUESTED);
    wait_for_thread(thread, nullptr);
    EXPECT_EQ(1, fLog.deleted);
}

TEST_F(LooperTest, AMessengerOutlivesItsTarget) {
    BMessenger copy = fMessenger;
    EXPECT_TRUE(copy.IsValid());
    BLooper* looper = nullptr;
    EXPECT_EQ(fLooper, copy.Target(&looper));
    _Quit();
    EXPECT_FALSE(copy.IsValid());
    EXPECT_FALSE(copy.LockTarget());
    EXPECT_EQ(nullptr, copy.Target(&looper));
    EXPECT_EQ(nullptr, looper);
    EXPECT_EQ(B_BAD_PORT_ID, copy.SendMessage(kMsgCount));
    BMessage reply;
    EXPECT_EQ(B_BAD_PORT_ID, copy.SendMessage(kMsgAsk, &reply));
}

TEST_F(LooperTest, WhoWaitsForAnAnswerOfALeavingLooperIsTold) {
    fLooper->Lock();
    BMessenger messenger = fMessenger;
    struct Asking {
        BMessenger messenger;
        BMessage reply;
    } asking{messenger, BMessage()};
    auto ask = [](void* data) -> int32 {
        auto* question = static_cast<Asking*>(data);
        return question->messenger.SendMessage(kMsgAsk, &question->reply);
    };
    fLooper->PostMessage(kMsgQuitYourself);
    thread_id thread = spawn_thread(ask, "asker", B_NORMAL_PRIORITY, &asking);
    resume_thread(thread);
    while (fLooper->MessageQueue()->FindMessage(kMsgAsk) == nullptr)
        snooze(100);
    fLooper->Unlock();
    status_t status = B_ERROR;
    wait_for_thread(thread, &status);
    EXPECT_EQ(B_OK, status);
    EXPECT_EQ(uint32(B_NO_REPLY), asking.reply.what);
}

TEST_F(LooperTest, ReplyingTwiceIsRefused) {
    _WaitForTheQueue();
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_EQ(B_OK, fLooper->fFirstReply);
    EXPECT_EQ(B_DUPLICATE_REPLY, fLooper->fSecondReply);
    fLooper->Unlock();
}

TEST_F(LooperTest, AnUnansweredQuestionTimesOut) {
    fLooper->Lock();
    BMessage message(kMsgAsk), reply;
    EXPECT_EQ(B_TIMED_OUT, fMessenger.SendMessage(&message, &reply, B_INFINITE_TIMEOUT, 1000));
    fLooper->Unlock();
}

TEST_F(LooperTest, WhatNobodyUnderstandsIsAnsweredSo) {
    BMessage reply;
    EXPECT_EQ(B_OK, fMessenger.SendMessage('none', &reply));
    EXPECT_EQ(uint32(B_MESSAGE_NOT_UNDERSTOOD), reply.what);
}

TEST_F(LooperTest, HandlersGetTheirMessagesAndPassOnTheRest) {
    BAutolock lock(fLooper);
    auto counter = std::make_unique<Counter>(fLog);
    EXPECT_EQ(B_MISMATCHED_VALUES, fLooper->PostMessage(kMsgCount, counter.get()));
    fLooper->AddHandler(counter.get());
    EXPECT_EQ(B_OK, fLooper->PostMessage(kMsgCount, counter.get()));
    EXPECT_EQ(B_OK, fLooper->PostMessage(kMsgAsk, counter.get()));
    fLooper->SetPreferredHandler(counter.get());
    EXPECT_EQ(B_OK, fLooper->PostMessage(kMsgCount, nullptr));
    lock.Unlock();
    _WaitForTheQueue();
    EXPECT_EQ(200, fLog.counted);
    EXPECT_TRUE(lock.Lock());
    EXPECT_TRUE(fLooper->RemoveHandler(counter.get()));
    EXPECT_EQ(nullptr, fLooper->PreferredHandler());
}

TEST_F(LooperTest, AMessageForADeletedHandlerIsDropped) {
    BMessenger messenger;
    {
        BAutolock lock(fLooper);
        auto counter = std::make_unique<Counter>(fLog);
        fLooper->AddHandler(counter.get());
        messenger = BMessenger(counter.get());
        messenger.SendMessage(kMsgCount);
    }
    messenger.SendMessage(kMsgCount);
    _WaitForTheQueue();
    EXPECT_EQ(0, fLog.counted);
    EXPECT_EQ(1, fLog.deleted);
    EXPECT_EQ(1, fLooper->CountHandlers());
}

TEST_F(LooperTest, FiltersStopMessages) {
    {
        BAutolock lock(fLooper);
        fLooper->AddCommonFilter(new BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE, skipCounting));
    }
    fLooper->PostMessage(kMsgCount);
    _WaitForTheQueue();
    EXPECT_EQ(0, fLog.counted);
}

TEST_F(LooperTest, AHandlersOwnFilterLeavesOthersAlone) {
    auto counter = std::make_unique<Counter>(fLog);
    {
        BAutolock lock(fLooper);
        fLooper->AddHandler(counter.get());
        counter->AddFilter(new BMessageFilter(kMsgCount, skipCounting));
    }
    BMessenger(counter.get()).SendMessage(kMsgCount);
    fLooper->PostMessage(kMsgCount);
    _WaitForTheQueue();
    EXPECT_EQ(1, fLog.counted);
}

TEST_F(LooperTest, ADetachedMessageOutlivesItsDispatch) {
    fLooper->PostMessage(kMsgKeep);
    _WaitForTheQueue();
    EXPECT_EQ(1, fLooper->CountHandlers());
}

TEST_F(LooperTest, ItsLockIsTakenAgainByItsHolderAndFailsWhenItIsGone) {
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_TRUE(fLooper->Lock());
    EXPECT_EQ(2, fLooper->CountLocks());
    fLooper->Unlock();
    EXPECT_TRUE(fLooper->IsLocked());
    fLooper->Quit();
    EXPECT_FALSE(fMessenger.LockTarget());
    EXPECT_EQ(B_BAD_VALUE, fMessenger.LockTargetWithTimeout(1000));
}

TEST_F(LooperTest, AnInvokerSendsCopiesOfItsMessage) {
    BInvoker invoker(new BMessage(kMsgCount), fLooper);
    EXPECT_EQ(B_OK, invoker.Invoke());
    EXPECT_EQ(B_OK, invoker.Invoke());
    BMessage other(kMsgCount);
    EXPECT_EQ(B_OK, invoker.Invoke(&other));
    _WaitForTheQueue();
    EXPECT_EQ(3, fLog.counted);
    EXPECT_EQ(B_BAD_VALUE, BInvoker().Invoke());
}

TEST_F(LooperTest, ManyThreadsPostAndLockWhileItQuits) {
    auto pester = [](void* data) -> int32 {
        BMessenger messenger = *static_cast<BMessenger*>(data);
        while (messenger.SendMessage(kMsgCount) == B_OK) {
            BLooper* looper = nullptr;
            messenger.Target(&looper);
            if (messenger.LockTarget())
                looper->Unlock();
        }
        return B_OK;
    };
    std::vector<thread_id> threads;
    for (int i = 0; i < 4; i++) {
        threads.push_back(spawn_thread(pester, "pester", B_NORMAL_PRIORITY, &fMessenger));
        resume_thread(threads.back());
    }
    while (fLog.counted < 100)
        snooze(100);
    _Quit();
    for (thread_id thread : threads)
        EXPECT_EQ(B_OK, wait_for_thread(thread, nullptr));
}

TEST(BLooper, OneThatNeverRanIsDeletedByQuit) {
    Log log;
    auto* looper = new TestLooper(log);
    EXPECT_TRUE(looper->IsLocked());
    looper->PostMessage(kMsgCount);
    looper->Quit();
    EXPECT_EQ(1, log.deleted);
    EXPECT_EQ(0, log.counted);
}

TEST(BMessenger, ANewOneHasNoTarget) {
    BMessenger messenger;
    EXPECT_FALSE(messenger.IsValid());
    EXPECT_EQ(B_BAD_PORT_ID, messenger.SendMessage(kMsgCount));
    status_t status = B_OK;
    Log log;
    Counter counter(log);
    BMessenger orphan(&counter, nullptr, &status);
    EXPECT_EQ(B_MISMATCHED_VALUES, status);
    EXPECT_FALSE(orphan.IsValid());
}
