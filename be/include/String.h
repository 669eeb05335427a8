#pragma once

#include <stdarg.h>
#include <stdint.h>

#include <string>

#include <SupportDefs.h>

// A string of bytes, UTF-8 by convention, always ended by a NUL that Length() does not count.
// Offsets and lengths are bytes; a length beyond the text means "to its end", a negative or too
// large offset finds nothing and changes nothing. A null pointer is read as "". The I… calls ignore
// the case of ASCII letters. Not synchronised.
class BString {
public:
    BString() = default;
    BString(const char* string);
    BString(const BString& string) = default;
    BString(BString&& string) noexcept;
    BString(const char* string, int32 maxLength);
    ~BString() = default;

    const char* String() const { return fText.c_str(); }
    int32 Length() const { return static_cast<int32>(fText.size()); }
    int32 CountChars() const; // UTF-8 characters
    bool IsEmpty() const { return fText.empty(); }
    uint32 HashValue() const;

    BString& operator=(const BString& string) = default;
    BString& operator=(BString&& string) noexcept;
    BString& operator=(const char* string) { return SetTo(string); }
    BString& operator=(char character) { return SetTo(character, 1); }

    BString& SetTo(const char* string);
    BString& SetTo(const char* string, int32 maxLength);
    BString& SetTo(const BString& source) { return *this = source; }
    BString& SetTo(const BString& source, int32 maxLength);
    BString& SetTo(char character, int32 count);
    BString& SetToFormat(const char* format, ...) __attribute__((format(printf, 2, 3)));
    BString& SetToFormatVarArgs(const char* format, va_list arguments);
    BString& Adopt(BString& from); // leaves `from` empty
    BString& Adopt(BString& from, int32 maxLength);

    BString& CopyInto(BString& into, int32 fromOffset, int32 length) const;
    void CopyInto(char* into, int32 fromOffset, int32 length) const; // writes no NUL
    BString& MoveInto(BString& into, int32 fromOffset, int32 length);
    void MoveInto(char* into, int32 fromOffset, int32 length);

    BString& operator+=(const BString& string) { return Append(string); }
    BString& operator+=(const char* string) { return Append(string); }
    BString& operator+=(char character) { return Append(character, 1); }
    BString& Append(const BString& string);
    BString& Append(const BString& string, int32 length);
    BString& Append(const char* string);
    BString& Append(const char* string, int32 length);
    BString& Append(char character, int32 count);
    BString& Prepend(const BString& string);
    BString& Prepend(const BString& string, int32 length);
    BString& Prepend(const char* string);
    BString& Prepend(const char* string, int32 length);
    BString& Prepend(char character, int32 count);
    BString& Insert(const BString& string, int32 position);
    BString& Insert(const BString& string, int32 length, int32 position);
    BString& Insert(const char* string, int32 position);
    BString& Insert(const char* string, int32 length, int32 position);
    BString& Insert(char character, int32 count, int32 position);

    BString& Truncate(int32 newLength, bool lazy = true);
    BString& Remove(int32 from, int32 length);
    BString& RemoveFirst(const BString& string);
    BString& RemoveFirst(const char* string);
    BString& RemoveLast(const BString& string);
    BString& RemoveLast(const char* string);
    BString& RemoveAll(const BString& string);
    BString& RemoveAll(const char* string);
    BString& RemoveSet(const char* setOfBytesToRemove);
    BString& Trim(); // white space of both ends

    bool operator<(const BString& string) const { return Compare(string) < 0; }
    bool operator<=(const BString& string) const { return Compare(string) <= 0; }
    bool operator==(const BString& string) const { return fText == string.fText; }
    bool operator>=(const BString& string) const { return Compare(string) >= 0; }
    bool operator>(const BString& string) const { return Compare(string) > 0; }
    bool operator!=(const BString& string) const { return fText != string.fText; }
    bool operator<(const char* string) const { return Compare(string) < 0; }
    bool operator<=(const char* string) const { return Compare(string) <= 0; }
    bool operator==(const char* string) const { return Compare(string) == 0; }
    bool operator>=(const char* string) const { return Compare(string) >= 0; }
    bool operator>(const char* string) const { return Compare(string) > 0; }
    bool operator!=(const char* string) const { return Compare(string) != 0; }

    // Below 0, 0 or above 0, as strcmp tells.
    int Compare(const BString& string) const { return Compare(string.String()); }
    int Compare(const BString& string, int32 length) const;
    int Compare(const char* string) const;
    int Compare(const char* string, int32 length) const;
    int ICompare(const BString& string) const { return ICompare(string.String()); }
    int ICompare(const BString& string, int32 length) const;
    int ICompare(const char* string) const;
    int ICompare(const char* string, int32 length) const;

