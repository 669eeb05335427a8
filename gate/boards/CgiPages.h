#pragma once

#include "boards/Thread.h"

#include <optional>
#include <string>
#include <string_view>

namespace gate {

// "/bbs/read.cgi?BBS=BOARD&KEY=KEY&START=N", or with a prefix before it, as the program asks for
// threads that have no dat.
struct CgiAddress {
    ThreadAddress thread;
    long start = 1;
};
std::optional<CgiAddress> ParseCgiPath(const Settings& settings, const std::string& host,
                                       std::string_view path);

// A dat as the page that the program takes for such threads, in cp932: the first post, whatever the
// start, and those from there on. Its parts stand where the program counts on them.
std::string MakeCgiPage(std::string_view dat, long start);

} // namespace gate
