#pragma once

#include <SupportDefs.h>

#include <string>

// What the thread list's header remembers beside the widths and the order of its first columns. A
// value.
struct ThreadHeader {
    float speedWidth = 45;        // pixels
    int32 speedPlace = 8;         // columns to the left of the speed's, hidden ones too
    std::string hidden = "speed"; // the names of the hidden columns, divided by spaces
};
