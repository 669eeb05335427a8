#include "storage/SideFile.h"

#include <TypeConstants.h>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

std::string find(const SideFile& file, const char* name) {
    std::optional<SideFile::Attribute> found = file.Find(name);
    return found ? found->value : "(none)";
}

} // namespace

TEST(SideFile, IsALineAnAttribute) {
    SideFile file;
    file.Set("title", B_STRING_TYPE, "題名");
    file.Set("a b", B_BOOL_TYPE, "\1");
    EXPECT_EQ("title CSTR 題名\na\\sb BOOL true\n", file.Text());
    file.Set("title", B_STRING_TYPE, "new");
    EXPECT_EQ("title CSTR new\na\\sb BOOL true\n", file.Text());
    EXPECT_TRUE(file.Remove("title"));
    EXPECT_FALSE(file.Remove("title"));
    EXPECT_EQ("a\\sb BOOL true\n", file.Text());
}

TEST(SideFile, WhatAPersonWroteIsReadGenerously) {
    SideFile file(
        "# a remark\r\n\n  \ntitle \t CSTR\t  some  text \t\r\n\\x61 CSTR one\nempty CSTR");
    EXPECT_EQ(Names({"title", "a", "empty"}), file.Names());
    EXPECT_EQ("some  text", find(file, "title"));
    EXPECT_EQ("one", find(file, "a"));
    EXPECT_EQ("", find(file, "empty"));
}

TEST(SideFile, ANameThatWasNotEscapedIsFound) {
    SideFile file("a\x7f\xff CSTR one\n");
    ASSERT_EQ(Names({"a\x7f\xff"}), file.Names());
    EXPECT_EQ("one", find(file, "a\x7f\xff"));
    file.Set("a\x7f\xff", B_STRING_TYPE, "two");
    EXPECT_EQ("a\\x7f\\xff CSTR two\n", file.Text());
}

TEST(SideFile, DamagedLinesArePassedOverAndKept) {
    SideFile file("nonsense\nres LONG twelve\nres LONG 12\n\xff\xfe\n");
    EXPECT_EQ(Names({"res"}), file.Names());
    file.Set("res", B_INT32_TYPE, std::string("\x0d\0\0\0", 4));
    EXPECT_EQ("nonsense\nres LONG twelve\nres LONG 13\n\xff\xfe\n", file.Text());
}

TEST(SideFile, ALastLineWithoutItsEndSwallowsNothing) {
    SideFile file("a CSTR x");
    file.Set("b", B_STRING_TYPE, "y");
    EXPECT_EQ("a CSTR x\nb CSTR y\n", file.Text());
}

TEST(SideFile, OfTwoLinesOfOneNameTheFirstCounts) {
    SideFile file("a CSTR 1\nb CSTR x\na CSTR 2\n");
    EXPECT_EQ(Names({"a", "b"}), file.Names());
    EXPECT_EQ("1", find(file, "a"));
    EXPECT_TRUE(file.Remove("a"));
    EXPECT_EQ("(none)", find(file, "a"));
}

TEST(SideFile, RenamingKeepsThePlaceAndReplacesTheOther) {
    SideFile file("a CSTR 1\nb CSTR 2\nc CSTR 3\n");
    EXPECT_TRUE(file.Rename("a", "c"));
    EXPECT_EQ("c CSTR 1\nb CSTR 2\n", file.Text());
    EXPECT_TRUE(file.Rename("b", "b"));
    EXPECT_FALSE(file.Rename("none", "x"));
    EXPECT_EQ("2", find(file, "b"));
}
