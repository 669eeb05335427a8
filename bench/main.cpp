// Measures what is promised about speed and prints it, a line each, against its yardstick taken in
// the same run. Ends with 1 when a bound is missed.

#include "Child.h"
#include "Gate.h"
#include "Measure.h"
#include "Parts.h"
#include "Scratch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr double kMegabyte = 1024 * 1024;
constexpr int kStartRounds = 5;
constexpr double kGateStart = 50;  // milliseconds
constexpr double kGateMemory = 12; // megabytes
constexpr double kFrame = 16;      // milliseconds
constexpr int kFramePosts = 10000;
constexpr useconds_t kIdleTime = 2000000; // microseconds

using Results = std::map<std::string, double>;

// How a figure is held against its yardstick: divided by it, or less it.
enum class Compare { kRatio, kDifference };

class Table {
public:
    Table() { printf("%-52s %10s %10s %9s %9s\n", "what", "ours", "yardstick", "ratio", "bound"); }
    void Add(const char* what, const char* unit, double ours, double yardstick, Compare compare,
             double bound) {
        const double value = compare == Compare::kRatio ? ours / yardstick : ours - yardstick;
        const bool isMet = ours > 0 && yardstick > 0 && value <= bound;
        fAllMet = fAllMet && isMet;
        printf("%-52s %7.2f %-2s %7.2f %-2s %9s %9s  %s\n", what, ours, unit, yardstick, unit,
               _Text(value, compare).c_str(), _Text(bound, compare).c_str(),
               isMet ? "met" : "MISSED");
        fflush(stdout);
    }
    void Need(const char* what, long count, bool isMet) {
        fAllMet = fAllMet && isMet;
        printf("%-52s %10ld %41s\n", what, count, isMet ? "met" : "MISSED");
        fflush(stdout);
    }
    bool AllMet() const { return fAllMet; }

private:
    static std::string _Text(double value, Compare compare) {
        char text[32];
        if (compare == Compare::kDifference)
            snprintf(text, sizeof(text), "%+.1f", value);
        else if (value < 1 && value > 0)
            snprintf(text, sizeof(text), "1/%.1f", 1 / value);
        else
            snprintf(text, sizeof(text), "%.2f", value);
        return text;
    }

    bool fAllMet = true;
};

Results RunPart(const std::string& program, const std::vector<std::string>& part) {
    std::vector<std::string> command = {program};
    command.insert(command.end(), part.begin(), part.end());
    return Child(command).AllResults();
}

void CompareCodec(Table& table, const std::string& self) {
    Results codec = RunPart(self, {"codec"});
    table.Add("convert a dat of 300 KB (yardstick: iconv)", "ms", codec["ours"], codec["yardstick"],
              Compare::kRatio, 1 / 4.5);
}

void CompareLayout(Table& table, const std::string& self, Results& document) {
    Results thousand = RunPart(self, {"layout", "1000"});
    table.Add("lay out 1,000 posts", "ms", thousand["warm"], document["warm"], Compare::kRatio,
              1 / 15.0);
    table.Add("the same with 100 rules (yardstick: without)", "ms", thousand["noise"],
              thousand["warm"], Compare::kDifference, 5);
    for (const int count : {10000, 100000}) {
        Results more = RunPart(self, {"layout", std::to_string(count)});
        const std::string name = std::to_string(count) + " posts, ";
        table.Add((name + "1,000 of them (yardstick: the first 1,000)").c_str(), "ms",
                  more["warm"] * 1000 / count, thousand["warm"], Compare::kRatio, 1.3);
        table.Add((name + "memory (yardstick: the text)").c_str(), "MB", more["memory"] / kMegabyte,
                  more["text"] / kMegabyte, Compare::kRatio, 4);
        if (count == kFramePosts)
            table.Add((name + "who answered whom (yardstick: a frame)").c_str(), "ms",
                      more["question"], kFrame, Compare::kRatio, 1);
    }
}

struct Start {
    double time = 1e9;
    double size = 1e9;
    long wakeUps = 0;
};

