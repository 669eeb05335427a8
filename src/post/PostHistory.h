#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

// The names or the mails that were used in posts, in a text file of the user's below "2ch": one a
// line, in the order of first use. The window's thread; two windows may hold the same file, each
// finds what the other added when it adds.
class PostHistory {
public:
    // `name` is the file's, "Name.log" or "Mail.log".
    explicit PostHistory(const char* name);

    // From the oldest to the newest. A line longer than 4,096 bytes is left out.
    const std::vector<std::string>& Entries() const { return fEntries; }
    // Appends an entry unless it is there or empty, and writes the file: the entries, then what the
    // old file held past them. Entries longer than 4,094 bytes are not written. B_OK also when
    // nothing was to be done.
    status_t Add(const std::string& entry);

private:
    std::string fPath; // empty without a settings folder
    std::vector<std::string> fEntries;
};
