#pragma once

#include "net/LineReader.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>
#include <Path.h>
#include <SupportDefs.h>
#include <TypeConstants.h>

#include <ctime>
#include <string>

// One cached thread: the server's bytes as they came (cp932 lines), with "title" (string without a
// terminating zero byte), "res_num" (int32, the posts in the file) and "bar_pos" (int32, where the
// reader left it) as attributes, perhaps with what is known of posts that were sent from here. The
// file's modification time is the server's "Last-Modified", its
// size the offset from which the next download goes on.
//
// While a download has not brought the whole body, the file carries a mark, and its modification
// text is the epoch: however it ended, the next download asks for what is missing.
//
// A download from scratch goes to a file beside, in a folder of the board's folder that no name
// from the network leads to. It takes the place of the present copy in one step, once it is whole.
//
// An object lives for one operation of one thread. Another may have the same file open; downloads
// take the node lock. Results are platform status codes. Names that are no good path components
// open nothing.
class NPCache {
public:
    // Strings: texts that were sent and wait to be seen among the posts; the numbers of those that
    // were.
    static constexpr const char* kOwnSent = "own_sent";
    static constexpr const char* kOwnPosts = "own_posts";

    // A look-up creates nothing; a download creates folders and file. Beside the present copy a new
    // and empty one is made: one at a time, by who holds the lock of the present one.
    enum class Open { kExisting, kCreate, kBeside };

    NPCache() = default;
    NPCache(const char* host, const char* board, const char* file, Open how) {
        SetTo(host, board, file, how);
    }
    NPCache(const NPCache&) = delete;
    NPCache& operator=(const NPCache&) = delete;

    // Whether the names are good components of a path; if not, a trace says so.
    static bool CanHold(const char* host, const char* board, const char* file);

    // 0 when a file is open, else −1.
    int32 Status() const { return fStatus; }
    // What there is to tell the user when a folder could not be made or used; else empty.
    const std::string& FolderTrouble() const { return fFolderTrouble; }
    status_t SetTo(const char* host, const char* board, const char* file, Open how);

    // The next line with its line feed, not terminated: its length, 0 at the end of the file, −1
    // when it is longer than `size`, or a read error. An unfinished last line is never returned.
    int32 ReadLine(char* buffer, size_t size);
    // A line, or a part of one that is longer: see LineReader.
    int32 ReadPart(char* buffer, size_t size);
    // Writes at the current position; what does not fit on the disk leaves no part of a line
    // behind.
    status_t WriteLine(const char* data, size_t length);
    // Moves to the end; returns the size.
    off_t SeekLast();
    int32 GetSize() const;

    // An HTTP date (RFC 1123 form, UTC).
    const char* GetModificationTime() const { return fModificationTime; }
    // Whether it is the epoch: the server's time for the copy is not known.
    bool IsFromEpoch() const { return fModified == 0; }
    // Takes a server's date, in any of the forms of HTTP; one that can't be read, or none at all,
    // changes nothing and gives false.
    bool SetModificationTime(const char* date);
    void SetModificationTimeToEpoch() { _SetModificationTime(0); }

    ssize_t ReadAttr(const char* name, type_code type, void* buffer, size_t size);
    ssize_t WriteAttr(const char* name, type_code type, const void* data, size_t size);
    // Strings, of which nothing is there when they are empty.
    std::string ReadText(const char* name);
    void WriteText(const char* name, const std::string& text);
    void SetMimeType(const char* type);

    // Removes the file; the status is −1 afterwards.
    void RemoveFile();

    // For downloads.
    status_t Lock() { return fFile.Lock(); }
    status_t Unlock() { return fFile.Unlock(); }
    void Sync() { fFile.Sync(); }
    // Whether the name still leads to this file.
    bool IsCurrent() const;
    // The mark of an unfinished download; without it the file's time counts again.
    bool IsUnfinished() const;
    status_t MarkUnfinished();
    void MarkFinished();
    // Cuts off an unfinished last line, as a crash may leave it.
    status_t CutToWholeLines();
    // For one that was opened beside: replaces the present copy and its attributes, but for what
    // is known of posts that were sent from here.
    status_t TakePlace();
    // Removes what a crash left beside the file; by who holds its lock.
    static void RemoveBeside(const char* host, const char* board, const char* file);

    // Open a cached file for reading, or a board's folder; nothing is created.
    static status_t FindDatFile(const char* host, const char* board, const char* file, BFile* out);
    static status_t FindDatDirectory(const char* host, const char* board, BDirectory* out);

private:
    status_t _Open(const char* host, const char* board, const char* file, Open how);
    status_t _MakeBeside(const char* host, const char* board, const char* file, BPath* path);
    status_t _MakeFolders(const char* host, const char* board);
    int32 initdir(const char* path);
    void _ReadModificationTime();
    void _SetModificationTime(time_t modified);
    void _FormatModificationTime();
    status_t _FindLastLineEnd(off_t end, off_t* lineEnd);

    int32 fStatus = -1;
    std::string fFolderTrouble;
    BFile fFile;
    BEntry fEntry;
    BPath fPlace; // of the copy that it replaces; for one that was opened beside
    time_t fModified = 0;
    char fModificationTime[32] = "";
    LineReader fReader;
};
