#include "post/Opener.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace gate {

namespace {

constexpr const char* kOpener = "xdg-open";
constexpr std::chrono::seconds kPatience{2};
constexpr std::chrono::milliseconds kLook{20};

// Openers that ran on: a browser may have become of them. They are reaped with the next.
std::mutex sMutex;
std::vector<pid_t> sRunning; // guarded by sMutex

void RunsOn(pid_t process) {
    std::lock_guard guard(sMutex);
    std::erase_if(sRunning, [](pid_t other) { return waitpid(other, nullptr, WNOHANG) != 0; });
    sRunning.push_back(process);
}

// A session of its own: it outlives the gate and its terminal, and gets none of its signals.
class Attributes {
public:
    Attributes() {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&fAttributes);
        posix_spawnattr_setsigmask(&fAttributes, &none);
        posix_spawnattr_setsigdefault(&fAttributes, &all);
        posix_spawnattr_setflags(&fAttributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK |
                                                   POSIX_SPAWN_SETSIGDEF);
        posix_spawn_file_actions_init(&fActions);
        posix_spawn_file_actions_addopen(&fActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        // What a browser writes is not the gate's log, which names no address that is secret.
        posix_spawn_file_actions_addopen(&fActions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&fActions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Attributes() {
        posix_spawn_file_actions_destroy(&fActions);
        posix_spawnattr_destroy(&fAttributes);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    bool Spawn(const std::string& address, pid_t* process) const {
        std::string opener = kOpener;
        std::string argument = address;
        char* const arguments[] = {opener.data(), argument.data(), nullptr};
        return posix_spawnp(process, kOpener, &fActions, &fAttributes, arguments, environ) == 0;
    }

private:
    posix_spawnattr_t fAttributes;
    posix_spawn_file_actions_t fActions;
};

} // namespace

bool OpenInBrowser(const std::string& address) {
    using Clock = std::chrono::steady_clock;
    pid_t process = -1;
    if (!Attributes().Spawn(address, &process))
        return false;
    for (const auto end = Clock::now() + kPatience; Clock::now() < end;
         std::this_thread::sleep_for(kLook)) {
        int result = 0;
        if (waitpid(process, &result, WNOHANG) == process)
            return WIFEXITED(result) && WEXITSTATUS(result) == 0;
    }
    RunsOn(process);
    return true;
}

} // namespace gate
