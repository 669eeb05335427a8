#pragma once

#include "workers/WorkerControl.h"

#include <OS.h>

#include <cstdio>
#include <memory>

// How a worker's thread begins and ends. A job is a struct with the worker's `control`.

constexpr int32 kWorkerPriority = 10;

// Frees a worker's job as its thread exits, and says so on standard error.
template <typename Job>
struct WorkerExit {
    std::unique_ptr<Job> job;
    const char* name;

    static void Run(void* data) {
        const std::unique_ptr<WorkerExit> self(static_cast<WorkerExit*>(data));
        self->job->control->DeletePort();
        self->job->control->ReleaseCursor();
        fprintf(stderr, "%s finished.\n", self->name);
    }
};

template <typename Job>
const Job& TakeOverJob(void* data, const char* name) {
    WorkerExit<Job>* handler =
        new WorkerExit<Job>{std::unique_ptr<Job>(static_cast<Job*>(data)), name};
    on_exit_thread(WorkerExit<Job>::Run, handler);
    return *handler->job;
}

// Starts a worker, which then owns the job; false when there is no thread, or no port that could
// stop it, to be had. The job is the caller's then, and the port is closed.
template <typename Job>
bool SpawnWorker(int32 (*entry)(void*), const char* name, std::unique_ptr<Job>* job) {
    const std::shared_ptr<WorkerControl> control = (*job)->control;
    if (control->Port() < 0)
        return false;
    const thread_id thread = spawn_thread(entry, name, kWorkerPriority, job->get());
    Job* const handedOver = job->release(); // once it runs, it may be done with it at any moment
    control->TakeCursor();
    if (thread >= 0 && resume_thread(thread) == B_OK)
        return true;
    kill_thread(thread);
    job->reset(handedOver);
    control->DeletePort();
    control->ReleaseCursor();
    return false;
}
