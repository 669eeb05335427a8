#include <OS.h>

#include <pthread.h>
#include <sys/prctl.h>

#include <algorithm>
#include <condition_variable>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <QThread>

#include "kernel/Deadline.h"
#include "kernel/Threads.h"

namespace {

// Carries exit_thread's value up to the thread's first function. Not derived from std::exception,
// so that nobody catches it by accident.
struct ThreadExit {
    status_t value;
};

constexpr size_t kRememberedThreads = 32;

class Thread;

// Every thread that has not ended, and the exit values of those that ended last. Never destroyed:
// threads may still run while the process ends.
struct ThreadTable {
    std::mutex mutex;
    std::condition_variable ended;
    // Guarded by mutex
    std::map<thread_id, std::shared_ptr<Thread>> threads;
    std::vector<std::shared_ptr<Thread>> toReap;
    std::list<std::pair<thread_id, status_t>> exitValues;
    thread_id lastId = 0;

    thread_id NewId() {
        std::lock_guard guard(mutex);
        return ++lastId;
    }
};

ThreadTable& table() {
    static ThreadTable& instance = *new ThreadTable;
    return instance;
}

// What a thread knows of itself; threads that spawn_thread did not make get an id when they first
// ask for one.
struct CurrentThread {
    thread_id id = 0;
    bool isSpawned = false;
    std::vector<std::pair<void (*)(void*), void*>> exitHandlers;

    ~CurrentThread() { RunExitHandlers(); }
    void RunExitHandlers() {
        while (!exitHandlers.empty()) {
            auto [callback, data] = exitHandlers.back();
            exitHandlers.pop_back();
            callback(data);
        }
    }
};

thread_local CurrentThread tCurrent;

std::string cutAtCharacter(const char* text, size_t length) {
    std::string name(text ? text : "");
    if (name.size() <= length)
        return name;
    while (length > 0 && (name[length] & 0xC0) == 0x80)
        length--;
    return name.substr(0, length);
}

// The system keeps 15 bytes of a thread's name.
void nameForTheSystem(const std::string& name) {
    prctl(PR_SET_NAME, cutAtCharacter(name.c_str(), 15).c_str());
}

class Thread : public QThread {
public:
    Thread(thread_func function, const char* name, int32 priority, void* data)
        : fId(table().NewId()), fFunction(function), fData(data),
          fName(cutAtCharacter(name, B_OS_NAME_LENGTH - 1)), fPriority(priority) {}

    // Constant after construction
    const thread_id fId;
    const thread_func fFunction;
    void* const fData;
    // Guarded by the table's mutex
    std::string fName;
    int32 fPriority;
    bool fIsResumed = false;

private:
    void run() override;
    status_t _Call();
    void _End(status_t exitValue);
};

void Thread::run() {
    tCurrent.id = fId;
    tCurrent.isSpawned = true;
    {
        std::lock_guard guard(table().mutex);
        nameForTheSystem(fName);
    }
    status_t exitValue = _Call();
    tCurrent.RunExitHandlers();
    _End(exitValue);
}

status_t Thread::_Call() {
    try {
        return fFunction(fData);
    } catch (const ThreadExit& exit) {
        return exit.value;
    }
}

void Thread::_End(status_t exitValue) {
    ThreadTable& all = table();
    std::lock_guard guard(all.mutex);
    all.exitValues.emplace_back(fId, exitValue);
    if (all.exitValues.size() > kRememberedThreads)
        all.exitValues.pop_front();
    auto self = all.threads.find(fId);
    all.toReap.push_back(std::move(self->second));
    all.threads.erase(self);
    all.ended.notify_all();
}

// Frees the threads that have run their function; waits for the moment that the system needs to end
// them.
void reapEndedThreads() {
    std::vector<std::shared_ptr<Thread>> ended;
    {
        std::lock_guard guard(table().mutex);
        ended.swap(table().toReap);
    }
    for (const auto& thread : ended)
        thread->wait();
}

std::shared_ptr<Thread> threadWithId(thread_id id) {
    auto found = table().threads.find(id);
    return found == table().threads.end() ? nullptr : found->second;
}

} // namespace

thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data) {
    if (!function)
        return B_BAD_VALUE;
    reapEndedThreads();
    auto thread = std::make_shared<Thread>(function, name, priority, data);
    std::lock_guard guard(table().mutex);
    table().threads[thread->fId] = thread;
    return thread->fId;
}

status_t resume_thread(thread_id id) {
    std::lock_guard guard(table().mutex);
    std::shared_ptr<Thread> thread = threadWithId(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    if (thread->fIsResumed)
        return B_BAD_THREAD_STATE;
    thread->start();
    if (!thread->isRunning())
        return B_NO_MORE_THREADS;
    thread->fIsResumed = true;
    return B_OK;
}

status_t kill_thread(thread_id id) {
    std::lock_guard guard(table().mutex);
    const std::shared_ptr<Thread> thread = threadWithId(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    if (thread->fIsResumed)
        return B_NOT_ALLOWED;
    table().threads.erase(id);
    return B_OK;
}

status_t wait_for_thread(thread_id id, status_t* exitValue) {
    if (id == find_thread(nullptr))
        return B_ERROR;
    if (resume_thread(id) == B_NO_MORE_THREADS)
        return B_NO_MORE_THREADS;
    {
        ThreadTable& all = table();
        std::unique_lock guard(all.mutex);
        all.ended.wait(guard, [&] { return !all.threads.contains(id); });
        auto isWanted = [&](const auto& ended) { return ended.first == id; };
        auto ended = std::find_if(all.exitValues.begin(), all.exitValues.end(), isWanted);
        if (ended == all.exitValues.end())
            return B_BAD_THREAD_ID;
        if (exitValue)
            *exitValue = ended->second;
    }
    reapEndedThreads();
    return B_OK;
}

void exit_thread(status_t exitValue) {
    if (tCurrent.isSpawned)
        throw ThreadExit{exitValue};
    pthread_exit(nullptr);
}

status_t on_exit_thread(void (*callback)(void*), void* data) {
    if (!callback)
        return B_BAD_VALUE;
    tCurrent.exitHandlers.emplace_back(callback, data);
    return B_OK;
}

thread_id find_thread(const char* name) {
    if (!name) {
        if (tCurrent.id == 0)
            tCurrent.id = table().NewId();
        return tCurrent.id;
    }
    std::lock_guard guard(table().mutex);
    for (const auto& [id, thread] : table().threads) {
        if (thread->fName == name)
            return id;
    }
    return B_NAME_NOT_FOUND;
}

status_t rename_thread(thread_id id, const char* newName) {
    if (!newName)
        return B_BAD_VALUE;
    bool isSelf = id == find_thread(nullptr);
    std::lock_guard guard(table().mutex);
    std::shared_ptr<Thread> thread = threadWithId(id);
    if (thread)
        thread->fName = cutAtCharacter(newName, B_OS_NAME_LENGTH - 1);
    if (isSelf)
        nameForTheSystem(newName);
    return thread || isSelf ? B_OK : B_BAD_THREAD_ID;
}

status_t set_thread_priority(thread_id id, int32 newPriority) {
    std::lock_guard guard(table().mutex);
    std::shared_ptr<Thread> thread = threadWithId(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    return std::exchange(thread->fPriority, newPriority);
}

int32 JoinThreads(bigtime_t timeout) {
    thread_id self = find_thread(nullptr);
    auto countRunning = [self] {
        auto isRunning = [self](const auto& entry) {
            return entry.first != self && entry.second->fIsResumed;
        };
        const auto& threads = table().threads;
        return static_cast<int32>(std::count_if(threads.begin(), threads.end(), isRunning));
    };
    int32 running = 0;
    {
        std::unique_lock guard(table().mutex);
        auto haveAllEnded = [&] { return countRunning() == 0; };
        Deadline::After(timeout).Wait(table().ended, guard, haveAllEnded);
        running = countRunning();
    }
    reapEndedThreads();
    return running;
}
