#include "support/RawServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

constexpr int kLookInterval = 20; // milliseconds between looks at whether the server ends

// A bound socket on a port that the system chooses.
int bindLoopback(int* port) {
    int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    if (handle < 0 || bind(handle, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw std::runtime_error("no loopback socket");
    *port = ntohs(address.sin_port);
    return handle;
}

bool waitForInput(int handle) {
    pollfd wait = {handle, POLLIN, 0};
    return poll(&wait, 1, kLookInterval) > 0;
}

// The whole length of a request whose head is in, 0 while it is not.
size_t requestLength(const std::string& request) {
    size_t end = request.find("\r\n\r\n");
    if (end == std::string::npos)
        return 0;
    size_t length = 0;
    for (size_t line = 0; line < end; line = request.find("\r\n", line) + 2) {
        const char* const kName = "Content-Length:";
        if (strncasecmp(request.c_str() + line, kName, strlen(kName)) == 0)
            length = strtoul(request.c_str() + line + strlen(kName), nullptr, 10);
    }
    return end + 4 + length;
}

// The peer sees a reset instead of an end.
void resetOnClose(int connection) {
    linger now = {1, 0};
    setsockopt(connection, SOL_SOCKET, SO_LINGER, &now, sizeof(now));
}

} // namespace

RawServer::RawServer(std::vector<Script> scripts) : fScripts(std::move(scripts)) {
    fListener = bindLoopback(&fPort);
    listen(fListener, 16);
    fThread = std::thread([this] { _Serve(); });
}

RawServer::~RawServer() {
    fIsEnding = true;
    fThread.join();
    close(fListener);
}

std::vector<std::string> RawServer::Requests() const {
    std::lock_guard guard(fMutex);
    return fRequests;
}

std::string RawServer::WaitForRequest(size_t index) const {
    std::unique_lock guard(fMutex);
    auto isThere = [&] { return fRequests.size() > index; };
    return fChanged.wait_for(guard, std::chrono::seconds(60), isThere) ? fRequests[index] : "";
}

void RawServer::_Serve() {
    while (!fIsEnding) {
        if (!waitForInput(fListener))
            continue;
        int connection = accept4(fListener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0)
            continue;
        const Script& script = fScripts[std::min(fConnections++, fScripts.size() - 1)];
        fHandlers.emplace_back([this, connection, &script] { _Handle(connection, script); });
    }
    for (std::thread& handler : fHandlers)
        handler.join();
}

void RawServer::_Handle(int connection, const Script& script) {
    std::string request = script.waitsForRequest ? _ReadRequest(connection) : "";
    if (!request.empty()) {
        std::lock_guard guard(fMutex);
        fRequests.push_back(request);
        fChanged.notify_all();
    }
    bool isAlive = _Write(connection, script.bytes);
    if (script.end == Script::End::kReset)
        resetOnClose(connection);
    else if (script.end == Script::End::kStall)
        _StallUntilGone(connection);
    while (script.end == Script::End::kEndlessLine && isAlive && !fIsEnding)
        isAlive = _Write(connection, std::string(4096, 'x'));
    if (script.end == Script::End::kClose)
        _CloseOrderly(connection);
    close(connection);
}

std::string RawServer::_ReadRequest(int connection) {
    std::string request;
    while (!fIsEnding && (requestLength(request) == 0 || request.size() < requestLength(request))) {
        if (!waitForInput(connection))
            continue;
        char bytes[4096];
        ssize_t count = recv(connection, bytes, sizeof(bytes), 0);
        if (count <= 0)
            return {};
        request.append(bytes, static_cast<size_t>(count));
    }
    return request;
}

bool RawServer::_Write(int connection, const std::string& bytes) {
    for (size_t done = 0; done < bytes.size() && !fIsEnding;) {
        pollfd wait = {connection, POLLOUT, 0};
        if (poll(&wait, 1, kLookInterval) == 0)
            continue;
        ssize_t count = send(connection, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (count < 0)
            return false;
        done += static_cast<size_t>(count);
    }
    return true;
}

// The peer gets all bytes before it sees the end: closing with unread input would reset it.
void RawServer::_CloseOrderly(int connection) {
    shutdown(connection, SHUT_WR);
    _StallUntilGone(connection);
}

void RawServer::_StallUntilGone(int connection) {
    char ignored[256];
    while (!fIsEnding) {
        if (waitForInput(connection) && recv(connection, ignored, sizeof(ignored), 0) <= 0)
            return;
    }
}

int freePort() {
    int port = 0;
    close(bindLoopback(&port));
    return port;
}
