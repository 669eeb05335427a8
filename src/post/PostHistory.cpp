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

// Guards the files and what the last of them left over.
BLocker& HistoryLock() {
    static BLocker& lock = *new BLocker("post history");
    return lock;
}

// One reader serves all files: what stands behind the last line feed of one begins the first line
// that is read next. Files that were written here end with a line feed.
std::string& CarriedOver() {
    static std::string& text = *new std::string;
    return text;
}

std::vector<std::string> TakeLines(std::string* text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end = text->find('\n'); end != text->npos; end = text->find('\n', start)) {
        if (end - start < kLongestLine)
            lines.push_back(text->substr(start, end - start));
        start = end + 1;
    }
    text->erase(0, start);
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
    if (ReadWholeFile(fPath.c_str(), &text) != B_OK)
        return;
    text.insert(0, CarriedOver());
    fEntries = TakeLines(&text);
    CarriedOver() = text.size() < kLongestLine ? text : "";
}

status_t PostHistory::Add(const std::string& entry) {
    if (entry.empty() || Has(fEntries, entry))
        return B_OK;
    const BAutolock lock(HistoryLock());
    std::string old;
    ReadWholeFile(fPath.c_str(), &old);
    std::string lines = old;
    for (const std::string& other : TakeLines(&lines)) {
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
