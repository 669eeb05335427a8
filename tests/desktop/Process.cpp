#include "desktop/Process.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string ContentsOf(const std::string& path) {
    std::ifstream file(path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void WriteTo(const std::string& path, int descriptor) {
    dup2(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
}

} // namespace

std::string MakeScratchFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "desktop-XXXXXX").string();
    return mkdtemp(folder.data()) != nullptr ? folder : std::string();
}

void Pause(int milliseconds) {
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
}

Process::Process(const std::vector<std::string>& words, const Environment& environment)
    : fFolder(MakeScratchFolder()), fProcess(fork()) {
    if (fProcess != 0)
        return;
    prctl(PR_SET_PDEATHSIG, SIGTERM); // a test that is killed leaves nothing running
    for (const auto& [name, value] : environment)
        setenv(name.c_str(), value.c_str(), 1);
    WriteTo(fFolder + "/output", STDOUT_FILENO);
    WriteTo(fFolder + "/errors", STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

Process::~Process() {
    if (fProcess > 0) {
        kill(fProcess, SIGTERM);
        Wait();
    }
    std::filesystem::remove_all(fFolder);
}

std::string Process::FirstLine() const {
    std::string output;
    Eventually([&] {
        output = ContentsOf(fFolder + "/output");
        return output.find('\n') != output.npos;
    });
    return output.substr(0, output.find('\n'));
}

std::string Process::Errors() const {
    return ContentsOf(fFolder + "/errors");
}

int Process::Wait() {
    int status = 0;
    const bool hasEnded = Eventually([&] { return waitpid(fProcess, &status, WNOHANG) != 0; });
    if (!hasEnded) {
        kill(fProcess, SIGKILL);
        waitpid(fProcess, &status, 0);
    }
    fProcess = -1;
    if (!hasEnded)
        return -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}
