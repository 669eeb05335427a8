#pragma once

#include <ctime>
#include <string>

// A time as the lists of windows show it, "2026/11/22 10:00", by the user's clock; empty for none.
// The thread list has a form of its own.
std::string DateText(time_t when);
