#pragma once

#include <SupportDefs.h>

#include <string>

// The longest names that fit the servers' and the files' formats, in bytes: a board's URL, and a
// dat name. A name that identifies something is refused when it is longer: a cut one would name
// something else.
constexpr size_t kLongestUrl = 127;
constexpr size_t kLongestDat = 15;

// A thread's address in the web browser, from its board's URL and its dat name: the read.cgi that
// serves it depends on whether the dat name contains "cgi". Empty when the URL is no board address
// or the dat name has no ".".
std::string MakeThreadAddress(const char* url, const char* dat);

// A board folder's two parts, which reading and posting address apart: "bbs" and "news" of
// "bbs/news". Without a "/" the prefix is empty and the folder is all of it.
struct BoardParts {
    std::string prefix;
    std::string folder;
};
BoardParts SplitBoard(const std::string& board);

// The path, with its query, of the read.cgi that serves the threads without dat files.
std::string MakeReadCgiPath(const std::string& board, const std::string& key);

// The way back: whether an address leads to a thread through a server's read.cgi, with its parts in
// the query ("?bbs=BOARD&key=KEY", in upper or lower case) or in the path ("/BOARD/KEY/"). Only
// then the three buffers, each of `maxLen` bytes, are filled. A part that does not fit its buffer
// with its terminator, or could not be a name in a path, makes it no thread.
bool Is2ch(const char* url, char* host, char* board, char* key, int32 maxLen);
