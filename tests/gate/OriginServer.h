#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

inline std::string HeaderOf(const std::string& message, const std::string& name);

// A board server on a loopback port: each request, as it came, is answered with the bytes that the
// script gives for it, and the connection closed. A script may run until the server's end: what it
// refers to must live as long.
class OriginServer {
public:
    // Given for an answer: nothing is sent, and the connection stays until the client closes it.
    static constexpr const char* kSilence = "(silence)";
    // Within an answer: waits there until told to go on.
    static constexpr std::string_view kHold = "<wait here>";
    using Script = std::function<std::string(const std::string& request)>;

    explicit OriginServer(Script script) : fScript(std::move(script)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        bind(fListener, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(fListener, reinterpret_cast<sockaddr*>(&address), &size);
        listen(fListener, 64);
        fPort = ntohs(address.sin_port);
        fThread = std::thread([this] { _Serve(); });
    }
    ~OriginServer() {
        fIsEnding = true;
        fThread.join();
        close(fListener);
    }
    OriginServer(const OriginServer&) = delete;
    OriginServer& operator=(const OriginServer&) = delete;

    int Port() const { return fPort; }
    std::string Address() const { return "127.0.0.1:" + std::to_string(fPort); }
    void Become(Script script) {
        std::lock_guard guard(fMutex);
        fScript = std::move(script);
    }
    void GoOn() { fGoes++; }
    std::vector<std::string> Requests() const {
        std::lock_guard guard(fMutex);
        return fRequests;
    }

private:
    void _Serve() {
        std::vector<std::thread> handlers;
        while (!fIsEnding) {
            pollfd wait = {fListener, POLLIN, 0};
            if (poll(&wait, 1, 10) > 0)
                handlers.emplace_back(
                    [this, handle = accept(fListener, nullptr, nullptr)] { _Handle(handle); });
        }
        for (std::thread& handler : handlers)
            handler.join();
    }
    void _Handle(int handle) {
        std::string request;
        while (request.find("\r\n\r\n") == std::string::npos && _Receive(handle, &request)) {
        }
        const size_t end = request.find("\r\n\r\n");
        const size_t whole =
            end == std::string::npos
                ? 0
                : end + 4 +
                      strtoul(HeaderOf(request.substr(0, end + 2), "Content-Length").c_str(),
                              nullptr, 10);
        while (request.size() < whole && _Receive(handle, &request)) {
        }
        Script script;
        {
            std::lock_guard guard(fMutex);
            fRequests.push_back(request);
            script = fScript;
        }
        std::string reply = request.empty() ? "" : script(request);
        if (reply == kSilence) {
            _WaitForClient(handle);
            reply.clear();
        }
        int holds = 0;
        for (size_t at = 0; at < reply.size() && !fIsEnding;) {
            const size_t stop = std::min(reply.find(kHold, at), reply.size());
            if (stop == at) {
                while (fGoes <= holds && !fIsEnding)
                    poll(nullptr, 0, 5);
                at += kHold.size();
                holds++;
                continue;
            }
            const ssize_t count = send(handle, reply.data() + at, stop - at, MSG_NOSIGNAL);
            if (count <= 0)
                break;
            at += static_cast<size_t>(count);
        }
        shutdown(handle, SHUT_WR);
        close(handle);
    }

    // Web browsers open connections that they never use: nobody may wait for these at the end.
    void _WaitForClient(int handle) const {
        pollfd wait = {handle, POLLIN, 0};
        while (!fIsEnding && poll(&wait, 1, 10) == 0) {
        }
    }
    bool _Receive(int handle, std::string* request) const {
        _WaitForClient(handle);
        char bytes[4096];
        const ssize_t count = fIsEnding ? 0 : recv(handle, bytes, sizeof(bytes), 0);
        if (count > 0)
            request->append(bytes, static_cast<size_t>(count));
        return count > 0;
    }

    const int fListener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int fPort = 0;
    std::atomic<bool> fIsEnding{false};
    std::atomic<int> fGoes{0}; // holds that are over
    mutable std::mutex fMutex;
    // Guarded by fMutex
    Script fScript;
    std::vector<std::string> fRequests;
    std::thread fThread;
};

// An answer with its length.
inline std::string Reply(const std::string& status, const std::string& body,
                         const std::string& headers = "") {
    return "HTTP/1.1 " + status + "\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// The value of a header of a request or an answer; "" without.
inline std::string HeaderOf(const std::string& message, const std::string& name) {
    for (size_t at = message.find("\r\n"); at != std::string::npos && at + 2 < message.size();
         at = message.find("\r\n", at + 2)) {
        if (strncasecmp(message.c_str() + at + 2, (name + ":").c_str(), name.size() + 1) != 0)
            continue;
        const size_t start = message.find_first_not_of(' ', at + 3 + name.size());
        return message.substr(start, message.find("\r\n", start) - start);
    }
    return {};
}

// The target of a request.
inline std::string PathOf(const std::string& request) {
    const size_t start = request.find(' ') + 1;
    return request.substr(start, request.find(' ', start) - start);
}
