#include "storage/AttributeStore.h"

#include <atomic>
#include <cstdio>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "storage/PathText.h"
#include "support/Descriptor.h"
#include "support/Errno.h"

namespace {

constexpr off_t kMaxSideFileSize = 64 * 1024 * 1024;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

// Names of files that are being written: no two at a time are the same.
std::string newTemporaryName() {
    static std::atomic<unsigned> sCount{0};
    return ".new-" + std::to_string(getpid()) + "-" + std::to_string(sCount++);
}

status_t readAll(int descriptor, std::string* text) {
    struct stat info;
    if (fstat(descriptor, &info) != 0)
        return lastError();
    if (!S_ISREG(info.st_mode) || info.st_size > kMaxSideFileSize)
        return B_BAD_DATA;
    text->resize(static_cast<size_t>(info.st_size));
    size_t done = 0;
    while (done < text->size()) {
        ssize_t count = read(descriptor, text->data() + done, text->size() - done);
        if (count < 0)
            return lastError();
        if (count == 0)
            break;
        done += static_cast<size_t>(count);
    }
    text->resize(done);
    return B_OK;
}

status_t writeAll(int descriptor, std::string_view text) {
    size_t done = 0;
    while (done < text.size()) {
        ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0)
            return lastError();
        done += static_cast<size_t>(count);
    }
    return B_OK;
}

// The folder .attributes beside a file, locked as long as this lives.
class LockedFolder {
public:
    enum class Missing { kCreate, kFail };

    LockedFolder(const std::string& path, Missing missing)
        : fPath(folderOf(sideFilePath(path))), fName(leafOf(path)) {
        if (missing == Missing::kCreate && mkdir(fPath.c_str(), 0777) != 0 && errno != EEXIST)
            fStatus = lastError();
        else
            _Open();
    }

    status_t Status() const { return fStatus; }
    int Get() const { return fFolder.Get(); }
    const char* Name() const { return fName.c_str(); }

