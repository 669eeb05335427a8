#pragma once

#include "post/Cookies.h"
#include "store/Database.h"

#include <cstdint>
#include <ctime>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace gate {

// A length of a thread that the program was given, and what it holds.
struct GivenLength {
    int64_t length = 0;
    std::string source; // whose bytes they are
    int64_t offset = 0; // as many bytes of the source lie before what comes next
    int64_t lines = -1; // −1: not counted
};

// A thread that the gate itself keeps, in the form of a dat.
struct KeptThread {
    std::string source;
    std::string bytes;
    int64_t lines = 0;
    time_t date = 0;
};

// A post that is under way or was lately, as far as it outlives a run: what the ledger of posts
// knows of it. Bytes as they came.
struct KeptPost {
    std::string asked, host, server, board, key; // the thread
    std::string name, mail, message;
    int64_t state = 0;
    int64_t changed = 0, firstSent = 0; // seconds since 1970
    // The page that waits to be accepted, where there is one.
    std::string secret, page;
    int64_t charset = 0;
    std::string actionHost, actionPath, answeredHost, answeredPath;
};

struct KeptSummary {
    std::string thread, source;
    int64_t lines = 0, size = 0;
};

// What outlives a run of the gate. Threads are named "HOST/BOARD/KEY". Every change is whole or not
// there at all, whenever the gate ends; one that the disk has no room for is dropped. Any thread
// may call.
class Store {
public:
    explicit Store(const std::string& file);

    // The host that a board has moved to; a menu's path stands for a board.
    std::optional<std::string> FindMove(const std::string& host, const std::string& board);
    void SetMove(const std::string& host, const std::string& board, const std::string& newHost);

    std::optional<GivenLength> FindLength(const std::string& thread, int64_t length);
    void AddLength(const std::string& thread, const GivenLength& given);
    // Whether all lengths given are those of `source` itself. True for a thread never given.
    bool IsPlain(const std::string& thread, const std::string& source);
    bool WasEverGiven(const std::string& thread);

    // Dates that a server named and the program was given.
    bool WasGiven(const std::string& thread, time_t date);
    void AddDate(const std::string& thread, time_t date);

    std::optional<KeptThread> FindKept(const std::string& thread);
    bool Keep(const std::string& thread, const KeptThread& kept);
    std::vector<KeptSummary> ListKept();

    std::optional<std::string> FindMenu(const std::string& address);
    void SetMenu(const std::string& address, const std::string& bytes);

    // The cookies of a family, in the order of their creation; setting replaces all of them.
    std::vector<Cookie> ListCookies(const std::string& family);
    bool SetCookies(const std::string& family, const std::vector<Cookie>& all);
    bool ForgetCookies(const std::string& family);

    // Posts by their numbers, the oldest first. Keeping one under number 0 gives it a number; 0
    // comes back when a new one could not be kept.
    std::vector<std::pair<int64_t, KeptPost>> ListPosts();
    int64_t KeepPost(int64_t number, const KeptPost& post);
    void DropPost(int64_t number);

    // The port of the last run for servers' pages; 0: none.
    int PagePort();
    void SetPagePort(int port);

private:
    std::mutex fMutex;
    Database fDatabase; // guarded by fMutex
};

} // namespace gate
