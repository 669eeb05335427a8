#pragma once

#include "today/World.h"

#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// Boards as they are run today, on one loopback port: several hosts over TLS, by an authority of
// their own. Every call may come from any thread.
//
//   *.today.example  dat files with ranges, ETag, 304 and 416, which drop into archives; the JSON
//                    menu; bbs.cgi with cookies and a confirmation before a first post
//   rooms.example    rawmode.cgi, read_archive.cgi and write.cgi, in EUC-JP
//   town.example     offlaw.cgi and write.cgi
class TodayServer {
public:
    struct Request {
        today::Question question;
        int status = 0;
        size_t bytes = 0; // of the body that went out
    };

    TodayServer();
    ~TodayServer(); // stops it
    TodayServer(const TodayServer&) = delete;
    TodayServer& operator=(const TodayServer&) = delete;

    bool LoadBoards(const std::string& folder, std::string* error);
    // On 127.0.0.1; port 0 takes a free one. Writes the certificate of the authority into the
    // folder, as "authority.pem".
    bool Start(const std::string& folder, std::string* error, int port = 0);
    void Stop();
    int Port() const { return fPort; }
    // What a gate needs to know to get here, as its settings say it. Where a demo server of the old
    // kind runs at `plainPort`, its menu comes before this one's.
    std::string GateSettings(int plainPort = 0) const;

    std::vector<std::string> Keys(const std::string& board) const;
    // What the server holds of a thread, as lines of a dat; "" for none.
    std::string Dat(const std::string& board, const std::string& key) const;
    // As if people had written, an owner deleted one of the posts (the first is 1), and the thread
    // had left the board. False for a thread or a post that is not there.
    bool Grow(const std::string& board, const std::string& key, int posts);
    bool Delete(const std::string& board, const std::string& key, int number);
    bool Drop(const std::string& board, const std::string& key, const today::Fall& fall);
    // The cookies that were given are refused from now on.
    void ExpireTickets();
    // From now on every post gets this error; "" ends it.
    void SetPostError(const std::string& code, const std::string& text);

    // What was asked since the start or the last ForgetRequests.
    std::vector<Request> Requests() const;
    void ForgetRequests();

private:
    struct Http; // the library's server and its handlers

    // Constant while it runs
    int fPort = 0;
    std::string fAuthority;
    mutable std::mutex fMutex;
    // Guarded by fMutex
    mutable today::World fWorld;
    std::vector<Request> fRequests;

    std::unique_ptr<Http> fHttp;
    std::thread fThread;
};
