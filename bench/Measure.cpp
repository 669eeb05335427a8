#include "Measure.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <limits>
#include <malloc.h>
#include <set>
#include <vector>

namespace {

double Read(clockid_t clock) {
    timespec time = {};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Of figures that the system has of a process's memory, in bytes.
size_t SumOf(pid_t process, const std::set<std::string>& names) {
    const std::string who = process == 0 ? "self" : std::to_string(process);
    std::ifstream file("/proc/" + who + "/smaps_rollup");
    std::string word;
    size_t sum = 0;
    size_t kilobytes = 0;
    while (file >> word) {
        if (names.contains(word) && file >> kilobytes)
            sum += kilobytes;
    }
    return sum * 1024;
}

// Keeps the best round and prints nothing.
class BestReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                fBest = std::min(fBest, run.GetAdjustedRealTime());
        }
    }
    double Best() const { return fBest; }

private:
    double fBest = std::numeric_limits<double>::max();
};

} // namespace

double ThreadTime() {
    return Read(CLOCK_THREAD_CPUTIME_ID);
}

double ProcessTime(pid_t process) {
    clockid_t clock = CLOCK_PROCESS_CPUTIME_ID;
    if (process != 0 && clock_getcpuclockid(process, &clock) != 0)
        return 0;
    return Read(clock);
}

size_t UsedHeap() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

size_t SetSize(pid_t process) {
    return SumOf(process, {"Pss:"});
}

size_t PrivateSize(pid_t process) {
    return SumOf(process, {"Private_Clean:", "Private_Dirty:"});
}

double BestOf(int rounds, const char* name, const std::function<double()>& work) {
    const auto run = [&work](benchmark::State& state) {
        for ([[maybe_unused]] auto ignored : state)
            state.SetIterationTime(work() / 1e3);
    };
    benchmark::RegisterBenchmark(name, run)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(rounds);
    BestReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
    return reporter.Best();
}
