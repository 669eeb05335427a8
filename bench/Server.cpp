#include "Parts.h"
#include "Scratch.h"

#include "server/DemoServer.h"

#include <cstdio>

int RunServer(const Arguments& arguments) {
    DemoServer server;
    std::string error;
    if (!server.LoadBoards(arguments[0], &error) || !server.Start()) {
        fprintf(stderr, "bench: the server can't start: %s\n", error.c_str());
        return 1;
    }
    server.AddBoard(kManyFolder, kManyThreads);
    PrintResult("port", server.Port());
    while (getchar() != EOF) {
    }
    return 0;
}