    // The offset of the hit, or B_ERROR. FindLast's offset is where the search begins: a hit ends
    // at or before it.
    int32 FindFirst(const BString& string) const { return FindFirst(string.String(), 0); }
    int32 FindFirst(const char* string) const { return FindFirst(string, 0); }
    int32 FindFirst(const BString& string, int32 fromOffset) const;
    int32 FindFirst(const char* string, int32 fromOffset) const;
    int32 FindFirst(char character) const { return FindFirst(character, 0); }
    int32 FindFirst(char character, int32 fromOffset) const;
    int32 FindLast(const BString& string) const { return FindLast(string.String(), Length()); }
    int32 FindLast(const char* string) const { return FindLast(string, Length()); }
    int32 FindLast(const BString& string, int32 beforeOffset) const;
    int32 FindLast(const char* string, int32 beforeOffset) const;
    int32 FindLast(char character) const { return FindLast(character, Length()); }
    int32 FindLast(char character, int32 beforeOffset) const;
    int32 IFindFirst(const BString& string) const { return IFindFirst(string.String(), 0); }
    int32 IFindFirst(const char* string) const { return IFindFirst(string, 0); }
    int32 IFindFirst(const BString& string, int32 fromOffset) const;
    int32 IFindFirst(const char* string, int32 fromOffset) const;
    int32 IFindLast(const BString& string) const { return IFindLast(string.String(), Length()); }
    int32 IFindLast(const char* string) const { return IFindLast(string, Length()); }
    int32 IFindLast(const BString& string, int32 beforeOffset) const;
    int32 IFindLast(const char* string, int32 beforeOffset) const;
    bool StartsWith(const BString& string) const { return StartsWith(string.String()); }
    bool StartsWith(const char* string) const;
    bool EndsWith(const BString& string) const { return EndsWith(string.String()); }
    bool EndsWith(const char* string) const;

    BString& ReplaceFirst(char replaceThis, char withThis);
    BString& ReplaceLast(char replaceThis, char withThis);
    BString& ReplaceAll(char replaceThis, char withThis, int32 fromOffset = 0);
    BString& Replace(char replaceThis, char withThis, int32 maxCount, int32 fromOffset = 0);
    BString& ReplaceFirst(const char* replaceThis, const char* withThis);
    BString& ReplaceLast(const char* replaceThis, const char* withThis);
    BString& ReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset = 0);
    BString& Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                     int32 fromOffset = 0);
    BString& IReplaceFirst(const char* replaceThis, const char* withThis);
    BString& IReplaceLast(const char* replaceThis, const char* withThis);
    BString& IReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset = 0);
    BString& IReplace(const char* replaceThis, const char* withThis, int32 maxCount,
                      int32 fromOffset = 0);
    BString& ReplaceSet(const char* setOfBytes, char with);
    BString& ReplaceSet(const char* setOfBytes, const char* with);

    char operator[](int32 index) const { return fText[static_cast<size_t>(index)]; }
    char& operator[](int32 index) { return fText[static_cast<size_t>(index)]; }
    char ByteAt(int32 index) const; // 0 outside the text

    // A writable buffer of at least maxLength bytes and a NUL; UnlockBuffer(-1) measures the text
    // itself. No other call is allowed in between.
    char* LockBuffer(int32 maxLength);
    BString& UnlockBuffer(int32 length = -1);

    BString& ToLower();
    BString& ToUpper();
    BString& Capitalize();
    BString& CapitalizeEachWord();
    BString& CharacterEscape(const char* setOfCharactersToEscape, char escapeWith);
    BString& CharacterEscape(const char* original, const char* setOfCharactersToEscape,
                             char escapeWith);
    BString& CharacterDeescape(char escapeChar);
    BString& CharacterDeescape(const char* original, char escapeChar);

    BString& operator<<(const char* string) { return Append(string); }
    BString& operator<<(const BString& string) { return Append(string); }
    BString& operator<<(char character) { return Append(character, 1); }
    BString& operator<<(bool value) { return Append(value ? "true" : "false"); }
    BString& operator<<(int value);
    BString& operator<<(unsigned int value);
    BString& operator<<(long value);
    BString& operator<<(unsigned long value);
    BString& operator<<(long long value);
    BString& operator<<(unsigned long long value);
    BString& operator<<(float value);  // two decimals
    BString& operator<<(double value); // two decimals

private:
    BString& _Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                      int32 fromOffset, bool ignoreCase);

    std::string fText;
};

inline bool operator<(const char* a, const BString& b) {
    return b > a;
}
inline bool operator<=(const char* a, const BString& b) {
    return b >= a;
}
inline bool operator==(const char* a, const BString& b) {
    return b == a;
}
inline bool operator>(const char* a, const BString& b) {
    return b < a;
}
inline bool operator>=(const char* a, const BString& b) {
    return b <= a;
}
inline bool operator!=(const char* a, const BString& b) {
    return b != a;
}

// For sorting arrays and lists of BString pointers.
int Compare(const BString& a, const BString& b);
int ICompare(const BString& a, const BString& b);
int Compare(const BString* a, const BString* b);
int ICompare(const BString* a, const BString* b);
