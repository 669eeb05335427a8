#pragma once

#include <SupportDefs.h>

#include <string>

class BString;

// Turns one post of a server's read.cgi page, UTF-8, into its dat line without the line feed, and
// returns the new length. The servers' markup is fixed, and so are the offsets in it:
//
//   <dt>1 名前：<a href="mailto:MAIL"><b> NAME </b></a> 投稿日： DATE<font size=1>[ID]</font>
//   <br><dd> MESSAGE <br><br>
//
// Other markup gives empty or garbled fields, never an error.
int32 TagToDat(BString* block);

// Reads such a page line by line: finds its title and its posts. The page always begins with the
// thread's first post; those behind the number that was asked for follow.
class CgiPage {
public:
    // The next line, UTF-8, with its line feed. True when it completes a post.
    bool TakeLine(const std::string& line);
    // The dat line of the post that is complete, with its line feed and, for the first of the page,
    // with the title. At most kLongestServerLine bytes, which is what is shown of one: what is
    // longer is cut at a character of its message, with a mark.
    std::string TakeDatLine();

    // Nothing of the list follows.
    bool HasEnded() const { return fState == State::kEnded; }

private:
    enum class State { kBeforeList, kTitle, kPosts, kContinued, kEnded };

    bool _TakePart(const std::string& line);

    State fState = State::kBeforeList;
    std::string fTitle;
    std::string fBlock;
    bool fIsFirst = true;
};
