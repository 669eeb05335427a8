#pragma once

#include <ctime>
#include <string>

#include "server/Board.h"

// What the server says to a GET, apart from the network.

struct Question {
    std::string path;  // "/daily/subject.txt"
    std::string query; // what follows "?"
    std::string range; // the header's value, "" without one
    time_t ifModifiedSince = -1;
};

struct Answer {
    int status = 404;
    std::string type = "text/html";
    std::string body;
    time_t modified = 0; // 0: not said
    std::string contentRange;
    std::string location;
    bool stalls = false; // nothing is to be said
};

Answer answerTo(BoardSet& boards, const Question& question);
