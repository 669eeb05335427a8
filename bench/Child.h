#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

// Another program, run with nothing on its standard error. Killed when it goes.
class Child {
public:
    explicit Child(const std::vector<std::string>& command);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // The results it prints, "name value" a line: the next one, or all up to its end.
    std::pair<std::string, double> NextResult();
    std::map<std::string, double> AllResults();

    // Waits until it has used no processor time for a second.
    void WaitUntilIdle() const;
    size_t SetSize() const;
    pid_t Process() const { return fProcess; }
    // How often its threads have woken up so far.
    long CountWakeUps() const;
    // Ends it at once; the processor time that it used, in milliseconds.
    double Kill();

private:
    pid_t fProcess = -1;
    int fInput = -1;
    FILE* fOutput = nullptr;
};
