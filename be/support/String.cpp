#include <String.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

#include "support/StringPrivate.h"

namespace {

// The length that counts: no more than what is there, to the end for a length beyond it.
size_t boundedLength(const char* string, int32 length) {
    if (!string || length <= 0)
        return 0;
    return strnlen(string, static_cast<size_t>(length));
}

size_t bounded(const std::string& text, int32 length) {
    return length <= 0 ? 0 : std::min(text.size(), static_cast<size_t>(length));
}

bool isUpToEnd(const std::string& text, int32 offset) {
    return offset >= 0 && static_cast<size_t>(offset) <= text.size();
}

} // namespace

BString::BString(const char* string) : fText(orEmpty(string)) {}

BString::BString(BString&& string) noexcept : fText(std::exchange(string.fText, std::string())) {}

BString::BString(const char* string, int32 maxLength)
    : fText(orEmpty(string), boundedLength(string, maxLength)) {}

BString& BString::operator=(BString&& string) noexcept {
    if (this != &string)
        fText = std::exchange(string.fText, std::string());
    return *this;
}

int32 BString::CountChars() const {
    auto isCharacterStart = [](char byte) { return (byte & 0xC0) != 0x80; };
    return static_cast<int32>(std::count_if(fText.begin(), fText.end(), isCharacterStart));
}

uint32 BString::HashValue() const {
    uint32 hash = 2166136261u;
    for (char byte : fText)
        hash = (hash ^ static_cast<uint8>(byte)) * 16777619u;
    return hash;
}

BString& BString::SetTo(const char* string) {
    fText.assign(orEmpty(string));
    return *this;
}

BString& BString::SetTo(const char* string, int32 maxLength) {
    fText.assign(orEmpty(string), boundedLength(string, maxLength));
    return *this;
}

BString& BString::SetTo(const BString& source, int32 maxLength) {
    fText.assign(source.fText, 0, bounded(source.fText, maxLength));
    return *this;
}

BString& BString::SetTo(char character, int32 count) {
    fText.assign(static_cast<size_t>(max_c(count, 0)), character);
    return *this;
}

BString& BString::Adopt(BString& from) {
    return *this = std::move(from);
}

BString& BString::Adopt(BString& from, int32 maxLength) {
    *this = std::move(from);
    return Truncate(maxLength);
}

BString& BString::CopyInto(BString& into, int32 fromOffset, int32 length) const {
    if (!isUpToEnd(fText, fromOffset) || length < 0)
        return into;
    into.fText = fText.substr(static_cast<size_t>(fromOffset), static_cast<size_t>(length));
    return into;
}

void BString::CopyInto(char* into, int32 fromOffset, int32 length) const {
    if (into && isUpToEnd(fText, fromOffset) && length > 0)
        fText.copy(into, static_cast<size_t>(length), static_cast<size_t>(fromOffset));
}

BString& BString::MoveInto(BString& into, int32 fromOffset, int32 length) {
    if (&into == this || !isUpToEnd(fText, fromOffset) || length < 0)
        return into;
    CopyInto(into, fromOffset, length);
    Remove(fromOffset, length);
    return into;
}

void BString::MoveInto(char* into, int32 fromOffset, int32 length) {
    CopyInto(into, fromOffset, length);
    Remove(fromOffset, length);
}

BString& BString::Append(const BString& string) {
    fText += string.fText;
    return *this;
}

BString& BString::Append(const BString& string, int32 length) {
    fText.append(string.fText, 0, bounded(string.fText, length));
    return *this;
}

BString& BString::Append(const char* string) {
    fText += orEmpty(string);
    return *this;
}

BString& BString::Append(const char* string, int32 length) {
    fText.append(orEmpty(string), boundedLength(string, length));
    return *this;
}

BString& BString::Append(char character, int32 count) {
    fText.append(static_cast<size_t>(max_c(count, 0)), character);
    return *this;
}

BString& BString::Prepend(const BString& string) {
    return Insert(string, 0);
}

BString& BString::Prepend(const BString& string, int32 length) {
    return Insert(string, length, 0);
}

BString& BString::Prepend(const char* string) {
    return Insert(string, 0);
}

BString& BString::Prepend(const char* string, int32 length) {
    return Insert(string, length, 0);
}

BString& BString::Prepend(char character, int32 count) {
    return Insert(character, count, 0);
}

BString& BString::Insert(const BString& string, int32 position) {
    return Insert(string, string.Length(), position);
}

BString& BString::Insert(const BString& string, int32 length, int32 position) {
    if (isUpToEnd(fText, position))
        fText.insert(static_cast<size_t>(position), string.fText, 0, bounded(string.fText, length));
    return *this;
}

BString& BString::Insert(const char* string, int32 position) {
    if (isUpToEnd(fText, position))
        fText.insert(static_cast<size_t>(position), orEmpty(string));
    return *this;
}

BString& BString::Insert(const char* string, int32 length, int32 position) {
    if (isUpToEnd(fText, position))
        fText.insert(static_cast<size_t>(position), orEmpty(string), boundedLength(string, length));
    return *this;
}

BString& BString::Insert(char character, int32 count, int32 position) {
    if (isUpToEnd(fText, position) && count > 0)
        fText.insert(static_cast<size_t>(position), static_cast<size_t>(count), character);
    return *this;
}

BString& BString::Truncate(int32 newLength, bool /*lazy*/) {
    fText.resize(bounded(fText, newLength));
    return *this;
}

BString& BString::Remove(int32 from, int32 length) {
    if (isUpToEnd(fText, from) && length > 0)
        fText.erase(static_cast<size_t>(from), static_cast<size_t>(length));
    return *this;
}

BString& BString::RemoveSet(const char* setOfBytesToRemove) {
    std::erase_if(fText, [&](char byte) { return isInSet(setOfBytesToRemove, byte); });
    return *this;
}

BString& BString::Trim() {
    const char* const kWhiteSpace = " \t\n\v\f\r";
    size_t first = fText.find_first_not_of(kWhiteSpace);
    if (first == std::string::npos) {
        fText.clear();
        return *this;
    }
    fText.erase(fText.find_last_not_of(kWhiteSpace) + 1);
    fText.erase(0, first);
    return *this;
}

char BString::ByteAt(int32 index) const {
    return index >= 0 && index < Length() ? fText[static_cast<size_t>(index)] : '\0';
}

char* BString::LockBuffer(int32 maxLength) {
    size_t wanted = static_cast<size_t>(max_c(maxLength, 0));
    // What lies beyond the old text is zero, so that measuring the buffer finds the old text if
    // nothing was written.
    if (wanted > fText.size())
        fText.resize(wanted);
    return fText.data();
}

BString& BString::UnlockBuffer(int32 length) {
    size_t measured = length < 0 ? strnlen(fText.data(), fText.size()) : bounded(fText, length);
    fText.resize(measured);
    return *this;
}

BString& BString::ToLower() {
    std::transform(fText.begin(), fText.end(), fText.begin(), lowerAscii);
    return *this;
}

BString& BString::ToUpper() {
    std::transform(fText.begin(), fText.end(), fText.begin(), upperAscii);
    return *this;
}

BString& BString::Capitalize() {
    ToLower();
    if (!fText.empty())
        fText[0] = upperAscii(fText[0]);
    return *this;
}

BString& BString::CapitalizeEachWord() {
    bool isInWord = false;
    for (char& byte : fText) {
        byte = isInWord ? lowerAscii(byte) : upperAscii(byte);
        isInWord = (byte & 0x80) || isalnum(static_cast<unsigned char>(byte));
    }
    return *this;
}
