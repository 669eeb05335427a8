#include "views/BoardMenuStore.h"

#include "support/ScratchFolder.h"

#include <Node.h>
#include <NodeInfo.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

constexpr const char* kMenu = "bbs/newbbsmenu.html";
constexpr time_t kNow = 1011700000;

// A board folder with a menu in it.
struct BoardMenuStore : testing::Test {
    BoardMenuStore() { folder.Write(kMenu, "old"); }
    status_t Store(const std::string& page, time_t now = kNow) {
        return StoreBoardMenu(folder / "bbs", page, now);
    }
    std::string Menu() const { return folder.Read(kMenu); }
    std::string Aside(const std::string& time) const {
        return folder.Read(std::string(kMenu) + "." + time);
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(BoardMenuStore, SetsTheOldMenuAsideUnderItsTime) {
    const std::string page("new\0 \x81\xff\r\n", 10);
    const time_t modified = 1000000000;
    BNode((folder / kMenu).c_str()).SetModificationTime(modified);
    EXPECT_EQ(Store(page), B_OK);
    EXPECT_EQ(Menu(), page);
    EXPECT_EQ(Aside("1011700000"), "old");
    time_t kept = 0;
    BNode((folder / kMenu + ".1011700000").c_str()).GetModificationTime(&kept);
    EXPECT_EQ(kept, modified);
    BNode node((folder / kMenu).c_str());
    char type[256] = "";
    EXPECT_EQ(BNodeInfo(&node).GetType(type), B_OK);
    EXPECT_STREQ(type, "text/html");
}

TEST_F(BoardMenuStore, OfTwoInOneSecondTheLaterIsSetAside) {
    EXPECT_EQ(Store("first"), B_OK);
    EXPECT_EQ(Store("second"), B_OK);
    EXPECT_EQ(Menu(), "second");
    EXPECT_EQ(Aside("1011700000"), "first");
    EXPECT_EQ(Store("third", kNow + 1), B_OK);
    EXPECT_EQ(Aside("1011700000"), "first");
    EXPECT_EQ(Aside("1011700001"), "second");
}

TEST_F(BoardMenuStore, StoresNothingWithoutAnEarlierMenu) {
    fs::remove(folder / kMenu);
    EXPECT_NE(Store("new"), B_OK);
    EXPECT_TRUE(fs::is_empty(folder / "bbs"));
    EXPECT_NE(StoreBoardMenu(folder / "elsewhere", "new", kNow), B_OK);
    EXPECT_FALSE(folder.Has("elsewhere"));
}

TEST_F(BoardMenuStore, AMenuThatCantBeSetAsideOrReplacedStays) {
    // What stands in the way of each file that is written beside its own.
    for (const char* inTheWay : {"bbs/newbbsmenu.html.1011700000",
                                 "bbs/newbbsmenu.html.1011700000.new", "bbs/newbbsmenu.html.new"}) {
        folder.MakeFolder(std::string(inTheWay) + "/full");
        EXPECT_NE(Store("new"), B_OK) << inTheWay;
        EXPECT_EQ(Menu(), "old") << inTheWay;
        fs::remove_all(folder / inTheWay);
    }
    EXPECT_EQ(Store("new"), B_OK);
}

TEST_F(BoardMenuStore, ALinkedMenuIsReplacedWhereItLies) {
    fs::rename(folder / kMenu, folder / "menu");
    fs::create_symlink(folder / "menu", folder / kMenu);
    EXPECT_EQ(Store("new"), B_OK);
    EXPECT_TRUE(fs::is_symlink(folder / kMenu));
    EXPECT_EQ(folder.Read("menu"), "new");
    EXPECT_EQ(Aside("1011700000"), "old");
}
