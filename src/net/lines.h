#pragma once

#include <SupportDefs.h>

#include <cstddef>

// The two line formats of the servers, each in an old form separated by "," and a new one separated
// by "<>". Safe to call from any thread.

// The longest line of a server, or of the cache, that is read as one, in bytes with its line feed;
// and room for it with the zero byte that ends it as a text.
constexpr size_t kLongestServerLine = 8191;
using ServerLine = char[kLongestServerLine + 1];

// In bytes; a longer title is cut.
constexpr size_t kLongestThreadTitle = 4095;

// How one line is divided. UTF-8.
struct DelimiterSet {
    const char* separator;
    const char* countOpens;
    const char* countCloses;
};

// The form of one UTF-8 subject line, or dat line.
const DelimiterSet& delimiterGuessSubject(const char* line);
const DelimiterSet& delimiterGuessArticle(const char* line);

// One line of a subject.txt, UTF-8, terminated.
struct _SubjectOut {
    char title[kLongestThreadTitle + 1]; // cut at a character's boundary
    char dat[16];                        // the thread's file name, such as "1012345678.dat"
    char count[8];                       // the number of posts, as text
};

// Parses a raw (cp932) line. Returns 0, or −1 when it can't be divided, does not convert, or its
// dat name or count does not fit: a cut name would be another thread's file.
int parseSubject(const char* line, _SubjectOut* out);

// One line of a dat file, UTF-8. Each string is malloc'd by parseArticle or null; the caller frees
// them (ReleaseArticle), also after a failure, and starts with all of them null.
struct _ArticleOut {
    char* message; // line breaks still "<br>", character references undecoded
    char* title;   // on a thread's first line only
    char* name;
    char* mail; // null when empty
    char* date;
};

// Parses one line, with its line feed; `convert` says that it is cp932 and not UTF-8 yet. Returns
// 0, or −1 when it can't be divided.
int parseArticle(const char* line, _ArticleOut* out, bool convert);

// Frees the strings and sets them null.
void ReleaseArticle(_ArticleOut* article);
