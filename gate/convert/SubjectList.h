#pragma once

#include "convert/Encodings.h"

#include <string>
#include <string_view>

namespace gate {

// A board's list of threads, "KEY.cgi,TITLE(N)" or "KEY.dat<>TITLE (N)", as "KEY.dat<>TITLE (N)"
// lines in cp932. A thread that is named twice stands where it was named first; lines without a
// key, a title or a count are left out.
std::string MakeSubjectList(std::string_view list, Charset charset);

} // namespace gate
