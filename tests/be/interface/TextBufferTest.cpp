#include "interface/text/TextBuffer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

TextBuffer Holding(const std::string& text) {
    TextBuffer buffer;
    buffer.Insert(0, text.data(), static_cast<int32>(text.size()));
    return buffer;
}

TEST(TextBuffer, IsEmptyAtFirst) {
    const TextBuffer buffer;
    EXPECT_EQ(buffer.Length(), 0);
    EXPECT_STREQ(buffer.Text(), "");
}

TEST(TextBuffer, ReadsTheSameWhereverTheGapIs) {
    TextBuffer buffer = Holding("abcdef");
    for (int32 at = 0; at <= 6; at++) {
        buffer.Insert(at, "-", 1);
        std::string expected = "abcdef";
        expected.insert(at, "-");
        char copy[8] = {};
        buffer.Copy(0, 7, copy);
        EXPECT_EQ(copy, expected);
        EXPECT_EQ(buffer.ByteAt(at), '-');
        EXPECT_EQ(std::string(buffer.Range(0, 7), 7), expected);
        buffer.Remove(at, at + 1);
    }
    EXPECT_STREQ(buffer.Text(), "abcdef");
}

TEST(TextBuffer, FollowsAStringThroughRandomChanges) {
    std::mt19937 random(1);
    TextBuffer buffer;
    std::string expected;
    for (int step = 0; step < 2000; step++) {
        const int32 length = static_cast<int32>(expected.size());
        const int32 from = static_cast<int32>(random() % (length + 1));
        if (random() % 3 != 0) {
            const std::string piece(random() % 40, static_cast<char>('a' + random() % 26));
            buffer.Insert(from, piece.data(), static_cast<int32>(piece.size()));
            expected.insert(from, piece);
        } else {
            const int32 to = std::min<int32>(length, from + static_cast<int32>(random() % 60));
            buffer.Remove(from, to);
            expected.erase(from, to - from);
        }
        ASSERT_EQ(buffer.Length(), static_cast<int32>(expected.size()));
    }
    EXPECT_EQ(std::string(buffer.Text()), expected);
}

TEST(TextBuffer, StepsOverWholeCharacters) {
    const TextBuffer buffer = Holding("a\xE3\x81\x82\xF0\x9F\x98\x80z");
    EXPECT_EQ(buffer.NextCharacter(0), 1);
    EXPECT_EQ(buffer.NextCharacter(1), 4);
    EXPECT_EQ(buffer.NextCharacter(4), 8);
    EXPECT_EQ(buffer.NextCharacter(9), 9);
    EXPECT_EQ(buffer.PreviousCharacter(8), 4);
    EXPECT_EQ(buffer.PreviousCharacter(4), 1);
    EXPECT_EQ(buffer.PreviousCharacter(0), 0);
    EXPECT_EQ(buffer.CharacterStart(3), 1);
    EXPECT_EQ(buffer.CharacterStart(7), 4);
}

TEST(TextBuffer, TakesBrokenBytesOneByOne) {
    const TextBuffer buffer = Holding("\x82\xE3\x81"
                                      "a\xFF");
    EXPECT_EQ(buffer.NextCharacter(0), 1);
    EXPECT_EQ(buffer.NextCharacter(1), 2);
    EXPECT_EQ(buffer.CharacterStart(2), 2);
    EXPECT_EQ(buffer.PreviousCharacter(5), 4);
}

} // namespace
