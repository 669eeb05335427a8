#include "workers/WorkerThread.h"

#include "app/Messages.h"
#include "support/MessageCounter.h"

#include "server/Testing.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Job {
    std::shared_ptr<WorkerControl> control;
};

int32 Work(void* data) {
    TakeOverJob<Job>(data, "work");
    return 0;
}

} // namespace

// It could never be stopped, nor would it ever say that it is done.
TEST(WorkerThread, AWorkerWithoutAPortIsNotStarted) {
    std::vector<port_id> ports;
    while (ports.empty() || ports.back() >= 0)
        ports.push_back(create_port(1, "all of them"));
    auto job = std::make_unique<Job>();
    job->control = std::make_shared<WorkerControl>("port");
    EXPECT_LT(job->control->Port(), 0);
    EXPECT_FALSE(SpawnWorker(Work, "work", &job));
    EXPECT_NE(job, nullptr);
    for (const port_id port : ports)
        delete_port(port);
}

TEST(WorkerControl, AStoppedWorkerGivesTheCursorBackAtOnceAndOnce) {
    MessageCounter cursor(kMsgBusyCursor);
    MessageCounter mark(kMsgToggleClick); // comes behind all that were sent before it
    {
        WorkerControl control("port");
        control.TakeCursor();
        control.Stop();
        EXPECT_TRUE(server::testing::WaitUntil([&] { return cursor.Count() == 2; }));
        EXPECT_TRUE(control.MustStop());
        control.ReleaseCursor();
    }
    be_app_messenger.SendMessage(kMsgToggleClick);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return mark.Count() == 1; }));
    EXPECT_EQ(cursor.Count(), 2);
}
