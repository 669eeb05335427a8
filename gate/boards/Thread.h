#pragma once

#include "settings/GateSettings.h"

#include <optional>
#include <string>
#include <string_view>

namespace gate {

// A thread, or with an empty key a board, of a known family.
struct ThreadAddress {
    const Family* family = nullptr; // never null
    std::string asked;              // the host by which the program knows it
    std::string host;               // and as it is called today
    std::string server;             // the host that is asked, where the board has moved to
    std::string board;              // may hold a "/"
    std::string key;

    // Lengths and dates belong to what the program was given, kept copies to the thread.
    std::string GivenName() const { return asked + "/" + board + "/" + key; }
    std::string KeptName() const { return host + "/" + board + "/" + key; }
    std::string DatPath() const { return "/" + board + "/dat/" + key + ".dat"; }
};

// "/BOARD/dat/KEY.dat" or "/BOARD/subject.txt" on a known host; nothing for another path.
std::optional<ThreadAddress> ParseThreadPath(const Settings& settings, const std::string& host,
                                             std::string_view path);

// A board's folder: parts that are no "." or ".." and need no escape.
bool IsBoard(std::string_view board);
bool IsKey(std::string_view key);

// An address or a path with the thread's names in it, as the settings describe them.
std::string FillIn(std::string pattern, const ThreadAddress& thread);

// Whether bytes are the beginning of an HTML page, and thus no list or log.
bool LooksLikePage(std::string_view bytes);
// Whether bytes may be a dat, as its first line tells: what else a server or a network between says
// has no such fields.
bool LooksLikeDat(std::string_view bytes);

} // namespace gate
