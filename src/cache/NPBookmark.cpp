#include "cache/NPBookmark.h"

#include "cache/Folders.h"
#include "net/NPUrl.h"
#include "net/ThreadAddress.h"
#include "net/lines.h"
#include "text/PathNames.h"
#include "text/Utf8Cut.h"

#include <Directory.h>
#include <FindDirectory.h>
#include <NodeInfo.h>
#include <Path.h>
#include <TypeConstants.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

constexpr const char* kFolder = "2ch/2chBookmark";
constexpr const char* kType = "application/x-vnd.Be-bookmark";

std::string PlainName(const char* server, const char* board, const char* dat) {
    return std::string(server) + "." + board + "." + dat;
}

std::string FileName(const char* server, const char* board, const char* dat) {
    std::string folder(board);
    std::replace(folder.begin(), folder.end(), '/', '_');
    return PlainName(server, folder.c_str(), dat);
}

status_t RemoveFile(const std::string& name) {
    BDirectory folder;
    BEntry entry;
    if (!IsGoodComponent(name.c_str()))
        return B_BAD_VALUE;
    status_t status = NPBookmark::GetBookmarkDirectory(&folder);
    if (status == B_OK)
        status = folder.FindEntry(name.c_str(), &entry);
    return status == B_OK ? entry.Remove() : status;
}

} // namespace

bool NPBookmark::AreGoodNames(const char* server, const char* board, const char* dat) {
    if (IsGoodComponent(server) && IsGoodBoardFolder(board) && IsGoodComponent(dat) &&
        strlen(server) <= kLongestBookmarkServer && strlen(board) <= kLongestBookmarkBoard &&
        strlen(dat) <= kLongestBookmarkDat)
        return true;
    fprintf(stderr, "bookmarks: refused \"%s\", \"%s\", \"%s\"\n", server, board, dat);
    return false;
}

std::string NPBookmark::FolderPath() {
    BPath path;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &path) != B_OK || path.Append(kFolder) != B_OK)
        return "";
    return path.Path();
}

status_t NPBookmark::GetBookmarkDirectory(BDirectory* folder) {
    return folder->SetTo(FolderPath().c_str());
}

int32 NPBookmark::InitDir(const char* path, std::string* trouble) {
    *trouble = EnsureFolder(path);
    return trouble->empty() ? 0 : -1;
}

status_t NPBookmark::SetTo(const char* server, const char* board, const char* dat) {
    fStatus = -1;
    fFile.Unset();
    fEntry.Unset();
    if (!AreGoodNames(server, board, dat))
        return B_BAD_VALUE;
    const std::string folder = FolderPath();
    if (InitDir(folder.c_str(), &fFolderTrouble) != 0)
        return B_ERROR;
    const std::string path = folder + "/" + FileName(server, board, dat);
    status_t status = fFile.SetTo(path.c_str(), B_READ_WRITE | B_CREATE_FILE);
    if (status == B_OK)
        status = fEntry.SetTo(path.c_str());
    if (status == B_OK)
        fStatus = 0;
    return status;
}

ssize_t NPBookmark::ReadAttr(const char* name, type_code type, void* buffer, size_t size) {
    return fFile.ReadAttr(name, type, 0, buffer, size);
}

ssize_t NPBookmark::WriteAttr(const char* name, type_code type, const void* data, size_t size) {
    return fFile.WriteAttr(name, type, 0, data, size);
}

status_t NPBookmark::SetMimeType() {
    return BNodeInfo(&fFile).SetType(kType);
}

status_t NPBookmark::_WriteText(const char* name, const std::string& text) {
    const ssize_t written = WriteAttr(name, B_STRING_TYPE, text.c_str(), text.size() + 1);
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}

status_t NPBookmark::Make(const char* url, const char* dat, const char* title,
                          std::string* trouble) {
    const NPUrl parsed(url);
    if (parsed.Status() != 0)
        return B_BAD_VALUE;
    const bool isNew = !HasBookmark(parsed.Host(), parsed.Board(), dat);
    NPBookmark bookmark(parsed.Host(), parsed.Board(), dat);
    if (trouble != nullptr)
        *trouble = bookmark.fFolderTrouble;
    if (bookmark.Status() != 0)
        return B_ERROR;
    const status_t status = bookmark._WriteTexts(parsed, dat, title, MakeThreadAddress(url, dat));
    // Half a bookmark would be marked in its board's list, but not be listed itself.
    if (status != B_OK && isNew)
        bookmark.fEntry.Remove();
    return status;
}

status_t NPBookmark::_WriteTexts(const NPUrl& parsed, const char* dat, const char* title,
                                 const std::string& address) {
    status_t status = SetMimeType();
    const std::pair<const char*, std::string> texts[] = {
        {"META:title", CutAtCharacter(title, kLongestThreadTitle)},
        {"server", parsed.Host()},
        {"board", parsed.Board()},
        {"dat", dat},
        {"META:url", address},
    };
    for (const auto& [name, text] : texts) {
        if (status == B_OK)
            status = _WriteText(name, text);
    }
    return status;
}

bool NPBookmark::HasBookmark(const char* server, const char* board, const char* dat) {
    const std::string name = FileName(server, board, dat);
    BDirectory folder;
    return IsGoodComponent(name.c_str()) && GetBookmarkDirectory(&folder) == B_OK &&
           folder.Contains(name.c_str(), B_FILE_NODE);
}

status_t NPBookmark::Remove(const char* server, const char* board, const char* dat) {
    return RemoveFile(FileName(server, board, dat));
}

bool NPBookmark::HoldsPlain(const char* server, const char* board, const char* dat) {
    const std::string name = PlainName(server, board, dat);
    BDirectory folder;
    return IsGoodComponent(name.c_str()) && GetBookmarkDirectory(&folder) == B_OK &&
           folder.Contains(name.c_str());
}

status_t NPBookmark::RemovePlain(const char* server, const char* board, const char* dat) {
    return RemoveFile(PlainName(server, board, dat));
}
