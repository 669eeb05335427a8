#pragma once

#include "convert/PostLine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

// The class names by which the parts of a thread's page are known, whatever tags carry them. They
// change with the servers' versions, so settings may hold others.
struct PageMarks {
    std::vector<std::string> post{"post"};
    std::vector<std::string> number{"number", "postid"};
    std::vector<std::string> name{"name", "postusername"};
    std::vector<std::string> date{"date"};
    std::vector<std::string> user{"uid"};
    std::vector<std::string> be{"be"};
    std::vector<std::string> message{"message", "post-content", "thread_in"};
    std::vector<std::string> title{"title", "threadtitle", "thread-title"};
    // What ends a whole page, in any case; empty: a page is whole without.
    std::string end = "</html>";
};

struct ReadPage {
    std::string title; // cp932, as in a dat
    std::vector<PostLine> posts;
    bool isWhole = false; // posts 1 to n without a hole, and the page's end
    int version = 0;      // of the server's page maker, as its foot tells; 0: it doesn't
};

// A thread's HTML page, of a server or an archive, in any charset and of any known version. The
// first post holds the thread's title. Nothing when it is no such page.
std::optional<ReadPage> ParseReadPage(std::string_view page, const PageMarks& marks = {});

} // namespace gate
