#include <String.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

#include "support/StringPrivate.h"

namespace {

bool sameByte(char a, char b) {
    return a == b;
}

bool sameLetter(char a, char b) {
    return lowerAscii(a) == lowerAscii(b);
}

int32 findForward(std::string_view text, const char* wanted, int32 fromOffset, bool ignoreCase) {
    if (!wanted || fromOffset < 0 || static_cast<size_t>(fromOffset) > text.size())
        return B_ERROR;
    std::string_view pattern(wanted);
    if (!ignoreCase) {
        size_t hit = text.find(pattern, static_cast<size_t>(fromOffset));
        return hit == std::string_view::npos ? B_ERROR : static_cast<int32>(hit);
    }
    auto hit = std::search(text.begin() + fromOffset, text.end(), pattern.begin(), pattern.end(),
                           sameLetter);
    if (hit == text.end() && !pattern.empty())
        return B_ERROR;
    return static_cast<int32>(hit - text.begin());
}

// The hit lies before `beforeOffset`, its last byte at most directly before it.
int32 findBackward(std::string_view text, const char* wanted, int32 beforeOffset, bool ignoreCase) {
    if (!wanted || beforeOffset < 0)
        return B_ERROR;
    text = text.substr(0, static_cast<size_t>(beforeOffset));
    std::string_view pattern(wanted);
    auto hit = std::find_end(text.begin(), text.end(), pattern.begin(), pattern.end(),
                             ignoreCase ? sameLetter : sameByte);
    if (hit == text.end() && !pattern.empty())
        return B_ERROR;
    return static_cast<int32>(hit - text.begin());
}

int compareIgnoringCase(std::string_view a, std::string_view b) {
    for (size_t i = 0; i < std::min(a.size(), b.size()); i++) {
        int difference = static_cast<unsigned char>(lowerAscii(a[i])) -
                         static_cast<unsigned char>(lowerAscii(b[i]));
        if (difference != 0)
            return difference;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

std::string_view firstBytes(std::string_view text, int32 length) {
    return text.substr(0, static_cast<size_t>(max_c(length, 0)));
}

} // namespace

int BString::Compare(const char* string) const {
    return strcmp(String(), orEmpty(string));
}

int BString::Compare(const char* string, int32 length) const {
    return strncmp(String(), orEmpty(string), static_cast<size_t>(max_c(length, 0)));
}

int BString::Compare(const BString& string, int32 length) const {
    return Compare(string.String(), length);
}

int BString::ICompare(const char* string) const {
    return compareIgnoringCase(fText, orEmpty(string));
}

int BString::ICompare(const char* string, int32 length) const {
    return compareIgnoringCase(firstBytes(fText, length), firstBytes(orEmpty(string), length));
}

int BString::ICompare(const BString& string, int32 length) const {
    return ICompare(string.String(), length);
}

int32 BString::FindFirst(const BString& string, int32 fromOffset) const {
    return findForward(fText, string.String(), fromOffset, false);
}

int32 BString::FindFirst(const char* string, int32 fromOffset) const {
    return findForward(fText, string, fromOffset, false);
}

int32 BString::FindFirst(char character, int32 fromOffset) const {
    const char pattern[] = {character, '\0'};
    return character ? findForward(fText, pattern, fromOffset, false) : B_ERROR;
}

int32 BString::FindLast(const BString& string, int32 beforeOffset) const {
    return findBackward(fText, string.String(), beforeOffset, false);
}

int32 BString::FindLast(const char* string, int32 beforeOffset) const {
    return findBackward(fText, string, beforeOffset, false);
}

int32 BString::FindLast(char character, int32 beforeOffset) const {
    const char pattern[] = {character, '\0'};
    return character ? findBackward(fText, pattern, beforeOffset, false) : B_ERROR;
}

int32 BString::IFindFirst(const BString& string, int32 fromOffset) const {
    return findForward(fText, string.String(), fromOffset, true);
}

int32 BString::IFindFirst(const char* string, int32 fromOffset) const {
    return findForward(fText, string, fromOffset, true);
}

int32 BString::IFindLast(const BString& string, int32 beforeOffset) const {
    return findBackward(fText, string.String(), beforeOffset, true);
}

int32 BString::IFindLast(const char* string, int32 beforeOffset) const {
    return findBackward(fText, string, beforeOffset, true);
}

bool BString::StartsWith(const char* string) const {
    return fText.starts_with(orEmpty(string));
}

bool BString::EndsWith(const char* string) const {
    return fText.ends_with(orEmpty(string));
}

BString& BString::RemoveFirst(const BString& string) {
    return RemoveFirst(string.String());
}

BString& BString::RemoveFirst(const char* string) {
    return _Replace(string, "", 1, 0, false);
}

BString& BString::RemoveLast(const BString& string) {
    return RemoveLast(string.String());
}

BString& BString::RemoveLast(const char* string) {
    return ReplaceLast(string, "");
}

BString& BString::RemoveAll(const BString& string) {
    return ReplaceAll(string.String(), "");
}

BString& BString::RemoveAll(const char* string) {
    return ReplaceAll(string, "");
}

BString& BString::ReplaceFirst(char replaceThis, char withThis) {
    return Replace(replaceThis, withThis, 1);
}

BString& BString::ReplaceLast(char replaceThis, char withThis) {
    int32 hit = FindLast(replaceThis);
    if (hit >= 0)
        fText[static_cast<size_t>(hit)] = withThis;
    return *this;
}

BString& BString::ReplaceAll(char replaceThis, char withThis, int32 fromOffset) {
    return Replace(replaceThis, withThis, std::numeric_limits<int32>::max(), fromOffset);
}

BString& BString::Replace(char replaceThis, char withThis, int32 maxCount, int32 fromOffset) {
    int32 hit = FindFirst(replaceThis, fromOffset);
    for (; hit >= 0 && maxCount > 0; maxCount--) {
        fText[static_cast<size_t>(hit)] = withThis;
        hit = FindFirst(replaceThis, hit + 1);
    }
    return *this;
}

BString& BString::ReplaceFirst(const char* replaceThis, const char* withThis) {
    return _Replace(replaceThis, withThis, 1, 0, false);
}

BString& BString::ReplaceLast(const char* replaceThis, const char* withThis) {
    int32 hit = FindLast(replaceThis);
    return hit < 0 ? *this : _Replace(replaceThis, withThis, 1, hit, false);
}

BString& BString::ReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset) {
    return _Replace(replaceThis, withThis, std::numeric_limits<int32>::max(), fromOffset, false);
}

BString& BString::Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                          int32 fromOffset) {
    return _Replace(replaceThis, withThis, maxCount, fromOffset, false);
}

