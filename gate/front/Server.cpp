#include "front/Server.h"

#include "front/Doorkeeper.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <thread>

namespace gate {

namespace {

constexpr size_t kLongestHead = 16 << 10;
constexpr long kLongestBody = 256 << 10;
constexpr int kHeadPatience = 8000; // milliseconds until a request must have come
constexpr int kLastPatience = 1000; // until a client must have closed its end
constexpr size_t kMostIgnored = 1 << 20;

int64_t Now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Closing with unread input would reset the connection and take the answer with it.
void CloseOrderly(int connection) {
    shutdown(connection, SHUT_WR);
    std::array<char, 4096> ignored;
    const int64_t until = Now() + kLastPatience;
    for (size_t total = 0; total < kMostIgnored && Now() < until;) {
        pollfd wait = {connection, POLLIN, 0};
        if (poll(&wait, 1, static_cast<int>(until - Now())) <= 0)
            break;
        const ssize_t count = recv(connection, ignored.data(), ignored.size(), 0);
        if (count <= 0)
            break;
        total += static_cast<size_t>(count);
    }
    close(connection);
}

// Without what is searched, and without the secret that a path of the gate's own begins with.
std::string NotedPath(const Request& request) {
    constexpr size_t kSecret = 32;
    const std::string path = request.path.substr(0, request.path.find('?'));
    const bool isSecret = !request.isAbsolute && path.size() > kSecret &&
                          path.find_first_not_of("0123456789abcdef", 1) > kSecret;
    return isSecret ? "/…" + path.substr(kSecret + 1) : path;
}

Journal::Entry EntryOf(const Request& request, const Responder& responder, int64_t milliseconds) {
    const std::string path = NotedPath(request);
    const std::string method = request.method.empty() ? "-" : request.method;
    return {time(nullptr),      method + " " + request.host + path,
            responder.Status(), responder.Reason(),
            responder.Sent(),   milliseconds};
}

} // namespace

Server::Server(const Settings& settings, Listeners* listeners, Answerer* answerer, Journal* journal)
    : fSettings(settings), fListeners(listeners), fAnswerer(answerer), fJournal(journal),
      fStop(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), fRoom(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
}

Server::~Server() {
    Stop();
    std::unique_lock guard(fMutex);
    fChanged.wait(guard, [this] { return fConnections == 0; });
    close(fStop);
    close(fRoom);
}

void Server::Stop() {
    eventfd_write(fStop, 1);
}

bool Server::_IsFull() {
    std::lock_guard guard(fMutex);
    return fConnections >= fSettings.connections;
}

// While as many are served as may be, only the end and a connection's end are waited for.
void Server::Run() {
    std::vector<pollfd> waits = {{fStop, POLLIN, 0}, {fRoom, POLLIN, 0}};
    const size_t own = waits.size();
    for (int handle : fListeners->Handles())
        waits.push_back({handle, POLLIN, 0});
    for (;;) {
        const size_t count = _IsFull() ? own : waits.size();
        if (poll(waits.data(), count, -1) < 0)
            continue;
        if (waits[0].revents != 0)
            return;
        eventfd_t ignored = 0;
        eventfd_read(fRoom, &ignored);
        for (size_t i = own; i < count; i++) {
            if (waits[i].revents != 0 && !_IsFull())
                _TakeConnection(waits[i].fd);
        }
    }
}

void Server::_TakeConnection(int listener) {
    const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0)
        return;
    std::lock_guard guard(fMutex);
    fConnections++;
    std::thread([this, connection] {
        _Serve(connection);
        std::lock_guard inner(fMutex);
        fConnections--;
        eventfd_write(fRoom, 1);
        fChanged.notify_all(); // under the lock: the waiting end may take all this away
    }).detach();
}

void Server::_Serve(int connection) {
    const int64_t start = Now();
    Request request;
    Responder responder(connection, fStop);
    if (PeerUser(connection) != geteuid())
        responder.Refuse(403, "別の利用者は使えません");
    else if (_ReadRequest(connection, &request, &responder))
        fAnswerer->Answer(request, &responder);
    fJournal->Add(EntryOf(request, responder, Now() - start));
    CloseOrderly(connection);
}

bool Server::_ReadMore(int connection, std::string* bytes, Responder* responder, int64_t until) {
    std::array<pollfd, 2> waits = {{{connection, POLLIN, 0}, {fStop, POLLIN, 0}}};
    const int64_t left = until - Now();
    if (left <= 0 || poll(waits.data(), waits.size(), static_cast<int>(left)) <= 0) {
        responder->Refuse(408, "要求が終わりません");
        return false;
    }
    if (waits[1].revents != 0)
        return false;
    std::array<char, 4096> piece;
    const ssize_t count = recv(connection, piece.data(), piece.size(), 0);
    if (count <= 0) {
        responder->Refuse(400, "要求が途中で終わりました");
        return false;
    }
    bytes->append(piece.data(), static_cast<size_t>(count));
    return true;
}

bool Server::_ReadRequest(int connection, Request* request, Responder* responder) {
    const int64_t until = Now() + kHeadPatience;
    std::string bytes;
    size_t end = std::string::npos;
    while ((end = bytes.find("\r\n\r\n")) == std::string::npos && bytes.size() <= kLongestHead) {
        if (!_ReadMore(connection, &bytes, responder, until))
            return false;
    }
    if (end > kLongestHead) {
        responder->Refuse(431, "要求のヘッダが長すぎます");
        return false;
    }
    std::string reason;
    int status = ParseRequestHead(std::string_view(bytes).substr(0, end), request, &reason);
    if (request->method == "HEAD")
        responder->LeaveOutBody();
    if (status == 0)
        status = JudgeRequest(*request, fSettings, fListeners->Port(), &reason);
    if (status != 0) {
        responder->Refuse(status, reason);
        return false;
    }
    request->body = bytes.substr(end + 4);
    return _ReadBody(connection, request, responder, until);
}

bool Server::_ReadBody(int connection, Request* request, Responder* responder, int64_t until) {
    const long length = BodyLength(*request);
    if (length > kLongestBody) {
        responder->Refuse(413, "送る内容が長すぎます");
        return false;
    }
    while (request->body.size() < static_cast<size_t>(length)) {
        if (!_ReadMore(connection, &request->body, responder, until))
            return false;
    }
    request->body.resize(static_cast<size_t>(length));
    return true;
}

} // namespace gate
