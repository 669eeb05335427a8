#pragma once

#include "convert/PostLine.h"

#include <string>
#include <string_view>
#include <vector>

namespace gate {

struct OfflawAnswer {
    std::vector<PostLine> posts;
    std::string error; // UTF-8: the text of <ERROR>, which comes with a good status
};

// What offlaw.cgi answers, in cp932: a line a post, "no<>name<>mail<>date ID:x<>body<>title<>host".
// Deleted posts are left out there. Other lines are passed over.
OfflawAnswer ParseOfflaw(std::string_view cp932);

} // namespace gate
