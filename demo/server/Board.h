#pragma once

#include <ctime>
#include <list>
#include <map>
#include <string>
#include <vector>

// What the server holds, plain data without a lock. All texts are cp932 as they go out, but for the
// names of folders and keys, which are ASCII.

// One post before it is a line of a dat. UTF-8 or cp932, as whoever fills it says.
struct Post {
    std::string name;
    std::string mail;
    std::string date;
    std::string body; // lines separated by "\n"
};

// What becomes of a thread's dat file when it is asked for.
enum class Fate {
    kServed,
    kGone,         // 404
    kMoved,        // 302, to the board's archive
    kMovedForGood, // 301
    kStalled,      // no answer
};

// How a posting CGI answers, whatever it thinks of the post.
enum class PostStyle {
    kUsual,
    kUntitled, // a page without a title
    kOverlong, // one with a line of 20,000 bytes behind what it says
    kStalled,  // only when the style has changed again; the post is taken then
};

struct Thread {
    std::string key; // ten digits
    std::string title;
    std::string dat;
    int posts = 0;
    Fate fate = Fate::kServed;
    time_t modified = 0; // later with every post, if need be later than the clock
};

// How a board's threads are read and written: as dat files and with bbs.cgi, or only as pages of
// read.cgi and with write.cgi.
enum class BoardKind { kDat, kCgi };

class Board {
public:
    Board(std::string folder, std::string title, BoardKind kind)
        : fFolder(std::move(folder)), fTitle(std::move(title)), fKind(kind) {}

    const std::string& Folder() const { return fFolder; } // "daily", or "circle/tea"
    const std::string& Title() const { return fTitle; }
    BoardKind Kind() const { return fKind; }
    // The latest written first.
    const std::list<Thread>& Threads() const { return fThreads; }
    Thread* Find(const std::string& key);

    // Posts and titles are cp932, unescaped. A new thread stands first.
    Thread& AddThread(const std::string& key, const std::string& title, time_t modified);
    // With "sage" in its mail field a post leaves the thread in its place.
    void AddPost(Thread& thread, const Post& post, time_t now);

    // The file subject.txt.
    std::string SubjectText() const;
    // Where read.cgi shows a thread, as seen from the board's own page.
    std::string ThreadUrl(const std::string& key) const;

private:
    std::string fFolder;
    std::string fTitle;
    BoardKind fKind;
    std::list<Thread> fThreads;
};

struct Category {
    std::string title;
    std::string host; // where the menu says that its boards are
    std::list<Board> boards;
};

class BoardSet {
public:
    // Replaces everything with the folder's sample boards, as README.md describes them. On failure
    // says why, with the file and line, and returns false.
    bool Load(const std::string& folder, std::string* error);

    std::list<Category>& Categories() { return fCategories; }
    const std::list<Category>& Categories() const { return fCategories; }
    Board* Find(const std::string& boardFolder);

private:
    std::list<Category> fCategories;
};
