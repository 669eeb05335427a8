#include <File.h>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Directory.h>
#include <Entry.h>
#include <Path.h>

#include "storage/AttributeStore.h"
#include "storage/EntryPrivate.h"
#include "storage/PathText.h"
#include "support/Errno.h"

namespace {

constexpr uint32 kAccessMask = 0x0003;

// -1 for modes that make no sense.
int systemFlags(uint32 openMode) {
    static constexpr int kAccess[] = {O_RDONLY, O_WRONLY, O_RDWR};
    uint32 access = openMode & kAccessMask;
    if (access > B_READ_WRITE)
        return -1;
    // Opening a pipe or a device must not wait.
    return kAccess[access] | O_NONBLOCK | (openMode & B_ERASE_FILE ? O_TRUNC : 0);
}

} // namespace

BFile::BFile(const BFile& file) : BNode(file), BPositionIO(), fMode(file.fMode) {}

BFile::BFile(const entry_ref* ref, uint32 openMode) {
    SetTo(ref, openMode);
}

BFile::BFile(const BEntry* entry, uint32 openMode) {
    SetTo(entry, openMode);
}

BFile::BFile(const char* path, uint32 openMode) {
    SetTo(path, openMode);
}

BFile::BFile(const BDirectory* directory, const char* path, uint32 openMode) {
    SetTo(directory, path, openMode);
}

BFile::~BFile() = default;

BFile& BFile::operator=(const BFile& file) {
    BNode::operator=(file);
    fMode = file.fMode;
    return *this;
}

status_t BFile::SetTo(const entry_ref* ref, uint32 openMode) {
    BPath path(ref);
    return SetTo(path.Path(), openMode);
}

status_t BFile::SetTo(const BEntry* entry, uint32 openMode) {
    BPath path(entry);
    return path.InitCheck() == B_OK ? SetTo(path.Path(), openMode) : _Fail(path.InitCheck());
}

status_t BFile::SetTo(const BDirectory* directory, const char* path, uint32 openMode) {
    BPath full(directory, path);
    return full.InitCheck() == B_OK ? SetTo(full.Path(), openMode) : _Fail(full.InitCheck());
}

status_t BFile::SetTo(const char* path, uint32 openMode) {
    int flags = systemFlags(openMode);
    fMode = openMode;
    if (!path || flags < 0)
        return _Fail(B_BAD_VALUE);
    status_t status = openMode & B_CREATE_FILE ? _Create(path, flags) : _Open(path, flags, 0);
    if (status == B_OK && (openMode & B_OPEN_AT_END))
        Seek(0, SEEK_END);
    return status;
}

// A new file must not take over the attributes of one that another program removed, so it has to be
// known whether the file is new.
status_t BFile::_Create(const std::string& path, int flags) {
    status_t status = _Open(path, flags | O_CREAT | O_EXCL, 0666);
    if (status == B_OK)
        removeSideFile(absolutePath(path));
    if (status != B_FILE_EXISTS || (fMode & B_FAIL_IF_EXISTS))
        return status;
    status = _Open(path, flags, 0666);
    // It has just gone, or it is a link to a file that is still to be made.
    return status == B_ENTRY_NOT_FOUND ? _Open(path, flags | O_CREAT, 0666) : status;
}

bool BFile::IsReadable() const {
    return InitCheck() == B_OK && (fMode & kAccessMask) != B_WRITE_ONLY;
}

bool BFile::IsWritable() const {
    return InitCheck() == B_OK && (fMode & kAccessMask) != B_READ_ONLY;
}

ssize_t BFile::Read(void* buffer, size_t size) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    ssize_t count = read(_Descriptor(), buffer, size);
    return count < 0 ? lastError() : count;
}

ssize_t BFile::ReadAt(off_t position, void* buffer, size_t size) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    ssize_t count = pread(_Descriptor(), buffer, size, position);
    return count < 0 ? lastError() : count;
}

ssize_t BFile::Write(const void* buffer, size_t size) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    ssize_t count = write(_Descriptor(), buffer, size);
    return count < 0 ? lastError() : count;
}

ssize_t BFile::WriteAt(off_t position, const void* buffer, size_t size) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    ssize_t count = pwrite(_Descriptor(), buffer, size, position);
    return count < 0 ? lastError() : count;
}

off_t BFile::Seek(off_t offset, uint32 seekMode) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    off_t position = lseek(_Descriptor(), offset, static_cast<int>(seekMode));
    return position < 0 ? lastError() : position;
}

off_t BFile::Position() const {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    off_t position = lseek(_Descriptor(), 0, SEEK_CUR);
    return position < 0 ? lastError() : position;
}

status_t BFile::SetSize(off_t size) {
    if (_Descriptor() < 0)
        return B_NO_INIT;
    return ftruncate(_Descriptor(), size) == 0 ? B_OK : lastError();
}

status_t BFile::GetSize(off_t* size) const {
    return BStatable::GetSize(size);
}
