#include "windows/SearchSteps.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Steps = std::vector<int32>;

// What so many presses find, one after another.
Steps TitleSteps(const std::vector<const char*>& titles, const char* wanted, size_t presses) {
    int32 position = -1;
    Steps steps;
    const auto titleAt = [&](int32 row) {
        return row < static_cast<int32>(titles.size()) ? titles[static_cast<size_t>(row)] : nullptr;
    };
    while (steps.size() < presses)
        steps.push_back(NextTitleMatch(titleAt, wanted, &position));
    return steps;
}

Steps TextSteps(const char* text, const char* wanted, size_t presses) {
    int32 offset = 0;
    Steps steps;
    while (steps.size() < presses)
        steps.push_back(NextTextMatch(text, static_cast<int32>(strlen(text)), wanted, &offset));
    return steps;
}

} // namespace

TEST(SearchSteps, TitlesAreFoundInTurnAndThenAnew) {
    const struct {
        std::vector<const char*> titles;
        const char* wanted;
        Steps found;
    } cases[] = {
        {{"猫スレ", "犬", "子猫"}, "猫", {0, 2, -1, 0, 2, -1}},
        {{"猫スレ", "犬"}, "", {0, 1, -1, 0}}, // every row
        {{"Cat", "cat", "CAT"}, "cat", {1, -1, 1}},
        {{"ｃａｔ"}, "cat", {-1, -1}},
        {{"犬"}, "\xe7", {0, -1}}, // a byte of a character
        {{}, "", {-1, -1}},
    };
    for (const auto& test : cases)
        EXPECT_EQ(TitleSteps(test.titles, test.wanted, test.found.size()), test.found)
            << test.wanted;
}

TEST(SearchSteps, MatchesInATextMayOverlapAndWrapSilently) {
    const struct {
        const char* text;
        const char* wanted;
        Steps found;
    } cases[] = {
        {"aaa", "aa", {0, 1, -1, 0}},
        {"ab", "", {0, 1, 2, -1, 0}}, // every byte, and the end
        {"一二一", "一", {0, 6, -1, 0}},
        {"一", "", {0, 1, 2, 3, -1}},
        {"abc", "abcd", {-1, -1}},
        {"Abc", "abc", {-1}},
        {"", "", {0, -1, 0}},
        {"", "a", {-1}},
    };
    for (const auto& test : cases)
        EXPECT_EQ(TextSteps(test.text, test.wanted, test.found.size()), test.found)
            << test.text << ", " << test.wanted;
}

TEST(SearchSteps, ATextThatHasBecomeShorterIsSearchedAnew) {
    int32 offset = 10;
    EXPECT_EQ(NextTextMatch("abc", 3, "b", &offset), -1);
    EXPECT_EQ(offset, 0);
    EXPECT_EQ(NextTextMatch("abc", 3, "b", &offset), 1);
}
