#include "support/AlertWatch.h"
#include "support/Browser.h"
#include "support/RawServer.h"
#include "support/ScratchFolder.h"

#include "cache/NPCache.h"
#include "post/PostForm.h"
#include "server/DemoServer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// A board that is served as HTML alone, in the folder that is the parameter.
class CgiThread : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        fServer.AddBoard(GetParam(), 2, BoardKind::kCgi);
        ASSERT_TRUE(fServer.Start());
        fKey = fServer.Keys(GetParam()).front();
        fServer.Grow(GetParam(), fKey, 24);
        fBrowser = std::make_unique<Browser>(fServer.Port());
    }
    // The pane is empty until the first post comes.
    void Select(uint32 code) {
        fBrowser->Locked(
            [this] {
                fBrowser->Article()->ShowThread(-1, "", "");
                return true;
            },
            false);
        BMessage message(code);
        message.AddString("board", "板");
        message.AddString("dat", (fKey + ".cgi").c_str());
        message.AddString("url", (std::string("http://many.example/") + GetParam() + "/").c_str());
        fBrowser->Messenger().SendMessage(&message);
    }
    bool WaitForPosts(int count) {
        const std::string ending = " (" + std::to_string(count) + ")";
        return fBrowser->WaitUntil([&] {
            return std::string(fBrowser->Article()->GetTitle()).ends_with(ending);
        }) && fBrowser->WaitForStatus("");
    }
    std::string Cached() const {
        return fFolder.Read(std::string("2ch/2chCache/many.example/") + GetParam() + "/" + fKey +
                            ".cgi");
    }
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        for (const DemoServer::Request& request : fServer.Requests())
            paths.push_back(request.path);
        return paths;
    }

    ScratchFolder fFolder;
    DemoServer fServer;
    std::string fKey;
    std::unique_ptr<Browser> fBrowser;
};

} // namespace

TEST_P(CgiThread, IsReadGrowsAndOpensOffline) {
    Select(kMsgBoardSelected);
    EXPECT_TRUE(fBrowser->WaitForTitle("板 (2)"));
    EXPECT_EQ(fBrowser->Column(kColumnDat)[0], fKey + ".cgi");
    Select(kMsgThreadSelected);
    ASSERT_TRUE(WaitForPosts(25));
    const std::string first = fBrowser->Text();
    const std::string before = Cached();
    EXPECT_EQ(std::count(before.begin(), before.end(), '\n'), 25);

    fServer.ForgetRequests();
    fServer.Grow(GetParam(), fKey, 3);
    Select(kMsgThreadSelected);
    ASSERT_TRUE(WaitForPosts(28));
    EXPECT_TRUE(fBrowser->Text().starts_with(first));
    EXPECT_TRUE(Cached().starts_with(before));
    const std::string folder = GetParam();
    const size_t slash = folder.find('/');
    const std::string prefix = slash == folder.npos ? "" : "/" + folder.substr(0, slash);
    ASSERT_EQ(fServer.Requests().size(), 1u);
    EXPECT_EQ(fServer.Requests()[0].path.substr(0, prefix.size() + 13), prefix + "/bbs/read.cgi");

    const std::string shown = fBrowser->Text();
    const std::string cached = Cached();
    Select(kMsgThreadSelected); // nothing new
    EXPECT_TRUE(fBrowser->WaitUntil([this] { return fServer.Requests().size() == 2; }));
    ASSERT_TRUE(WaitForPosts(28));
    EXPECT_EQ(Cached(), cached);

    fServer.Stop();
    Select(kMsgThreadSelectedCached);
    ASSERT_TRUE(WaitForPosts(28));
    EXPECT_EQ(fBrowser->Text(), shown);
}

INSTANTIATE_TEST_SUITE_P(Folders, CgiThread, testing::Values("many", "pref/many"));

namespace {

constexpr const char* kFile = "2ch/2chCache/board.example/news/1.cgi";
const std::string kHead = "HTTP/1.1 200 OK\r\n\r\n<html>\n<dl>\n<b>title</b>\n";

std::string PostBlock(int number) {
    return "<dt>" + std::to_string(number) + " <b> n </b> 1234567890123d<br><dd>m" +
           std::to_string(number) + " <br><br>\n";
}

} // namespace

TEST(CgiDownload, ARefusalIsShownAndTheWindowGoesOn) {
    ScratchFolder folder;
    RawServer server({RawServer::Reply("HTTP/1.1 403 Forbidden\r\n\r\nno"),
                      RawServer::Reply(kHead + PostBlock(1) + "</dl></html>")});
    Browser browser(server.Port());
    browser.SelectThread("1.cgi");
    EXPECT_EQ(WaitForAlert(), "403 Forbidden\r");
    DismissAlert();
    EXPECT_TRUE(browser.WaitForStatus(""));
    browser.SelectThread("1.cgi");
    EXPECT_TRUE(browser.WaitForThread("title (1)"));
}

