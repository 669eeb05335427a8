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

const bigtime_t kPatience = 60000000;
const bigtime_t kPause = 5000;

std::string ScratchFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "child-XXXXXX").string();
    return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

} // namespace

ChildProgram::ChildProgram(const std::string& name, const std::string& settings,
                           const std::string& locale)
    : fSettings(settings.empty() ? ScratchFolder() : settings), fOwnsSettings(settings.empty()) {
    static int sCount = 0;
    fOutput = fSettings + "/output" + std::to_string(sCount++);
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
    setenv("XDG_CONFIG_HOME", fSettings.c_str(), 1);
    setenv("TEST_PROGRAM", name.c_str(), 1);
    setenv("LC_ALL", locale.c_str(), 1);
    unsetenv("XDG_RUNTIME_DIR");
    execl("/proc/self/exe", "child", "one argument", "two", nullptr);
    _exit(127);
}

ChildProgram::~ChildProgram() {
    if (fProcess > 0) {
        Kill();
        Wait();
    }
    close(fInput);
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
    const bigtime_t end = system_time() + kPatience;
    while (waitpid(fProcess, &status, WNOHANG) == 0) {
        if (system_time() > end)
            Kill();
        snooze(kPause);
    }
    fProcess = -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string ChildProgram::Output() const {
    std::ifstream file(fOutput);
    return std::string(std::istreambuf_iterator<char>(file), {});
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
