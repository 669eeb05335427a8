#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <string>

// Puts another board menu in the place of "newbbsmenu.html" in a folder, which is at every moment
// one whole file. The menu that stood there is kept beside it, as "newbbsmenu.html." and the time
// in seconds since the epoch; of two in one second the later stays. Any thread.
//
// B_OK, or the error of the first step that failed: without an earlier menu nothing is stored.
status_t StoreBoardMenu(const std::string& folder, const std::string& page, time_t now);