BString& BString::IReplaceFirst(const char* replaceThis, const char* withThis) {
    return _Replace(replaceThis, withThis, 1, 0, true);
}

BString& BString::IReplaceLast(const char* replaceThis, const char* withThis) {
    int32 hit = IFindLast(replaceThis);
    return hit < 0 ? *this : _Replace(replaceThis, withThis, 1, hit, true);
}

BString& BString::IReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset) {
    return _Replace(replaceThis, withThis, std::numeric_limits<int32>::max(), fromOffset, true);
}

BString& BString::IReplace(const char* replaceThis, const char* withThis, int32 maxCount,
                           int32 fromOffset) {
    return _Replace(replaceThis, withThis, maxCount, fromOffset, true);
}

BString& BString::_Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                           int32 fromOffset, bool ignoreCase) {
    std::string pattern(orEmpty(replaceThis));
    if (pattern.empty() || fromOffset < 0 || fromOffset > Length())
        return *this;
    std::string replacement(orEmpty(withThis));
    std::string result;
    int32 done = 0;
    for (; maxCount > 0; maxCount--) {
        int32 hit = findForward(fText, pattern.c_str(), max_c(done, fromOffset), ignoreCase);
        if (hit < 0)
            break;
        result.append(fText, static_cast<size_t>(done), static_cast<size_t>(hit - done));
        result += replacement;
        done = hit + static_cast<int32>(pattern.size());
    }
    if (done > 0)
        fText = result.append(fText, static_cast<size_t>(done));
    return *this;
}

BString& BString::ReplaceSet(const char* setOfBytes, char with) {
    std::replace_if(
        fText.begin(), fText.end(), [&](char byte) { return isInSet(setOfBytes, byte); }, with);
    return *this;
}

BString& BString::ReplaceSet(const char* setOfBytes, const char* with) {
    std::string result;
    for (char byte : fText) {
        if (isInSet(setOfBytes, byte))
            result += orEmpty(with);
        else
            result += byte;
    }
    fText = std::move(result);
    return *this;
}

int Compare(const BString& a, const BString& b) {
    return a.Compare(b);
}

int ICompare(const BString& a, const BString& b) {
    return a.ICompare(b);
}

int Compare(const BString* a, const BString* b) {
    return a->Compare(*b);
}

int ICompare(const BString* a, const BString* b) {
    return a->ICompare(*b);
}
