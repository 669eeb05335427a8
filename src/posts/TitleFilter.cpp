#include "posts/TitleFilter.h"

#include "text/Folding.h"

#include <algorithm>
#include <sstream>

TitleFilter::TitleFilter(std::string_view typed) {
    std::istringstream words(Folded(typed));
    for (std::string word; std::getline(words, word, ' ');) {
        if (!word.empty())
            fWords.push_back(word);
    }
}

bool TitleFilter::Wants(std::string_view foldedTitle) const {
    return std::ranges::all_of(fWords, [foldedTitle](const std::string& word) {
        return foldedTitle.find(word) != foldedTitle.npos;
    });
}
