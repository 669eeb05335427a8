#pragma once

#include <stdio.h>

#include <SupportDefs.h>

// A stream of bytes. Both calls give the number of bytes that went through, which may be fewer than
// asked for, or an error code.
class BDataIO {
public:
    BDataIO() = default;
    virtual ~BDataIO();
    BDataIO(const BDataIO&) = delete;
    BDataIO& operator=(const BDataIO&) = delete;

    virtual ssize_t Read(void* buffer, size_t size) = 0;
    virtual ssize_t Write(const void* buffer, size_t size) = 0;
};

// A stream with a position. The …At calls leave the position alone.
class BPositionIO : public BDataIO {
public:
    BPositionIO() = default;
    ~BPositionIO() override;

    ssize_t Read(void* buffer, size_t size) override;
    ssize_t Write(const void* buffer, size_t size) override;
    virtual ssize_t ReadAt(off_t position, void* buffer, size_t size) = 0;
    virtual ssize_t WriteAt(off_t position, const void* buffer, size_t size) = 0;
    virtual off_t Seek(off_t position, uint32 seekMode) = 0; // SEEK_SET, SEEK_CUR, SEEK_END
    virtual off_t Position() const = 0;
    virtual status_t SetSize(off_t size);
    virtual status_t GetSize(off_t* size) const;
};

// A stream in memory that grows as it is written.
class BMallocIO : public BPositionIO {
public:
    BMallocIO() = default;
    ~BMallocIO() override;

    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t position, uint32 seekMode) override;
    off_t Position() const override { return fPosition; }
    status_t SetSize(off_t size) override;

    void SetBlockSize(size_t blockSize);
    const void* Buffer() const { return fData; }
    size_t BufferLength() const { return fLength; }

private:
    size_t fBlockSize = 256;
    size_t fCapacity = 0;
    size_t fLength = 0;
    char* fData = nullptr;
    off_t fPosition = 0;
};

// A stream over memory of somebody else's, of a fixed size.
class BMemoryIO : public BPositionIO {
public:
    BMemoryIO(void* data, size_t length);
    BMemoryIO(const void* data, size_t length); // read only: B_NOT_ALLOWED
    ~BMemoryIO() override;

    ssize_t ReadAt(off_t position, void* buffer, size_t size) override;
    ssize_t WriteAt(off_t position, const void* buffer, size_t size) override;
    off_t Seek(off_t position, uint32 seekMode) override;
    off_t Position() const override { return fPosition; }
    status_t SetSize(off_t size) override;

private:
    bool fReadOnly;
    char* fData;
    size_t fLength;
    size_t fCapacity;
    off_t fPosition = 0;
};
