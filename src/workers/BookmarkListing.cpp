#include "workers/BookmarkListing.h"

#include "browser/BrowserWindow.h"
#include "cache/NPBookmark.h"
#include "cache/NPCache.h"
#include "cache/TextAttribute.h"
#include "messages/Messages.h"

#include <Directory.h>
#include <Entry.h>
#include <fs_attr.h>

#include <cstdio>

namespace {

// The bookmark folder's own entry is looked at with the title under this name.
constexpr const char* kFolderTitle = "META:titie";
constexpr const char* kTitle = "META:title";

struct Bookmark {
    std::string title;
    std::string board;
    std::string dat;
    std::string server;

    bool IsWhole() const {
        return !title.empty() && !board.empty() && !dat.empty() && !server.empty();
    }
    bool HasGoodNames() const {
        return NPBookmark::AreGoodNames(server.c_str(), board.c_str(), dat.c_str());
    }
};

Bookmark ReadBookmark(const BNode& node, const char* titleName) {
    Bookmark bookmark;
    bookmark.title = ReadTitle(node, titleName);
    bookmark.board = ReadTextAttribute(node, "board", kLongestBookmarkBoard);
    bookmark.dat = ReadTextAttribute(node, "dat", kLongestBookmarkDat);
    bookmark.server = ReadTextAttribute(node, "server", kLongestBookmarkServer);
    return bookmark;
}

// What the cache holds of a thread; 0 and 0 without a copy.
struct CachedCopy {
    int32 count = 0;
    time_t modified = 0;
};

CachedCopy FindCopy(const Bookmark& bookmark) {
    CachedCopy copy;
    BFile file;
    attr_info info;
    if (NPCache::FindDatFile(bookmark.server.c_str(), bookmark.board.c_str(), bookmark.dat.c_str(),
                             &file) != B_OK)
        return copy;
    int32 count = 0;
    if (file.GetAttrInfo("res_num", &info) == B_OK && info.type == B_INT32_TYPE &&
        file.ReadAttr("res_num", B_INT32_TYPE, 0, &count, sizeof(count)) == sizeof(count))
        copy.count = count;
    file.GetModificationTime(&copy.modified);
    return copy;
}

} // namespace

int32 BookmarkListing::Run() {
    BDirectory folder;
    const status_t status = NPBookmark::GetBookmarkDirectory(&folder);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        ShowAlert(this, "ブックマークの読み込み失敗！");
        Fail(kMsgBoardComplete);
        return -1;
    }
    Window().CallForThreads([this](BrowserWindow* window) {
        window->addBookmarkItem(Request(), 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
    });
    ShowProgress("ブックマークを読み込み中");
    fprintf(stderr, "reading bookmark.\n");
    if (MustStop() || (status == B_OK && _AddAll(&folder) == Progress::kStopped))
        return 0;
    _Complete();
    return 0;
}

Progress BookmarkListing::_AddAll(BDirectory* folder) {
    _Add(*folder, kFolderTitle);
    BEntry entry;
    while (folder->GetNextEntry(&entry) == B_OK) {
        if (MustStop())
            return Progress::kStopped;
        const BNode node(&entry);
        if (node.InitCheck() == B_OK)
            _Add(node, kTitle);
    }
    return Progress::kGoOn;
}

void BookmarkListing::_Add(const BNode& node, const char* titleName) {
    const Bookmark bookmark = ReadBookmark(node, titleName);
    if (!bookmark.IsWhole() || !bookmark.HasGoodNames())
        return;
    const CachedCopy copy = FindCopy(bookmark);
    char count[16];
    snprintf(count, sizeof(count), "%ld", static_cast<long>(copy.count));
    fCount++;
    Window().CallForThreads([&](BrowserWindow* window) {
        window->addBookmarkItem(Request(), fCount, bookmark.title.c_str(), bookmark.server.c_str(),
                                bookmark.board.c_str(), bookmark.dat.c_str(), count, copy.modified);
    });
}

void BookmarkListing::_Complete() {
    SetTitle("ブックマーク (" + std::to_string(fCount) + ")");
    BMessage complete(kMsgBoardComplete);
    complete.AddBool("sort_modification", true);
    complete.AddBool("bookmark", true);
    Complete(&complete);
    ClearProgress();
}
