#pragma once

#include <SupportDefs.h>

struct attr_info {
    uint32 type; // see TypeConstants.h
    off_t size;  // bytes
};
