#include <Directory.h>

#include <cerrno>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Entry.h>
#include <File.h>
#include <Path.h>

#include "storage/AttributeStore.h"
#include "storage/EntryPrivate.h"
#include "storage/NodePrivate.h"
#include "storage/PathText.h"
#include "support/Errno.h"

struct BDirectory::Iterator {
    explicit Iterator(int descriptor) : entries(fdopendir(descriptor)) {}
    ~Iterator() {
        if (entries)
            closedir(entries);
    }
    Iterator(const Iterator&) = delete;
    Iterator& operator=(const Iterator&) = delete;

    DIR* const entries;
};

BEntryList::~BEntryList() = default;

BDirectory::BDirectory() = default;

BDirectory::BDirectory(const BDirectory& directory) : BNode(directory), BEntryList() {}

BDirectory::BDirectory(const entry_ref* ref) {
    SetTo(ref);
}

BDirectory::BDirectory(const BEntry* entry) {
    SetTo(entry);
}

BDirectory::BDirectory(const char* path) {
    SetTo(path);
}

BDirectory::BDirectory(const BDirectory* directory, const char* path) {
    SetTo(directory, path);
}

BDirectory::~BDirectory() = default;

BDirectory& BDirectory::operator=(const BDirectory& directory) {
    fIterator.reset();
    BNode::operator=(directory);
    return *this;
}

status_t BDirectory::SetTo(const entry_ref* ref) {
    BPath path(ref);
    return path.InitCheck() == B_OK ? SetTo(path.Path()) : _Fail(path.InitCheck());
}

status_t BDirectory::SetTo(const BEntry* entry) {
    BPath path(entry);
    return path.InitCheck() == B_OK ? SetTo(path.Path()) : _Fail(path.InitCheck());
}

status_t BDirectory::SetTo(const char* path) {
    return path ? _Open(path, O_RDONLY | O_DIRECTORY, 0) : _Fail(B_BAD_VALUE);
}

status_t BDirectory::SetTo(const BDirectory* directory, const char* path) {
    BPath full(directory, path);
    return full.InitCheck() == B_OK ? SetTo(full.Path()) : _Fail(full.InitCheck());
}

void BDirectory::_Close() {
    fIterator.reset();
    BNode::_Close();
}

status_t BDirectory::GetEntry(BEntry* entry) const {
    if (!entry)
        return B_BAD_VALUE;
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    return entry->SetTo(BNode::Private::Path(*this).c_str());
}

bool BDirectory::IsRootDirectory() const {
    return BNode::Private::Path(*this) == "/";
}

status_t BDirectory::FindEntry(const char* path, BEntry* entry, bool traverse) const {
    if (!path || !entry)
        return B_BAD_VALUE;
    status_t status = entry->SetTo(this, path, traverse);
    if (status == B_OK && !entry->Exists()) {
        entry->Unset();
        status = B_ENTRY_NOT_FOUND;
    }
    return status;
}

bool BDirectory::Contains(const char* path, int32 nodeFlags) const {
    BEntry entry;
    return FindEntry(path, &entry) == B_OK && Contains(&entry, nodeFlags);
}

bool BDirectory::Contains(const BEntry* entry, int32 nodeFlags) const {
    if (!entry || !entry->Exists() || InitCheck() != B_OK)
        return false;
    BPath path(entry);
    std::string folder = BNode::Private::Path(*this);
    if (folder != "/")
        folder += "/";
    bool isWanted = (entry->IsFile() && (nodeFlags & B_FILE_NODE)) ||
                    (entry->IsDirectory() && (nodeFlags & B_DIRECTORY_NODE)) ||
                    (entry->IsSymLink() && (nodeFlags & B_SYMLINK_NODE)) || nodeFlags == B_ANY_NODE;
    return isWanted && std::string(path.Path()).starts_with(folder);
}

status_t BDirectory::GetStatFor(const char* path, struct stat* info) const {
    if (!path || !info)
        return B_BAD_VALUE;
    BEntry entry(this, path);
    return entry.InitCheck() == B_OK ? entry.GetStat(info) : entry.InitCheck();
}

status_t BDirectory::_NextName(std::string* name) {
    if (_Descriptor() < 0)
        return B_FILE_ERROR;
    if (!fIterator) {
        int descriptor = openat(_Descriptor(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0)
            return lastError();
        fIterator = std::make_unique<Iterator>(descriptor);
    }
    errno = 0;
    while (dirent* entry = fIterator->entries ? readdir(fIterator->entries) : nullptr) {
        *name = entry->d_name;
        if (*name != "." && *name != ".." && *name != kAttributeFolder)
            return B_OK;
        errno = 0;
    }
    return errno == 0 ? B_ENTRY_NOT_FOUND : lastError();
}

status_t BDirectory::GetNextEntry(BEntry* entry, bool traverse) {
    if (!entry)
        return B_BAD_VALUE;
    std::string name;
    status_t status = _NextName(&name);
    return status == B_OK ? entry->SetTo(this, name.c_str(), traverse) : status;
}

status_t BDirectory::GetNextRef(entry_ref* ref) {
    if (!ref)
        return B_BAD_VALUE;
    BEntry entry;
    status_t status = GetNextEntry(&entry);
    return status == B_OK ? entry.GetRef(ref) : status;
}

status_t BDirectory::Rewind() {
    fIterator.reset();
    return _Descriptor() < 0 ? B_FILE_ERROR : B_OK;
}

int32 BDirectory::CountEntries() {
    Rewind();
    std::string name;
    int32 count = 0;
    status_t status = B_OK;
    while ((status = _NextName(&name)) == B_OK)
        count++;
    Rewind();
    return status == B_ENTRY_NOT_FOUND ? count : status;
}

status_t BDirectory::CreateDirectory(const char* path, BDirectory* directory) {
    BEntry entry(this, path);
    BPath full(&entry);
    if (full.InitCheck() != B_OK)
        return full.InitCheck();
    if (mkdir(full.Path(), 0777) != 0)
        return lastError();
    return directory ? directory->SetTo(full.Path()) : B_OK;
}

status_t BDirectory::CreateFile(const char* path, BFile* file, bool failIfExists) {
    BFile unwanted;
    uint32 mode = B_READ_WRITE | B_CREATE_FILE | (failIfExists ? B_FAIL_IF_EXISTS : B_ERASE_FILE);
    return (file ? file : &unwanted)->SetTo(this, path, mode);
}

status_t create_directory(const char* path, mode_t mode) {
    if (!path || !*path)
        return B_BAD_VALUE;
    std::string all = absolutePath(path);
    for (size_t end = all.find('/', 1);; end = all.find('/', end + 1)) {
        std::string folder = all.substr(0, end);
        struct stat info;
        if (mkdir(folder.c_str(), mode) != 0 && stat(folder.c_str(), &info) != 0)
            return lastError();
        if (end == std::string::npos)
            return stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) ? B_OK
                                                                             : B_NOT_A_DIRECTORY;
    }
}
