#include "gate/TestGate.h"
#include "support/AlertWatch.h"
#include "support/Browser.h"

namespace {

constexpr const char* kKey = "1012345678.dat";
constexpr const char* kDate = "Wed, 23 Jan 2002 12:34:56 GMT";
constexpr const char* kFile = "2ch/2chCache/board.example/news/1012345678.dat";

std::string Posts(int first, int last, const std::string& name = "n") {
    std::string posts;
    for (int i = first; i <= last; i++)
        posts += name + "<>sage<>d" + std::to_string(i) + "<> body" + std::to_string(i) + " <>" +
                 (i == 1 ? "title" : "") + "\n";
    return posts;
}

// A server of today: a list, a thread with ranges, and the archive of what has dropped.
struct Board {
    std::string log, archived;

    std::string operator()(const std::string& request) const {
        const std::string path = PathOf(request);
        const std::string dated = std::string("Last-Modified: ") + kDate + "\r\n";
        if (path == "/news/subject.txt")
            return Reply("200 OK", "1012345678.dat<>title (3)\n");
        if (path == "/news/oyster/1012/1012345678.dat" && !archived.empty())
            return Reply("200 OK", archived);
        if (log.empty() || path != std::string("/news/dat/") + kKey)
            return Reply("404 Not Found", "");
        const std::string range = HeaderOf(request, "Range");
        if (range.empty())
            return Reply("200 OK", log, dated);
        const size_t start = strtoul(range.c_str() + strlen("bytes="), nullptr, 10);
        return Reply("206 Partial Content", log.substr(std::min(start, log.size())),
                     dated + "Content-Range: bytes " + std::to_string(start) + "-" +
                         std::to_string(log.size() - 1) + "/" + std::to_string(log.size()) +
                         "\r\n");
    }
};

// The program itself, with the gate as its proxy.
class Reading : public testing::Test {
protected:
    void Become(const Board& board) { fOrigin.Become(board); }
    std::string Cached() const { return fFolder.Read(kFile); }

    ScratchFolder fOuter; // the settings' folder before and after
    OriginServer fOrigin{Board{Posts(1, 3), ""}};
    TestGate fGate{&fOrigin};
    ScratchFolder fFolder;
    Browser fBrowser{fGate.Port()};
};

TEST_F(Reading, AListAndAThreadThatGrowsDropsAndChanges) {
    fBrowser.SelectBoard();
    EXPECT_TRUE(fBrowser.WaitForTitle("ニュース (1)"));
    fBrowser.SelectThread(kKey);
    EXPECT_TRUE(fBrowser.WaitForThread("title (3)"));
    EXPECT_EQ(Cached(), Posts(1, 3));
    // It grows.
    Become({Posts(1, 5), ""});
    fBrowser.SelectThread(kKey);
    EXPECT_TRUE(fBrowser.WaitForThread("title (5)"));
    EXPECT_EQ(Cached(), Posts(1, 5));
    // A post in the middle is deleted, which the user is told.
    Become({Posts(1, 2) + Posts(3, 3, "deleted") + Posts(4, 6), ""});
    fBrowser.SelectThread(kKey);
    const std::string alert = WaitForAlert();
    EXPECT_NE(alert.find("ログを削除"), std::string::npos) << alert;
    DismissAlert();
    EXPECT_EQ(Cached(), Posts(1, 5));
    // It drops, and its archive has other bytes for the same posts.
    Become({"", Posts(1, 7, "archived")});
    fBrowser.SelectThread(kKey);
    EXPECT_TRUE(fBrowser.WaitForThread("title (7)"));
    EXPECT_EQ(Cached(), Posts(1, 5) + Posts(6, 7, "archived"));
    // Nothing is new there.
    fBrowser.SelectThread(kKey);
    EXPECT_TRUE(fBrowser.WaitForThread("title (7)"));
    EXPECT_EQ(Cached(), Posts(1, 5) + Posts(6, 7, "archived"));
}

} // namespace
