#pragma once

#include "boards/Shop.h"
#include "post/Draft.h"

#include <ctime>
#include <string_view>

namespace gate {

enum class Finding { kThere, kNotThere, kUnknown };

// Whether one of a thread's last posts says what the draft says. `since`: older posts, as far as
// their dates can be read, are somebody else's. Asks the server; unknown when it doesn't answer.
Finding FindInThread(const Shop& shop, const Draft& draft, time_t since, Deadline deadline);

// The same for the bytes of a dat, or of what the other kinds' servers give for one.
bool HoldsPost(std::string_view lines, FamilyKind kind, const ProgramPost& post, time_t since);

} // namespace gate
