#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// A TCP server on a free loopback port that does what no library would: it reads one request from
// each connection, as it comes, and then follows a script byte for byte.
//
//   RawServer server({Reply("HTTP/1.1 200 OK\r\n\r\nabc")});
//   server.Port(); server.WaitForRequest();
//
// Connection n follows script n, and the last script serves all that come after. A request ends
// with its empty line and as many bytes as its Content-Length says.
class RawServer {
public:
    // What happens to one connection after its request has been read.
    struct Script {
        std::string bytes;
        enum class End {
            kClose,      // an orderly end
            kReset,      // the peer gets "connection reset"
            kStall,      // silent, until the peer or the server goes
            kEndlessLine // "x" without end, until the peer goes
        } end = End::kClose;
        bool waitsForRequest = true; // false: the script begins at once
    };
    static Script Reply(std::string bytes) { return {std::move(bytes), Script::End::kClose, true}; }
    // Only the first `count` bytes, then the end.
    static Script CutAfter(size_t count, const std::string& bytes,
                           Script::End end = Script::End::kClose) {
        return {bytes.substr(0, count), end, true};
    }
    static Script Reset(std::string bytes = "") {
        return {std::move(bytes), Script::End::kReset, true};
    }
    static Script Stall(std::string bytes = "") {
        return {std::move(bytes), Script::End::kStall, true};
    }
    static Script EndlessLine(std::string head) {
        return {std::move(head), Script::End::kEndlessLine, true};
    }

    explicit RawServer(std::vector<Script> scripts);
    ~RawServer(); // ends every connection
    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    int Port() const { return fPort; }
    std::string PortText() const { return std::to_string(fPort); }
    // The requests that have come whole, byte for byte.
    std::vector<std::string> Requests() const;
    size_t CountConnections() const { return fConnections; }
    // The request number `index`, waited for; "" when none comes within a minute.
    std::string WaitForRequest(size_t index = 0) const;

private:
    void _Serve();
    void _Handle(int connection, const Script& script);
    std::string _ReadRequest(int connection);
    bool _Write(int connection, const std::string& bytes);
    void _CloseOrderly(int connection);
    void _StallUntilGone(int connection);

    const std::vector<Script> fScripts;
    int fListener = -1;
    int fPort = 0;
    std::atomic<bool> fIsEnding{false};
    std::atomic<size_t> fConnections{0};
    mutable std::mutex fMutex;
    mutable std::condition_variable fChanged;
    // Guarded by fMutex
    std::vector<std::string> fRequests;
    std::vector<std::thread> fHandlers; // serving thread only
    std::thread fThread;
};

// A loopback port on which nobody listens.
int freePort();
