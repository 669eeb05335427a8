#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "cache/NPBookmark.h"
#include "cache/NPCache.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Texts = std::vector<std::string>;

// A browser that shows a board of two threads.
class BookmarksTest : public testing::Test {
protected:
    void SetUp() override { ShowBoard("http://board.example/news/"); }
    void ShowBoard(const char* url) {
        fBrowser.SelectBoard(url);
        EXPECT_TRUE(fBrowser.WaitUntil(
            [&] { return List()->Url() == url && List()->FullListCountItems() == 2; }));
        EXPECT_TRUE(fBrowser.WaitForTitle("ニュース (2)"));
        EXPECT_TRUE(fBrowser.WaitForStatus(""));
    }
    void ListBookmarks(const std::string& title) {
        fBrowser.Messenger().SendMessage(kMsgListBookmarks);
        EXPECT_TRUE(fBrowser.WaitForTitle(title));
        EXPECT_TRUE(fBrowser.WaitForStatus(""));
    }
    // Opens the pop-up menu of a row and chooses a line.
    void Choose(int32 row, const std::string& line) {
        OpenMenu(row);
        EXPECT_TRUE(server::testing::ChooseMenuLine(line));
        EXPECT_TRUE(server::testing::WaitUntil([] { return !server::testing::MenuIsOpen(); }));
    }
    void OpenMenu(int32 row) {
        fBrowser.Locked(
            [&] {
                List()->FullListSelect(row);
                List()->MakeFocus(true);
                return true;
            },
            false);
        server::testing::MenuKey(fBrowser.Window());
        EXPECT_TRUE(server::testing::WaitUntil([] { return server::testing::MenuIsOpen(); }));
    }
    bool IsMarked(int32 row) {
        return fBrowser.Locked(
            [&] {
                const NPThreadItem* item = List()->ThreadAt(row);
                return item != nullptr && item->GetColumnContentBitmap(kColumnMark) != nullptr;
            },
            false);
    }
    // A message to the list, obeyed before this returns.
    void Tell(BMessage* message) {
        message->what == kMsgThreadComplete || message->what == kMsgBoardComplete
            ? BMessenger(fBrowser.Threads()).SendMessage(message)
            : BMessenger(List()).SendMessage(message);
        server::testing::WaitUntilIdle(fBrowser.Window());
    }
    NPThreadListView* List() { return fBrowser.Threads()->List(); }

    ScratchFolder fFolder;
    RawServer fServer{{RawServer::Reply("HTTP/1.1 200 OK\r\n\r\n1.dat<>a (5)\n2.dat<>b (3)\n")}};
    Browser fBrowser{fServer.Port()};
};

constexpr const char* kFile = "2ch/2chBookmark/board.example.news.2.dat";

} // namespace

TEST_F(BookmarksTest, AddedFromTheMenuMarkedAtOnceAndInTheNextListAndRemoved) {
    OpenMenu(1);
    const Texts labels = server::testing::MenuLabels();
    EXPECT_EQ(labels[labels.size() - 3], "ブックマークに追加");
    server::testing::DismissMenu();
    Choose(1, "ブックマークに追加");
    EXPECT_TRUE(server::testing::WaitUntil([&] { return IsMarked(1); }));
    EXPECT_FALSE(IsMarked(0));
    EXPECT_TRUE(fFolder.Has(kFile));

    ListBookmarks("ブックマーク (1)");
    EXPECT_EQ(fBrowser.Column(kColumnTitle), Texts{"b "});
    ShowBoard("http://board.example/news/");
    EXPECT_TRUE(IsMarked(1));
    EXPECT_FALSE(IsMarked(0));

    ListBookmarks("ブックマーク (1)");
    Choose(0, "ブックマークを消去");
    EXPECT_TRUE(server::testing::WaitUntil([&] { return !IsMarked(0); }));
    EXPECT_FALSE(fFolder.Has(kFile));
    ShowBoard("http://board.example/news/");
    EXPECT_FALSE(IsMarked(1));
}

TEST_F(BookmarksTest, ABookmarkIsOpenedAsAnyThread) {
    EXPECT_EQ(NPBookmark::Make(Browser::kBoard, "2.dat", "しおり"), B_OK);
    ListBookmarks("ブックマーク (1)");
    fBrowser.Locked(
        [&] {
            List()->InvokeRow(0);
            return true;
        },
        false);
    EXPECT_TRUE(server::testing::WaitUntil([&] {
        return fServer.Requests().back().starts_with("GET http://board.example/news/dat/2.dat ");
    }));
}

TEST_F(BookmarksTest, ABoardOfTwoPartsIsKeptButNotFoundOrRemovedHere) {
    ShowBoard("http://board.example/circle/tea/");
    Choose(0, "ブックマークに追加");
    EXPECT_TRUE(server::testing::WaitUntil([&] { return IsMarked(0); }));
    EXPECT_TRUE(NPBookmark::HasBookmark("board.example", "circle/tea", "1.dat"));
    ShowBoard("http://board.example/news/");
    ShowBoard("http://board.example/circle/tea/");
    EXPECT_FALSE(IsMarked(0));
    ListBookmarks("ブックマーク (1)");
    Choose(0, "ブックマークを消去");
    server::testing::WaitUntilIdle(fBrowser.Window());
    EXPECT_TRUE(IsMarked(0));
    EXPECT_TRUE(NPBookmark::HasBookmark("board.example", "circle/tea", "1.dat"));
}

