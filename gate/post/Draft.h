#pragma once

#include "boards/Thread.h"
#include "front/Request.h"
#include "post/ProgramPost.h"

#include <optional>
#include <string>

namespace gate {

// A post of the program's and the thread that it goes to.
struct Draft {
    ThreadAddress thread;
    ProgramPost post; // its board is the thread's, with the folder that it stands in

    // Whenever it is sent.
    bool IsSame(const Draft& other) const {
        return thread.host == other.thread.host && post == other.post;
    }
};

// From "POST …/test/bbs.cgi" or "POST …/bbs/write.cgi" to a known host; nothing when it is none.
std::optional<Draft> ReadDraft(const Settings& settings, const Request& request);

FormShape ShapeOf(const Family& family);
// The script that takes the posts, and the page that a browser would post from.
std::string ScriptPath(const ThreadAddress& thread);
std::string ThreadPagePath(const ThreadAddress& thread);
// What stands before a host of the family.
std::string SchemeOf(const Family& family);

} // namespace gate
