#pragma once

#include <Entry.h>
#include <File.h>
#include <SupportDefs.h>

#include <string>

class BDirectory;
class NPUrl;

// The names that identify a bookmarked thread, and their longest, in bytes: who reads a bookmark
// has no room for more.
constexpr size_t kLongestBookmarkServer = 63;
constexpr size_t kLongestBookmarkBoard = 31;
constexpr size_t kLongestBookmarkDat = 15;

// A bookmark: an empty file "SERVER.BOARD.DAT" in the folder "2ch/2chBookmark" whose attributes
// describe a thread: "META:title", "server", "board", "dat" and "META:url", its address in a web
// browser; strings with their terminating zero byte.
//
// The file stays when the object goes. One thread uses an object; several may use one file. Names
// that are no good path components, or too long to be read back, are refused with a trace.
class NPBookmark {
public:
    NPBookmark(const char* server, const char* board, const char* dat) {
        SetTo(server, board, dat);
    }
    NPBookmark(const NPBookmark&) = delete;
    NPBookmark& operator=(const NPBookmark&) = delete;

    // 0 when a file is open, else −1.
    int32 Status() const { return fStatus; }
    // Opens the file and, when missing, makes it and its folder.
    status_t SetTo(const char* server, const char* board, const char* dat);
    // Makes the folder where it is missing: 0, or −1 with what there is to tell the user.
    static int32 InitDir(const char* path, std::string* trouble);

    // The byte count, or an error.
    ssize_t ReadAttr(const char* name, type_code type, void* buffer, size_t size);
    ssize_t WriteAttr(const char* name, type_code type, const void* data, size_t size);
    status_t SetMimeType();

    // Whether the names are good components of a path, and short enough to be read back; if not, a
    // trace says so.
    static bool AreGoodNames(const char* server, const char* board, const char* dat);
    // Makes a thread's bookmark; an earlier one is written anew. B_OK only when all of it is kept;
    // else a new one goes. `trouble`, if any, gets what there is to tell the user of its folder.
    static status_t Make(const char* url, const char* dat, const char* title,
                         std::string* trouble = nullptr);
    static bool HasBookmark(const char* server, const char* board, const char* dat);

    // Of any board.
    static status_t Remove(const char* server, const char* board, const char* dat);

    // For the thread list. A board folder with "/" has no file of this plain name: nothing is
    // found, and nothing removed, for such boards.
    static bool HoldsPlain(const char* server, const char* board, const char* dat);
    static status_t RemovePlain(const char* server, const char* board, const char* dat);

    static status_t GetBookmarkDirectory(BDirectory* folder);
    static std::string FolderPath(); // empty when it can't be told

private:
    status_t _WriteTexts(const NPUrl& board, const char* dat, const char* title,
                         const std::string& address);
    status_t _WriteText(const char* name, const std::string& text);

    int32 fStatus = -1;
    std::string fFolderTrouble; // what there is to tell the user
    BFile fFile;
    BEntry fEntry;
};
