#include "cache/NPCache.h"

#include "cache/Folders.h"
#include "cache/TextAttribute.h"
#include "text/PathNames.h"

#include <FindDirectory.h>
#include <Node.h>
#include <NodeInfo.h>
#include <fs_attr.h>
#include <parsedate.h>

#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr const char* kRoot = "2ch/2chCache";
constexpr const char* kUnfinished = "unfinished";
constexpr const char* kBesideFolder = ".arriving";
constexpr size_t kLongestText = 256 * 1024; // bytes of an attribute

status_t BoardPath(const char* host, const char* board, BPath* path) {
    if (!IsGoodComponent(host) || !IsGoodBoardFolder(board)) {
        fprintf(stderr, "cache: refused the names \"%s\" and \"%s\"\n", host, board);
        return B_BAD_VALUE;
    }
    status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, path);
    for (const char* name : {kRoot, host, board}) {
        if (status == B_OK)
            status = path->Append(name);
    }
    return status;
}

status_t DatPath(const char* host, const char* board, const char* file, BPath* path) {
    const status_t status = BoardPath(host, board, path);
    if (status != B_OK)
        return status;
    if (!IsGoodComponent(file)) {
        fprintf(stderr, "cache: refused the file name \"%s\"\n", file);
        return B_BAD_VALUE;
    }
    return path->Append(file);
}

status_t BesidePath(const char* host, const char* board, const char* file, BPath* path) {
    BPath place;
    status_t status = DatPath(host, board, file, &place);
    if (status == B_OK)
        status = place.GetParent(path);
    if (status == B_OK)
        status = path->Append(kBesideFolder);
    return status == B_OK ? path->Append(file) : status;
}

// HTTP's third form, as asctime writes it, names no zone and means this one.
std::string WithZone(std::string_view date) {
    const size_t word = date.rfind(' ') + 1;
    const bool endsWithYear =
        date.size() == word + 4 && date.find_first_not_of("0123456789", word) == date.npos;
    return std::string(date) + (endsWithYear ? " GMT" : "");
}

} // namespace

bool NPCache::CanHold(const char* host, const char* board, const char* file) {
    BPath path;
    return DatPath(host, board, file, &path) == B_OK;
}

status_t NPCache::SetTo(const char* host, const char* board, const char* file, Open how) {
    fStatus = -1;
    fFolderTrouble.clear();
    fFile.Unset();
    const status_t status = _Open(host, board, file, how);
    if (status != B_OK)
        return status;
    fStatus = 0;
    if (GetSize() == 0)
        fFile.SetModificationTime(0); // an empty copy must never look newer than the server's
    _ReadModificationTime();
    return fReader.Reset() ? B_OK : B_NO_MEMORY;
}

status_t NPCache::_Open(const char* host, const char* board, const char* file, Open how) {
    BPath path;
    status_t status = DatPath(host, board, file, &path);
    if (status == B_OK && how != Open::kExisting)
        status = _MakeFolders(host, board);
    if (status == B_OK && how == Open::kBeside)
        status = _MakeBeside(host, board, file, &path);
    if (status == B_OK)
        status =
            fFile.SetTo(path.Path(), B_READ_WRITE | (how != Open::kExisting ? B_CREATE_FILE : 0));
    // What can't be written may still be read.
    const bool protectedFile = status == B_PERMISSION_DENIED || status == B_READ_ONLY_DEVICE;
    if (protectedFile && how == Open::kExisting)
        status = fFile.SetTo(path.Path(), B_READ_ONLY);
    return status == B_OK ? fEntry.SetTo(path.Path()) : status;
}

status_t NPCache::_MakeBeside(const char* host, const char* board, const char* file, BPath* path) {
    fPlace = *path;
    status_t status = BesidePath(host, board, file, path);
    BPath folder;
    if (status == B_OK)
        status = path->GetParent(&folder);
    if (status == B_OK && initdir(folder.Path()) != 0)
        status = B_ERROR;
    RemoveBeside(host, board, file);
    return status;
}

status_t NPCache::_MakeFolders(const char* host, const char* board) {
    BPath path;
    status_t status = find_directory(B_USER_SETTINGS_DIRECTORY, &path);
    if (status != B_OK || path.Append(kRoot) != B_OK || path.Append(host) != B_OK)
        return B_ERROR;
    if (initdir(path.Path()) != 0 || path.Append(board) != B_OK || initdir(path.Path()) != 0)
        return B_ERROR;
    return B_OK;
}

int32 NPCache::initdir(const char* path) {
    fFolderTrouble = EnsureFolder(path);
    return fFolderTrouble.empty() ? 0 : -1;
}

void NPCache::_ReadModificationTime() {
    fModified = 0;
    if (!IsUnfinished())
        fFile.GetModificationTime(&fModified);
    _FormatModificationTime();
}

void NPCache::_FormatModificationTime() {
    tm utc;
    gmtime_r(&fModified, &utc);
    strftime(fModificationTime, sizeof(fModificationTime), "%a, %d %b %Y %H:%M:%S %Z", &utc);
}

int32 NPCache::ReadLine(char* buffer, size_t size) {
    return fReader.ReadLine(
        buffer, size, [this](void* to, size_t n) { return static_cast<int32>(fFile.Read(to, n)); });
}

