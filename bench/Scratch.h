#pragma once

#include <string>

// What the whole program is measured in: a folder with this program, the real one and a full board
// menu beside them, and settings that send every request to the demo server. Removed at the end.
// While it lives it is the user's settings folder.
class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    // Paths.
    std::string Bench() const { return fPath + "/bench"; }
    std::string Itamori() const { return fPath + "/itamori"; }
    std::string Boards() const { return fPath + "/boards"; }
    std::string ForGate() const { return fPath + "/gate"; }

    void SaveSettings(const std::string& port) const;
    // Puts threads of one post into the cache: those of the board "many", from the first on.
    void FillCache(int threads) const;

private:
    void _WriteMenu() const;
    void _WriteBoards() const;

    std::string fPath;
};

// The threads that the demo server has: 1,000 posts each, on http://board.example/news/.
constexpr int kLongThreads = 16;
constexpr int kLongThreadPosts = 1000;
std::string LongThreadKey(int index);
std::string LongThreadTitle(int index);
// And a board of 1,000 threads, the server's own, on http://many.example/many/.
constexpr const char* kManyFolder = "many";
constexpr int kManyThreads = 1000;
constexpr int kFirstManyKey = 1012345678;
