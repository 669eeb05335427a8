#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "server/Board.h"

// A small BBS server on the loopback interface. It is its own proxy: a request for
// "http://any.host/path" is answered like one for "/path". Every call may come from any thread.
//
// What is served: /newbbsmenu.html, /BOARD/, /BOARD/subject.txt, /BOARD/dat/KEY.dat (Last-Modified,
// 304, 206, 416), /test/read.cgi/BOARD/KEY/, [/PREFIX]/bbs/read.cgi?BBS=…&KEY=…&START=…, and the
// posting CGIs /test/bbs.cgi and [/PREFIX]/bbs/write.cgi.
class DemoServer {
public:
    struct Request {
        std::string method;
        std::string path; // without the host
        std::string range;
        std::string ifModifiedSince;
        int status = 0;
        size_t bytes = 0; // of the body that went out
        int together = 0; // requests under way for this path as it came, itself included
    };

    DemoServer();
    ~DemoServer(); // stops it
    DemoServer(const DemoServer&) = delete;
    DemoServer& operator=(const DemoServer&) = delete;

    bool LoadBoards(const std::string& folder, std::string* error);
    // A board with so many threads of one post each, made here. The menu shows it in a category of
    // its own, at the host "many.example".
    void AddBoard(const std::string& folder, int threads, BoardKind kind = BoardKind::kDat);
    // The keys of the board's threads, in the order of subject.txt.
    std::vector<std::string> Keys(const std::string& board) const;
    // Appends posts to a thread, as if people had written them.
    bool Grow(const std::string& board, const std::string& key, int posts);
    // From now on. A stalled request is answered when the thread's fate changes again, or never.
    bool SetFate(const std::string& board, const std::string& key, Fate fate);
    // From now on, for all posts.
    void SetPostStyle(PostStyle style);
    // The requests that wait for such a change now.
    int CountStalled() const;
    // What the server holds of a thread and would send whole; "" for none.
    std::string Dat(const std::string& board, const std::string& key) const;
    std::string Menu() const;

    // On 127.0.0.1; port 0 takes a free one. False when the port can't be had.
    bool Start(int port = 0);
    void Stop();
    int Port() const { return fPort; }
    std::string PortText() const { return std::to_string(fPort); }

    // What was asked since the start or the last ForgetRequests, in the order of the answers.
    std::vector<Request> Requests() const;
    size_t CountRequests(const std::string& path) const;
    size_t CountBytes(const std::string& path) const;
    void ForgetRequests();

private:
    struct Http; // the library's server and its handlers

    template <class HttpRequest>
    void _Log(const HttpRequest& request, int status, size_t bytes);
    Thread* _Find(const std::string& board, const std::string& key) const;
    void _BeginRequest(const std::string& path);
    void _EndRequest(const std::string& path);

    // Constant while it runs
    int fPort = 0;
    mutable std::mutex fMutex;
    // Guarded by fMutex
    BoardSet fBoards;
    std::vector<Request> fRequests;
    std::map<std::string, int> fUnderWay; // requests, by path
    PostStyle fPostStyle = PostStyle::kUsual;
    int fStalled = 0;
    bool fIsEnding = false;

    std::condition_variable fFateChanged;
    std::unique_ptr<Http> fHttp;
    std::thread fThread;
};
