#include "post/PostHistory.h"

#include "settings/ReplaceFile.h"

#include <Autolock.h>
#include <FindDirectory.h>
#include <Locker.h>
#include <Path.h>

#include <algorithm>

namespace {

constexpr size_t kLongestLine = 4096;
constexpr size_t kLongestWritten = 4094;

// Guards the files.
BLocker& HistoryLock() {
    static BLocker& lock = *new BLocker("post history");
    return lock;
}

// The end of the file ends its last line, too.
std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        if (end - start < kLongestLine)
            lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string Written(const std::vector<std::string>& entries) {
    std::string text;
    for (const std::string& entry : entries) {
        if (entry.size() <= kLongestWritten)
            text += entry + "\n";
    }
    return text;
}

bool Has(const std::vector<std::string>& entries, const std::string& entry) {
    return std::find(entries.rbegin(), entries.rend(), entry) != entries.rend();
}

} // namespace

PostHistory::PostHistory(const char* name) {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK || path.Append("2ch") != B_OK ||
        path.Append(name) != B_OK)
        return;
    fPath = path.Path();
    const BAutolock lock(HistoryLock());
    std::string text;
    if (ReadWholeFile(fPath.c_str(), &text) == B_OK)
        fEntries = LinesOf(text);
}

status_t PostHistory::Add(const std::string& entry) {
    if (entry.empty() || Has(fEntries, entry))
        return B_OK;
    const BAutolock lock(HistoryLock());
    std::string old;
    ReadWholeFile(fPath.c_str(), &old);
    for (const std::string& other : LinesOf(old)) {
        if (!Has(fEntries, other))
            fEntries.push_back(other);
    }
    if (!Has(fEntries, entry))
        fEntries.push_back(entry);
    std::string text = Written(fEntries);
    if (old.size() > text.size())
        text += old.substr(text.size());
    return ReplaceFile(fPath.c_str(), text);
}
