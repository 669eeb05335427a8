#include "interface/text/TextBuffer.h"

#include "support/Utf8.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32 kFirstCapacity = 64;

} // namespace

const char* TextBuffer::Text() const {
    if (fCapacity == fLength)
        const_cast<TextBuffer*>(this)->_Grow(1);
    _MoveGap(fLength);
    fBytes[fLength] = '\0';
    return fBytes.get();
}

const char* TextBuffer::PieceAt(int32 offset, int32* pieceLength) const {
    if (offset < fGapStart) {
        *pieceLength = fGapStart - offset;
        return fBytes.get() + offset;
    }
    *pieceLength = fLength - offset;
    return fBytes.get() + offset + _GapLength();
}

const char* TextBuffer::Range(int32 from, int32 to) const {
    if (from < fGapStart && to > fGapStart)
        _MoveGap(fGapStart - from < to - fGapStart ? from : to);
    int32 length;
    return PieceAt(from, &length);
}

void TextBuffer::Copy(int32 offset, int32 length, char* into) const {
    while (length > 0) {
        int32 pieceLength;
        const char* piece = PieceAt(offset, &pieceLength);
        const int32 part = std::min(pieceLength, length);
        memcpy(into, piece, part);
        into += part;
        offset += part;
        length -= part;
    }
}

void TextBuffer::Insert(int32 offset, const char* bytes, int32 length) {
    if (length <= 0)
        return;
    if (_GapLength() < length)
        _Grow(length);
    _MoveGap(offset);
    memcpy(fBytes.get() + offset, bytes, length);
    fGapStart += length;
    fLength += length;
}

void TextBuffer::Remove(int32 from, int32 to) {
    if (from >= to)
        return;
    // Bytes on both sides of the gap join it without being moved.
    if (from > fGapStart)
        _MoveGap(from);
    else if (to < fGapStart)
        _MoveGap(to);
    fGapStart = from;
    fLength -= to - from;
}

int32 TextBuffer::CharacterStart(int32 offset) const {
    int32 start = offset;
    while (start > 0 && start < fLength && offset - start < 3 && IsUtf8Continuation(ByteAt(start)))
        start--;
    if (start == offset || start >= fLength)
        return offset;
    return NextCharacter(start) > offset ? start : offset;
}

int32 TextBuffer::NextCharacter(int32 offset) const {
    if (offset >= fLength)
        return fLength;
    char bytes[4];
    const int32 length = std::min(4, fLength - offset);
    Copy(offset, length, bytes);
    return offset + DecodeUtf8(bytes, length).bytes;
}

int32 TextBuffer::PreviousCharacter(int32 offset) const {
    return offset <= 0 ? 0 : CharacterStart(offset - 1);
}

void TextBuffer::_MoveGap(int32 offset) const {
    const int32 gap = _GapLength();
    char* bytes = fBytes.get();
    if (offset < fGapStart)
        memmove(bytes + offset + gap, bytes + offset, fGapStart - offset);
    else if (offset > fGapStart)
        memmove(bytes + fGapStart, bytes + fGapStart + gap, offset - fGapStart);
    fGapStart = offset;
}

void TextBuffer::_Grow(int32 needed) {
    const int32 capacity = std::max({kFirstCapacity, fLength + needed, fLength + fLength / 2});
    auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
    if (fLength > 0)
        Copy(0, fLength, bytes.get());
    fBytes = std::move(bytes);
    fCapacity = capacity;
    fGapStart = fLength;
}
