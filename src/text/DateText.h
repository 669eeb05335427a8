#pragma once

#include <ctime>
#include <string>

// A time as lists show it, "2026/11/22 10:00", by the user's clock; empty for none.
std::string DateText(time_t when);