    status_t Read(SideFile* result) const {
        Descriptor file(openat(Get(), Name(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!file.IsOpen())
            return errno == ENOENT ? B_OK : lastError();
        std::string text;
        status_t status = readAll(file.Get(), &text);
        *result = SideFile(std::move(text));
        return status;
    }
    // Adding to the end is much cheaper than replacing: file systems bring a file that replaces
    // another to the disk at once. What found no room is taken back.
    status_t Append(off_t oldSize, std::string_view text) const {
        int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK;
        Descriptor file(openat(Get(), Name(), flags, 0666));
        if (!file.IsOpen())
            return lastError();
        status_t status = writeAll(file.Get(), text);
        if (status != B_OK && ftruncate(file.Get(), oldSize) != 0)
            return lastError();
        return status;
    }
    status_t Replace(std::string_view text) const {
        std::string temporary = newTemporaryName();
        int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
        Descriptor file(openat(Get(), temporary.c_str(), flags, 0666));
        if (!file.IsOpen())
            return lastError();
        status_t status = writeAll(file.Get(), text);
        if (status == B_OK && renameat(Get(), temporary.c_str(), Get(), Name()) != 0)
            status = lastError();
        if (status != B_OK)
            unlinkat(Get(), temporary.c_str(), 0);
        return status;
    }
    void Remove() const { unlinkat(Get(), Name(), 0); }

private:
    void _Open() {
        fFolder.Reset(open(fPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        fStatus = fFolder.IsOpen() ? B_OK : lastError();
        while (fStatus == B_OK && flock(Get(), LOCK_EX) != 0 && errno == EINTR) {
        }
    }

    std::string fPath;
    std::string fName;
    Descriptor fFolder;
    status_t fStatus = B_OK;
};

bool hasSideFile(const std::string& path) {
    struct stat info;
    return lstat(sideFilePath(path).c_str(), &info) == 0;
}

// The side file of what is about to be replaced: out of the way, and back again if nothing came of
// it.
class SetAside {
public:
    explicit SetAside(const std::string& path) : fSideFile(sideFilePath(path)) {
        fAside = folderOf(fSideFile) + "/" + newTemporaryName();
        fIsAside = rename(fSideFile.c_str(), fAside.c_str()) == 0;
    }
    void PutBack() {
        if (fIsAside)
            rename(fAside.c_str(), fSideFile.c_str());
    }
    void Drop() {
        if (fIsAside)
            unlink(fAside.c_str());
    }

private:
    std::string fSideFile;
    std::string fAside;
    bool fIsAside;
};

} // namespace

std::string sideFilePath(const std::string& path) {
    std::string leaf = leafOf(path);
    if (leaf.empty())
        return {};
    return joinPath(joinPath(folderOf(path), kAttributeFolder), leaf);
}

status_t readSideFile(const std::string& path, SideFile* result) {
    Descriptor file(open(sideFilePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
        return errno == ENOENT || errno == ENOTDIR ? B_OK : lastError();
    std::string text;
    status_t status = readAll(file.Get(), &text);
    *result = SideFile(std::move(text));
    return status;
}

status_t changeSideFile(const std::string& path, const std::function<status_t(SideFile&)>& change) {
    if (sideFilePath(path).empty())
        return B_NOT_ALLOWED;
    LockedFolder folder(path, LockedFolder::Missing::kCreate);
    SideFile sideFile;
    status_t status = folder.Status();
    if (status == B_OK)
        status = folder.Read(&sideFile);
    std::string old = sideFile.Text();
    if (status == B_OK)
        status = change(sideFile);
    if (status != B_OK || sideFile.Text() == old)
        return status;
    std::string_view text = sideFile.Text();
    if (text.starts_with(old))
        return folder.Append(static_cast<off_t>(old.size()), text.substr(old.size()));
    if (!text.empty())
        return folder.Replace(text);
    folder.Remove();
    return B_OK;
}

void removeSideFile(const std::string& path) {
    if (!hasSideFile(path))
        return;
    LockedFolder folder(path, LockedFolder::Missing::kFail);
    if (folder.Status() == B_OK)
        folder.Remove();
}

status_t syncSideFile(const std::string& path) {
    std::string sideFile = sideFilePath(path);
    for (const std::string& each : {sideFile, folderOf(sideFile)}) {
        Descriptor descriptor(open(each.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!descriptor.IsOpen())
            return errno == ENOENT || errno == ENOTDIR ? B_OK : lastError();
        if (fsync(descriptor.Get()) != 0)
            return lastError();
    }
    return B_OK;
}

status_t moveWithSideFile(const std::string& from, const std::string& to,
                          const std::function<status_t()>& rename) {
    bool hasOwn = hasSideFile(from);
    if (!hasOwn && !hasSideFile(to))
        return rename();
    // What can fail for want of room or rights fails before anything has moved.
    LockedFolder folder(to, hasOwn ? LockedFolder::Missing::kCreate : LockedFolder::Missing::kFail);
    if (folder.Status() != B_OK)
        return folder.Status();
    SetAside replaced(to);
    status_t status = rename();
    if (status != B_OK) {
        replaced.PutBack();
        return status;
    }
    if (hasOwn && ::rename(sideFilePath(from).c_str(), sideFilePath(to).c_str()) != 0)
        status = lastError();
    replaced.Drop();
    return status;
}

bool clearAttributeFolder(const std::string& folder) {
    auto holdsOnly = [](const std::string& path, const char* allowed) {
        OpenFolder entries(opendir(path.c_str()));
        while (dirent* entry = entries ? readdir(entries.get()) : nullptr) {
            std::string name = entry->d_name;
            if (name != "." && name != ".." && name != allowed)
                return false;
        }
        return entries != nullptr;
    };
    if (!holdsOnly(folder, kAttributeFolder))
        return false;
    std::string attributes = joinPath(folder, kAttributeFolder);
    OpenFolder entries(opendir(attributes.c_str()));
    while (dirent* entry = entries ? readdir(entries.get()) : nullptr)
        unlinkat(dirfd(entries.get()), entry->d_name, 0);
    rmdir(attributes.c_str());
    return true;
}
