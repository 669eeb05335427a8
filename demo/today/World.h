#pragma once

#include "server/Board.h"

#include <ctime>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

// Boards as they are run today: what the server holds, plain data without a lock. Texts are cp932.
namespace today {

// How the boards of a host are read.
enum class Kind {
    kDat,  // dat files, with cookies and a confirmation before a first post
    kRoom, // rawmode.cgi, EUC-JP
    kTown  // offlaw.cgi
};
Kind kindOfHost(const std::string& host);

// What has become of a thread.
struct Fall {
    int status = 0;       // of its dat; 0: it is there
    bool hasDat = false;  // in the server's archive
    bool hasPage = false; // as a page of the archive's host
};

// A visitor whom the server knows.
struct Tickets {
    std::set<std::string> good, overdue;
};

// A confirmation page that waits to be accepted: its hidden fields, decoded.
using Fields = std::vector<std::pair<std::string, std::string>>;

struct World {
    BoardSet boards;
    std::map<std::string, Fall> falls; // by key
    Tickets tickets;
    std::map<std::string, Fields> confirmations; // by feature
    std::string errorCode, errorText;            // UTF-8; what every post gets, if there is a code

    Thread* Find(const std::string& board, const std::string& key);
    const Category* FindHost(const std::string& host) const;
    bool IsThere(const std::string& key) const { return !falls.contains(key); }
};

// A line of a dat.
struct Line {
    std::string name, mail, date, body, title;
    bool isDeleted = false;
};
std::vector<Line> linesOf(const std::string& dat);
std::string deletedLine(const std::string& title);

struct Question {
    std::string method, host, path, query, range, modifiedSince, noneMatch;
    std::string cookie, referer, userAgent, type, body;
};

struct Answer {
    int status = 404;
    std::string type = "text/html; charset=Shift_JIS";
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;
};

Answer answerTo(World& world, const Question& question, time_t now);

} // namespace today
