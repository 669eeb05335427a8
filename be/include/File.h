#pragma once

#include <DataIO.h>
#include <Node.h>

// An open file. See StorageDefs.h for the modes. Follows links. B_ENTRY_NOT_FOUND for a file that
// is not there, B_IS_A_DIRECTORY
// for a folder that is opened for writing. Data is not buffered.
class BFile : public BNode, public BPositionIO {
public:
    BFile() = default;
    BFile(const BFile& file);
    BFile(const entry_ref* ref, uint32 openMode);
    BFile(const BEntry* entry, uint32 openMode);
    BFile(const char* path, uint32 openMode);
    BFile(const BDirectory* directory, const char* path, uint32 openMode);
    ~BFile() override;
    BFile& operator=(const BFile& file);

    status_t SetTo(const entry_ref* ref, uint32 openMode);
    status_t SetTo(const BEntry* entry, uint32 openMode);
    status_t SetTo(const char* path, uint32 openMode);
    status_t SetTo(const BDirectory* directory, const char* path, uint32 openMode);

    bool IsReadable() const;
    bool IsWritable() const;

    ssize_t Read(void* buffer, size_t size) override;
    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    ssize_t Write(const void* buffer, size_t size) override;
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t offset, uint32 seekMode) override;
    off_t Position() const override;
    status_t SetSize(off_t size) override;
    status_t GetSize(off_t* size) const override;

private:
    status_t _Create(const std::string& path, int flags);

    uint32 fMode = 0;
};