Start MeasureStart(const std::string& program) {
    Start best;
    for (int i = 0; i < kStartRounds; i++) {
        Child child({program});
        child.WaitUntilIdle();
        const long before = child.CountWakeUps();
        if (i == 0)
            usleep(kIdleTime);
        best.wakeUps = std::max(best.wakeUps, child.CountWakeUps() - before);
        best.size = std::min(best.size, static_cast<double>(child.SetSize()) / kMegabyte);
        best.time = std::min(best.time, child.Kill());
    }
    return best;
}

// Bounds of its own, not against a yardstick.
void CompareGate(Table& table, const std::string& self, const Scratch& scratch, double direct) {
    const std::string folder = std::filesystem::path(self).parent_path().string();
    Child server({self, "serve-today", scratch.Boards(), scratch.ForGate()});
    server.NextResult();
    Gate gate(folder + "/itamori-gate", scratch.ForGate() + "/gate.toml");
    scratch.SaveSettings(gate.Port());
    Child& process = gate.Process();
    Results pair = RunPart(scratch.Bench(), {"program", std::to_string(process.Process())});
    table.Add("1,000 posts by TLS and the gate (yardstick: without)", "ms", pair["pair"], direct,
              Compare::kRatio, 1.5);
    table.Add("start of the gate (yardstick: the bound)", "ms", gate.TimeToStart(), kGateStart,
              Compare::kRatio, 1);
    process.WaitUntilIdle();
    table.Add("memory of the idle gate (yardstick: the bound)", "MB",
              static_cast<double>(PrivateSize(process.Process())) / kMegabyte, kGateMemory,
              Compare::kRatio, 1);
    const long before = process.CountWakeUps();
    usleep(kIdleTime);
    const long wakeUps = process.CountWakeUps() - before;
    table.Need("wake-ups of the gate in two idle seconds", wakeUps, wakeUps == 0);
}

void CompareProgram(Table& table, const std::string& self, Results& document) {
    const Scratch scratch;
    Child server({self, "serve", scratch.Boards()});
    scratch.SaveSettings(std::to_string(static_cast<int>(server.NextResult().second)));
    scratch.FillCache(kManyThreads * 3 / 10);

    const std::string folder = std::filesystem::path(self).parent_path().string();
    const Start empty = MeasureStart(folder + "/bench_empty_window");
    Results program = RunPart(scratch.Bench(), {"program"});
    const auto add = [&](const char* what, const char* result, const char* yardstick,
                         double bound) {
        table.Add(what, "ms", program[result], document[yardstick], Compare::kRatio, bound);
    };
    add("open a thread of 1,000 posts from the network", "network", "warm", 1 / 6.0);
    add("open a thread of 1,000 posts from the cache", "cache", "warm", 1 / 9.0);
    add("open a board of 1,000 threads, 300 cached", "board", "warm", 1 / 5.0);
    add("open the first thread after the start", "cold", "cold", 1 / 4.0);
    table.Add("memory with a thread open (yardstick: empty window)", "MB",
              program["memory"] / kMegabyte, empty.size, Compare::kDifference, 24);

    const Start start = MeasureStart(scratch.Itamori());
    table.Add("start (yardstick: empty window)", "ms", start.time, empty.time, Compare::kRatio,
              2.5);
    table.Add("memory after the start (yardstick: empty window)", "MB", start.size, empty.size,
              Compare::kDifference, 12);
    printf("wake-ups in two idle seconds: %ld\n", start.wakeUps);
    CompareGate(table, self, scratch, program["network"]);
}

int RunAll() {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    Table table;
    CompareCodec(table, self);
    Results document = RunPart(self, {"document", "1000"});
    CompareLayout(table, self, document);
    CompareProgram(table, self, document);
    return table.AllMet() ? 0 : 1;
}

} // namespace

void PrintResult(const char* name, double value) {
    printf("%s %.6f\n", name, value);
    fflush(stdout);
}

int main(int argc, char** argv) {
    const std::map<std::string, int (*)(const Arguments&)> parts = {
        {"codec", RunCodec},  {"layout", RunLayout},           {"document", RunDocument},
        {"serve", RunServer}, {"serve-today", RunTodayServer}, {"program", RunProgram},
    };
    if (argc == 1)
        return RunAll();
    const auto part = parts.find(argv[1]);
    if (part == parts.end()) {
        fprintf(stderr, "usage: %s\n", argv[0]);
        return 2;
    }
    return part->second(Arguments(argv + 2, argv + argc));
}
