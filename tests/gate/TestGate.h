#pragma once

#include "gate/OriginServer.h"
#include "support/ScratchFolder.h"

#include "boards/Boards.h"
#include "front/Listeners.h"
#include "front/Server.h"
#include "post/Confirmations.h"
#include "post/PostRoom.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

// What a gate answered.
struct GateAnswer {
    int status = 0;
    std::string reason, head, body;

    std::string Header(const std::string& name) const { return HeaderOf(head, name); }
};

// Sends bytes to a port of this machine and reads until the end. `isAll`: the sender's end is told.
inline GateAnswer Exchange(int port, const std::string& bytes, bool isAll = false) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    std::string all;
    if (connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0) {
        send(handle, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (isAll)
            shutdown(handle, SHUT_WR);
        char piece[4096];
        for (ssize_t count; (count = recv(handle, piece, sizeof(piece), 0)) > 0;)
            all.append(piece, static_cast<size_t>(count));
    }
    close(handle);
    GateAnswer answer;
    const size_t end = all.find("\r\n\r\n");
    if (end == std::string::npos)
        return answer;
    answer.head = all.substr(0, end + 2);
    answer.body = all.substr(end + 4);
    answer.status = atoi(answer.head.c_str() + 9);
    answer.reason = answer.head.substr(13, answer.head.find("\r\n") - 13);
    return answer;
}

// Sends a post to a gate as the program does.
inline GateAnswer PostTo(int port, const std::string& body,
                         const std::string& path = "/test/bbs.cgi",
                         const std::string& host = "board.example") {
    return Exchange(port, "POST http://" + host + path + " HTTP/1.0\r\nHost: " + host +
                              "\r\nReferer: http://board.example/news/index.html\r\n"
                              "Cookie: NAME=&MAIL=\r\nUser-Agent: program\r\n"
                              "Content-type: application/x-www-form-urlencoded\r\n"
                              "Content-length: " +
                              std::to_string(body.size()) + "\r\n\r\n" + body);
}

// A whole gate before a server of boards: the family "test" is *.example, by plain HTTP.
class TestGate {
public:
    explicit TestGate(OriginServer* origin) : TestGate(origin, {}) {}
    TestGate(OriginServer* origin, const std::function<void(gate::Settings*)>& change) {
        gate::Family family;
        family.name = "test";
        family.hosts = {"*.example"};
        family.renamed = {{"old.test", "board.example"}};
        family.usesTls = false;
        family.reach = origin != nullptr ? origin->Address() : "";
        family.archives = {{"https://{host}/{board}/oyster/{key4}/{key}.dat", false},
                           {"https://{host}/test/read.cgi/{board}/{key}/1-", true}};
        fSettings.families = {family};
        fSettings.portalHosts = {"portal.test"};
        fSettings.listSeconds = 0;
        if (change)
            change(&fSettings);
        Start();
    }
    ~TestGate() { End(); }
    TestGate(const TestGate&) = delete;
    TestGate& operator=(const TestGate&) = delete;

    void Start() {
        std::string error;
        fListeners = std::make_unique<gate::Listeners>();
        if (!fListeners->Open(0, &error))
            ADD_FAILURE() << error;
        fStore = std::make_unique<gate::Store>(fFolder / "gate.db");
        fOrigin = std::make_unique<gate::Origin>(fSettings);
        const gate::Shop shop{fSettings, *fOrigin, *fStore};
        fPageListeners = std::make_unique<gate::Listeners>();
        if (!gate::OpenPagePort(fPageListeners.get(), fStore.get(), &error))
            ADD_FAILURE() << error;
        fCookies = std::make_unique<gate::CookieShelf>(fSettings, fStore.get());
        fPosts = std::make_unique<gate::PostRoom>(
            shop, fCookies.get(), [this](const std::string& address) { return _Open(address); },
            PagePort());
        fPages = std::make_unique<gate::Confirmations>(fPosts.get());
        fPageServer = std::make_unique<gate::Server>(fSettings, fPageListeners.get(), fPages.get(),
                                                     &fJournal);
        fPageThread = std::thread([this] { fPageServer->Run(); });
        fBoards = std::make_unique<gate::Boards>(shop, &fJournal, fCookies.get(), fPosts.get());
        fServer =
            std::make_unique<gate::Server>(fSettings, fListeners.get(), fBoards.get(), &fJournal);
        fThread = std::thread([this] { fServer->Run(); });
    }
    // What it keeps stays for the next start.
    void End() {
        if (!fThread.joinable())
            return;
        fServer->Stop();
        fPageServer->Stop();
        fThread.join();
        fPageThread.join();
        fOrigin->End();
        fServer.reset();
        fPageServer.reset();
        fBoards.reset();
        fPages.reset();
        fPosts.reset();
        fCookies.reset();
        fPageListeners.reset();
        fOrigin.reset();
        fStore.reset();
        fListeners.reset();
    }

    int Port() const { return fListeners->Port(); }
    std::string PortText() const { return std::to_string(Port()); }
    gate::Settings& Settings() { return fSettings; }
    gate::Store& Store() { return *fStore; }
    gate::CookieShelf& Cookies() { return *fCookies; }
    int PagePort() const { return fPageListeners->Port(); }
    // What was opened in the user's web browser, where there is one.
    std::vector<std::string> Opened() const {
        std::lock_guard guard(fMutex);
        return fOpened;
    }
    void HaveBrowser(bool hasBrowser) { fHasBrowser = hasBrowser; }

    // A request as the program sends it.
    GateAnswer Get(const std::string& path, const std::string& headers = "",
                   const std::string& host = "board.example") {
        return Exchange(Port(), "GET http://" + host + path + " HTTP/1.1\r\nHost: " + host +
                                    "\r\nUser-Agent: Monazilla/1.00 (test)\r\n"
                                    "Connection: close\r\n" +
                                    headers + "\r\n");
    }
    // Of a copy that holds `size` bytes.
    GateAnswer GetRest(const std::string& path, size_t size,
                       const std::string& since = "Thu, 01 Jan 1970 00:00:00 GMT") {
        return Get(path, "If-Modified-Since: " + since +
                             "\r\nRange: bytes=" + std::to_string(size) + "-\r\n");
    }

    // A post as the program sends it.
    GateAnswer Post(const std::string& body, const std::string& path = "/test/bbs.cgi",
                    const std::string& host = "board.example") {
        return PostTo(Port(), body, path, host);
    }

private:
    bool _Open(const std::string& address) {
        std::lock_guard guard(fMutex);
        fOpened.push_back(address);
        return fHasBrowser;
    }

    ScratchFolder fFolder;
    gate::Settings fSettings;
    gate::Journal fJournal;
    std::unique_ptr<gate::Listeners> fListeners;
    std::unique_ptr<gate::Store> fStore;
    std::unique_ptr<gate::Origin> fOrigin;
    std::unique_ptr<gate::Listeners> fPageListeners;
    std::unique_ptr<gate::CookieShelf> fCookies;
    std::unique_ptr<gate::PostRoom> fPosts;
    std::unique_ptr<gate::Confirmations> fPages;
    std::unique_ptr<gate::Server> fPageServer;
    std::thread fPageThread;
    std::unique_ptr<gate::Boards> fBoards;
    std::unique_ptr<gate::Server> fServer;
    std::thread fThread;
    std::atomic<bool> fHasBrowser{true};
    mutable std::mutex fMutex;
    std::vector<std::string> fOpened; // guarded by fMutex
};
