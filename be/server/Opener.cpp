#include "server/Opener.h"

#include "app/ApplicationPrivate.h"
#include "support/Errno.h"

#include <OS.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace server {

namespace {

const char kOpener[] = "xdg-open";
const bigtime_t kPatience = 5000000;
const bigtime_t kLook = 20000;

// Openers that ran on: a browser may have become of them. They are reaped with the next.
std::mutex sLock;
std::vector<pid_t> sRunning; // guarded by sLock

bool HasEnded(pid_t process) {
    return waitpid(process, nullptr, WNOHANG) != 0;
}

void RunsOn(pid_t process) {
    std::lock_guard lock(sLock);
    std::erase_if(sRunning, HasEnded);
    sRunning.push_back(process);
}

// A session of its own: it outlives this program and its terminal, and gets none of its signals.
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
    }
    ~Attributes() {
        posix_spawn_file_actions_destroy(&fActions);
        posix_spawnattr_destroy(&fAttributes);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    int Spawn(const std::string& address, pid_t* process) const {
        std::string opener = kOpener;
        std::string argument = address;
        char* const arguments[] = {opener.data(), argument.data(), nullptr};
        return posix_spawnp(process, kOpener, &fActions, &fAttributes, arguments, environ);
    }

private:
    posix_spawnattr_t fAttributes;
    posix_spawn_file_actions_t fActions;
};

status_t WaitForEnd(pid_t process) {
    int result = 0;
    for (const bigtime_t end = system_time() + kPatience; system_time() < end && !IsProgramEnding();
         snooze(kLook)) {
        if (waitpid(process, &result, WNOHANG) == process)
            return WIFEXITED(result) && WEXITSTATUS(result) == 0 ? B_OK : B_ERROR;
    }
    RunsOn(process);
    return B_OK;
}

} // namespace

status_t RunOpener(const std::string& address) {
    pid_t process = -1;
    const int error = Attributes().Spawn(address, &process);
    if (error == ENOENT)
        return B_ENTRY_NOT_FOUND;
    return error == 0 ? WaitForEnd(process) : B_ERROR;
}

} // namespace server
