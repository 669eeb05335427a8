#include <DataIO.h>

#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string contents(const BMallocIO& stream) {
    return {static_cast<const char*>(stream.Buffer()), stream.BufferLength()};
}

} // namespace

TEST(BMallocIO, GrowsAsItIsWritten) {
    BMallocIO stream;
    EXPECT_EQ(3, stream.Write("abc", 3));
    EXPECT_EQ(2, stream.WriteAt(4, "ef", 2));
    EXPECT_EQ(std::string("abc\0ef", 6), contents(stream));
    EXPECT_EQ(3, stream.Position());
}

TEST(BMallocIO, WhatWasCutAndGrownAgainIsZero) {
    BMallocIO stream;
    stream.Write("abcdef", 6);
    stream.SetSize(2);
    stream.SetSize(4);
    EXPECT_EQ(std::string("ab\0\0", 4), contents(stream));
}

TEST(BMallocIO, RefusesPositionsThatDoNotExist) {
    BMallocIO stream;
    EXPECT_EQ(B_BAD_VALUE, stream.Seek(-1, SEEK_SET));
    EXPECT_EQ(B_BAD_VALUE, stream.Seek(0, 77));
    EXPECT_EQ(B_BAD_VALUE, stream.WriteAt(-1, "a", 1));
    EXPECT_EQ(B_BAD_VALUE, stream.WriteAt(std::numeric_limits<off_t>::max(), "a", 1));
    EXPECT_EQ(0U, stream.BufferLength());
}

TEST(BMemoryIO, StopsAtTheEndOfItsMemory) {
    char memory[4] = {};
    BMemoryIO stream(memory, sizeof(memory));
    EXPECT_EQ(4, stream.Write("abcdef", 6));
    EXPECT_EQ(0, stream.Write("g", 1));
    EXPECT_EQ(0, memcmp(memory, "abcd", 4));
    EXPECT_EQ(1, stream.Seek(-3, SEEK_END));
    char read[8] = {};
    EXPECT_EQ(3, stream.Read(read, sizeof(read)));
    EXPECT_STREQ("bcd", read);
}

TEST(BMemoryIO, ConstantMemoryIsNotWritten) {
    const char memory[] = "abc";
    BMemoryIO stream(static_cast<const void*>(memory), 3);
    EXPECT_EQ(B_NOT_ALLOWED, stream.Write("x", 1));
    off_t size = 0;
    EXPECT_EQ(B_OK, stream.GetSize(&size));
    EXPECT_EQ(3, size);
}
