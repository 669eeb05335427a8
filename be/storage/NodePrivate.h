#pragma once

#include <string>

#include <time.h>

#include <Node.h>

// For the kit's own classes.
class BNode::Private {
public:
    // Where the open node is now, even after it was renamed; "" when it was removed or replaced.
    static std::string Path(const BNode& node);
    static int Descriptor(const BNode& node) { return node.fDescriptor; }
};

// The two times for utimensat; a null one stays as it is.
struct FileTimes {
    timespec values[2];
    FileTimes(const time_t* accessTime, const time_t* modificationTime);
};
