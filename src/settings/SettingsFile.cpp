#include "settings/SettingsFile.h"

#include "settings/MessageAttributes.h"
#include "settings/ReplaceFile.h"

#include <Application.h>
#include <Autolock.h>
#include <Entry.h>
#include <File.h>
#include <Roster.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr int32 kRoot = -1;

status_t FolderOfSignature(std::string* folder) {
    app_info info;
    if (be_app == nullptr || be_app->GetAppInfo(&info) != B_OK)
        return B_BAD_VALUE;
    std::string name = info.signature;
    for (const char* prefix : {"application/x-vnd.", "application/"}) {
        if (!name.starts_with(prefix))
            continue;
        name.erase(0, std::string(prefix).size());
        const size_t dash = name.find('-');
        if (name.find('.') != name.npos)
            std::replace(name.begin(), name.end(), '.', '/');
        else if (dash != name.npos)
            name[dash] = '/';
        *folder = name;
        return B_OK;
    }
    return B_BAD_VALUE;
}

// Keeps two programs from replacing the file at once: the lock is on a file that stays.
class SaveLock {
public:
    explicit SaveLock(const std::string& path)
        : fFile((path + ".lock").c_str(), B_READ_WRITE | B_CREATE_FILE),
          fStatus(fFile.InitCheck() == B_OK ? fFile.Lock() : fFile.InitCheck()) {}
    ~SaveLock() {
        if (fStatus == B_OK)
            fFile.Unlock();
    }
    SaveLock(const SaveLock&) = delete;
    SaveLock& operator=(const SaveLock&) = delete;
    status_t Status() const { return fStatus; }

private:
    BFile fFile;
    status_t fStatus;
};

} // namespace

SettingsFile::SettingsFile(const char* name, const char* folder, int32 which) : fLock("settings") {
    fStatus = _MakePath(name, folder, which);
    if (fStatus != B_OK)
        fPath.Unset();
}

status_t SettingsFile::_MakePath(const char* name, const char* folder, int32 which) {
    std::string derived;
    status_t status = which == kRoot ? fPath.SetTo("/")
                                     : find_directory(static_cast<directory_which>(which), &fPath);
    if (status == B_OK && folder == nullptr) {
        status = FolderOfSignature(&derived);
        folder = derived.c_str();
    }
    if (status == B_OK)
        status = fPath.Append(folder);
    return status == B_OK ? fPath.Append(name != nullptr ? name : "Settings") : status;
}

status_t SettingsFile::Load() {
    const BAutolock lock(fLock);
    BFile file;
    status_t status = fStatus == B_OK ? file.SetTo(fPath.Path(), B_READ_ONLY) : fStatus;
    if (fStatus != B_OK || status == B_ENTRY_NOT_FOUND) {
        MakeEmpty();
        return status;
    }
    status = _Read(&file);
    fBroken = status != B_OK;
    if (fBroken) {
        MakeEmpty();
        fprintf(stderr, "settings: %s can't be understood; starting with the defaults\n",
                fPath.Path());
        return status;
    }
    const status_t applied = ApplyAttributes(&file, this);
    file.Unlock();
    if (applied != B_OK)
        fprintf(stderr, "settings: an attribute of %s fits no setting\n", fPath.Path());
    return applied;
}

// Leaves the file locked, if it could be read.
status_t SettingsFile::_Read(BFile* file) {
    status_t status = file->InitCheck();
    if (status == B_OK)
        status = file->Lock();
    return status == B_OK ? Unflatten(file) : status;
}

status_t SettingsFile::_Write(BFile* file) const {
    const BAutolock lock(fLock);
    fChanged = false;
    status_t status = Flatten(file);
    if (status == B_OK)
        status = StoreAttributes(*this, file);
    return status;
}

status_t SettingsFile::_SetBrokenAside(const char* path) const {
    std::string aside;
    for (int number = 1; aside.empty() || BEntry(aside.c_str()).Exists(); number++)
        aside = std::string(path) + ".broken" + (number > 1 ? std::to_string(number) : "");
    const status_t status = BEntry(path).Rename(aside.c_str(), false);
    if (status == B_OK)
        fprintf(stderr, "settings: the old file is kept as %s\n", aside.c_str());
    return status;
}

status_t SettingsFile::Save() const {
    if (fStatus != B_OK)
        return fStatus;
    const std::string target = TargetOf(fPath.Path());
    const status_t status = MakeParentFolder(target.c_str());
    if (status != B_OK)
        return status;
    const SaveLock lock(target);
    return lock.Status() == B_OK ? _Replace(target.c_str()) : lock.Status();
}

status_t SettingsFile::_Replace(const char* path) const {
    return ReplaceFile(path, [&](BFile* file) {
        status_t status = _Write(file);
        if (status == B_OK && fBroken) {
            status = _SetBrokenAside(path);
            fBroken = status != B_OK;
        }
        return status;
    });
}