TEST_F(BookmarksTest, WhatCanNotBeKeptIsNotMarked) {
    const std::string board = "http://board.example/" + std::string(32, 'b') + "/";
    ShowBoard(board.c_str());
    Choose(0, "ブックマークに追加");
    server::testing::WaitUntilIdle(fBrowser.Window());
    EXPECT_FALSE(IsMarked(0));
    EXPECT_FALSE(fFolder.Has("2ch/2chBookmark"));

    ShowBoard("http://board.example/news/");
    const std::string path = fFolder.Write("2ch/2chBookmark", "a file");
    Choose(1, "ブックマークに追加");
    EXPECT_EQ(WaitForAlert(), path + "\nにアクセスできません。");
    DismissAlert();
    EXPECT_FALSE(IsMarked(1));

    std::filesystem::remove(path);
    std::filesystem::create_symlink("/no/such/folder", path);
    Choose(1, "ブックマークに追加");
    EXPECT_EQ(WaitForAlert(), path + "\nが作成できませんでした。");
    DismissAlert();
    EXPECT_FALSE(IsMarked(1));
}

TEST_F(BookmarksTest, ARowThatIsNoLongerTheSameIsLeftAlone) {
    EXPECT_EQ(NPBookmark::Make(Browser::kBoard, "2.dat", "T"), B_OK);
    ListBookmarks("ブックマーク (1)");
    NPThreadItem* const row =
        fBrowser.Locked([&] { return List()->ThreadAt(0); }, static_cast<NPThreadItem*>(nullptr));
    const char* const url = "http://board.example/news/index.html";
    const struct {
        void* item;
        const char* dat;
        const char* url;
    } cases[] = {
        {nullptr, "2.dat", url},
        {reinterpret_cast<void*>(0x10), "2.dat", url},
        {row, "1.dat", url},
        {row, "2.dat", "http://board.example/other/index.html"},
    };
    for (const auto& one : cases) {
        BMessage remove(kMsgRemoveBookmark);
        remove.AddPointer("item", one.item);
        remove.AddString("dat", one.dat);
        remove.AddString("url", one.url);
        Tell(&remove);
        EXPECT_TRUE(fFolder.Has(kFile));
    }
    BMessage without(kMsgRemoveBookmark);
    Tell(&without);
    BMessage add(kMsgAddBookmark);
    add.AddString("url", Browser::kBoard);
    add.AddString("dat", "1.dat"); // neither "title" nor "selection"
    Tell(&add);
    EXPECT_TRUE(fFolder.Has(kFile));
    EXPECT_FALSE(fFolder.Has("2ch/2chBookmark/board.example.news.1.dat"));
}

TEST_F(BookmarksTest, AVisitRefreshesTheRowsOfItsBoard) {
    for (const char* url : {"http://a.example/news/", "http://b.example/other/"})
        EXPECT_EQ(NPBookmark::Make(url, "1.dat", url), B_OK);
    ListBookmarks("ブックマーク (2)");
    BMessage refresh(kMsgThreadComplete);
    refresh.AddString("dat", "1.dat");
    refresh.AddString("last_modified", "Wed, 23 Jan 2002 12:34:56 GMT");
    refresh.AddInt32("res_num", 8);
    refresh.AddBool("bookmark", true);
    Tell(&refresh); // without "board"
    EXPECT_EQ(fBrowser.Column(kColumnGotten), (Texts{"", ""}));
    refresh.AddString("board", "news");
    Tell(&refresh);
    Texts gotten = fBrowser.Column(kColumnGotten);
    const Texts titles = fBrowser.Column(kColumnTitle);
    EXPECT_EQ(gotten[titles[0] == "http://a.example/news/" ? 0 : 1], "8");
    EXPECT_EQ(gotten[titles[0] == "http://a.example/news/" ? 1 : 0], "");
}

TEST_F(BookmarksTest, ACachedCopyIsDeletedFromTheListOfBookmarks) {
    EXPECT_EQ(NPBookmark::Make(Browser::kBoard, "2.dat", "T"), B_OK);
    {
        NPCache cache("board.example", "news", "2.dat", NPCache::Open::kCreate);
        cache.WriteLine("x\n", 2);
        const int32 count = 1;
        cache.WriteAttr("res_num", B_INT32_TYPE, &count, sizeof(count));
    }
    ListBookmarks("ブックマーク (1)");
    EXPECT_EQ(fBrowser.Column(kColumnGotten), Texts{"1"});
    Choose(0, "キャッシュを消去");
    EXPECT_TRUE(server::testing::WaitUntil(
        [&] { return !fFolder.Has("2ch/2chCache/board.example/news/2.dat"); }));
    EXPECT_TRUE(
        server::testing::WaitUntil([&] { return fBrowser.Column(kColumnGotten) == Texts{""}; }));
    EXPECT_TRUE(fFolder.Has(kFile));
    OpenMenu(0);
    EXPECT_FALSE(server::testing::MenuLineIsEnabled("キャッシュを消去"));
    server::testing::DismissMenu();
}

TEST_F(BookmarksTest, TheFolderIsMadeAndOpened) {
    server::testing::RecordLaunches();
    fBrowser.Messenger().SendMessage(kMsgOpenBookmarkFolder);
    EXPECT_TRUE(server::testing::WaitUntil(
        [&] { return server::testing::Launches() == Texts{fFolder / "2ch/2chBookmark"}; }));
}
