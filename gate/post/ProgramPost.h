#pragma once

#include "convert/Encodings.h"
#include "post/Cookies.h"
#include "post/FormBody.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gate {

// A post as the program sends it, by either of its forms. cp932.
struct ProgramPost {
    std::string name, mail, message, board, key;

    // Whatever the time of its sending.
    bool operator==(const ProgramPost& other) const = default;
};

// Nothing when a field is missing that every post has.
std::optional<ProgramPost> ParseProgramPost(std::string_view body);

// The form that a family wants first, as a browser would send its pages' own; it may stand in the
// settings. A value is a text, or one of "$name", "$mail", "$message", "$time", "$key", "$bbs" (the
// board's own name) and "$dir" (the folder that it stands in).
struct FormShape {
    std::vector<std::pair<std::string, std::string>> fields; // UTF-8, in the browser's order
    Charset charset = Charset::kCp932;
    // Servers look for a form that was shown some time ago.
    Seconds timeBefore = 30;
};

FormShape BbsCgiShape();
FormShape Utf8Shape();
FormShape RawmodeShape(); // EUC-JP, boards in folders
FormShape OfflawShape();

std::string MakeFirstBody(const ProgramPost& post, const FormShape& shape, Seconds now);

} // namespace gate
