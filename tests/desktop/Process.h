#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

// A program that runs beside the test, with its standard output and errors in files. Ended and
// waited for when it goes.
class Process {
public:
    using Environment = std::map<std::string, std::string>;

    // The first word is the program, looked for along PATH; `environment` adds to the test's own.
    explicit Process(const std::vector<std::string>& words, const Environment& environment = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // The first line that it has written, without its line feed; empty if none comes.
    std::string FirstLine() const;
    std::string Errors() const;
    // The exit status, or 128 and the signal; −1 if it does not end in time, and then it is killed.
    int Wait();

private:
    std::string fFolder;
    pid_t fProcess = -1;
};

void Pause(int milliseconds);
// The caller removes it.
std::string MakeScratchFolder();

// Tries it over and over; false after half a minute.
template <typename Condition>
bool Eventually(Condition condition) {
    for (int tries = 0; tries < 3000; tries++) {
        if (condition())
            return true;
        Pause(10);
    }
    return false;
}
