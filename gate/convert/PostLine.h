#pragma once

#include <string>
#include <vector>

namespace gate {

// A post as a dat holds it. The fields are cp932 and stand as they do in the line: references
// undecoded, lines of the body ended by " <br> ".
struct PostLine {
    long number = 0;
    std::string name, mail, date, body, title;
};

// No thread has more posts; a number beyond it is no post's.
constexpr long kMostPosts = 100'000;

// "name<>mail<>date<> body <>title\n". No line feed and no "<>" inside a field survives, and an
// empty name becomes a blank, since the program can't read a line without one.
std::string MakeDatLine(const PostLine& post);
// The line of a deleted post.
std::string DeletedLine();
// Posts `first` to `last` (1 to kMostPosts), in order, with a deleted line for each
// number that is missing. Of posts of one number the first counts.
std::string LinesOfPosts(const std::vector<PostLine>& posts, long first, long last);

} // namespace gate
