#pragma once

#include <SupportDefs.h>

#include <string>

// Stands where a post was cut.
constexpr const char* kCutMark = "…（以下略）";

// Lines that are too long to be shown: they arrive in parts, and the first stands for the whole.

enum class LinePart {
    kLine,   // a whole line
    kInside, // of an overlong one
    kEnd     // of an overlong one, whose beginning is there now
};

class OverlongLine {
public:
    // The next part, which is not empty.
    LinePart Take(const char* part, int32 length);
    // The first part of the line that has ended.
    std::string TakeBeginning();

private:
    std::string fBeginning;
};

// The beginning of a dat line, UTF-8, as a line of its own: cut at a character, with a mark that
// says so, and with the separators that the rest would have brought. Only a thread's first line may
// have a title.
std::string EndDatLine(const std::string& beginning, bool isFirst);

// The same for a post on a server's page.
std::string EndPageLine(const std::string& beginning);
