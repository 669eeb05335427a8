#include "interface/text/TextStyles.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

constexpr rgb_color kBlack{0, 0, 0, 255};
constexpr rgb_color kRed{255, 0, 0, 255};
constexpr rgb_color kBlue{0, 0, 255, 255};

// One letter a byte: what style each has.
std::string Spelled(const TextStyles& styles, int32 length) {
    std::string spelled;
    for (int32 i = 0; i < length; i++)
        spelled += static_cast<char>('a' + styles.StyleAt(i));
    return spelled;
}

class TextStylesTest : public testing::Test {
protected:
    TextStyles styles{BFont(), kBlack};
    const int32 red = styles.Intern(BFont(), kRed);
    const int32 blue = styles.Intern(BFont(), kBlue);
};

TEST_F(TextStylesTest, TheSameStyleHasOneNumber) {
    EXPECT_EQ(styles.Intern(BFont(), kRed), red);
    EXPECT_EQ(styles.Intern(BFont(), kBlack), 0);
    BFont large;
    large.SetSize(40);
    EXPECT_NE(styles.Intern(large, kRed), red);
}

TEST_F(TextStylesTest, InsertedTextGoesOnInTheStyleBefore) {
    styles.Insert(0, 4);
    styles.Set(2, 4, red, 4);
    styles.Insert(2, 2);
    EXPECT_EQ(Spelled(styles, 6), "aaaabb");
    styles.Insert(6, 1);
    EXPECT_EQ(Spelled(styles, 7), "aaaabbb");
}

TEST_F(TextStylesTest, RunsThatMeetInOneStyleBecomeOne) {
    styles.Insert(0, 9);
    styles.Set(0, 3, red, 9);
    styles.Set(6, 9, red, 9);
    EXPECT_EQ(styles.CountRuns(), 3);
    styles.Set(3, 6, red, 9);
    EXPECT_EQ(styles.CountRuns(), 1);
    EXPECT_EQ(styles.StyleAt(5), red);
}

TEST_F(TextStylesTest, ARemovedMiddleLetsItsNeighboursMeet) {
    styles.Insert(0, 9);
    styles.Set(3, 6, blue, 9);
    styles.Remove(3, 6, 9);
    EXPECT_EQ(styles.CountRuns(), 1);
}

TEST_F(TextStylesTest, SeveralRunsAreSetAtOnce) {
    styles.Insert(0, 10);
    styles.SetRuns({{2, red}, {4, blue}, {4, 0}, {6, red}, {9, blue}}, 8, 10);
    EXPECT_EQ(Spelled(styles, 10), "aabbaabbaa");
    EXPECT_EQ(styles.CountRuns(), 5);
}

TEST_F(TextStylesTest, AnEmptiedTextKeepsTheStyleOfItsStart) {
    styles.Insert(0, 3);
    styles.Set(0, 3, red, 3);
    styles.Remove(0, 3, 3);
    EXPECT_EQ(styles.TypingStyle(0), red);
}

TEST_F(TextStylesTest, FollowsALetterAByteThroughRandomChanges) {
    std::mt19937 random(3);
    std::string expected;
    for (int step = 0; step < 3000; step++) {
        const int32 length = static_cast<int32>(expected.size());
        const int32 from = static_cast<int32>(random() % (length + 1));
        const int32 to = std::min<int32>(length, from + static_cast<int32>(random() % 9));
        switch (random() % 4) {
        case 0:
            styles.Remove(from, to, length);
            expected.erase(from, to - from);
            break;
        case 1: {
            const int32 style = static_cast<int32>(random() % 3);
            if (from < to)
                styles.Set(from, to, style, length);
            for (int32 i = from; i < to; i++)
                expected[i] = static_cast<char>('a' + style);
            break;
        }
        default: {
            const int32 count = static_cast<int32>(random() % 5);
            const char style = static_cast<char>('a' + styles.TypingStyle(from));
            styles.Insert(from, count);
            expected.insert(from, std::string(count, style));
        }
        }
        ASSERT_EQ(Spelled(styles, static_cast<int32>(expected.size())), expected) << step;
        for (int32 i = 1; i < styles.CountRuns(); i++) {
            ASSERT_LT(styles.RunAt(i - 1).offset, styles.RunAt(i).offset);
            ASSERT_NE(styles.RunAt(i - 1).style, styles.RunAt(i).style);
        }
    }
}

} // namespace
