#pragma once

#include <SupportDefs.h>

#include <memory>

// The bytes of a text, with a gap where the last change was made: appending and typing cost
// nothing but the bytes. Offsets are bytes and must lie in the text. One thread at a time.
class TextBuffer {
public:
    int32 Length() const { return fLength; }

    char ByteAt(int32 offset) const {
        return fBytes[offset < fGapStart ? offset : offset + _GapLength()];
    }

    // The whole text and a zero byte; closes the gap. Borrowed until the next change.
    const char* Text() const;

    // The bytes from `offset` on that lie in one piece, at least one before the end of the text.
    const char* PieceAt(int32 offset, int32* pieceLength) const;

    // The bytes of this range in one piece, moving the gap out of the way if it lies inside.
    const char* Range(int32 from, int32 to) const;

    void Copy(int32 offset, int32 length, char* into) const;
    void Insert(int32 offset, const char* bytes, int32 length);
    void Remove(int32 from, int32 to);

    // The first byte of the character that this offset lies in.
    int32 CharacterStart(int32 offset) const;
    // The neighbouring characters' first bytes; the ends of the text stay.
    int32 NextCharacter(int32 offset) const;
    int32 PreviousCharacter(int32 offset) const;

private:
    int32 _GapLength() const { return fCapacity - fLength; }
    void _MoveGap(int32 offset) const;
    void _Grow(int32 needed);

    // Closing the gap changes no byte of the text, so that reading may do it.
    mutable std::unique_ptr<char[]> fBytes;
    mutable int32 fGapStart = 0;
    int32 fLength = 0;
    int32 fCapacity = 0;
};
