#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "cache/NPBookmark.h"
#include "cache/NPCache.h"

#include <Directory.h>
#include <Node.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Texts = std::vector<std::string>;

void Bookmark(const char* dat, const char* title) {
    EXPECT_EQ(NPBookmark::Make(Browser::kBoard, dat, title), B_OK);
}

void Cache(const char* dat, int32 count, const char* date) {
    NPCache cache("board.example", "news", dat, NPCache::Open::kCreate);
    cache.WriteLine("x\n", 2);
    cache.WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
    cache.SetModificationTime(date);
}

void List(Browser* browser, const std::string& title) {
    browser->Messenger().SendMessage(kMsgListBookmarks);
    EXPECT_TRUE(browser->WaitForTitle(title));
    EXPECT_TRUE(browser->WaitForStatus(""));
}

// An attribute of a bookmark made whole, spoilt.
struct Spoilt {
    const char* name;
    type_code type;
    std::string value; // empty: removed
};

void Spoil(const std::string& path, const Spoilt& how) {
    BNode node(path.c_str());
    node.RemoveAttr(how.name);
    if (!how.value.empty())
        node.WriteAttr(how.name, how.type, 0, how.value.data(), how.value.size());
}

} // namespace

TEST(BookmarkListing, BookmarksAreListedWithTheirCachedCountsNewestFirst) {
    ScratchFolder folder;
    Bookmark("1.dat", "古い");
    Bookmark("2.dat", "新しい &amp;");
    Bookmark("3.dat", "未取得");
    Cache("1.dat", 120, "Wed, 23 Jan 2002 12:34:56 GMT");
    Cache("2.dat", 7, "Thu, 24 Jan 2002 12:34:56 GMT");
    Browser browser(freePort());
    List(&browser, "ブックマーク (3)");
    EXPECT_TRUE(
        browser.WaitUntil([&] { return browser.Threads()->List()->SortKey() == kColumnModified; }));
    EXPECT_EQ(browser.Column(kColumnTitle), (Texts{"新しい &amp;", "古い", "未取得"}));
    EXPECT_EQ(browser.Column(kColumnRes), (Texts{"7", "120", "0"}));
    EXPECT_EQ(browser.Column(kColumnGotten), (Texts{"7", "120", ""}));
    Texts numbers = browser.Column(kColumnNumber);
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, (Texts{"1", "2", "3"}));
    EXPECT_TRUE(browser.WaitUntil([&] {
        NPThreadListView* list = browser.Threads()->List();
        for (int32 i = 0; i < 3; i++) {
            EXPECT_EQ(list->ThreadAt(i)->State(), i < 2 ? kCached : kNotFetched);
            EXPECT_STREQ(list->ThreadAt(i)->Url(), "http://board.example/news/index.html");
            EXPECT_TRUE(list->ThreadAt(i)->GetColumnContentBitmap(kColumnMark) != nullptr);
        }
        return true;
    }));
}

TEST(BookmarkListing, WithoutAFolderTheListIsEmpty) {
    ScratchFolder folder;
    Browser browser(freePort());
    List(&browser, "ブックマーク (0)");
    EXPECT_TRUE(browser.Column(kColumnDat).empty());
    EXPECT_FALSE(folder.Has("2ch"));
}

TEST(BookmarkListing, WhatIsNoFolderIsAnAlertAndTheListStays) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n1.dat<>a (5)\n")});
    folder.Write("2ch/2chBookmark", "a file");
    Browser browser(server.Port());
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    browser.Messenger().SendMessage(kMsgListBookmarks);
    EXPECT_EQ(WaitForAlert(), "ブックマークの読み込み失敗！");
    DismissAlert();
    EXPECT_TRUE(browser.WaitForStatus(""));
    EXPECT_EQ(browser.Column(kColumnDat), Texts{"1.dat"});
}

