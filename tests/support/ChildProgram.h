#pragma once

#include <string>
#include <sys/types.h>

namespace testprograms {

// This test program, run again as one of the small programs of ChildPrograms.cpp, with a settings
// folder of its own. Killed and cleaned up when it goes.
class ChildProgram {
public:
    // The executable may be a copy of this one, which then runs beside other files.
    explicit ChildProgram(const std::string& name, const std::string& settings = "",
                          const std::string& locale = "C",
                          const std::string& executable = "/proc/self/exe");
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    void Signal(int number) const;
    void Tell(const std::string& line) const; // to its standard input
    void Kill() const;
    // The exit status, or 128 and the signal; after a minute it is killed.
    int Wait();
    std::string Output() const;
    std::string Errors() const; // its standard error
    bool WaitForOutput(const std::string& text) const;
    const std::string& Settings() const { return fSettings; }

private:
    std::string fSettings;
    bool fOwnsSettings;
    std::string fFiles;  // the folder of the next two
    std::string fOutput; // takes its standard output
    std::string fErrors;
    int fInput = -1;
    pid_t fProcess = -1;
};

} // namespace testprograms

// What a test program may define: the small programs that it runs as children, by name.
__attribute__((weak)) int RunTestProgram(const char* name);
