#pragma once

#include <SupportDefs.h>

// What a thread download makes of an answer, apart from any connection or window.

enum class AnswerKind {
    kUnchanged,  // the server has nothing new
    kFoundWhole, // nor has it, and the copy, of which that was not known, lacks nothing
    kBody,       // its lines follow the cached ones
    kRefusal     // the user is told the status
};

// What was asked and what came back.
struct DownloadAnswer {
    bool namesSize = false;  // the request named the cached size and time
    bool namesEpoch = false; // and the time was the epoch: that of the copy is not known
    int32 cachedSize = 0;
    int32 status = 0;
    const char* contentRange = nullptr; // null without the header
};

AnswerKind JudgeAnswer(const DownloadAnswer& answer);

// A body and what its head said of it.
struct DownloadBody {
    int32 status = 0;
    const char* contentLength = nullptr; // null without the header
    const char* contentRange = nullptr;
    int64 received = 0; // bytes
    bool endsInsideLine = false;
    int32 lastResult = 0; // of reading: 0 at an orderly end
    // For a page that is kept as it came: more than was announced is no fault, but lengths of
    // chunks in it would be.
    bool mayExceed = false;
    const char* transferCoding = nullptr;
};

// Whether nothing is missing, neither of what was announced nor, for a part of a file, between it
// and the file's end.
bool IsWholeBody(const DownloadBody& body);

// How a download ended.
enum class DownloadEnd {
    kUnchanged,
    kFoundWhole,
    kWhole,
    kCut,
    kNotKept, // the body came whole, and the disk had no room for it
    kStopped,
    kFailed,      // the user has been told; no body came
    kCacheChanged // the cached copy is another than the one that was asked for
};

// Whether the copy then lacks nothing.
inline bool IsWholeEnd(DownloadEnd end) {
    return end == DownloadEnd::kWhole || end == DownloadEnd::kFoundWhole;
}

// Whether something of a body may have been added to the copy, and more is missing.
inline bool IsPartialEnd(DownloadEnd end) {
    return end == DownloadEnd::kCut || end == DownloadEnd::kNotKept || end == DownloadEnd::kStopped;
}
