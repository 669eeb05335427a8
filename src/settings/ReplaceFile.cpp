#include "settings/ReplaceFile.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>
#include <Path.h>

namespace {
constexpr mode_t kFolderMode = 0777;
} // namespace

std::string TargetOf(const char* path) {
    BPath target;
    const BEntry entry(path, true);
    if (entry.InitCheck() == B_OK && entry.GetPath(&target) == B_OK)
        return target.Path();
    return path;
}

status_t MakeParentFolder(const char* path) {
    BPath parent;
    const status_t status = BPath(path).GetParent(&parent);
    return status == B_OK ? create_directory(parent.Path(), kFolderMode) : status;
}

status_t ReplaceFile(const char* path, const std::function<status_t(BFile*)>& write) {
    const std::string target = TargetOf(path);
    const std::string beside = target + ".new";
    status_t status = MakeParentFolder(target.c_str());
    if (status != B_OK)
        return status;
    BFile file;
    status = file.SetTo(beside.c_str(), B_READ_WRITE | B_CREATE_FILE | B_ERASE_FILE);
    if (status != B_OK)
        return status;
    status = write(&file);
    if (status == B_OK)
        status = file.Sync();
    file.Unset();
    BEntry entry(beside.c_str());
    if (status == B_OK)
        status = entry.Rename(target.c_str(), true);
    if (status != B_OK)
        entry.Remove();
    return status;
}

status_t ReplaceFile(const char* path, const std::string& content) {
    return ReplaceFile(path, [&](BFile* file) {
        const ssize_t written = file->Write(content.data(), content.size());
        if (written < 0)
            return static_cast<status_t>(written);
        return static_cast<size_t>(written) == content.size() ? status_t(B_OK)
                                                              : status_t(B_DEVICE_FULL);
    });
}

status_t ReadWholeFile(const char* path, std::string* content) {
    content->clear();
    BFile file;
    status_t status = file.SetTo(path, B_READ_ONLY);
    char chunk[16384];
    while (status == B_OK) {
        const ssize_t length = file.Read(chunk, sizeof(chunk));
        if (length == 0)
            return B_OK;
        if (length > 0)
            content->append(chunk, static_cast<size_t>(length));
        else
            status = static_cast<status_t>(length);
    }
    content->clear();
    return status;
}
