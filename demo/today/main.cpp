#include "today/TodayServer.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

// The sample server of today as a program: bbsd-today FOLDER [PORT]. It writes
// "authority.pem" and "gate.toml", the settings of a gate that is to reach it and, for its menu,
// the demo server at PORT, into the folder, the port it listens on as one line to standard output,
// and serves until it is sent a signal to end.
int main(int count, char** words) {
    if (count != 2 && count != 3) {
        fprintf(stderr, "usage: %s FOLDER [PORT]\n", words[0]);
        return 2;
    }
    // Every thread inherits this: the signals wait for sigwait below.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    const std::filesystem::path folder = std::filesystem::absolute(words[1]);
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    TodayServer server;
    std::string error;
    if (!server.LoadBoards(TODAY_BOARDS, &error) || !server.Start(folder, &error)) {
        fprintf(stderr, "bbsd-today: %s\n", error.c_str());
        return 1;
    }
    std::ofstream settings(folder / "gate.toml");
    settings << server.GateSettings(count == 3 ? atoi(words[2]) : 0);
    settings.close();
    if (!settings) {
        fprintf(stderr, "bbsd-today: %s can't be written\n", (folder / "gate.toml").c_str());
        return 1;
    }
    printf("%d\n", server.Port());
    fflush(stdout);
    int signal = 0;
    sigwait(&ends, &signal);
    return 0;
}
