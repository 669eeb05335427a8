#pragma once

#include "convert/PostLine.h"

#include <string_view>
#include <vector>

namespace gate {

// What rawmode.cgi answers, in EUC-JP: a line a post, "no<>name<>mail<>date<>body<>title<>id".
// Deleted posts are left out there. Other lines are passed over.
std::vector<PostLine> ParseRawmode(std::string_view eucJp);

} // namespace gate
