#pragma once

#include <SupportDefs.h>

#include <ctime>
#include <functional>
#include <string>

// One thread or post that was found.
struct CacheMatch {
    std::string host, board; // the board may hold "/"
    std::string dat;
    std::string title;
    int32 number = 0;    // of the post; 0: the thread, by its title
    std::string line;    // of the post, in which it stands
    time_t modified = 0; // of the cached copy
};

// Looks through all cached threads as they lie on the disk, without an index that could get out of
// step. Texts are compared folded (see text/Folding.h). On a thread of its own; the files may
// change meanwhile.
class CacheSearch {
public:
    // Called for each match; false ends the search.
    using Found = std::function<bool(const CacheMatch& match)>;
    // Asked before each file, and told how many there were: whether to go on.
    using GoesOn = std::function<bool(int32 files)>;

    // Empty texts are found nowhere. The folder is the cache's own, or a test's.
    CacheSearch(const std::string& folder, const std::string& wanted);

    // Each walks through the whole cache once; false when it was ended.
    bool SearchTitles(const Found& found, const GoesOn& goesOn);
    bool SearchPosts(const Found& found, const GoesOn& goesOn);

    // The folder of all cached threads; empty when it can't be told.
    static std::string CacheFolder();

private:
    struct File;
    using Look = std::function<bool(File& file)>;

    bool _Walk(const std::string& place, int depth, const Look& look, const GoesOn& goesOn);
    bool _LookIntoTitle(File& file, const Found& found) const;
    bool _LookIntoPosts(File& file, const Found& found) const;

    const std::string fFolder;
    const std::string fWanted; // folded
    const bool fStandsAsItIs;  // in files: nothing in it is written as a reference there
    int32 fFiles = 0;
};
