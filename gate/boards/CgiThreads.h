#pragma once

#include "boards/Log.h"
#include "boards/Shop.h"
#include "boards/Thread.h"
#include "convert/PostLine.h"

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace gate {

// Threads of the families whose servers give posts by number: the gate keeps them as dats and asks
// for what is behind the last line. Any thread may call.
class CgiThreads {
public:
    explicit CgiThreads(const Shop& shop) : fShop(shop) {}

    void AnswerDat(const ThreadAddress& thread, const Wanted& wanted, Responder* responder);
    // As a page of the servers' old read.cgi, which the program takes apart: the first post, and
    // those from `start` on.
    void AnswerPage(const ThreadAddress& thread, long start, Responder* responder);

private:
    // What a server's interface answered.
    struct News {
        std::vector<PostLine> posts;
        time_t date = -1;
        bool hasLeft = false; // the thread is not on its server any more
        std::string failure;  // for the user
    };

    std::optional<KeptThread> _BringUpToDate(const ThreadAddress& thread, News* news);
    News _Ask(const ThreadAddress& thread, long first, Deadline deadline) const;
    KeptThread _Append(const ThreadAddress& thread, const News& news);
    static void _RefuseFor(const News& news, Responder* responder);

    const Shop fShop;
    std::mutex fMutex; // held while a kept thread grows
};

} // namespace gate
