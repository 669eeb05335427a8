#pragma once

#include <SupportDefs.h>

#include <string>

// What the thread list's header remembers beside the widths and the order of its first columns. A
// value.
struct ThreadHeader {
    float speedWidth = 0; // pixels
    int32 speedPlace = 0; // columns to the left of the speed's, hidden ones too
    // The names of the hidden columns, divided by spaces. A column that settings files do not know
    // yet must be added to what they hide, or it would come up in every list.
    std::string hidden;
};
