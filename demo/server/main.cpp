#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "server/DemoServer.h"

// The demo server as a program: bbsd [-p PORT] [BOARD FOLDER]. It writes the port it listens on as
// one line to standard output and serves until it is sent a signal to end.

namespace {

struct Options {
    int port = 0;
    const char* folder = DEMO_BOARDS;
};

bool parseOptions(int argc, char** argv, Options* options) {
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], "-p") == 0 && i + 1 < argc)
            options->port = atoi(argv[++i]);
        else if (argv[i][0] != '-')
            options->folder = argv[i];
        else
            return false;
    }
    return options->port >= 0 && options->port <= 65535;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parseOptions(argc, argv, &options)) {
        fprintf(stderr, "usage: %s [-p PORT] [BOARD FOLDER]\n", argv[0]);
        return 2;
    }
    // Every thread inherits this: the signals wait for sigwait below.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    DemoServer server;
    std::string error;
    if (!server.LoadBoards(options.folder, &error)) {
        fprintf(stderr, "bbsd: %s\n", error.c_str());
        return 1;
    }
    if (!server.Start(options.port)) {
        fprintf(stderr, "bbsd: port %d is not free\n", options.port);
        return 1;
    }
    printf("%d\n", server.Port());
    fflush(stdout);
    int signal = 0;
    sigwait(&ends, &signal);
    return 0;
}
