#include <Statable.h>

#include <sys/stat.h>

#include <Node.h>

namespace {

// Asks `object` and hands one member over; B_BAD_VALUE for a null output.
template <class Value, class Member>
status_t ask(const BStatable& object, Value* value, Member member) {
    struct stat info;
    status_t status = object.GetStat(&info);
    if (status == B_OK && value)
        *value = static_cast<Value>(member(info));
    return value ? status : B_BAD_VALUE;
}

bool isKind(const BStatable& object, mode_t kind) {
    struct stat info;
    return object.GetStat(&info) == B_OK && (info.st_mode & S_IFMT) == kind;
}

} // namespace

BStatable::~BStatable() = default;

bool BStatable::IsFile() const {
    return isKind(*this, S_IFREG);
}

bool BStatable::IsDirectory() const {
    return isKind(*this, S_IFDIR);
}

bool BStatable::IsSymLink() const {
    return isKind(*this, S_IFLNK);
}

status_t BStatable::GetNodeRef(node_ref* ref) const {
    struct stat info;
    status_t status = ref ? GetStat(&info) : B_BAD_VALUE;
    if (status != B_OK)
        return status;
    ref->device = info.st_dev;
    ref->node = info.st_ino;
    return B_OK;
}

status_t BStatable::GetOwner(uid_t* owner) const {
    return ask(*this, owner, [](const struct stat& info) { return info.st_uid; });
}

status_t BStatable::GetPermissions(mode_t* permissions) const {
    return ask(*this, permissions, [](const struct stat& info) { return info.st_mode & 07777; });
}

status_t BStatable::SetPermissions(mode_t permissions) {
    return _SetPermissions(permissions & 07777);
}

status_t BStatable::GetSize(off_t* size) const {
    return ask(*this, size, [](const struct stat& info) { return info.st_size; });
}

status_t BStatable::GetModificationTime(time_t* modificationTime) const {
    return ask(*this, modificationTime, [](const struct stat& info) { return info.st_mtime; });
}

status_t BStatable::SetModificationTime(time_t modificationTime) {
    return _SetTimes(nullptr, &modificationTime);
}

status_t BStatable::GetAccessTime(time_t* accessTime) const {
    return ask(*this, accessTime, [](const struct stat& info) { return info.st_atime; });
}

status_t BStatable::SetAccessTime(time_t accessTime) {
    return _SetTimes(&accessTime, nullptr);
}

// The system keeps no time of creation that every file system has: the last change of the node is
// the nearest.
status_t BStatable::GetCreationTime(time_t* creationTime) const {
    return ask(*this, creationTime, [](const struct stat& info) { return info.st_ctime; });
}
