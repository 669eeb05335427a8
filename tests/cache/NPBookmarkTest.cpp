#include "cache/NPBookmark.h"

#include "support/ScratchFolder.h"

#include <Directory.h>
#include <NodeInfo.h>
#include <TypeConstants.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* kUrl = "http://a.example/news/";
constexpr const char* kDat = "1012345678.dat";
constexpr const char* kFile = "2ch/2chBookmark/a.example.news.1012345678.dat";

// The attribute's bytes, with the zero byte that ends them.
std::string Attribute(const std::string& path, const char* name) {
    const BNode node(path.c_str());
    char buffer[8192];
    const ssize_t size = node.ReadAttr(name, B_STRING_TYPE, 0, buffer, sizeof(buffer));
    return size < 0 ? "" : std::string(buffer, size);
}

std::string Text(const char* text) {
    return std::string(text) + '\0';
}

} // namespace

TEST(NPBookmark, AThreadIsKeptAsAnEmptyFileWithItsAttributes) {
    ScratchFolder folder;
    EXPECT_EQ(NPBookmark::Make(kUrl, kDat, "古い題"), B_OK);
    EXPECT_EQ(NPBookmark::Make(kUrl, kDat, "題"), B_OK); // the same file, written anew
    BDirectory bookmarks;
    ASSERT_EQ(NPBookmark::GetBookmarkDirectory(&bookmarks), B_OK);
    EXPECT_EQ(bookmarks.CountEntries(), 1);
    EXPECT_TRUE(folder.Has(kFile));
    EXPECT_EQ(folder.Read(kFile), "");
    const std::string path = folder / kFile;
    EXPECT_EQ(Attribute(path, "META:title"), Text("題"));
    EXPECT_EQ(Attribute(path, "server"), Text("a.example"));
    EXPECT_EQ(Attribute(path, "board"), Text("news"));
    EXPECT_EQ(Attribute(path, "dat"), Text(kDat));
    EXPECT_EQ(Attribute(path, "META:url"),
              Text("http://a.example/test/read.cgi?bbs=news&key=1012345678"));
    BNode node(path.c_str());
    char type[B_MIME_TYPE_LENGTH];
    EXPECT_EQ(BNodeInfo(&node).GetType(type), B_OK);
    EXPECT_STREQ(type, "application/x-vnd.Be-bookmark");
}

TEST(NPBookmark, ABoardFolderOfTwoPartsIsFoundByItsOwnTestAlone) {
    ScratchFolder folder;
    const char* const board = "circle/tea";
    EXPECT_EQ(NPBookmark::Make("http://a.example/circle/tea/", kDat, "T"), B_OK);
    EXPECT_TRUE(folder.Has("2ch/2chBookmark/a.example.circle_tea.1012345678.dat"));
    EXPECT_TRUE(NPBookmark::HasBookmark("a.example", board, kDat));
    EXPECT_FALSE(NPBookmark::HoldsPlain("a.example", board, kDat));
    EXPECT_NE(NPBookmark::RemovePlain("a.example", board, kDat), B_OK);
    EXPECT_TRUE(NPBookmark::HasBookmark("a.example", board, kDat));
}

TEST(NPBookmark, IsFoundAndRemoved) {
    ScratchFolder folder;
    EXPECT_FALSE(NPBookmark::HasBookmark("a.example", "news", kDat)); // no folder yet
    EXPECT_FALSE(folder.Has("2ch"));
    EXPECT_EQ(NPBookmark::Make(kUrl, kDat, "T"), B_OK);
    EXPECT_TRUE(NPBookmark::HasBookmark("a.example", "news", kDat));
    EXPECT_TRUE(NPBookmark::HoldsPlain("a.example", "news", kDat));
    EXPECT_FALSE(NPBookmark::HasBookmark("a.example", "news", "9.dat"));
    EXPECT_EQ(NPBookmark::RemovePlain("a.example", "news", kDat), B_OK);
    EXPECT_FALSE(folder.Has(kFile));
    EXPECT_FALSE(folder.Has("2ch/2chBookmark/.attributes/a.example.news.1012345678.dat"));
}

TEST(NPBookmark, AFolderOfItsNameIsNoBookmark) {
    ScratchFolder folder;
    folder.MakeFolder(kFile);
    EXPECT_FALSE(NPBookmark::HasBookmark("a.example", "news", kDat));
    EXPECT_TRUE(NPBookmark::HoldsPlain("a.example", "news", kDat));
    EXPECT_NE(NPBookmark::Make(kUrl, kDat, "T"), B_OK);
}

TEST(NPBookmark, NamesThatWouldNotBeReadBackMakeNothing) {
    const std::string board31(31, 'b');
    const std::string server63(63, 's');
    const struct {
        std::string url;
        std::string dat;
        bool fits;
    } cases[] = {
        {"http://a.example/" + board31 + "/", kDat, true},
        {"http://a.example/" + board31 + "b/", kDat, false},
        {"http://" + server63 + "/news/", kDat, true},
        {"http://" + server63 + "s/news/", kDat, false},
        {kUrl, "12345678901.dat", true},
        {kUrl, "123456789012.dat", false},
        {kUrl, "a/b.dat", false},
        {kUrl, "", false},
        {"http://a.example/../", kDat, false},
        {"http://a.example/x//y/", kDat, false},
        {"no address", kDat, false},
    };
    for (const auto& one : cases) {
        ScratchFolder folder;
        EXPECT_EQ(NPBookmark::Make(one.url.c_str(), one.dat.c_str(), "T") == B_OK, one.fits)
            << one.url << " " << one.dat;
        EXPECT_EQ(folder.Has("2ch"), one.fits) << one.url << " " << one.dat;
    }
}

TEST(NPBookmark, AnOverlongTitleIsCutAtACharacter) {
    ScratchFolder folder;
    std::string title = "x";
    while (title.size() < 5000)
        title += "題";
    EXPECT_EQ(NPBookmark::Make(kUrl, kDat, title.c_str()), B_OK);
    EXPECT_EQ(Attribute(folder / kFile, "META:title"), title.substr(0, 4093) + '\0');
}

TEST(NPBookmark, OneThatCanNotBeKeptWholeLeavesNothing) {
    ScratchFolder folder;
    folder.Write("2ch/2chBookmark/.attributes", "in the way");
    EXPECT_NE(NPBookmark::Make(kUrl, kDat, "T"), B_OK);
    EXPECT_FALSE(folder.Has(kFile));
}
