#include "cache/CacheSearch.h"

#include "text/Folding.h"
#include "text/ToUtf8.h"
#include "text/html.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>
#include <FindDirectory.h>
#include <Path.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

constexpr int kDeepest = 8;              // folders: a host, and a board's parts
constexpr size_t kStartOfFile = 8192;    // of most, the first line and more
constexpr off_t kLongestFile = 64 << 20; // more is no thread
constexpr size_t kLongestShown = 200;    // bytes of a line

// The places of fields in a line of a dat.
constexpr size_t kBody = 3;
constexpr size_t kTitle = 4; // on the first line alone

bool IsThread(std::string_view name) {
    return name.ends_with(".dat") || name.ends_with(".cgi");
}

// A name in a folder; either may be empty.
std::string Below(std::string folder, std::string_view name) {
    if (!folder.empty() && !name.empty())
        folder += '/';
    return folder.append(name);
}

std::string_view TakeLine(std::string_view* text) {
    const std::string_view line = text->substr(0, text->find('\n'));
    text->remove_prefix(std::min(text->size(), line.size() + 1));
    return line;
}

// The fields of a line of a dat: name, mail, date, body, and on the first line the title. Older
// ones are divided by commas.
std::vector<std::string_view> FieldsOf(std::string_view line) {
    const std::string_view separator = line.find("<>") != line.npos ? "<>" : ",";
    std::vector<std::string_view> fields;
    for (;;) {
        const size_t end = line.find(separator);
        fields.push_back(line.substr(0, end));
        if (end == line.npos)
            return fields;
        line.remove_prefix(end + separator.size());
    }
}

std::string FieldOf(const std::vector<std::string_view>& fields, size_t index) {
    if (index >= fields.size())
        return {};
    BString text(fields[index].data(), static_cast<int32>(fields[index].size()));
    text.ReplaceAll("<br>", "\n");
    ReplaceHTMLEscapeString(&text);
    return {text.String(), static_cast<size_t>(text.Length())};
}

// Quotation marks and the like are written as references, and so is what cp932 lacks.
bool StandsAsItIs(std::string_view text) {
    return std::ranges::all_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte >= 0xE3 && byte <= 0xE9) || (byte >= 0x80 && byte < 0xC0) ||
               (byte < 0x80 && strchr("<>&'\"", c) == nullptr);
    });
}

// The line of a body in which it stands, short enough to be shown.
std::string LineWith(std::string_view body, const std::string& wanted) {
    while (!body.empty()) {
        std::string_view line = TakeLine(&body);
        while (line.starts_with(' '))
            line.remove_prefix(1);
        if (Folded(line).find(wanted) == std::string::npos)
            continue;
        size_t length = std::min(line.size(), kLongestShown);
        while (length > 0 && length < line.size() &&
               (static_cast<unsigned char>(line[length]) & 0xC0) == 0x80)
            length--;
        return std::string(line.substr(0, length));
    }
    return {};
}

} // namespace

// A thread's file, found on the way.
struct CacheSearch::File {
    std::string place; // below the cache's folder: "HOST/BOARD"
    std::string name;
    BFile file;

    // As UTF-8; of a file that is no thread's, nothing.
    std::string Read(size_t most) {
        off_t size = 0;
        if (file.GetSize(&size) != B_OK || size > kLongestFile)
            return {};
        std::string bytes(std::min(most, static_cast<size_t>(size)), '\0');
        const ssize_t count = file.ReadAt(0, bytes.data(), bytes.size());
        bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
        return name.ends_with(".cgi") ? bytes : ToUtf8(bytes);
    }
    CacheMatch Match(std::string title) const {
        const size_t slash = place.find('/');
        time_t modified = 0;
        file.GetModificationTime(&modified);
        return {place.substr(0, slash),
                slash == place.npos ? "" : place.substr(slash + 1),
                name,
                std::move(title),
                0,
                "",
                modified};
    }
};

CacheSearch::CacheSearch(const std::string& folder, const std::string& wanted)
    : fFolder(folder), fWanted(Folded(wanted)), fStandsAsItIs(StandsAsItIs(fWanted)) {}

std::string CacheSearch::CacheFolder() {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK ||
        path.Append("2ch/2chCache") != B_OK)
        return {};
    return path.Path();
}

bool CacheSearch::SearchTitles(const Found& found, const GoesOn& goesOn) {
    fFiles = 0;
    return fWanted.empty() ||
           _Walk(
               "", 0, [&](File& file) { return _LookIntoTitle(file, found); }, goesOn);
}

bool CacheSearch::SearchPosts(const Found& found, const GoesOn& goesOn) {
    fFiles = 0;
    return fWanted.empty() ||
           _Walk(
               "", 0, [&](File& file) { return _LookIntoPosts(file, found); }, goesOn);
}

// Files before folders; what begins with "." is the program's own.
bool CacheSearch::_Walk(const std::string& place, int depth, const Look& look,
                        const GoesOn& goesOn) {
    const std::string path = Below(fFolder, place);
    BDirectory directory(path.c_str());
    std::vector<std::string> folders;
    entry_ref ref;
    while (directory.GetNextRef(&ref) == B_OK) {
        const std::string name = ref.name;
        if (name.starts_with('.'))
            continue;
        if (!IsThread(name)) {
            folders.push_back(name);
            continue;
        }
        if (!goesOn(fFiles++))
            return false;
        File file{place, name, BFile(Below(path, name).c_str(), B_READ_ONLY)};
        if (file.file.InitCheck() == B_OK && !look(file))
            return false;
    }
    std::ranges::sort(folders);
    for (const std::string& folder : folders) {
        if (depth < kDeepest && !_Walk(Below(place, folder), depth + 1, look, goesOn))
            return false;
    }
    return true;
}

bool CacheSearch::_LookIntoTitle(File& file, const Found& found) const {
    std::string start = file.Read(kStartOfFile);
    if (start.find('\n') == std::string::npos)
        start = file.Read(kLongestFile);
    std::string_view rest = start;
    const std::string title = FieldOf(FieldsOf(TakeLine(&rest)), kTitle);
    return Folded(title).find(fWanted) == std::string::npos || found(file.Match(title));
}

bool CacheSearch::_LookIntoPosts(File& file, const Found& found) const {
    const std::string text = file.Read(kLongestFile);
    if (fStandsAsItIs && Folded(text).find(fWanted) == std::string::npos)
        return true;
    std::string title;
    std::string_view rest = text;
    for (int32 number = 1; !rest.empty(); number++) {
        const std::vector<std::string_view> fields = FieldsOf(TakeLine(&rest));
        if (number == 1)
            title = FieldOf(fields, kTitle);
        const std::string body = FieldOf(fields, kBody);
        if (Folded(body).find(fWanted) == std::string::npos)
            continue;
        CacheMatch match = file.Match(title);
        match.number = number;
        match.line = LineWith(body, fWanted);
        if (!found(match))
            return false;
    }
    return true;
}
