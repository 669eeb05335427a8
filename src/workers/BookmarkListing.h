#pragma once

#include "workers/Worker.h"

class BNode;

// Lists the bookmarks of all boards with what the cache holds of their threads.
class BookmarkListing : public Worker {
public:
    explicit BookmarkListing(const SubjectJob& job) : Worker(job.window, job.control) {}
    int32 Run();

private:
    Progress _AddAll(class BDirectory* folder);
    void _Add(const BNode& node, const char* titleName);
    void _Complete();

    int32 fCount = 0;
};
