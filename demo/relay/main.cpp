#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// Puts two proxies behind one port: demo_relay PORT OTHER HOST… sends requests for the hosts named,
// and all below them, to the proxy at OTHER and the rest to that at PORT, byte for byte. It writes
// the port it listens on as one line to standard output and runs until it is sent a signal to end.

namespace {

constexpr size_t kLongestTarget = 8192;
constexpr int kPatience = 60000; // milliseconds without a byte

struct Route {
    int port, other;
    std::vector<std::string> hosts; // that go to the other
};

sockaddr_in loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    return address;
}

int connectTo(int port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    if (connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0)
        return handle;
    close(handle);
    return -1;
}

bool sendAll(int handle, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = send(handle, bytes.data(), bytes.size(), 0);
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

// Of "GET http://HOST/path …".
std::string_view hostOf(std::string_view request) {
    constexpr std::string_view kScheme = " http://";
    const size_t start = request.find(kScheme);
    if (start == request.npos)
        return {};
    request.remove_prefix(start + kScheme.size());
    return request.substr(0, request.find_first_of("/: \r"));
}

int portFor(const Route& route, std::string_view host) {
    const auto isBelow = [host](const std::string& name) {
        return host == name || host.ends_with("." + name);
    };
    return std::any_of(route.hosts.begin(), route.hosts.end(), isBelow) ? route.other : route.port;
}

// Passes on what has come one way; at its end tells the other side. False when nothing more comes.
bool pass(int from, int to) {
    std::array<char, 16384> bytes;
    const ssize_t count = recv(from, bytes.data(), bytes.size(), 0);
    if (count > 0 && sendAll(to, {bytes.data(), static_cast<size_t>(count)}))
        return true;
    shutdown(to, SHUT_WR);
    return false;
}

void passBothWays(int client, int server) {
    std::array<pollfd, 2> ends = {{{client, POLLIN, 0}, {server, POLLIN, 0}}};
    while (ends[1].fd >= 0 && poll(ends.data(), ends.size(), kPatience) > 0) {
        for (size_t i = 0; i < ends.size(); i++) {
            if (ends[i].fd >= 0 && ends[i].revents != 0 &&
                !pass(ends[i].fd, i == 0 ? server : client))
                ends[i].fd = -1;
        }
    }
}

void serve(int client, const Route& route) {
    std::string start;
    std::array<char, 4096> bytes;
    while (start.find('\n') == start.npos && start.size() < kLongestTarget) {
        const ssize_t count = recv(client, bytes.data(), bytes.size(), 0);
        if (count <= 0)
            break;
        start.append(bytes.data(), static_cast<size_t>(count));
    }
    const int server = connectTo(portFor(route, hostOf(start)));
    if (server >= 0 && sendAll(server, start))
        passBothWays(client, server);
    close(server);
    close(client);
}

int listenAnywhere(int* port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof(address);
    if (bind(handle, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        listen(handle, SOMAXCONN) != 0 ||
        getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return -1;
    *port = ntohs(address.sin_port);
    return handle;
}

} // namespace

int main(int count, char** words) {
    if (count < 4) {
        fprintf(stderr, "usage: %s PORT OTHER HOST...\n", words[0]);
        return 2;
    }
    const Route route = {atoi(words[1]), atoi(words[2]), {words + 3, words + count}};
    signal(SIGPIPE, SIG_IGN);
    int port = 0;
    const int listener = listenAnywhere(&port);
    if (listener < 0) {
        perror("demo_relay");
        return 1;
    }
    printf("%d\n", port);
    fflush(stdout);
    for (;;) {
        const int client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0)
            std::thread(serve, client, std::cref(route)).detach();
    }
}