TEST(BookmarkListing, WhatIsNoWholeBookmarkIsLeftOutAndLeftAlone) {
    const Spoilt cases[] = {
        {"META:title", 0, ""},
        {"board", 0, ""},
        {"dat", 0, ""},
        {"server", 0, ""},
        {"board", B_STRING_TYPE, std::string(1, '\0')},
        {"META:title", B_INT32_TYPE, "1234"},
        {"server", B_RAW_TYPE, "a.example"},
        {"board", B_STRING_TYPE, std::string(32, 'b')},
        {"board", B_STRING_TYPE, std::string(100000, 'b')},
        {"dat", B_STRING_TYPE, std::string(16, '1')},
        {"dat", B_STRING_TYPE, "../../x.dat"},
        {"server", B_STRING_TYPE, std::string(64, 's')},
        {"server", B_STRING_TYPE, "a/b"},
        {"board", B_STRING_TYPE, ".."},
    };
    ScratchFolder folder;
    int number = 10;
    for (const Spoilt& one : cases) {
        const std::string dat = std::to_string(number++) + ".dat";
        Bookmark(dat.c_str(), "T");
        Spoil(folder / ("2ch/2chBookmark/board.example.news." + dat), one);
    }
    folder.Write("2ch/2chBookmark/foreign.txt", "a letter");
    folder.MakeFolder("2ch/2chBookmark/foreign folder");
    Bookmark("1.dat", "whole");
    Browser browser(freePort());
    List(&browser, "ブックマーク (1)");
    EXPECT_EQ(browser.Column(kColumnTitle), Texts{"whole"});
    EXPECT_EQ(folder.Read("2ch/2chBookmark/foreign.txt"), "a letter");
    EXPECT_TRUE(folder.Has("2ch/2chBookmark/board.example.news.10.dat"));
}

TEST(BookmarkListing, TextsThatJustFitAreListedAndAnOverlongTitleIsCut) {
    ScratchFolder folder;
    const std::string path = folder / "2ch/2chBookmark/board.example.news.1.dat";
    Bookmark("1.dat", "T");
    // Without a zero byte at the end, as another program may write them.
    Spoil(path, {"board", B_STRING_TYPE, std::string(31, 'b')});
    Spoil(path, {"dat", B_STRING_TYPE, "12345678901.dat"});
    Spoil(path, {"META:title", B_STRING_TYPE, std::string(100000, 't')});
    Browser browser(freePort());
    List(&browser, "ブックマーク (1)");
    EXPECT_EQ(browser.Column(kColumnTitle), Texts{std::string(4095, 't')});
    EXPECT_EQ(browser.Column(kColumnDat), Texts{"12345678901.dat"});
}

TEST(BookmarkListing, AFolderThatIsItselfABookmarkIsTheFirst) {
    ScratchFolder folder;
    Bookmark("1.dat", "inside");
    BNode node((folder / "2ch/2chBookmark").c_str());
    for (const auto& [name, value] :
         {std::pair("META:titie", "the folder"), std::pair("board", "b"), std::pair("dat", "9.dat"),
          std::pair("server", "s")})
        node.WriteAttr(name, B_STRING_TYPE, 0, value, strlen(value) + 1);
    Browser browser(freePort());
    List(&browser, "ブックマーク (2)");
    EXPECT_TRUE(browser.WaitUntil([&] {
        NPThreadItem* first = browser.Threads()->GetNextNumber(0);
        return std::string(first->ColumnText(kColumnTitle)) == "the folder";
    }));
}

TEST(BookmarkListing, ABoardThatIsChosenMeanwhileReplacesTheList) {
    ScratchFolder folder;
    for (int i = 0; i < 50; i++)
        Bookmark((std::to_string(i) + ".dat").c_str(), "T");
    RawServer server({RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n1.dat<>a (5)\n")});
    Browser browser(server.Port());
    browser.Messenger().SendMessage(kMsgListBookmarks);
    browser.SelectBoard();
    EXPECT_TRUE(browser.WaitForTitle("ニュース (1)"));
    EXPECT_TRUE(browser.WaitForStatus(""));
    EXPECT_EQ(browser.Column(kColumnTitle), Texts{"a "});
}
