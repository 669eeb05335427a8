#pragma once

#include <memory>

#include <EntryList.h>
#include <Node.h>

class BFile;

// An open folder. Its entries come in no order, without "." and "..", and without the folder that
// holds the attributes; B_ENTRY_NOT_FOUND ends the walk. Follows links. B_NOT_A_DIRECTORY for
// anything else.
class BDirectory : public BNode, public BEntryList {
public:
    BDirectory();
    BDirectory(const BDirectory& directory);
    BDirectory(const entry_ref* ref);
    BDirectory(const BEntry* entry);
    BDirectory(const char* path);
    BDirectory(const BDirectory* directory, const char* path);
    ~BDirectory() override;
    BDirectory& operator=(const BDirectory& directory);

    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const char* path);
    status_t SetTo(const BDirectory* directory, const char* path);

    status_t GetEntry(BEntry* entry) const;
    bool IsRootDirectory() const;
    status_t FindEntry(const char* path, BEntry* entry, bool traverse = false) const;
    bool Contains(const char* path, int32 nodeFlags = B_ANY_NODE) const;
    bool Contains(const BEntry* entry, int32 nodeFlags = B_ANY_NODE) const;
    status_t GetStatFor(const char* path, struct stat* info) const;

    status_t GetNextEntry(BEntry* entry, bool traverse = false) override;
    status_t GetNextRef(entry_ref* ref) override;
    status_t Rewind() override;
    int32 CountEntries() override; // rewinds

    status_t CreateDirectory(const char* path, BDirectory* directory);
    status_t CreateFile(const char* path, BFile* file, bool failIfExists = false);

private:
    void _Close() override;
    status_t _NextName(std::string* name);

    struct Iterator;
    std::unique_ptr<Iterator> fIterator;
};

// Creates every missing folder of the path; B_OK when all are there already.
status_t create_directory(const char* path, mode_t mode);
