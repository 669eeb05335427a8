#pragma once

#include <string>

// Makes sure that one of the program's own folders is there, with what leads to it. Gives what
// there is to tell the user when it can't be used, else nothing.
std::string EnsureFolder(const char* path);
