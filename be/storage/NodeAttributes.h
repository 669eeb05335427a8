#pragma once

#include <string>
#include <vector>

#include <Node.h>

#include "storage/AttributeStore.h"

// A walk through the names of a node's attributes, as they were when it began.
struct BNode::Attributes {
    std::vector<std::string> names;
    size_t next = 0;
};
