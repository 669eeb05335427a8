#pragma once

#include <SupportDefs.h>

#include <cstddef>
#include <functional>

// Takes lines out of a stream of bytes that arrives in blocks; what follows a line is kept for the
// next call. For one thread.
class LineReader {
public:
    // Delivers up to `size` bytes into `buffer`: the count, 0 at the end, negative on an error.
    using Source = std::function<int32(void* buffer, size_t size)>;

    LineReader() = default;
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // Forgets what is buffered and starts with an empty buffer of 8,192 bytes. False without
    // memory.
    bool Reset();
    // Forgets what is buffered and releases the buffer.
    void Clear();

    // The next line with its line feed, not terminated. Returns its length; the source's result
    // when that is below 1 (an unfinished last line is never returned); −1 when the line is longer
    // than `size`, as soon as that is known, so that an endless line costs no memory.
    int32 ReadLine(char* buffer, size_t size, const Source& source);

    // The next line, or the next `size` bytes of one that is longer: only what ends with a line
    // feed ends a line. The results are those of ReadLine otherwise.
    int32 ReadPart(char* buffer, size_t size, const Source& source);
    // Whether what has come so far ends inside a line.
    bool IsInsideLine() const { return fIsInsideLine || fStart != fEnd; }

    // Bytes already buffered, else from the source; never both in one call.
    int32 Read(void* buffer, size_t size, const Source& source);

private:
    // The length of the next line, if it is among the first `most` bytes; `most` when it is not;
    // else the source's result, or −1 without memory.
    int32 _Measure(size_t most, const Source& source, bool* isLine);
    bool _MakeRoom();
    int32 _HandOut(char* buffer, int32 length);
    void _Consume(int32 length);

    char* fBytes = nullptr;
    int32 fCapacity = 0;
    int32 fStart = 0;           // where the unread bytes begin
    int32 fEnd = 0;             // where they end
    int32 fScanned = 0;         // up to here there is no line feed
    bool fIsInsideLine = false; // a part of a line was handed out last
};