TEST(CgiDownload, ACutPageKeepsItsWholePostsAndTheNextOneGoesOn) {
    ScratchFolder folder;
    const std::string page = kHead + PostBlock(1) + PostBlock(2) + PostBlock(3);
    RawServer server(
        {RawServer::CutAfter(page.size() - 4, page),
         RawServer::Reply(kHead + PostBlock(1) + PostBlock(3) + "<table>\n" + PostBlock(9))});
    Browser browser(server.Port());
    browser.SelectThread("1.cgi");
    EXPECT_TRUE(browser.WaitForStatus("途中で切れました"));
    const std::string two = "n<><>d<> m1 <>title\nn<><>d<> m2 <>\n";
    EXPECT_EQ(folder.Read(kFile), two);
    browser.SelectThread("1.cgi");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    EXPECT_EQ(folder.Read(kFile), two + "n<><>d<> m3 <>\n");
    EXPECT_NE(server.WaitForRequest(1).find("/bbs/read.cgi?BBS=news&KEY=1&START=3 HTTP/1.1\r\n"),
              std::string::npos);
}

TEST(CgiDownload, AnOverlongPostCostsNoOther) {
    ScratchFolder folder;
    const std::string overlong =
        "<dt>2 <b> n </b> 1234567890123d<br><dd>" + std::string(9000, 'x') + " <br><br>\n";
    RawServer server(
        {RawServer::Reply(kHead + PostBlock(1) + overlong + PostBlock(3) + "<table>\n")});
    Browser browser(server.Port());
    browser.SelectThread("1.cgi");
    EXPECT_TRUE(browser.WaitForThread("title (3)"));
    const std::string cached = folder.Read(kFile);
    EXPECT_TRUE(cached.starts_with("n<><>d<> m1 <>title\nn<><>d<> xxx"));
    EXPECT_TRUE(cached.ends_with("xxx…（以下略） <>\nn<><>d<> m3 <>\n"));
    // The page has no time: the copy's own is shown in lists.
    EXPECT_FALSE(NPCache("board.example", "news", "1.cgi", NPCache::Open::kExisting).IsFromEpoch());
}

TEST(CgiDownload, FromScratchEveryPostIsAskedFor) {
    ScratchFolder folder;
    folder.Write(kFile, "n<><>d<> old <>title\n");
    RawServer server({RawServer::Reply("HTTP/1.1 403 Forbidden\r\n\r\n"),
                      RawServer::Reply(kHead + PostBlock(1) + PostBlock(2) + "<table>\n")});
    Browser browser(server.Port());
    browser.SelectThread("1.cgi");
    WaitForAlert();
    DismissAlert();
    EXPECT_TRUE(browser.WaitForThread("title (1)"));
    browser.Locked(
        [&] { return BMessenger(browser.Article()).SendMessage(kMsgReloadFromScratch) == B_OK; },
        false);
    EXPECT_TRUE(browser.WaitForThread("title (2)"));
    EXPECT_EQ(folder.Read(kFile), "n<><>d<> m1 <>title\nn<><>d<> m2 <>\n");
    EXPECT_NE(server.WaitForRequest(1).find("&START=1 "), std::string::npos);
}

TEST(CgiDownload, PagesOfNonsenseEndAndLoseNothing) {
    const std::string pages[] = {
        "HTTP/1.1 200 OK\r\n\r\n",
        "HTTP/1.1 200 OK\r\n\r\n<html>\nno list\n",
        kHead,
        kHead + std::string(9000, 'x') + "<br>\n",
        kHead + "\xFF\x81\n\xE0\n<br>\n\x81<br>\n<table",
        // Characters that are cut at both ends of each field.
        kHead + PostBlock(1) +
            "<dt>2<a href=\"mailto\x96\xBC\x91O\x96\xBC><b>\x96\xBC\x91O\x96\xBC</b></a> "
            "\x93\x8A\x8D\x65\x93\xFA\x93\xFA\x93\xFA<br><dd>\x96\xBC\x91O\x96\xBC<br><br>\n",
    };
    ScratchFolder folder;
    const std::string cached = "n<><>d<> m1 <>title\n";
    folder.Write(kFile, cached);
    for (const std::string& page : pages) {
        RawServer server({RawServer::Reply(page)});
        Browser browser(server.Port());
        browser.SelectThread("1.cgi");
        EXPECT_TRUE(browser.WaitUntil(
            [&] { return std::string(browser.Article()->GetTitle()).starts_with("title ("); }));
        EXPECT_TRUE(folder.Read(kFile).starts_with(cached));
    }
}
