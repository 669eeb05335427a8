#pragma once

#include <ctime>
#include <string>

#include "server/Board.h"

// Takes the form of a posting CGI, of either family, and appends the post if it is good. Returns
// the page to answer with. `prefix` is the folder before "bbs/write.cgi", "" for none.
struct PostRequest {
    BoardKind kind = BoardKind::kDat;
    std::string prefix;
    std::string referer;
    std::string form;
};

std::string takePost(BoardSet& boards, const PostRequest& request, time_t now);

// The page as that style has it.
std::string styledPage(std::string page, PostStyle style);
