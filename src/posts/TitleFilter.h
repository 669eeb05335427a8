#pragma once

#include <string>
#include <string_view>
#include <vector>

// Which titles a reader wants to see: those that hold every word he typed, in any order, however
// wide or in which kana either is written. A value.
class TitleFilter {
public:
    explicit TitleFilter(std::string_view typed);

    // Without a word, every title is wanted.
    bool IsEmpty() const { return fWords.empty(); }
    // The title is one that has been folded.
    bool Wants(std::string_view foldedTitle) const;

private:
    std::vector<std::string> fWords; // folded
};
