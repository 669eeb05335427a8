#pragma once

#include <SupportDefs.h>

#include <string>

// A server's answer to a post: an HTML page, of which only the text tells whether the post was
// taken. Collects its first 4,095 bytes of UTF-8; lines that would exceed them are left out.
class PostAnswer {
public:
    // A line of the page, cp932. What does not convert is kept as far as it does.
    void AddLine(const char* line, int32 length);
    // What arrived of a last line: as much of it as fits.
    void AddUnfinishedLine(const char* line, int32 length);

    // Servers send the reader back to the thread when they took the post, without quotes around
    // the attribute's value; a page that quotes it is something else.
    bool IsSuccess() const;
    // The text behind the title, without its tags and with its character references decoded; empty
    // without a title, or without any word.
    std::string ErrorText() const;

private:
    std::string fText; // UTF-8
};
