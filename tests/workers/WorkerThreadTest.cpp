#include "workers/WorkerThread.h"

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
