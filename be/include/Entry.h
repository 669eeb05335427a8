#pragma once

#include <string>

#include <Statable.h>
#include <StorageDefs.h>

class BDirectory;
class BPath;

// Names an entry of a folder, whether it exists or not.
struct entry_ref {
    entry_ref() = default;
    entry_ref(const entry_ref& ref);
    ~entry_ref();
    entry_ref& operator=(const entry_ref& ref);
    bool operator==(const entry_ref& ref) const;
    bool operator!=(const entry_ref& ref) const { return !(*this == ref); }
    status_t set_name(const char* newName);

    dev_t device = static_cast<dev_t>(-1);
    ino_t directory = static_cast<ino_t>(-1);
    char* name = nullptr;

    class Private;

private:
    std::string fFolder; // the folder's absolute path: here it is what leads to the entry
};

// A place in the file system: a name in a folder that exists. The entry itself need not exist. With
// `traverse` a symbolic link stands for what it leads to. Rename, MoveTo and Remove take the
// attributes along; a replaced file's own attributes go with it.
class BEntry : public BStatable {
public:
    BEntry() = default;
    BEntry(const BDirectory* directory, const char* path, bool traverse = false);
    BEntry(const entry_ref* ref, bool traverse = false);
    BEntry(const char* path, bool traverse = false);
    BEntry(const BEntry& entry) = default;
    ~BEntry() override;
    BEntry& operator=(const BEntry& entry) = default;
    bool operator==(const BEntry& entry) const;
    bool operator!=(const BEntry& entry) const { return !(*this == entry); }

    status_t InitCheck() const { return fStatus; }
    bool Exists() const;
    const char* Name() const; // null while it is not set
    status_t SetTo(const BDirectory* directory, const char* path, bool traverse = false);
    status_t SetTo(const entry_ref* ref, bool traverse = false);
    status_t SetTo(const char* path, bool traverse = false);
    void Unset();
    status_t GetStat(struct stat* info) const override;

    status_t GetRef(entry_ref* ref) const;
    status_t GetPath(BPath* path) const;
    status_t GetParent(BEntry* entry) const;
    status_t GetParent(BDirectory* directory) const;
    status_t GetName(char* buffer) const; // B_FILE_NAME_LENGTH bytes

    // With clobber an existing entry is replaced in one step: at any moment the name leads to the
    // old or the new file. Without it B_FILE_EXISTS. The entry then stands for the new place.
    status_t Rename(const char* path, bool clobber = false);
    status_t MoveTo(BDirectory* directory, const char* path = nullptr, bool clobber = false);
    status_t Remove(); // B_DIRECTORY_NOT_EMPTY for a folder with entries

private:
    status_t _SetPermissions(mode_t permissions) override;
    status_t _SetTimes(const time_t* accessTime, const time_t* modificationTime) override;
    status_t _MoveTo(const std::string& newPath, bool clobber);

    std::string fPath; // absolute, without ".", ".." or a link in the folder's part
    status_t fStatus = B_NO_INIT;
};

status_t get_ref_for_path(const char* path, entry_ref* ref);
