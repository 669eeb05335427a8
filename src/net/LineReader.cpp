#include "net/LineReader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {
constexpr int32 kStep = 8192;
constexpr int32 kBlock = 1024;
} // namespace

LineReader::~LineReader() {
    free(fBytes);
}

void LineReader::Clear() {
    free(fBytes);
    fBytes = nullptr;
    fCapacity = fStart = fEnd = fScanned = 0;
    fIsInsideLine = false;
}

bool LineReader::Reset() {
    Clear();
    fBytes = static_cast<char*>(calloc(kStep, 1));
    fCapacity = fBytes != nullptr ? kStep : 0;
    return fBytes != nullptr;
}

bool LineReader::_MakeRoom() {
    if (fStart > 0 && fEnd + kBlock > fCapacity) {
        memmove(fBytes, fBytes + fStart, fEnd - fStart);
        fEnd -= fStart;
        fScanned -= fStart;
        fStart = 0;
    }
    if (fEnd + kBlock <= fCapacity)
        return true;
    fprintf(stderr, "realloc(): %ld->", static_cast<long>(fCapacity));
    char* grown = static_cast<char*>(realloc(fBytes, fCapacity + kStep));
    if (grown == nullptr)
        return false;
    fBytes = grown;
    fCapacity += kStep;
    fprintf(stderr, "%ld\n", static_cast<long>(fCapacity));
    return true;
}

void LineReader::_Consume(int32 length) {
    fStart += length;
    if (fStart == fEnd)
        fStart = fEnd = 0;
    fScanned = fStart;
}

int32 LineReader::_Measure(size_t most, const Source& source, bool* isLine) {
    for (;;) {
        const void* feed =
            fEnd > fScanned ? memchr(fBytes + fScanned, '\n', fEnd - fScanned) : nullptr;
        if (feed != nullptr) {
            const size_t length = static_cast<const char*>(feed) + 1 - fBytes - fStart;
            *isLine = length <= most;
            return static_cast<int32>(*isLine ? length : most);
        }
        *isLine = false;
        fScanned = fEnd;
        if (static_cast<size_t>(fEnd - fStart) >= most)
            return static_cast<int32>(most);
        if (!_MakeRoom())
            return -1;
        const int32 received = source(fBytes + fEnd, kBlock);
        if (received < 1)
            return received;
        fEnd += received;
    }
}

int32 LineReader::_HandOut(char* buffer, int32 length) {
    memcpy(buffer, fBytes + fStart, length);
    _Consume(length);
    return length;
}

int32 LineReader::ReadLine(char* buffer, size_t size, const Source& source) {
    bool isLine = false;
    const int32 length = _Measure(size, source, &isLine);
    if (length < 1)
        return length;
    return isLine ? _HandOut(buffer, length) : -1;
}

int32 LineReader::ReadPart(char* buffer, size_t size, const Source& source) {
    bool isLine = false;
    const int32 length = _Measure(size, source, &isLine);
    if (length < 1)
        return length;
    fIsInsideLine = !isLine;
    return _HandOut(buffer, length);
}

int32 LineReader::Read(void* buffer, size_t size, const Source& source) {
    const int32 buffered = fEnd - fStart;
    if (buffered == 0)
        return source(buffer, size);
    const int32 length = static_cast<size_t>(buffered) > size ? static_cast<int32>(size) : buffered;
    return _HandOut(static_cast<char*>(buffer), length);
}
