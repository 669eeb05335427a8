#pragma once

#include <SupportDefs.h>

// Makes sure that one of the program's own folders is there, with what leads to it: 0, or −1 after
// an alert that says why it can't be used.
int32 EnsureFolder(const char* path);
