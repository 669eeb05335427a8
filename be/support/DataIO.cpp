#include <DataIO.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// Where a Seek leads: B_BAD_VALUE before the beginning or beyond what off_t holds.
off_t seekTarget(off_t offset, uint32 seekMode, off_t position, size_t length) {
    off_t base = 0;
    if (seekMode == SEEK_CUR)
        base = position;
    else if (seekMode == SEEK_END)
        base = static_cast<off_t>(length);
    else if (seekMode != SEEK_SET)
        return B_BAD_VALUE;
    off_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || target < 0)
        return B_BAD_VALUE;
    return target;
}

ssize_t readFrom(const char* data, size_t length, off_t position, void* buffer, size_t size) {
    if (position < 0 || (!buffer && size > 0))
        return B_BAD_VALUE;
    if (static_cast<size_t>(position) >= length)
        return 0;
    size_t count = std::min(size, length - static_cast<size_t>(position));
    memcpy(buffer, data + position, count);
    return static_cast<ssize_t>(count);
}

} // namespace

BDataIO::~BDataIO() = default;

BPositionIO::~BPositionIO() = default;

ssize_t BPositionIO::Read(void* buffer, size_t size) {
    off_t position = Position();
    ssize_t count = ReadAt(position, buffer, size);
    if (count > 0)
        Seek(position + count, SEEK_SET);
    return count;
}

ssize_t BPositionIO::Write(const void* buffer, size_t size) {
    off_t position = Position();
    ssize_t count = WriteAt(position, buffer, size);
    if (count > 0)
        Seek(position + count, SEEK_SET);
    return count;
}

status_t BPositionIO::SetSize(off_t /*size*/) {
    return B_ERROR;
}

status_t BPositionIO::GetSize(off_t* size) const {
    if (!size)
        return B_BAD_VALUE;
    // Asking moves the position and moves it back: the object is the same before and after.
    auto* self = const_cast<BPositionIO*>(this);
    off_t position = Position();
    off_t end = self->Seek(0, SEEK_END);
    if (end < 0)
        return static_cast<status_t>(end);
    self->Seek(position, SEEK_SET);
    *size = end;
    return B_OK;
}

BMallocIO::~BMallocIO() {
    free(fData);
}

ssize_t BMallocIO::ReadAt(off_t position, void* buffer, size_t size) {
    return readFrom(fData, fLength, position, buffer, size);
}

ssize_t BMallocIO::WriteAt(off_t position, const void* buffer, size_t size) {
    off_t end = 0;
    if (position < 0 || (!buffer && size > 0) || __builtin_add_overflow(position, size, &end))
        return B_BAD_VALUE;
    if (size == 0)
        return 0;
    if (static_cast<size_t>(end) > fLength) {
        status_t status = SetSize(end);
        if (status != B_OK)
            return status;
    }
    memcpy(fData + position, buffer, size);
    return static_cast<ssize_t>(size);
}

off_t BMallocIO::Seek(off_t position, uint32 seekMode) {
    off_t target = seekTarget(position, seekMode, fPosition, fLength);
    if (target >= 0)
        fPosition = target;
    return target;
}

status_t BMallocIO::SetSize(off_t size) {
    if (size < 0)
        return B_BAD_VALUE;
    size_t wanted = static_cast<size_t>(size);
    if (wanted > fCapacity) {
        size_t capacity = std::max(wanted, fCapacity + fCapacity / 2);
        capacity = (capacity + fBlockSize - 1) / fBlockSize * fBlockSize;
        auto data = capacity < wanted ? nullptr : static_cast<char*>(realloc(fData, capacity));
        if (!data)
            return B_NO_MEMORY;
        fData = data;
        fCapacity = capacity;
    }
    if (wanted > fLength)
        memset(fData + fLength, 0, wanted - fLength);
    fLength = wanted;
    return B_OK;
}

void BMallocIO::SetBlockSize(size_t blockSize) {
    fBlockSize = max_c(blockSize, size_t(1));
}

BMemoryIO::BMemoryIO(void* data, size_t length)
    : fReadOnly(false), fData(static_cast<char*>(data)), fLength(length), fCapacity(length) {}

BMemoryIO::BMemoryIO(const void* data, size_t length)
    : fReadOnly(true), fData(static_cast<char*>(const_cast<void*>(data))), fLength(length),
      fCapacity(length) {}

BMemoryIO::~BMemoryIO() = default;

ssize_t BMemoryIO::ReadAt(off_t position, void* buffer, size_t size) {
    return readFrom(fData, fLength, position, buffer, size);
}

ssize_t BMemoryIO::WriteAt(off_t position, const void* buffer, size_t size) {
    if (fReadOnly)
        return B_NOT_ALLOWED;
    if (position < 0 || (!buffer && size > 0))
        return B_BAD_VALUE;
    if (static_cast<size_t>(position) >= fCapacity)
        return 0;
    size_t count = std::min(size, fCapacity - static_cast<size_t>(position));
    memcpy(fData + position, buffer, count);
    fLength = std::max(fLength, static_cast<size_t>(position) + count);
    return static_cast<ssize_t>(count);
}

off_t BMemoryIO::Seek(off_t position, uint32 seekMode) {
    off_t target = seekTarget(position, seekMode, fPosition, fLength);
    if (target >= 0)
        fPosition = target;
    return target;
}

status_t BMemoryIO::SetSize(off_t size) {
    if (fReadOnly)
        return B_NOT_ALLOWED;
    if (size < 0 || static_cast<size_t>(size) > fCapacity)
        return B_ERROR;
    fLength = static_cast<size_t>(size);
    return B_OK;
}
