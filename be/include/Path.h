#pragma once

#include <string>

#include <SupportDefs.h>

class BDirectory;
class BEntry;
struct entry_ref;

// An absolute path as text; a relative one begins at the current folder. Double and trailing
// slashes go. With `normalize` the folder must exist, and ".", ".." and links are worked out; a
// path with "." or ".." always is.
class BPath {
public:
    BPath() = default;
    BPath(const char* directory, const char* leaf = nullptr, bool normalize = false);
    BPath(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    BPath(const BEntry* entry);
    BPath(const entry_ref* ref);

    status_t InitCheck() const { return fStatus; }
    status_t SetTo(const char* path, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const entry_ref* ref);
    void Unset();
    status_t Append(const char* path, bool normalize = false); // relative paths only

    const char* Path() const; // null while it is not set
    const char* Leaf() const; // what follows the last slash
    status_t GetParent(BPath* path) const;

    bool operator==(const BPath& path) const;
    bool operator==(const char* path) const;
    bool operator!=(const BPath& path) const { return !(*this == path); }
    bool operator!=(const char* path) const { return !(*this == path); }

private:
    std::string fPath;
    status_t fStatus = B_NO_INIT;
};
