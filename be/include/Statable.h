#pragma once

#include <time.h>

#include <SupportDefs.h>

struct node_ref;
struct stat;

// What can be asked about a file or folder, and set. Times are seconds since the epoch.
class BStatable {
public:
    virtual ~BStatable();

    virtual status_t GetStat(struct stat* info) const = 0;
    bool IsFile() const;
    bool IsDirectory() const;
    bool IsSymLink() const;

    status_t GetNodeRef(node_ref* ref) const;
    status_t GetOwner(uid_t* owner) const;
    status_t GetPermissions(mode_t* permissions) const;
    status_t SetPermissions(mode_t permissions);
    status_t GetSize(off_t* size) const;
    status_t GetModificationTime(time_t* modificationTime) const;
    status_t SetModificationTime(time_t modificationTime);
    status_t GetAccessTime(time_t* accessTime) const;
    status_t SetAccessTime(time_t accessTime);
    status_t GetCreationTime(time_t* creationTime) const;

private:
    virtual status_t _SetPermissions(mode_t permissions) = 0;
    virtual status_t _SetTimes(const time_t* accessTime, const time_t* modificationTime) = 0;
};
