#include "Gate.h"

#include "Measure.h"
#include "Parts.h"

#include "today/TodayServer.h"

#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr useconds_t kPause = 500; // microseconds
constexpr int kTries = 20000;

sockaddr_in LocalAddress(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    return address;
}

std::string FreePort() {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = LocalAddress(0);
    socklen_t size = sizeof(address);
    bind(handle, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size);
    close(handle);
    return std::to_string(ntohs(address.sin_port));
}

bool IsTaken(const std::string& port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = LocalAddress(atoi(port.c_str()));
    const int result =
        connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    close(handle);
    return result == 0;
}

std::vector<std::string> CommandOf(const std::string& program, const std::string& port,
                                   const std::string& settings) {
    const std::string folder = std::filesystem::path(settings).parent_path();
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    return {program, "--port", port, "--config", settings};
}

} // namespace

Gate::Gate(const std::string& program, const std::string& settings)
    : fPort(FreePort()), fChild(CommandOf(program, fPort, settings)) {
    for (int i = 0; i < kTries && !IsTaken(fPort); i++)
        usleep(kPause);
    fTimeToStart = ProcessTime(fChild.Process());
}

int RunTodayServer(const Arguments& arguments) {
    TodayServer server;
    std::string error;
    if (!server.LoadBoards(arguments[0], &error) || !server.Start(arguments[1], &error)) {
        fprintf(stderr, "bench: the server of today can't start: %s\n", error.c_str());
        return 1;
    }
    std::ofstream(arguments[1] + "/gate.toml") << server.GateSettings();
    // As many authorities as a user's gate has to do with.
    std::ofstream(arguments[1] + "/authority.pem", std::ios::app)
        << std::ifstream("/etc/ssl/certs/ca-certificates.crt").rdbuf();
    PrintResult("port", server.Port());
    while (getchar() != EOF) {
    }
    return 0;
}
