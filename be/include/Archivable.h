#pragma once

#include <SupportDefs.h>

class BMessage;

// What can store itself in a message. Nothing here is brought back from one: programs build their
// views in code.
class BArchivable {
public:
    BArchivable() = default;
    virtual ~BArchivable();

    virtual status_t Archive(BMessage* into, bool deep = true) const;
};