int32 NPCache::ReadPart(char* buffer, size_t size) {
    return fReader.ReadPart(
        buffer, size, [this](void* to, size_t n) { return static_cast<int32>(fFile.Read(to, n)); });
}

status_t NPCache::WriteLine(const char* data, size_t length) {
    const off_t start = fFile.Position();
    const ssize_t written = fFile.Write(data, length);
    if (written == static_cast<ssize_t>(length))
        return B_OK;
    fFile.SetSize(start);
    fFile.Seek(start, SEEK_SET);
    return written < 0 ? static_cast<status_t>(written) : B_DEVICE_FULL;
}

off_t NPCache::SeekLast() {
    return fFile.Seek(0, SEEK_END);
}

int32 NPCache::GetSize() const {
    off_t size = 0;
    fFile.GetSize(&size);
    return static_cast<int32>(size);
}

bool NPCache::SetModificationTime(const char* date) {
    const time_t modified = date != nullptr ? parsedate(WithZone(date).c_str(), -1) : -1;
    if (modified == -1)
        return false;
    _SetModificationTime(modified);
    return true;
}

void NPCache::_SetModificationTime(time_t modified) {
    fFile.SetModificationTime(modified);
    fModified = modified;
    _FormatModificationTime();
}

ssize_t NPCache::ReadAttr(const char* name, type_code type, void* buffer, size_t size) {
    return fFile.ReadAttr(name, type, 0, buffer, size);
}

ssize_t NPCache::WriteAttr(const char* name, type_code type, const void* data, size_t size) {
    return fFile.WriteAttr(name, type, 0, data, size);
}

std::string NPCache::ReadText(const char* name) {
    std::string text = ReadTextAttribute(fFile, name, kLongestText);
    return text.size() <= kLongestText ? text : "";
}

void NPCache::WriteText(const char* name, const std::string& text) {
    if (text.empty() || text.size() > kLongestText)
        fFile.RemoveAttr(name);
    else
        WriteAttr(name, B_STRING_TYPE, text.data(), text.size());
}

void NPCache::SetMimeType(const char* type) {
    BNodeInfo(&fFile).SetType(type);
}

void NPCache::RemoveFile() {
    fEntry.Remove();
    fFile.Unset();
    fReader.Clear();
    fStatus = -1;
}

// A symbolic link stands for what it leads to.
bool NPCache::IsCurrent() const {
    BPath path;
    node_ref open;
    node_ref named;
    return fFile.GetNodeRef(&open) == B_OK && fEntry.GetPath(&path) == B_OK &&
           BEntry(path.Path(), true).GetNodeRef(&named) == B_OK && open == named;
}

bool NPCache::IsUnfinished() const {
    attr_info info;
    return fFile.GetAttrInfo(kUnfinished, &info) == B_OK;
}

status_t NPCache::MarkUnfinished() {
    const bool unfinished = true;
    const ssize_t written = WriteAttr(kUnfinished, B_BOOL_TYPE, &unfinished, sizeof(unfinished));
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}

void NPCache::MarkFinished() {
    fFile.RemoveAttr(kUnfinished);
    _ReadModificationTime();
}

status_t NPCache::CutToWholeLines() {
    const off_t size = GetSize();
    off_t whole = 0;
    const status_t status = _FindLastLineEnd(size, &whole);
    // Even a cut that takes nothing away would change the file's time.
    return status == B_OK && whole < size ? fFile.SetSize(whole) : status;
}

status_t NPCache::_FindLastLineEnd(off_t end, off_t* lineEnd) {
    char block[4096];
    const off_t most = sizeof(block);
    while (end > 0) {
        const off_t start = end > most ? end - most : 0;
        const ssize_t length = fFile.ReadAt(start, block, static_cast<size_t>(end - start));
        if (length != end - start)
            return B_IO_ERROR;
        const size_t feed = std::string_view(block, length).rfind('\n');
        if (feed != std::string_view::npos) {
            *lineEnd = start + static_cast<off_t>(feed) + 1;
            return B_OK;
        }
        end = start;
    }
    *lineEnd = 0;
    return B_OK;
}

status_t NPCache::TakePlace() {
    BFile replaced;
    if (replaced.SetTo(fPlace.Path(), B_READ_ONLY) == B_OK) {
        for (const char* name : {kOwnSent, kOwnPosts})
            WriteText(name, ReadTextAttribute(replaced, name, kLongestText));
    }
    return fEntry.Rename(fPlace.Path(), true);
}

void NPCache::RemoveBeside(const char* host, const char* board, const char* file) {
    BPath path;
    if (BesidePath(host, board, file, &path) == B_OK)
        BEntry(path.Path()).Remove();
}

status_t NPCache::FindDatFile(const char* host, const char* board, const char* file, BFile* out) {
    BPath path;
    const status_t status = DatPath(host, board, file, &path);
    return status == B_OK ? out->SetTo(path.Path(), B_READ_ONLY) : status;
}

status_t NPCache::FindDatDirectory(const char* host, const char* board, BDirectory* out) {
    BPath path;
    const status_t status = BoardPath(host, board, &path);
    return status == B_OK ? out->SetTo(path.Path()) : status;
}
