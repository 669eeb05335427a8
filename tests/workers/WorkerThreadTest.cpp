#include "workers/WorkerThread.h"

#include "app/NPWindow.h"
#include "messages/Messages.h"
#include "support/MessageCounter.h"

#include "server/Testing.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>
#include <vector>

namespace {

struct Job {
    std::shared_ptr<WorkerControl> control;
};

// From now on the calling thread can start none.
bool RefuseThreads() {
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone3, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {std::size(rules), rules};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

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

TEST(WorkerThread, AWorkerWhoseThreadDoesNotStartLeavesNothingBehind) {
    MessageCounter cursor(kMsgBusyCursor);
    auto job = std::make_unique<Job>();
    job->control = std::make_shared<WorkerControl>("port");
    // The system refuses it for the one thread that tries: nothing else does without its own.
    std::thread([&] {
        ASSERT_TRUE(RefuseThreads());
        EXPECT_FALSE(SpawnWorker(Work, "work", &job));
    }).join();
    ASSERT_NE(job, nullptr);
    port_info info;
    EXPECT_NE(get_port_info(job->control->Port(), &info), B_OK);
    EXPECT_LT(find_thread("work"), 0);
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return cursor.Count() == 2; })); // taken, given back
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

TEST(WorkerControl, APortReaderHeedsTheStopCodeAlone) {
    MessageCounter cursor(kMsgBusyCursor);
    const struct {
        int32 code;
        char body;
        bool stops;
    } kCases[] = {{kStopWorker, 0, false}, {'oTHR', 1, false}, {kStopWorker, 1, true}};
    const port_id port = create_port(1, "port");
    EXPECT_FALSE(NPWindow::PortReader(port));
    for (const auto& item : kCases) {
        write_port(port, item.code, &item.body, 1);
        EXPECT_EQ(NPWindow::PortReader(port), item.stops) << item.code;
    }
    port_info info;
    EXPECT_NE(get_port_info(port, &info), B_OK);
    EXPECT_TRUE(server::testing::WaitUntil([&] { return cursor.Count() == 1; }));
}
