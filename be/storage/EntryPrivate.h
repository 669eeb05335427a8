#pragma once

#include <string>

#include <Entry.h>

// What the kit knows of an entry_ref: the path that it stands for, and a form that fits into a
// message.
class entry_ref::Private {
public:
    static std::string Path(const entry_ref& ref); // "" when it is not set
    static entry_ref FromPath(const std::string& path, dev_t device, ino_t directory);
    static std::string Flatten(const entry_ref& ref);
    static status_t Unflatten(const std::string& flat, entry_ref* ref);
};
