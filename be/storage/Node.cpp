#include <Node.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Directory.h>
#include <Entry.h>
#include <Path.h>

#include "storage/EntryPrivate.h"
#include "storage/NodeAttributes.h"
#include "storage/NodePrivate.h"
#include "storage/PathText.h"
#include "support/Errno.h"

FileTimes::FileTimes(const time_t* accessTime, const time_t* modificationTime) {
    const time_t* times[2] = {accessTime, modificationTime};
    for (int i = 0; i < 2; i++) {
        values[i].tv_sec = times[i] ? *times[i] : 0;
        values[i].tv_nsec = times[i] ? 0 : UTIME_OMIT;
    }
}

BNode::BNode() : fStatus(B_NO_INIT) {}

BNode::BNode(const entry_ref* ref) : BNode() {
    SetTo(ref);
}

BNode::BNode(const BEntry* entry) : BNode() {
    SetTo(entry);
}

BNode::BNode(const char* path) : BNode() {
    SetTo(path);
}

BNode::BNode(const BDirectory* directory, const char* path) : BNode() {
    SetTo(directory, path);
}

BNode::BNode(const BNode& node) : BStatable(node), fStatus(B_NO_INIT) {
    *this = node;
}

BNode::~BNode() {
    BNode::_Close();
}

BNode& BNode::operator=(const BNode& node) {
    if (this == &node)
        return *this;
    Unset();
    fStatus = node.fStatus;
    fPath = node.fPath;
    if (node.fDescriptor < 0)
        return *this;
    fDescriptor = fcntl(node.fDescriptor, F_DUPFD_CLOEXEC, 0);
    if (fDescriptor < 0)
        fStatus = lastError();
    return *this;
}

bool BNode::operator==(const BNode& node) const {
    node_ref mine, other;
    if (fStatus != B_OK && node.fStatus != B_OK)
        return true;
    return GetNodeRef(&mine) == B_OK && node.GetNodeRef(&other) == B_OK && mine == other;
}

status_t BNode::SetTo(const entry_ref* ref) {
    std::string path = ref ? entry_ref::Private::Path(*ref) : std::string();
    return path.empty() ? _Fail(B_BAD_VALUE) : SetTo(path.c_str());
}

status_t BNode::SetTo(const BEntry* entry) {
    BPath path(entry);
    return path.InitCheck() == B_OK ? SetTo(path.Path()) : _Fail(path.InitCheck());
}

status_t BNode::SetTo(const char* path) {
    if (!path)
        return _Fail(B_BAD_VALUE);
    // A device or a pipe must not make opening wait.
    return _Open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK, 0);
}

status_t BNode::SetTo(const BDirectory* directory, const char* path) {
    BPath full(directory, path);
    return full.InitCheck() == B_OK ? SetTo(full.Path()) : _Fail(full.InitCheck());
}

status_t BNode::_Open(const std::string& path, int openFlags, mode_t createMode) {
    _Close();
    fPath = absolutePath(path);
    fDescriptor = open(path.c_str(), openFlags | O_CLOEXEC | O_NOCTTY, createMode);
    // A link that is not followed has no data to open.
    if (fDescriptor < 0 && errno == ELOOP && (openFlags & O_NOFOLLOW))
        fDescriptor = open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    return fStatus = fDescriptor < 0 ? lastError() : B_OK;
}

status_t BNode::_Fail(status_t status) {
    Unset();
    return fStatus = status;
}

void BNode::Unset() {
    _Close();
}

void BNode::_Close() {
    if (fDescriptor >= 0)
        close(std::exchange(fDescriptor, -1));
    fAttributes.reset();
    fIsLocked = false;
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BNode::GetStat(struct stat* info) const {
    if (!info)
        return B_BAD_VALUE;
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    return fstat(fDescriptor, info) == 0 ? B_OK : lastError();
}

status_t BNode::Lock() {
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    if (fIsLocked)
        return B_BUSY;
    if (flock(fDescriptor, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? B_BUSY : lastError();
    fIsLocked = true;
    return B_OK;
}

status_t BNode::Unlock() {
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    if (!std::exchange(fIsLocked, false))
        return B_BAD_VALUE;
    return flock(fDescriptor, LOCK_UN) == 0 ? B_OK : lastError();
}

status_t BNode::Sync() {
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    if (fsync(fDescriptor) != 0)
        return lastError();
    std::string path = Private::Path(*this);
    return path.empty() ? B_OK : syncSideFile(path);
}

int BNode::Dup() {
    return fcntl(fDescriptor, F_DUPFD_CLOEXEC, 0);
}

status_t BNode::_SetPermissions(mode_t permissions) {
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    return fchmod(fDescriptor, permissions) == 0 ? B_OK : lastError();
}

status_t BNode::_SetTimes(const time_t* accessTime, const time_t* modificationTime) {
    if (fDescriptor < 0)
        return B_FILE_ERROR;
    FileTimes times(accessTime, modificationTime);
    return futimens(fDescriptor, times.values) == 0 ? B_OK : lastError();
}

std::string BNode::Private::Path(const BNode& node) {
    char link[64];
    char path[PATH_MAX];
    snprintf(link, sizeof(link), "/proc/self/fd/%d", node.fDescriptor);
    ssize_t length = readlink(link, path, sizeof(path));
    std::string result = length > 0 ? std::string(path, static_cast<size_t>(length)) : node.fPath;
    // The name may lead to something else by now, or to nothing.
    struct stat named, open;
    if (lstat(result.c_str(), &named) != 0 || fstat(node.fDescriptor, &open) != 0)
        return {};
    return named.st_dev == open.st_dev && named.st_ino == open.st_ino ? result : std::string();
}
