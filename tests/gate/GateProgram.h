#pragma once

#include "gate/OriginServer.h"
#include "support/ScratchFolder.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// The gate's own program, beside this one, with folders of its own.
class GateProgram {
public:
    GateProgram(const ScratchFolder& folder, std::vector<std::string> words, int listener = -1) {
        fErrors = folder / "errors";
        std::filesystem::remove(fErrors); // of another one
        fProcess = fork();
        if (fProcess != 0)
            return;
        prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that crashes leaves nothing behind
        const std::string file =
            std::filesystem::read_symlink("/proc/self/exe").parent_path() / "itamori-gate";
        setenv("XDG_DATA_HOME", folder.Path().c_str(), 1);
        if (listener >= 0) {
            dup2(listener, 3);
            setenv("LISTEN_FDS", "1", 1);
            setenv("LISTEN_PID", std::to_string(getpid()).c_str(), 1);
        }
        const int errors = open(fErrors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(errors, 1);
        dup2(errors, 2);
        std::vector<char*> pointers{const_cast<char*>(file.c_str())};
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        execv(file.c_str(), pointers.data());
        _exit(127);
    }
    ~GateProgram() {
        if (fProcess > 0)
            Signal(SIGKILL);
    }
    GateProgram(const GateProgram&) = delete;
    GateProgram& operator=(const GateProgram&) = delete;

    // Settings for a server that is a family of its own.
    static std::string Config(const OriginServer& origin) {
        return "[[family]]\nname = \"test\"\nkind = \"dat\"\nscheme = \"http\"\nhosts = "
               "[\"*.example\"]\n"
               "reach = \"" +
               origin.Address() + "\"\n";
    }

    int Signal(int number) {
        kill(fProcess, number);
        return Wait();
    }
    int Wait() {
        int status = 0;
        waitpid(fProcess, &status, 0);
        fProcess = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::string Errors() const {
        std::ifstream file(fErrors);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // The port it tells once it listens.
    int WaitForPort() const {
        const std::string mark = "localhost:";
        for (int i = 0; i < 3000; i++) {
            const std::string errors = Errors();
            const size_t at = errors.find(mark);
            if (at != std::string::npos && errors.ends_with('\n'))
                return atoi(errors.c_str() + at + mark.size());
            poll(nullptr, 0, 10);
        }
        return -1;
    }

private:
    pid_t fProcess;
    std::string fErrors;
};
