#include "Child.h"

#include "Measure.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kQuietRounds = 10;
constexpr useconds_t kRound = 100000; // microseconds

[[noreturn]] void Execute(const std::vector<std::string>& command, int input, int output) {
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    if (getenv("BENCH_VERBOSE") == nullptr)
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : command)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    _exit(127);
}

// Of all threads, in nanoseconds.
unsigned long long RunTime(const std::string& process) {
    unsigned long long sum = 0;
    std::error_code ignored;
    for (const auto& task : std::filesystem::directory_iterator(process + "/task", ignored)) {
        unsigned long long time = 0;
        std::ifstream(task.path() / "schedstat") >> time;
        sum += time;
    }
    return sum;
}

} // namespace

Child::Child(const std::vector<std::string>& command) {
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        abort();
    fProcess = fork();
    if (fProcess == 0)
        Execute(command, input[0], output[1]);
    close(input[0]);
    close(output[1]);
    fInput = input[1];
    fOutput = fdopen(output[0], "r");
}

Child::~Child() {
    Kill();
    close(fInput);
    fclose(fOutput);
}

std::pair<std::string, double> Child::NextResult() {
    char name[64] = "";
    double value = 0;
    if (fscanf(fOutput, "%63s %lf", name, &value) != 2)
        return {};
    return {name, value};
}

std::map<std::string, double> Child::AllResults() {
    std::map<std::string, double> results;
    for (auto result = NextResult(); !result.first.empty(); result = NextResult())
        results.insert(result);
    return results;
}

void Child::WaitUntilIdle() const {
    const std::string process = "/proc/" + std::to_string(fProcess);
    unsigned long long last = 0;
    for (int quiet = 0; quiet < kQuietRounds; quiet++) {
        usleep(kRound);
        const unsigned long long now = RunTime(process);
        if (now != last || now == 0)
            quiet = 0;
        last = now;
    }
}

size_t Child::SetSize() const {
    return ::SetSize(fProcess);
}

long Child::CountWakeUps() const {
    long sum = 0;
    const std::string tasks = "/proc/" + std::to_string(fProcess) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        std::ifstream file(task.path() / "status");
        std::string word;
        long count = 0;
        while (file >> word) {
            if (word == "voluntary_ctxt_switches:" && file >> count)
                sum += count;
        }
    }
    return sum;
}

double Child::Kill() {
    if (fProcess < 0)
        return 0;
    rusage usage = {};
    kill(fProcess, SIGKILL);
    wait4(fProcess, nullptr, 0, &usage);
    fProcess = -1;
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}
