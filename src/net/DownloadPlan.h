#pragma once

#include <SupportDefs.h>

// What a thread download does with an answer, apart from any connection or window.

// Where the lines of a thread come from.
enum class ReadMode {
    kCacheOnly = 0, // the server has nothing new
    kNetwork = 1,   // every line is appended to the cache too
    kCacheThenNetwork = 2,
    kError // the user is told the status
};

// What was asked and what came back.
struct DownloadAnswer {
    bool hasCache = false;   // the request named the cached size and time
    bool unfinished = false; // the cached copy carries the mark of an unfinished download
    int32 cachedSize = 0;
    int32 status = 0;
    const char* contentRange = nullptr; // null without the header
};

ReadMode PlanReading(const DownloadAnswer& answer);

// Whether a body arrived whole: the stream ended normally, with as many bytes as the server
// announced, if it did. A null `contentLength` means that it did not.
bool IsWholeBody(const char* contentLength, int64 received, int32 lastResult);
