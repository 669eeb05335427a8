#include <String.h>

#include <gtest/gtest.h>

namespace {

BString text(const char* string) {
    return BString(string);
}

} // namespace

TEST(BString, ANullPointerIsAnEmptyText) {
    const char* const kNull = nullptr;
    BString string(kNull);
    string.Append(kNull).Prepend(kNull).Insert(kNull, 0).ReplaceAll(kNull, "x").RemoveSet(kNull);
    EXPECT_STREQ("", string.String());
    EXPECT_EQ(0, string.Length());
    EXPECT_EQ(0, string.Compare(kNull));
}

TEST(BString, ALimitOfBytesNeverReadsBeyondTheSource) {
    EXPECT_STREQ("abc", BString("abcdef", 3).String());
    EXPECT_STREQ("abc", BString("abc", 100).String());
    EXPECT_STREQ("", BString("abc", -1).String());
    const char unterminated[] = {'a', 'b'};
    EXPECT_STREQ("ab", BString(unterminated, 2).String());
    EXPECT_STREQ("xab", BString("x").Append(unterminated, 2).String());
    EXPECT_STREQ("abx", BString("x").Prepend(unterminated, 2).String());
}

TEST(BString, CountsCharactersAndBytesApart) {
    EXPECT_EQ(9, text("日本語").Length());
    EXPECT_EQ(3, text("日本語").CountChars());
}

TEST(BString, OffsetsOutsideTheTextChangeNothing) {
    BString string("abc");
    string.Insert("x", 4).Insert("x", -1).Remove(7, 1).Remove(-1, 2).Truncate(10);
    EXPECT_STREQ("abc", string.String());
    EXPECT_EQ(0, string.ByteAt(3));
    EXPECT_EQ(0, string.ByteAt(-1));
}

TEST(BString, InsertsRemovesAndTruncates) {
    EXPECT_STREQ("axbc", text("abc").Insert("x", 1).String());
    EXPECT_STREQ("abcxy", text("abc").Insert("xyz", 2, 3).String());
    EXPECT_STREQ("a--bc", text("abc").Insert('-', 2, 1).String());
    EXPECT_STREQ("ad", text("abcd").Remove(1, 2).String());
    EXPECT_STREQ("a", text("abcd").Remove(1, 200).String());
    EXPECT_STREQ("ab", text("abcd").Truncate(2).String());
    EXPECT_STREQ("b", text(" \t b\r\n").Trim().String());
    EXPECT_STREQ("", text("  ").Trim().String());
}

TEST(BString, RemovesTexts) {
    EXPECT_STREQ("bab", text("abab").RemoveFirst("a").String());
    EXPECT_STREQ("abb", text("abab").RemoveLast("a").String());
    EXPECT_STREQ("bb", text("abab").RemoveAll("a").String());
    EXPECT_STREQ("c", text("abcab").RemoveSet("ab").String());
}

TEST(BString, CopiesAndMovesParts) {
    BString source("abcdef"), part;
    source.CopyInto(part, 1, 2);
    EXPECT_STREQ("bc", part.String());
    source.MoveInto(part, 3, 100);
    EXPECT_STREQ("def", part.String());
    EXPECT_STREQ("abc", source.String());
    part.Adopt(source);
    EXPECT_STREQ("abc", part.String());
    EXPECT_TRUE(source.IsEmpty());
}

TEST(BString, FindsForwardAndBackward) {
    BString string("abcabc");
    EXPECT_EQ(1, string.FindFirst("bc"));
    EXPECT_EQ(4, string.FindFirst("bc", 2));
    EXPECT_EQ(B_ERROR, string.FindFirst("bc", 5));
    EXPECT_EQ(B_ERROR, string.FindFirst("bc", 7));
    EXPECT_EQ(4, string.FindLast("bc"));
    EXPECT_EQ(1, string.FindLast("bc", 5));
    EXPECT_EQ(B_ERROR, string.FindLast("bc", 2));
    EXPECT_EQ(2, string.FindFirst('c'));
    EXPECT_EQ(5, string.FindLast('c'));
    EXPECT_EQ(B_ERROR, string.FindFirst('\0'));
    EXPECT_EQ(1, string.IFindFirst("BC"));
    EXPECT_EQ(4, string.IFindLast("Bc"));
    EXPECT_EQ(B_ERROR, string.IFindFirst("BD"));
}

TEST(BString, Replaces) {
    EXPECT_STREQ("&lt;&lt;<", text("<<<").Replace("<", "&lt;", 2).String());
    EXPECT_STREQ("a&lt;b&lt;", text("a<b<").ReplaceAll("<", "&lt;").String());
    EXPECT_STREQ("<&lt;", text("<<").ReplaceAll("<", "&lt;", 1).String());
    EXPECT_STREQ("aXbx", text("axbx").ReplaceFirst('x', 'X').String());
    EXPECT_STREQ("axbX", text("axbx").ReplaceLast("x", "X").String());
    EXPECT_STREQ("-b-", text("aBA").IReplaceAll("A", "-").ReplaceAll("B", "b").String());
    EXPECT_STREQ("a__b", text("a .b").ReplaceSet(" .", '_').String());
    EXPECT_STREQ("aaa", text("aaa").ReplaceAll("", "x").String());
}

TEST(BString, TheReplacementMayHoldWhatItReplaces) {
    EXPECT_STREQ("aaaa", text("aa").ReplaceAll("a", "aa").String());
}

TEST(BString, ABufferMayBeWrittenAndMeasured) {
    BString string("ab");
    char* buffer = string.LockBuffer(10);
    EXPECT_STREQ("ab", buffer);
    snprintf(buffer, 10, "hello");
    EXPECT_EQ(5, string.UnlockBuffer().Length());
    string.LockBuffer(100);
    EXPECT_STREQ("hel", string.UnlockBuffer(3).String());
}

TEST(BString, FormatsEvenIntoItself) {
    BString string("abc");
    string.SetToFormat("%s-%d-%s", string.String(), 7, "x");
    EXPECT_STREQ("abc-7-x", string.String());
    EXPECT_STREQ(
        "-1 2 3.14 true x",
        (text("") << -1 << ' ' << 2u << " " << 3.14159 << ' ' << true << BString(" x")).String());
}

TEST(BString, ComparesAsBytesAndIgnoringCase) {
    EXPECT_TRUE(text("a") < "b");
    EXPECT_TRUE("b" > text("a"));
    EXPECT_EQ(0, text("abc").Compare("abd", 2));
    EXPECT_EQ(0, text("ABC").ICompare("abc"));
    EXPECT_LT(text("ab").ICompare("ABC"), 0);
    EXPECT_EQ(0, text("ABc").ICompare("abd", 2));
    EXPECT_TRUE(text("http://x").StartsWith("http"));
    EXPECT_TRUE(text("1.dat").EndsWith(".dat"));
}

TEST(BString, ChangesTheCaseOfAsciiLettersOnly) {
    EXPECT_STREQ("abc é", text("ABC é").ToLower().String());
    EXPECT_STREQ("ABC é", text("abc é").ToUpper().String());
    EXPECT_STREQ("Hello World", text("hELLO wORLD").CapitalizeEachWord().String());
    EXPECT_STREQ("Hello", text("hELLO").Capitalize().String());
}

TEST(BString, EscapedTextComesBack) {
    BString string("a b\\c");
    string.CharacterEscape(" \\", '\\');
    EXPECT_STREQ("a\\ b\\\\c", string.String());
    EXPECT_STREQ("a b\\c", string.CharacterDeescape('\\').String());
}
