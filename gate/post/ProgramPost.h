#pragma once

#include "post/Cookies.h"
#include "post/FormBody.h"
#include "settings/Marks.h"

#include <optional>
#include <string>
#include <string_view>

namespace gate {

// A post as the program sends it, by either of its forms. cp932.
struct ProgramPost {
    std::string name, mail, message, board, key;

    // Whatever the time of its sending.
    bool operator==(const ProgramPost& other) const = default;
};

// Nothing when a field is missing that every post has.
std::optional<ProgramPost> ParseProgramPost(std::string_view body);

// The form that a family wants first, filled in.
std::string MakeFirstBody(const ProgramPost& post, const FormShape& shape, Seconds now);

} // namespace gate
