#pragma once

#include <string>
#include <vector>

namespace gate {

// How a transfer went below its answer, for who looks into it.
struct Way {
    struct Address {
        std::string text;
        bool isKeptAway;
    };
    std::vector<Address> addresses; // in the order in which they were tried
    // Of a server whose certificate was verified: whom it is for and until when, as it says.
    std::string certificateNames, certificateEnd;
    std::string problem; // what kept the answer away, in the transfer library's words
    // Since the beginning; 0: it did not come to that.
    long connectedMilliseconds = 0, secureMilliseconds = 0, totalMilliseconds = 0;
};

} // namespace gate
