#include <Entry.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Directory.h>
#include <Path.h>

#include "storage/AttributeStore.h"
#include "storage/EntryPrivate.h"
#include "storage/NodePrivate.h"
#include "storage/PathText.h"
#include "support/Errno.h"

namespace {

Traverse traverseIf(bool traverse) {
    return traverse ? Traverse::kYes : Traverse::kNo;
}

// Fails with B_FILE_EXISTS rather than replacing anything.
status_t renameToNewName(const char* from, const char* to) {
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return B_OK;
    if (errno != EINVAL && errno != ENOSYS)
        return lastError();
    // A file system that cannot promise it.
    struct stat info;
    if (lstat(to, &info) == 0)
        return B_FILE_EXISTS;
    return rename(from, to) == 0 ? B_OK : lastError();
}

bool isSameNode(const std::string& a, const std::string& b) {
    struct stat first, second;
    return lstat(a.c_str(), &first) == 0 && lstat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace

BEntry::BEntry(const BDirectory* directory, const char* path, bool traverse) {
    SetTo(directory, path, traverse);
}

BEntry::BEntry(const entry_ref* ref, bool traverse) {
    SetTo(ref, traverse);
}

BEntry::BEntry(const char* path, bool traverse) {
    SetTo(path, traverse);
}

BEntry::~BEntry() = default;

bool BEntry::operator==(const BEntry& entry) const {
    return fStatus == B_OK ? fPath == entry.fPath : entry.fStatus != B_OK;
}

bool BEntry::Exists() const {
    struct stat info;
    return GetStat(&info) == B_OK;
}

const char* BEntry::Name() const {
    if (fStatus != B_OK)
        return nullptr;
    return fPath == "/" ? fPath.c_str() : fPath.c_str() + fPath.rfind('/') + 1;
}

status_t BEntry::SetTo(const BDirectory* directory, const char* path, bool traverse) {
    BPath full(directory, path);
    Unset();
    return full.InitCheck() == B_OK ? SetTo(full.Path(), traverse) : (fStatus = full.InitCheck());
}

status_t BEntry::SetTo(const entry_ref* ref, bool traverse) {
    std::string path = ref ? entry_ref::Private::Path(*ref) : std::string();
    Unset();
    return path.empty() ? (fStatus = B_BAD_VALUE) : SetTo(path.c_str(), traverse);
}

status_t BEntry::SetTo(const char* path, bool traverse) {
    std::string text = path ? path : "";
    Unset();
    if (!path)
        return fStatus = B_BAD_VALUE;
    return fStatus = resolveEntry(text, traverseIf(traverse), &fPath);
}

void BEntry::Unset() {
    fPath.clear();
    fStatus = B_NO_INIT;
}

status_t BEntry::GetStat(struct stat* info) const {
    if (!info)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    return lstat(fPath.c_str(), info) == 0 ? B_OK : lastError();
}

status_t BEntry::GetRef(entry_ref* ref) const {
    if (!ref)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    struct stat info;
    if (stat(folderOf(fPath).c_str(), &info) != 0)
        return lastError();
    *ref = entry_ref::Private::FromPath(fPath, info.st_dev, info.st_ino);
    return B_OK;
}

status_t BEntry::GetPath(BPath* path) const {
    if (!path)
        return B_BAD_VALUE;
    return fStatus == B_OK ? path->SetTo(fPath.c_str()) : B_NO_INIT;
}

status_t BEntry::GetParent(BEntry* entry) const {
    if (!entry)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    return fPath == "/" ? B_ENTRY_NOT_FOUND : entry->SetTo(folderOf(fPath).c_str());
}

status_t BEntry::GetParent(BDirectory* directory) const {
    if (!directory)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    return fPath == "/" ? B_ENTRY_NOT_FOUND : directory->SetTo(folderOf(fPath).c_str());
}

status_t BEntry::GetName(char* buffer) const {
    if (!buffer)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    snprintf(buffer, B_FILE_NAME_LENGTH, "%s", Name());
    return B_OK;
}

status_t BEntry::Rename(const char* path, bool clobber) {
    if (!path || !*path)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    std::string target;
    std::string wanted = path[0] == '/' ? path : joinPath(folderOf(fPath), path);
    status_t status = resolveEntry(wanted, Traverse::kNo, &target);
    return status == B_OK ? _MoveTo(target, clobber) : status;
}

status_t BEntry::MoveTo(BDirectory* directory, const char* path, bool clobber) {
    if (!directory)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    BEntry target(directory, path ? path : Name());
    return target.InitCheck() == B_OK ? _MoveTo(target.fPath, clobber) : target.InitCheck();
}

status_t BEntry::_MoveTo(const std::string& newPath, bool clobber) {
    if (newPath == fPath)
        return Exists() ? B_OK : B_ENTRY_NOT_FOUND;
    // Two names of one file: the system would leave both, and there is one side file too many.
    if (clobber && isSameNode(fPath, newPath))
        return B_NOT_ALLOWED;
    status_t status = moveWithSideFile(fPath, newPath, [&]() -> status_t {
        if (!clobber)
            return renameToNewName(fPath.c_str(), newPath.c_str());
        return rename(fPath.c_str(), newPath.c_str()) == 0 ? B_OK : lastError();
    });
    if (status == B_OK)
        fPath = newPath;
    return status;
}

status_t BEntry::Remove() {
    struct stat info;
    status_t status = GetStat(&info);
    if (status != B_OK)
        return status;
    if (!S_ISDIR(info.st_mode))
        status = unlink(fPath.c_str()) == 0 ? B_OK : lastError();
    else if (!clearAttributeFolder(fPath))
        status = B_DIRECTORY_NOT_EMPTY;
    else
        status = rmdir(fPath.c_str()) == 0 ? B_OK : lastError();
    if (status == B_OK)
        removeSideFile(fPath);
    return status;
}

status_t BEntry::_SetPermissions(mode_t permissions) {
    if (fStatus != B_OK)
        return B_NO_INIT;
    return chmod(fPath.c_str(), permissions) == 0 ? B_OK : lastError();
}

status_t BEntry::_SetTimes(const time_t* accessTime, const time_t* modificationTime) {
    if (fStatus != B_OK)
        return B_NO_INIT;
    FileTimes times(accessTime, modificationTime);
    int result = utimensat(AT_FDCWD, fPath.c_str(), times.values, AT_SYMLINK_NOFOLLOW);
    return result == 0 ? B_OK : lastError();
}

status_t get_ref_for_path(const char* path, entry_ref* ref) {
    if (!path || !ref)
        return B_BAD_VALUE;
    BEntry entry(path);
    return entry.InitCheck() == B_OK ? entry.GetRef(ref) : entry.InitCheck();
}
