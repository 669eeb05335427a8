#pragma once

#include "convert/PostLine.h"
#include "settings/Marks.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gate {

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
