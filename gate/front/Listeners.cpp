#include "front/Listeners.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace gate {

namespace {

constexpr int kFirstAdopted = 3;
constexpr int kWaiting = 1024; // beyond them a client tries again after a second or more

// The port that a socket is bound to, or −1 when it is not on the loopback.
int LoopbackPort(int handle) {
    sockaddr_storage address = {};
    socklen_t size = sizeof(address);
    if (getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        return -1;
    if (address.ss_family == AF_INET) {
        const auto& v4 = reinterpret_cast<const sockaddr_in&>(address);
        return ntohl(v4.sin_addr.s_addr) >> 24 == 127 ? ntohs(v4.sin_port) : -1;
    }
    const auto& v6 = reinterpret_cast<const sockaddr_in6&>(address);
    return address.ss_family == AF_INET6 && IN6_IS_ADDR_LOOPBACK(&v6.sin6_addr)
               ? ntohs(v6.sin6_port)
               : -1;
}

int Listen(const sockaddr* address, socklen_t size) {
    const int handle = socket(address->sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int yes = 1;
    if (handle >= 0 && setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes)) == 0 &&
        (address->sa_family == AF_INET ||
         setsockopt(handle, IPPROTO_IPV6, IPV6_V6ONLY, &yes, sizeof(yes)) == 0) &&
        bind(handle, address, size) == 0 && listen(handle, kWaiting) == 0)
        return handle;
    const int error = errno;
    close(handle);
    errno = error;
    return -1;
}

} // namespace

Listeners::~Listeners() {
    for (int handle : fHandles)
        close(handle);
}

bool Listeners::Adopt(std::string* error) {
    const char* process = getenv("LISTEN_PID");
    const char* count = getenv("LISTEN_FDS");
    if (process == nullptr || count == nullptr || strtol(process, nullptr, 10) != getpid())
        return false;
    for (int handle = kFirstAdopted; handle < kFirstAdopted + strtol(count, nullptr, 10);
         handle++) {
        fPort = LoopbackPort(handle);
        if (fPort < 0) {
            *error = "the socket handed over is not on the loopback";
            return false;
        }
        fcntl(handle, F_SETFD, FD_CLOEXEC);
        fcntl(handle, F_SETFL, fcntl(handle, F_GETFL) | O_NONBLOCK);
        fHandles.push_back(handle);
    }
    return !fHandles.empty();
}

bool Listeners::Open(int port, std::string* error) {
    sockaddr_in v4 = {};
    v4.sin_family = AF_INET;
    v4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    v4.sin_port = htons(static_cast<in_port_t>(port));
    const int first = Listen(reinterpret_cast<sockaddr*>(&v4), sizeof(v4));
    if (first < 0) {
        *error = "port " + std::to_string(port) + ": " + strerror(errno);
        return false;
    }
    fHandles.push_back(first);
    fPort = LoopbackPort(first);
    sockaddr_in6 v6 = {};
    v6.sin6_family = AF_INET6;
    v6.sin6_addr = in6addr_loopback;
    v6.sin6_port = htons(static_cast<in_port_t>(fPort));
    if (const int second = Listen(reinterpret_cast<sockaddr*>(&v6), sizeof(v6)); second >= 0)
        fHandles.push_back(second);
    return true;
}

} // namespace gate
