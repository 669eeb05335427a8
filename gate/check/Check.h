#pragma once

#include "origin/Origin.h"

#include <functional>
#include <string>

namespace gate {

// Takes one step of a check: what it is about, and what came of it. English.
using Say = std::function<void(const std::string& step, const std::string& text)>;

// Asks a host the way the gate does and tells each step. `target` is "HOST" or "HOST/BOARD";
// without a board one of the host's is looked for in the settings' menus. Whether it can be read.
bool CheckHost(Origin* origin, const std::string& target, const Say& say);

} // namespace gate
