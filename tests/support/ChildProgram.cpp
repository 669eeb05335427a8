#include "support/ChildProgram.h"

#include <OS.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace testprograms {

namespace {

// Reached by failures alone; a whole run of a program may hold many waits.
const bigtime_t kPatience = 60000000;
const bigtime_t kPatienceForTheEnd = 240000000;
const bigtime_t kPause = 5000;

std::string ScratchFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "child-XXXXXX").string();
    return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

std::string ContentsOf(const std::string& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace

ChildProgram::ChildProgram(const std::string& name, const std::string& settings,
                           const std::string& locale, const std::string& executable)
    : fSettings(settings.empty() ? ScratchFolder() : settings), fOwnsSettings(settings.empty()),
      fFiles(ScratchFolder()), fOutput(fFiles + "/output"), fErrors(fFiles + "/errors") {
    int input[2];
    if (pipe2(input, O_CLOEXEC) != 0)
        return;
    fInput = input[1];
    fProcess = fork();
    if (fProcess != 0) {
        close(input[0]);
        return;
    }
    dup2(input[0], STDIN_FILENO);
    dup2(open(fOutput.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open(fErrors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
    setenv("XDG_CONFIG_HOME", fSettings.c_str(), 1);
    setenv("TEST_PROGRAM", name.c_str(), 1);
    setenv("LC_ALL", locale.c_str(), 1);
    unsetenv("XDG_RUNTIME_DIR");
    execl(executable.c_str(), "child", "one argument", "two", nullptr);
    _exit(127);
}

ChildProgram::~ChildProgram() {
    if (fProcess > 0) {
        Kill();
        Wait();
    }
    close(fInput);
    std::filesystem::remove_all(fFiles);
    if (fOwnsSettings)
        std::filesystem::remove_all(fSettings);
}

void ChildProgram::Signal(int number) const {
    kill(fProcess, number);
}

void ChildProgram::Kill() const {
    Signal(SIGKILL);
}

void ChildProgram::Tell(const std::string& line) const {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(fInput, text.data(), text.size());
}

int ChildProgram::Wait() {
    int status = 0;
    const bigtime_t end = system_time() + kPatienceForTheEnd;
    while (waitpid(fProcess, &status, WNOHANG) == 0) {
        if (system_time() > end)
            Kill();
        snooze(kPause);
    }
    fProcess = -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string ChildProgram::Output() const {
    return ContentsOf(fOutput);
}

std::string ChildProgram::Errors() const {
    return ContentsOf(fErrors);
}

bool ChildProgram::WaitForOutput(const std::string& text) const {
    const bigtime_t end = system_time() + kPatience;
    while (Output().find(text) == std::string::npos) {
        if (system_time() > end)
            return false;
        snooze(kPause);
    }
    return true;
}

} // namespace testprograms
